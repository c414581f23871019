// The driver on a real delegated device, beside the same work on a plain device of the same adapter.
#pragma once

#include "BenchReport.h"

/// Throws HostError if the driver cannot be brought up.
void BenchDevice(BenchReport& report);
