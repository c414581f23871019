#include "interposer/carry/CarryDriver.h"

#include "host/runtime/HostError.h"
#include "host/runtime/HostText.h"
#include "interposer/run/RunLedger.h"

#include <atomic>

namespace
{

constexpr wchar_t kDriver[] = L"TessloWddmUmode.dll";
// Supplies the delegated device, and hands the frames on to the library that the run names.
constexpr wchar_t kClient[] = L"TessloClientDllRun.dll";

std::atomic<HMODULE> g_hDriver;
std::atomic<HMODULE> g_hClient;

HMODULE ModuleOf(const void* pCode)
{
    HMODULE hModule = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        static_cast<const wchar_t*>(pCode), &hModule);
    return hModule;
}

std::wstring BesideUs(const wchar_t* pFile)
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(ModuleOf(reinterpret_cast<const void*>(&ModuleOf)), path, MAX_PATH);
    const std::wstring folder = path;
    return folder.substr(0, folder.find_last_of(L'\\') + 1) + pFile;
}

// Loaded by its path first: the driver reads no long name from the registry, and finds this one by its short name.
HostDriverSettings Settings()
{
    g_hClient = LoadLibraryW(BesideUs(kClient).c_str());
    if (g_hClient == nullptr)
        HostThrowSystemError("cannot load " + HostUtf8(BesideUs(kClient)), GetLastError());
    const wchar_t* pDriver = RunOf().m_Driver;
    return {*pDriver != L'\0' ? pDriver : kDriver, kClient, 0};
}

}  // namespace

CarryDriver& CarryDriver::Get()
{
    static CarryDriver& driver = *new CarryDriver;
    return driver;
}

CarryDriver::CarryDriver() : m_Driver(Settings()), m_Watch(m_Driver.Module(), m_Driver.ClientLibrary(), m_Delivery)
{
    g_hDriver = m_Driver.Module();
    if (RunOf().m_Mode != RunMode::Carry)
        m_Delivery.KeepFrames();
}

bool CarryDriver::IsOwnCode(const void* pCode)
{
    const HMODULE hModule = ModuleOf(pCode);
    return hModule != nullptr && (hModule == g_hDriver || hModule == g_hClient);
}
