// What this process holds of the system: to find leaks.
#pragma once

#include <windows.h>

struct ResourceCounts
{
    unsigned m_Handles;  ///< open handles
    unsigned m_Threads;
    size_t m_WorkingSet;  ///< bytes

    static ResourceCounts Now();
};
