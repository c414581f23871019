#include "FakeRecorder.h"

#include "FailNthAllocation.h"

#include <algorithm>

namespace tesslo::test
{

namespace
{

/// Whether a script's name means this call: "Method" of the main object, "kind.Method" or "kind#n.Method".
bool Matches(const std::string& script, const std::string& object, const std::string& method)
{
    if (object.empty())
        return script == method;
    return script == object + "." + method || script == object.substr(0, object.find_first_of("#[")) + "." + method;
}

}  // namespace

std::vector<std::string> FakeRecorder::Lines() const
{
    std::lock_guard lock(m_Mutex);
    return m_Lines;
}

std::vector<std::string> FakeRecorder::LinesContaining(const std::string& text) const
{
    return Containing(Lines(), text);
}

size_t FakeRecorder::Calls(const std::string& method) const
{
    std::lock_guard lock(m_Mutex);
    return std::ranges::count_if(m_Calls, [&](const auto& call) { return Matches(method, call.first, call.second); });
}

void FakeRecorder::ClearLines()
{
    std::lock_guard lock(m_Mutex);
    m_Lines.clear();
    m_Calls.clear();
}

void FakeRecorder::Fail(const std::string& method, LONG result, unsigned nth)
{
    std::lock_guard lock(m_Mutex);
    m_Scripts.push_back({method, nth, result, nullptr});
}

void FakeRecorder::On(const std::string& method, std::function<void()> callback)
{
    std::lock_guard lock(m_Mutex);
    m_Scripts.push_back({method, 0, 0, std::move(callback)});
}

void FakeRecorder::ClearScripts()
{
    std::lock_guard lock(m_Mutex);
    m_Scripts.clear();
}

void FakeRecorder::NameMemory(const void* pMemory, size_t size, const std::string& name)
{
    std::lock_guard lock(m_Mutex);
    m_Names[pMemory] = {size, name};
}

LONG FakeRecorder::RecordCall(const std::string& object, const char* pMethod, const std::string& arguments)
{
    FailNthAllocation::Pause pause;
    std::vector<std::function<void()>> callbacks;
    LONG result = 0;
    {
        std::lock_guard lock(m_Mutex);
        m_Lines.push_back((object.empty() ? "" : object + ".") + pMethod + "(" + arguments + ")");
        m_Calls.emplace_back(object, pMethod);
        result = InternalRunScripts(object, pMethod, callbacks);
    }
    // Outside the lock: a callback may raise an exception, or ask for the lines.
    for (const std::function<void()>& callback : callbacks)
        callback();
    return result;
}

LONG FakeRecorder::InternalRunScripts(
    const std::string& object, const std::string& method, std::vector<std::function<void()>>& callbacks)
{
    LONG result = 0;
    for (Script& script : m_Scripts)
    {
        if (!Matches(script.m_Method, object, method))
            continue;
        if (script.m_Callback)
            callbacks.push_back(script.m_Callback);
        else if (script.m_Countdown == 0)
            result = script.m_Result;
        else if (--script.m_Countdown == 0)
        {
            result = script.m_Result;
            script.m_Method.clear();
        }
    }
    return result;
}

std::string FakeRecorder::PointerText(const volatile void* pointer, const char* pUnknown) const
{
    if (pointer == nullptr)
        return "null";
    std::lock_guard lock(m_Mutex);
    const auto* pByte = static_cast<const BYTE*>(const_cast<const void*>(pointer));
    auto next = m_Names.upper_bound(pByte);
    if (next == m_Names.begin())
        return pUnknown;
    const auto& [pStart, named] = *std::prev(next);
    const size_t offset = pByte - static_cast<const BYTE*>(pStart);
    if (offset >= named.first)
        return pUnknown;
    return offset == 0 ? named.second : named.second + "+" + std::to_string(offset);
}

}  // namespace tesslo::test
