// What the user of the check reads.
#pragma once

#include "tools/client_check/CheckOptions.h"
#include "tools/client_check/CheckResult.h"

#include <vector>

/// One check's line; behind a failed one what was found and what to change.
void CheckPrint(const CheckResult& result, const CheckOptions& options);
/// The last line. @return whether all have passed.
bool CheckPrintSum(const std::vector<CheckResult>& results);
/// Throws HostError when the file cannot be written.
void CheckWriteJson(const std::vector<CheckResult>& results, const CheckOptions& options);
