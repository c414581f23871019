// Tells where a child ends when an exception ends it.
#pragma once

#include <windows.h>

#include <cstdio>

/// From now on an exception that nobody handles ends the process with its code, and is written with its calls as
/// module+offset, on one line that begins with this text.
inline constexpr char kChildCrash[] = "@crash ";
/// @param pStream  that the line goes to.
/// @param pExplain writes what else is known of the exception, behind its code; null for nothing.
void ChildReportCrashes(FILE* pStream, void (*pExplain)(FILE* pStream, const EXCEPTION_RECORD& record) = nullptr);
