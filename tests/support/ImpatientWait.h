// Lets the time of waits without limit run out at once, slice by slice.
#pragma once

#include "ImportPatch.h"
#include "Waiting.h"

#include <atomic>
#include <vector>

namespace tesslo::test
{

/// While it lives, the module's first waits for 5 s or a minute run out at once; others are the platform's.
/// One at a time in a process.
class ImpatientWait
{
public:
    /// @param hModule the module that waits, null for the executable.
    /// @param slices  how many waits run out.
    ImpatientWait(HMODULE hModule, int slices)
        : m_Patch(hModule, "kernel32.dll", "WaitForSingleObject", InternalWait, &s_pWait)
    {
        s_Left = slices;
        s_Slices.clear();
    }

    /// Whether all of them have run out.
    static bool WaitUntilOver()
    {
        return WaitUntil([] { return s_Left == 0; });
    }

    /// How long each of them would have been, milliseconds.
    static std::vector<DWORD> Slices() { return s_Slices; }

private:
    static DWORD WINAPI InternalWait(HANDLE hObject, DWORD milliseconds)
    {
        if ((milliseconds != 5000 && milliseconds != 60000) || s_Left == 0)
            return s_pWait(hObject, milliseconds);
        s_Slices.push_back(milliseconds);
        --s_Left;
        return WAIT_TIMEOUT;
    }

    inline static std::atomic<int> s_Left;
    inline static std::vector<DWORD> s_Slices;  ///< written by the waiting thread until none is left
    inline static decltype(&WaitForSingleObject) s_pWait;
    ImportPatch m_Patch;
};

}  // namespace tesslo::test
