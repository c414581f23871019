#include "host/program/HostTraceFile.h"

#include "host/runtime/HostError.h"
#include "host/runtime/HostText.h"

#include <string_view>

namespace
{

// OutputDebugStringW raises the wide code first, and the narrow one if nobody takes that; some systems only the narrow.
constexpr DWORD kPrintNarrow = 0x40010006;
constexpr DWORD kPrintWide = 0x4001000A;

HANDLE g_hFile = INVALID_HANDLE_VALUE;

void Write(std::string_view text)
{
    DWORD written = 0;
    WriteFile(g_hFile, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

// Runs on the thread that prints. The length that comes along counts the terminating null.
LONG CALLBACK Handler(EXCEPTION_POINTERS* pPointers)
{
    const EXCEPTION_RECORD& record = *pPointers->ExceptionRecord;
    if (record.NumberParameters < 2 || record.ExceptionInformation[0] == 0)
        return EXCEPTION_CONTINUE_SEARCH;
    const size_t length = record.ExceptionInformation[0] - 1;
    const void* pText = reinterpret_cast<const void*>(record.ExceptionInformation[1]);
    if (record.ExceptionCode == kPrintWide)
        Write(HostUtf8({static_cast<const wchar_t*>(pText), length}));
    else if (record.ExceptionCode == kPrintNarrow)
        Write({static_cast<const char*>(pText), length});
    else
        return EXCEPTION_CONTINUE_SEARCH;
    return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

HostTraceFile::HostTraceFile(const std::wstring& path)
{
    g_hFile = CreateFileW(
        path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (g_hFile == INVALID_HANDLE_VALUE)
        HostThrowSystemError("cannot write " + HostUtf8(path), GetLastError());
    m_pHandler = AddVectoredExceptionHandler(TRUE, Handler);
}

HostTraceFile::~HostTraceFile()
{
    RemoveVectoredExceptionHandler(m_pHandler);
    CloseHandle(g_hFile);
    g_hFile = INVALID_HANDLE_VALUE;
}
