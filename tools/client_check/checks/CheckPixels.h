// What may be done with a frame's memory.
#pragma once

#include "tools/client_check/CheckRun.h"

void CheckPitch(CheckRun& run);
void CheckGuard(CheckRun& run);
void CheckConst(CheckRun& run);
void CheckLifetime(CheckRun& run);
