// What widths and heights come.
#pragma once

#include "tools/client_check/CheckRun.h"

void CheckSizes(CheckRun& run);
void CheckRotations(CheckRun& run);
void CheckResize(CheckRun& run);
