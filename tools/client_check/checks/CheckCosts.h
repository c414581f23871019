// What the library costs: time and whatever it does not give back.
#pragma once

#include "tools/client_check/CheckRun.h"

void CheckTime(CheckRun& run);
void CheckLeaks(CheckRun& run);
void CheckLoads(CheckRun& run);
