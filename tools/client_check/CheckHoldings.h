// What the process holds at a time: memory, handles, threads.
#pragma once

#include "tools/client_check/CheckRun.h"

#include <functional>
#include <string>
#include <vector>

class CheckHoldings
{
public:
    static CheckHoldings Now();

    /// What has grown beyond what the platform explains, a line each.
    /// @param rounds what has been done meanwhile, for example "800 connections".
    std::vector<std::string> GrowthSince(const CheckHoldings& before, const std::string& rounds) const;
    /// Has a round done so many times, a fifth of which make what is made once; tells how much the rest have let grow,
    /// and finds what is too much.
    static void Watch(CheckRun& run, UINT count, const std::string& name, const std::function<void()>& round);
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
