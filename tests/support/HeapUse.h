// What the C library's heap, which all modules of the process share, has given out.
#pragma once

#include <windows.h>

namespace tesslo::test
{

struct HeapUse
{
    size_t m_Blocks = 0;
    size_t m_Bytes = 0;

    static HeapUse Now();
};

}  // namespace tesslo::test
