// What every present of a frame does, whichever method shows it.
#pragma once

#include <windows.h>

/// Behind a present that succeeded: counts the frame, and ends the program with the last one that the run asks for.
void HooksFramePresented();
