#include "StressLoad.h"

#include <winternl.h>

#include <stdexcept>
#include <utility>

namespace tesslo::test
{

namespace
{

constexpr wchar_t kDriver[] = L"TessloWddmUmode.dll";

// The loader's own records, as its notifications pass them.
struct LoaderData
{
    ULONG m_Flags;
    const UNICODE_STRING* m_pFullName;
    const UNICODE_STRING* m_pBaseName;
    void* m_pBase;
    ULONG m_Size;
};
constexpr ULONG kLoaded = 1;
using Notify = void CALLBACK(ULONG reason, const void* pData, void* pContext);

template <typename Function>
Function* LoaderFunction(const char* pName)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), pName)));
}

}  // namespace

StressLoad::StressLoad(std::function<Patches(HMODULE hModule)> patch) : m_Patch(std::move(patch))
{
    const auto pRegister = LoaderFunction<LONG WINAPI(ULONG, Notify*, void*, void**)>("LdrRegisterDllNotification");
    if (!pRegister || pRegister(0, InternalNotify, this, &m_pCookie) < 0)
        throw std::runtime_error("the loader does not tell what it loads");
}

StressLoad::~StressLoad()
{
    LoaderFunction<LONG WINAPI(void*)>("LdrUnregisterDllNotification")(m_pCookie);
}

// The loader calls between mapping and entry point, and again between the module's end and unmapping.
void StressLoad::InternalNotify(ULONG reason, const void* pData, void* pContext)
try
{
    const auto& data = *static_cast<const LoaderData*>(pData);
    auto& load = *static_cast<StressLoad*>(pContext);
    if (_wcsnicmp(data.m_pBaseName->Buffer, kDriver, data.m_pBaseName->Length / sizeof(wchar_t)) != 0)
        return;
    if (reason == kLoaded)
        load.m_Patches = load.m_Patch(static_cast<HMODULE>(data.m_pBase));
    else
        load.m_Patches.clear();
}
catch (const std::exception& error)
{
    static_cast<StressLoad*>(pContext)->m_Failure = error.what();
}

}  // namespace tesslo::test
