// The two reserved exports: the device that a library supplies, and the presents that it is told of.
#pragma once

#include "tools/client_check/CheckRun.h"

void CheckDevice(CheckRun& run);
void CheckNotice(CheckRun& run);
