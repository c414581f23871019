#include "TraceLines.h"

#include <cstdio>

namespace
{
// What OutputDebugStringW raises: the wide form, and the narrow one where nobody takes that or there is none.
constexpr DWORD kPrintWide = 0x4001000A;
constexpr DWORD kPrintNarrow = 0x40010006;

thread_local TraceLines* g_pTrace = nullptr;

/// Takes the prefix of this thread and the line feed off; empty for a line without them.
std::string Stripped(const std::string& text)
{
    char prefix[64];
    const int length =
        std::snprintf(prefix, sizeof(prefix), "UMD: [%04lu:%04lu] ", GetCurrentProcessId(), GetCurrentThreadId());
    if (!text.starts_with(prefix) || !text.ends_with("\n"))
        return "not a trace line: " + text;
    return text.substr(length, text.size() - length - 1);
}
}  // namespace

TraceLines::TraceLines()
{
    g_pTrace = this;
    m_pHandler = AddVectoredExceptionHandler(TRUE, Handler);
}

TraceLines::~TraceLines()
{
    RemoveVectoredExceptionHandler(m_pHandler);
    g_pTrace = nullptr;
}

LONG TraceLines::Handler(EXCEPTION_POINTERS* pPointers)
{
    const EXCEPTION_RECORD& record = *pPointers->ExceptionRecord;
    if (!g_pTrace || record.NumberParameters < 2 || !record.ExceptionInformation[0])
        return EXCEPTION_CONTINUE_SEARCH;
    const std::size_t length = record.ExceptionInformation[0] - 1;  // without the terminating null
    const auto pText = record.ExceptionInformation[1];
    if (record.ExceptionCode == kPrintWide)
    {
        const auto* pWide = reinterpret_cast<const wchar_t*>(pText);
        g_pTrace->m_Lines.push_back(Stripped(std::string(pWide, pWide + length)));
    }
    else if (record.ExceptionCode == kPrintNarrow)
        g_pTrace->m_Lines.push_back(Stripped(std::string(reinterpret_cast<const char*>(pText), length)));
    else
        return EXCEPTION_CONTINUE_SEARCH;
    return EXCEPTION_CONTINUE_EXECUTION;
}
