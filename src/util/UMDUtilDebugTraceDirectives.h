// Makes a trace line fit to be a format, which the log file takes it for.
#pragma once

/// Takes out of a line each directive that must not be interpreted without an argument of its own. In place.
void UMDUtilDebugTraceDropHarmfulDirectives(wchar_t* pLine);
