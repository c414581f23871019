// A check in a process of its own: a library that faults, or does not return, is a finding like any other.
#pragma once

#include "tools/client_check/CheckResult.h"
#include "tools/client_check/CheckTable.h"

/// What the child does: runs the check, and writes what comes of it to its standard output.
void CheckRunChild(const CheckRow& row, const CheckOptions& options);

/// Starts this program once more as the child of the check and waits for its end, or until nothing moves in it.
CheckResult CheckStartChild(const CheckRow& row, const CheckOptions& options);
