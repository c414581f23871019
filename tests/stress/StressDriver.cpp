#include "StressDriver.h"

#include <map>

namespace tesslo::test
{

namespace
{

void WINAPI NoSleep(DWORD)
{
    SwitchToThread();
}

}  // namespace

StressDriver::StressDriver(DWORD traceMask, const wchar_t* pClient)
{
    m_Registry.SetTraceMask(traceMask);
    if (pClient)
        m_Registry.SetClientDllName(pClient);
    m_Dll.emplace();
    m_Factory.emplace(m_Fake, Module());
    m_Dxva2.emplace(Module());
    m_pSleep = std::make_unique<ImportPatch>(Module(), "kernel32.dll", "Sleep", NoSleep);
    if (StressCuzz::IsWanted())
        m_pCuzz = std::make_unique<StressCuzz>(Module());
}

StressDriver::~StressDriver()
{
    if (m_Dll->m_hAdapter)
        m_Dll->CloseAdapter();
}

HRESULT StressDriver::PresentBlit(HANDLE hSource)
{
    const std::map<std::string, ULONG> before = m_Fake.References();
    D3DDDIARG_PRESENT present{};
    present.hSrcResource = hSource;
    present.Flags.Blt = 1;
    const HRESULT hr = Functions().pfnPresent(Device(), &present);
    for (const auto& [name, references] : m_Fake.References())
        if (const auto found = before.find(name); found != before.end() && references == found->second + 1)
            dynamic_cast<IUnknown&>(m_Fake.Find<FakeObject>(name)).Release();
    return hr;
}

uint64_t StressDriver::Leftovers()
{
    return m_Fake.LiveObjects().size() + (m_Fake.ReferenceCount() - 1) + (m_Factory->ReferenceCount() - 1) +
           static_cast<uint64_t>(m_Dxva2->LiveObjects);
}

void StressDriver::Clean()
{
    m_Fake.ClearScripts();
    m_Kernel.ClearScripts();
    m_Fake.ClearLines();
    m_Kernel.ClearLines();
    m_Client.Forget();
    m_Dxva2->Calls.clear();
    if (m_Fake.LiveObjects().empty())
        m_Fake.RestartNames();
}

}  // namespace tesslo::test
