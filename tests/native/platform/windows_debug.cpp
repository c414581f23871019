#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{
constexpr DWORD kPrintExceptionWide = 0x4001000A;

PVECTORED_EXCEPTION_HANDLER s_pHandler;

/// The same format for the C library: with wide text under %ls, and without an l in front of integers, which is for
/// 64 bits there.
std::wstring NativeFormat(const wchar_t* pFormat)
{
    std::wstring native;
    while (*pFormat)
    {
        native += *pFormat;
        if (*pFormat++ != L'%')
            continue;
        while (*pFormat && wcschr(L"-+ #0123456789.*", *pFormat))
            native += *pFormat++;
        const bool bLong = *pFormat == L'l' && pFormat++;
        if (*pFormat == L's' || (*pFormat == L'S' && bLong))
            native += L'l';
        if (*pFormat)
            native += *pFormat == L'S' ? L's' : *pFormat;
        pFormat += *pFormat != L'\0';
    }
    return native;
}
}  // namespace

void* AddVectoredExceptionHandler(ULONG, PVECTORED_EXCEPTION_HANDLER pHandler)
{
    s_pHandler = pHandler;
    return reinterpret_cast<void*>(pHandler);
}

ULONG RemoveVectoredExceptionHandler(void*)
{
    s_pHandler = nullptr;
    return TRUE;
}

void OutputDebugStringW(const wchar_t* pText)
{
    if (s_pHandler == nullptr)
        return;
    EXCEPTION_RECORD record = {kPrintExceptionWide, 2, {wcslen(pText) + 1, reinterpret_cast<ULONG_PTR>(pText)}};
    EXCEPTION_POINTERS pointers = {&record};
    s_pHandler(&pointers);
}

int WideCharToMultiByte(UINT, DWORD, const wchar_t* pText, int, char* pBuffer, int size, const char*, BOOL*)
{
    const int needed = static_cast<int>(wcslen(pText)) + 1;
    for (int i = 0; i < needed && i < size; ++i)
        pBuffer[i] = static_cast<char>(pText[i]);
    return needed;
}

int wcscat_s(wchar_t* pText, size_t room, const wchar_t* pMore)
{
    if (wcslen(pText) + wcslen(pMore) >= room)
        std::abort();
    wcscat(pText, pMore);
    return 0;
}

int _vsnwprintf(wchar_t* pBuffer, size_t room, const wchar_t* pFormat, va_list arguments)
{
    return vswprintf(pBuffer, room, NativeFormat(pFormat).c_str(), arguments);
}

int _snwprintf(wchar_t* pBuffer, size_t room, const wchar_t* pFormat, ...)
{
    va_list arguments;
    va_start(arguments, pFormat);
    const int length = _vsnwprintf(pBuffer, room, pFormat, arguments);
    va_end(arguments);
    return length;
}
