// How a process and a library's stay in it end.
#pragma once

#include "tools/client_check/CheckRun.h"

void CheckExit(CheckRun& run);
void CheckUnload(CheckRun& run);
