// All checks, in the order in which they are run.
#pragma once

#include "tools/client_check/CheckRun.h"

#include <span>

struct CheckRow
{
    const char* m_pName;
    const char* m_pWhat;    ///< what is done to the library
    const char* m_pChange;  ///< what its author has to change when the check fails
    void (*m_pRun)(CheckRun& run);
};

std::span<const CheckRow> CheckTable();

/// Null when there is none of this name.
const CheckRow* CheckFindRow(const std::string& name);
