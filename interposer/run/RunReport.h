// What a run was, as text for its user and as JSON for other programs.
#pragma once

#include "interposer/run/RunProcess.h"

#include <string>

/// Lines, each with its end.
std::string RunReportText(const RunResult& result);
std::string RunReportJson(const RunResult& result);
/// Whether something differs that no limit of the driver explains, or could not be carried.
bool RunIsDefective(const RunResult& result);
