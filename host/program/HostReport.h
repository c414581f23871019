// What the program says at its end.
#pragma once

#include "host/program/HostOutput.h"

#include <vector>

class HostSession;

/// Prints a row for each output, and what of it was not recorded.
void HostPrintReport(const std::vector<HostOutput>& outputs, HostSession& session);
