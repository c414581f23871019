// Runs a scene of the interposed program.
#pragma once

#include "host/runtime/HostText.h"
#include "interposer/run/RunReport.h"

#include <gtest/gtest.h>

/// @param scenes name of a scene, or of a group of them.
inline RunResult InterposedProgram(
    const std::wstring& scenes, const RunRecord& settings = {}, DWORD timeLimit = 110'000)
{
    return RunProgram(settings, L"interposer\\interposed_program.exe", {scenes}, timeLimit);
}

inline RunRecord WithMode(RunMode mode)
{
    RunRecord settings{};
    settings.m_Mode = mode;
    return settings;
}

/// How often the name was counted.
template <size_t Size>
LONG64 CountOf(const RunCount (&counts)[Size], const std::string& name)
{
    for (const RunCount& count : counts)
        if (name == count.m_Name)
            return count.m_Count;
    return 0;
}
