// The record of this process' run.
#pragma once

#include "interposer/run/RunRecord.h"

#include <span>
#include <string_view>

/// Never null: without a shared record the process has one of its own.
RunRecord& RunOf();

/// The number behind a name, made at the first call; null when the table is full. Any thread may call.
LONG64* RunCountOf(std::span<RunCount> counts, std::string_view name);

inline void RunCountOne(std::span<RunCount> counts, std::string_view name)
{
    if (LONG64* pCount = RunCountOf(counts, name))
        InterlockedIncrement64(pCount);
}

inline void RunLimit(std::string_view name)
{
    RunCountOne(RunOf().m_Limits, name);
}
