// Writes one frame as a PNG file.
#pragma once

#include <windows.h>

/// Writes a picture whole or not at all: after a failure no file is left behind.
///
/// @param pPixels packed rows of 32-bit pixels: blue, green, red, unused. Overwritten.
/// @return ERROR_SUCCESS or the system's error code.
DWORD SamplePictureWrite(const wchar_t* pPath, BYTE* pPixels, UINT width, UINT height);
