// What every fake of the tests shares: a record of the calls, one line a call, and a script of their results.
//
// Lines look as the call does: "SetRenderState(7, 1)" for the one main object of the record, "surface#1.LockRect(...)"
// for the others. A script names a method the same way: "SetTexture", "surface.LockRect" (any surface) or
// "surface#2.LockRect". Any thread may call.
#pragma once

#include "Lines.h"

#include <windows.h>

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace tesslo::test
{

/// What failing calls answer, as D3DERR_NOTAVAILABLE: no code of the driver's own, nor of the fakes'.
inline constexpr HRESULT kRefused = static_cast<HRESULT>(0x8876086A);

class FakeRecorder
{
public:
    FakeRecorder() = default;
    virtual ~FakeRecorder() = default;
    FakeRecorder(const FakeRecorder&) = delete;
    FakeRecorder& operator=(const FakeRecorder&) = delete;

    /// All calls so far, in order. AddRef, Release and QueryInterface are not recorded.
    std::vector<std::string> Lines() const;
    /// The lines that contain the text.
    std::vector<std::string> LinesContaining(const std::string& text) const;
    /// How many calls of the method there were, refused ones included. The name as in a script.
    size_t Calls(const std::string& method) const;
    /// Forgets the lines; scripts, names and objects stay.
    void ClearLines();

    /// Makes a method answer a result without doing its work.
    /// @param nth 0: every call from now on; n: only the n-th call from now.
    void Fail(const std::string& method, LONG result, unsigned nth = 0);
    /// Runs a callback in every call of the method, before its work: to raise an exception, or to look at the state.
    void On(const std::string& method, std::function<void()> callback);
    /// Forgets all scripts.
    void ClearScripts();

    /// Prints pointers into this memory as "name" or "name+offset" from now on; else they print as "data".
    void NameMemory(const void* pMemory, size_t size, const std::string& name);

    /// For the fakes: records one call and runs its script. @return the scripted result, 0 without one.
    LONG RecordCall(const std::string& object, const char* pMethod, const std::string& arguments);
    /// For the fakes: how a pointer prints. "null", a name, or the text for unknown ones.
    std::string PointerText(const volatile void* pointer, const char* pUnknown) const;

protected:
    mutable std::mutex m_Mutex;
    std::map<const void*, std::pair<size_t, std::string>> m_Names;  ///< by address: size and name

private:
    struct Script
    {
        std::string m_Method;
        unsigned m_Countdown;  ///< 0: always; else the calls until it acts, once
        LONG m_Result;
        std::function<void()> m_Callback;
    };

    LONG InternalRunScripts(
        const std::string& object, const std::string& method, std::vector<std::function<void()>>& callbacks);

    std::vector<std::string> m_Lines;
    std::vector<std::pair<std::string, std::string>> m_Calls;  ///< object and method, parallel to the lines
    std::vector<Script> m_Scripts;
};

}  // namespace tesslo::test
