// What heaps of the process have given out.
#pragma once

#include <windows.h>

struct HeapUse
{
    size_t m_Blocks = 0;
    size_t m_Bytes = 0;

    /// Of the C library's heap, which all modules of this project share.
    static HeapUse Now();
    /// Of every heap, whosever module's it is.
    static HeapUse OfAll();

private:
    void Add(HANDLE hHeap);
};
