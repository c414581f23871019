// The record of this process' run.
#pragma once

#include "interposer/run/RunRecord.h"

#include <span>
#include <string_view>

/// Never null: without a shared record the process has one of its own.
RunRecord& RunOf();

/// One more of that name. What finds no room in a full table is not counted. Any thread may call.
void RunCountOne(std::span<RunCount> counts, std::string_view name);

inline void RunLimit(std::string_view name)
{
    RunCountOne(RunOf().m_Limits, name);
}
