// The tables of capabilities.md, each asked of the driver's own functions. Text in the form of Markdown tables.
#pragma once

#include "ddi/ddi.h"

#include <string>

std::string RecordTable();
std::string FormatTable();
std::string OperationTable();
std::string QueryTable();
std::string ProcessorTable();
std::string ProcAmpTable();

/// As std::snprintf, but into a string.
std::string Text(const char* pFormat, ...);

/// "X8R8G8B8 (22)" or, for a four-character code, "`NV12`".
std::string FormatName(D3DDDIFORMAT format);

/// "{5A54A0C9-C7EC-4BD9-8EDE-F3C75DC4393B}".
std::string GuidText(const GUID& guid);
