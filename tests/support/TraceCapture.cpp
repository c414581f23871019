#include "TraceCapture.h"

#include "FailNthAllocation.h"

#include <algorithm>

namespace tesslo::test
{

namespace
{

constexpr DWORD kPrintException = 0x40010006;      ///< DBG_PRINTEXCEPTION_C: length, narrow text
constexpr DWORD kPrintExceptionWide = 0x4001000A;  ///< the platform's first try: length, wide text, both narrow too

std::mutex s_Mutex;
std::vector<TraceCapture*> s_Captures;
void* s_hHandler;

std::string Narrow(const wchar_t* pText)
{
    const int size = WideCharToMultiByte(CP_ACP, 0, pText, -1, nullptr, 0, nullptr, nullptr);
    std::string text(size, '\0');
    WideCharToMultiByte(CP_ACP, 0, pText, -1, text.data(), size, nullptr, nullptr);
    text.resize(size - 1);
    return text;
}

}  // namespace

TraceCapture::TraceCapture()
{
    std::lock_guard lock(s_Mutex);
    if (s_Captures.empty())
        s_hHandler = AddVectoredExceptionHandler(1, InternalHandler);
    s_Captures.push_back(this);
}

TraceCapture::~TraceCapture()
{
    std::lock_guard lock(s_Mutex);
    std::erase(s_Captures, this);
    if (s_Captures.empty())
        RemoveVectoredExceptionHandler(s_hHandler);
}

LONG TraceCapture::InternalHandler(EXCEPTION_POINTERS* pPointers)
{
    const EXCEPTION_RECORD& record = *pPointers->ExceptionRecord;
    if (record.ExceptionCode != kPrintException && record.ExceptionCode != kPrintExceptionWide)
        return EXCEPTION_CONTINUE_SEARCH;

    FailNthAllocation::Pause pause;
    const auto* pText = reinterpret_cast<const void*>(record.ExceptionInformation[1]);
    const std::string message = record.ExceptionCode == kPrintException ? static_cast<const char*>(pText)
                                                                        : Narrow(static_cast<const wchar_t*>(pText));
    std::lock_guard lock(s_Mutex);
    for (TraceCapture* pCapture : s_Captures)
        pCapture->InternalAdd(message);
    // Handled: the platform does not try again with the other kind, nor with the debugger's shared buffer.
    return EXCEPTION_CONTINUE_EXECUTION;
}

void TraceCapture::InternalAdd(const std::string& message)
{
    // Others print too: the test framework tells its failures this way.
    if (!message.starts_with("UMD: ["))
        return;
    std::lock_guard lock(m_Mutex);
    m_Lines.push_back({message.substr(message.find("] ") + 2), GetCurrentThreadId()});
}

std::vector<TraceCapture::Line> TraceCapture::ThreadLines() const
{
    std::lock_guard lock(m_Mutex);
    return m_Lines;
}

std::vector<std::string> TraceCapture::Lines() const
{
    std::vector<std::string> texts;
    for (const Line& line : ThreadLines())
        texts.push_back(line.m_Text);
    return texts;
}

std::vector<std::string> TraceCapture::LinesOfThisThread() const
{
    std::vector<std::string> texts;
    for (const Line& line : ThreadLines())
        if (line.m_ThreadId == GetCurrentThreadId())
            texts.push_back(line.m_Text);
    return texts;
}

std::vector<std::string> TraceCapture::LinesContaining(const std::string& text) const
{
    return Containing(Lines(), text);
}

size_t TraceCapture::Count(const std::string& line) const
{
    return std::ranges::count(Lines(), line);
}

void TraceCapture::Clear()
{
    std::lock_guard lock(m_Mutex);
    m_Lines.clear();
}

}  // namespace tesslo::test
