// The program behind tesslo_host.exe: renders, presents, and tells what came of it.
#pragma once

#include "host/program/HostOptions.h"

/// Runs to the end and prints the closing table. Throws HostError.
void HostRunProgram(const HostOptions& options);
