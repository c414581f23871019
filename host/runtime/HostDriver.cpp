#include "host/runtime/HostDriver.h"

#include "host/runtime/HostError.h"
#include "host/runtime/HostRegistry.h"
#include "host/runtime/HostText.h"

HostDriver::HostDriver(const HostDriverSettings& settings)
{
    std::wstring clientLibrary;
    {
        HostRegistry registry;
        registry.SetTraceMask(settings.m_TraceMask);
        if (settings.m_ClientLibrary)
            registry.SetClientLibrary(*settings.m_ClientLibrary);
        m_hModule = LoadLibraryW(settings.m_Path.c_str());
        if (m_hModule == nullptr)
            HostThrowSystemError("cannot load the driver " + HostUtf8(settings.m_Path), GetLastError());
        clientLibrary = registry.ClientLibrary();
    }
    m_hClientLibrary = GetModuleHandleW(clientLibrary.c_str());
    m_pOpenAdapter =
        reinterpret_cast<HostOpenAdapterFunction>(reinterpret_cast<void*>(GetProcAddress(m_hModule, "OpenAdapter")));
    const bool bMissing =
        settings.m_bNeedsClientLibrary && settings.m_ClientLibrary.has_value() && m_hClientLibrary == nullptr;
    if (m_pOpenAdapter != nullptr && !bMissing)
        return;
    FreeLibrary(m_hModule);
    if (m_pOpenAdapter == nullptr)
        throw HostError(HostUtf8(settings.m_Path) + " does not export OpenAdapter: it is no display driver");
    throw HostError("the driver could not load the client library " + HostUtf8(clientLibrary));
}

HostDriver::~HostDriver()
{
    FreeLibrary(m_hModule);
}
