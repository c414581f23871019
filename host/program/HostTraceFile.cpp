#include "host/program/HostTraceFile.h"

#include "host/runtime/HostError.h"
#include "host/runtime/HostText.h"

#include <atomic>
#include <string_view>

namespace
{

// OutputDebugStringW raises the wide code first, and the narrow one if nobody takes that; some systems only the narrow.
constexpr DWORD kPrintNarrow = 0x40010006;
constexpr DWORD kPrintWide = 0x4001000A;

HANDLE g_hFile = INVALID_HANDLE_VALUE;
std::atomic<DWORD> g_Error;  // of the first write that failed
std::atomic<UINT64> g_BytesMissing;

void Write(std::string_view text)
{
    DWORD written = 0;
    const bool bWritten = WriteFile(g_hFile, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    if (written == text.size())
        return;
    DWORD none = ERROR_SUCCESS;
    g_Error.compare_exchange_strong(none, bWritten ? ERROR_DISK_FULL : GetLastError());
    g_BytesMissing += text.size() - written;
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
    g_Error = ERROR_SUCCESS;
    g_BytesMissing = 0;
    m_pHandler = AddVectoredExceptionHandler(TRUE, Handler);
}

std::string HostTraceFile::Complaint() const
{
    if (g_BytesMissing == 0)
        return "";
    return HostSystemText(g_Error) + ": trace.log is cut short, " + std::to_string(g_BytesMissing) +
           " bytes are missing";
}

HostTraceFile::~HostTraceFile()
{
    RemoveVectoredExceptionHandler(m_pHandler);
    CloseHandle(g_hFile);
    g_hFile = INVALID_HANDLE_VALUE;
}
