// Which calls come, in which order and on which threads.
#pragma once

#include "tools/client_check/CheckRun.h"

void CheckExports(CheckRun& run);
void CheckOrder(CheckRun& run);
void CheckSources(CheckRun& run);
void CheckReplug(CheckRun& run);
void CheckSlots(CheckRun& run);
