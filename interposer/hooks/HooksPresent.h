// What every present of a frame does, whichever method shows it.
#pragma once

#include "interposer/carry/CarryDevice.h"

/// Before it: carries the picture, unless the platform's device is lost.
void HooksPresenting(IDirect3DDevice9* pDevice, const std::function<void(CarryDevice&)>& present);
/// Behind one that succeeded: counts the frame, and ends the program with the last one that the run asks for.
void HooksPresented();
