// Tells which tiles of a frame are not those of the frame before.
#pragma once

#include "BrowserPicture.h"

/// @return the tiles' numbers, ascending: all of them if the sizes differ.
std::vector<uint32_t> BrowserTileDiff(const BrowserPicture& before, const BrowserPicture& after);
