#include "host/support/HostSupportReport.h"

#include "host/runtime/HostError.h"
#include "host/runtime/HostRegistry.h"
#include "host/runtime/HostText.h"
#include "host/support/HostAdapterList.h"
#include "host/support/HostLibraryFile.h"
#include "host/support/HostPrivacy.h"

#include <tesslo/client.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <shlobj.h>

namespace
{

constexpr std::streamoff kTraceBytes = 64 * 1024;  // of the log's end

std::string LibraryText(const HostLibraryFile& file)
{
    if (!file.IsFound())
        return HostSystemText(file.Error()) + "\n";
    return file.Version() + ", " + file.Place() + ", " + file.Signature() + "\n";
}

std::wstring InstalledDriver()
{
    wchar_t folder[MAX_PATH] = L"";
    GetSystemDirectoryW(folder, ARRAYSIZE(folder));
    return std::wstring(folder) + L"\\TessloWddmUmode.dll";
}

std::string Versions(const std::wstring& driver)
{
    OSVERSIONINFOEXW system{};
    system.dwOSVersionInfoSize = sizeof(system);
    using GetVersionFunction = LONG(WINAPI*)(OSVERSIONINFOEXW*);
    // GetVersionEx tells a program what it was made for.
    const auto pGetVersion = reinterpret_cast<GetVersionFunction>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion")));
    if (pGetVersion != nullptr)
        pGetVersion(&system);
    return "tesslo_host: " TESSLO_VERSION "\ndriver: " + LibraryText(HostLibraryFile(driver)) +
           "installed driver: " + LibraryText(HostLibraryFile(InstalledDriver())) +
           "Windows: " + std::to_string(system.dwMajorVersion) + "." + std::to_string(system.dwMinorVersion) + "." +
           std::to_string(system.dwBuildNumber) + "\n";
}

std::string RegistryValues(const std::optional<DWORD>& mask, const std::optional<std::wstring>& library)
{
    char text[64] = "none that the driver can read";
    if (mask)
        std::snprintf(text, sizeof(text), "0x%lX", *mask);
    return std::string("DebugLevelUMD: ") + text +
           "\nDllNameInterface: " + (library ? "\"" + HostUtf8(*library) + "\"" : "none that the driver can read") +
           "\n";
}

std::string AdapterLine(const HostGraphicsAdapter& adapter)
{
    char ids[64];
    std::snprintf(ids, sizeof(ids), "%04lX:%04lX, LUID %08lX:%08lX", adapter.m_VendorId, adapter.m_DeviceId,
        static_cast<DWORD>(adapter.m_Luid.HighPart), adapter.m_Luid.LowPart);
    return adapter.m_Description + ", " + adapter.m_Driver + " " + HostVersionText(adapter.m_DriverVersion) + ", " +
           adapter.m_DeviceName + ", " + ids;
}

std::string Adapters()
{
    try
    {
        const std::vector<HostGraphicsAdapter> adapters = HostListAdapters();
        std::string text;
        for (size_t i = 0; i < adapters.size(); ++i)
            text += std::to_string(i) + ": " + AdapterLine(adapters[i]) + "\n";
        const std::optional<size_t> delegated = HostDelegatedAdapter(adapters);
        return text + "the driver draws on: " + (delegated ? AdapterLine(adapters[*delegated]) : "none of them") + "\n";
    }
    catch (const HostError& error)
    {
        return std::string(error.what()) + "\n";
    }
}

std::string ClientLibrary(const std::wstring& name)
{
    const HostLibraryFile file(name);
    std::string text = "\"" + HostUtf8(name) + "\": " + LibraryText(file);
    if (!file.IsFound())
        return text;
    for (const char* pExport : {TESSLO_CLIENT_PLUG, TESSLO_CLIENT_UPDATE, TESSLO_CLIENT_UNPLUG, TESSLO_CLIENT_RESERVED1,
             TESSLO_CLIENT_RESERVED2})
        text += std::string(pExport) + (file.Exports(pExport) ? ": there\n" : ": not there\n");
    if (file.Exports(TESSLO_CLIENT_RESERVED1))
        text += "It may bring an adapter of its own, which the driver then draws on.\n";
    return text;
}

// Whole lines only. A letter of the log is a byte: the driver prints without a locale.
std::wstring LastTrace(const std::wstring& path)
{
    std::ifstream log(std::filesystem::path(path), std::ios::binary | std::ios::ate);
    if (!log)
        return L"There is no log.\n";
    const std::streamoff size = log.tellg();
    log.seekg(size > kTraceBytes ? size - kTraceBytes : 0);
    std::string text(std::istreambuf_iterator<char>(log), {});
    if (size > kTraceBytes)
        text.erase(0, text.find('\n') + 1);
    std::erase(text, '\r');
    std::wstring lines = L"The last lines of " + std::to_wstring(size) + L" bytes:\n";
    for (const char letter : text)
        lines += static_cast<unsigned char>(letter);
    return lines;
}

std::wstring MachineLogPath()
{
    wchar_t folder[MAX_PATH] = L"";
    SHGetSpecialFolderPathW(nullptr, folder, CSIDL_COMMON_DOCUMENTS, FALSE);
    return std::wstring(folder) + L"\\Tesslo.log";
}

}  // namespace

std::string HostSupportText(const HostSupportPlaces& places)
{
    const std::wstring library = places.m_ClientLibrary.value_or(TESSLO_CLIENT_DEFAULT_DLL);
    const std::string text = "Versions\n\n" + Versions(places.m_Driver) + "\nRegistry\n\n" +
                             RegistryValues(places.m_TraceMask, places.m_ClientLibrary) + "\nAdapters\n\n" +
                             Adapters() + "\nClient library\n\n" + ClientLibrary(library) + "\nLast trace\n\n";
    return HostUtf8(HostPrivacy().Without(HostWide(text) + LastTrace(places.m_Log)));
}

void HostWriteSupportReport(const std::wstring& path, const std::wstring& driver)
{
    const std::string text =
        HostSupportText({driver, HostMachineTraceMask(), HostMachineClientLibrary(), MachineLogPath()});
    const HANDLE hFile =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    DWORD error = hFile == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
    if (error == ERROR_SUCCESS && !WriteFile(hFile, text.data(), static_cast<DWORD>(text.size()), &written, nullptr))
        error = GetLastError();
    if (hFile != INVALID_HANDLE_VALUE)
        CloseHandle(hFile);
    if (error != ERROR_SUCCESS || written != text.size())
        HostThrowSystemError("cannot write " + HostUtf8(path), error != ERROR_SUCCESS ? error : ERROR_DISK_FULL);
}
