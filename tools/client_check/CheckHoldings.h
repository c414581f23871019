// What the process holds at a time: memory, handles, threads.
#pragma once

#include "tools/client_check/CheckRun.h"

#include <string>
#include <vector>

class CheckHoldings
{
public:
    static CheckHoldings Now();

    /// What has grown beyond what the platform explains, a line each.
    std::vector<std::string> GrowthSince(const CheckHoldings& before, UINT connections) const;
    /// Tells the growth of each as a figure.
    void Tell(CheckRun& run, const CheckHoldings& before) const;

private:
    struct Quantity;
    static const Quantity kQuantities[];

    double m_Handles, m_Threads;
    double m_HeapBlocks;  ///< given out by any heap of the process
    double m_HeapBytes;
    double m_PageBytes;  ///< of memory that is nobody's file, heaps included
};
