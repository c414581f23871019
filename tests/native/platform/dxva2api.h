// Stands in for the platform's header.
#pragma once

#include <windows.h>

using REFERENCE_TIME = LONGLONG;  ///< units of 100 ns
