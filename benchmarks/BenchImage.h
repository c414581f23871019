// Copies and rotations of whole frames beside memcpy, a plain vector loop and a plain pixel loop.
#pragma once

#include "BenchReport.h"

void BenchImage(BenchReport& report);

/// Six sources turned at once on two cores, beside six packed copies.
void BenchSources(BenchReport& report);
