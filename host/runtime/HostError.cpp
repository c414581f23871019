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

void HostThrowSystemError(const std::string& what, DWORD error)
{
    wchar_t text[512] = L"";
    DWORD length = FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text, ARRAYSIZE(text), nullptr);
    while (length != 0 && text[length - 1] <= L' ')
        text[--length] = L'\0';
    throw HostError(what + ": " + HostUtf8(text) + " (" + std::to_string(error) + ")");
}
