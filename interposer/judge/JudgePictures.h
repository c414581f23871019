// Pictures of frames that differ, for whoever wants to see why.
#pragma once

#include "host/runtime/HostImage.h"

/// Keeps the first ones in the folder that the run names: frameN-driver.png, frameN-platform.png and
/// frameN-difference.png, where what is equal is black and what differs is white. Nothing without a folder.
void JudgeKeepPictures(const HostImage& fromDriver, const HostImage& expected);
