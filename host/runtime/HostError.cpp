#include "host/runtime/HostError.h"

#include "host/runtime/HostText.h"

#include <cstdio>

void HostCheck(HRESULT hResult, const char* pWhat)
{
    if (SUCCEEDED(hResult))
        return;
    char code[16];
    std::snprintf(code, sizeof(code), "0x%08lX", static_cast<unsigned long>(hResult));
    throw HostError(std::string(pWhat) + " failed: " + code);
}

std::string HostSystemText(DWORD error)
{
    if (error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL)
        return "disk full";
    wchar_t text[512] = L"";
    DWORD length = FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text, ARRAYSIZE(text), nullptr);
    while (length != 0 && text[length - 1] <= L' ')
        text[--length] = L'\0';
    return HostUtf8(text) + " (" + std::to_string(error) + ")";
}

void HostThrowSystemError(const std::string& what, DWORD error)
{
    throw HostError(what + ": " + HostSystemText(error));
}
