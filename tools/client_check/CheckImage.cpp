#include "tools/client_check/CheckImage.h"

#include "host/runtime/HostError.h"

#include <span>
#include <string_view>

namespace
{

std::string Hint(DWORD error)
{
    switch (error)
    {
    case ERROR_BAD_EXE_FORMAT:
        return ": build it for 64-bit processors (x64), as the driver is";
    case ERROR_MOD_NOT_FOUND:
        return ": a DLL that it needs is not found; such are looked for beside the program, in the system folder and on "
               "PATH, not beside the library: link them statically";
    case ERROR_PROC_NOT_FOUND:
        return ": a DLL that it needs lacks a function; link it statically";
    case ERROR_DLL_INIT_FAILED:
        return ": its DllMain answered false";
    default:
        return "";
    }
}

/// An exported name that holds this one; empty when there is none.
std::string NameLike(HMODULE hModule, std::string_view name)
{
    const auto* pBase = reinterpret_cast<const BYTE*>(hModule);
    const auto* pDos = reinterpret_cast<const IMAGE_DOS_HEADER*>(pBase);
    const auto* pHeaders = reinterpret_cast<const IMAGE_NT_HEADERS*>(pBase + pDos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& place = pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    if (place.Size == 0)
        return "";
    const auto* pExports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(pBase + place.VirtualAddress);
    const auto* pNames = reinterpret_cast<const DWORD*>(pBase + pExports->AddressOfNames);
    for (const DWORD offset : std::span(pNames, pExports->NumberOfNames))
    {
        const std::string_view exported = reinterpret_cast<const char*>(pBase + offset);
        if (exported.find(name) != std::string_view::npos)
            return std::string(exported);
    }
    return "";
}

}  // namespace

std::string CheckLoadFailure(DWORD error)
{
    return "the library does not load (" + HostSystemText(error) + ")" + Hint(error);
}

std::string CheckMissingExport(HMODULE hModule, const char* pName)
{
    const std::string like = NameLike(hModule, pName);
    if (like.empty())
        return std::string("there is no export ") + pName +
               ": define the function behind the prototype of tesslo/client.h, or name it in a definition file";
    return std::string("there is no export ") + pName + ", but " + like +
           ": include tesslo/client.h where the function is defined, or declare it extern \"C\"";
}
