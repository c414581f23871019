// Why a library does not load, or why the driver does not find an export of it.
#pragma once

#include <windows.h>

#include <string>

/// @param error the system's code for the failed loading.
std::string CheckLoadFailure(DWORD error);

/// Tells a name that is exported instead, where one looks as if it were meant.
std::string CheckMissingExport(HMODULE hModule, const char* pName);
