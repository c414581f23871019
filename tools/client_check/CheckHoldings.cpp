#include "tools/client_check/CheckHoldings.h"

#include "tools/process/HeapUse.h"
#include "tools/process/ResourceCounts.h"

#include <cstdio>

/// How much of it may come in a thousand rounds without anybody's fault.
struct CheckHoldings::Quantity
{
    const char* m_pName;  ///< of the figure
    const char* m_pWhat;
    double CheckHoldings::* m_pValue;
    double m_Allowed;
};

const CheckHoldings::Quantity CheckHoldings::kQuantities[] = {
    {"handles", "handles", &CheckHoldings::m_Handles, 8},
    {"threads", "threads", &CheckHoldings::m_Threads, 2},
    {"heap_blocks", "blocks of the heap", &CheckHoldings::m_HeapBlocks, 100},
    {"heap_bytes", "bytes of the heap", &CheckHoldings::m_HeapBytes, 256 << 10},
    {"page_bytes", "bytes of pages", &CheckHoldings::m_PageBytes, 4 << 20},
};

namespace
{

constexpr DWORD kSettle = 2000;  ///< milliseconds for what the library gives back late
constexpr UINT kWarmUpPart = 5;  ///< a fifth of the rounds makes what is made once

double PrivateBytes()
{
    double bytes = 0;
    MEMORY_BASIC_INFORMATION part;
    for (const BYTE* pAddress = nullptr; VirtualQuery(pAddress, &part, sizeof(part)) != 0;
        pAddress = static_cast<const BYTE*>(part.BaseAddress) + part.RegionSize)
        if (part.State == MEM_COMMIT && part.Type == MEM_PRIVATE)
            bytes += static_cast<double>(part.RegionSize);
    return bytes;
}

}  // namespace

CheckHoldings CheckHoldings::Now()
{
    const ResourceCounts counts = ResourceCounts::Now();
    const HeapUse heaps = HeapUse::OfAll();
    CheckHoldings now;
    now.m_Handles = counts.m_Handles;
    now.m_Threads = counts.m_Threads;
    now.m_HeapBlocks = static_cast<double>(heaps.m_Blocks);
    now.m_HeapBytes = static_cast<double>(heaps.m_Bytes);
    now.m_PageBytes = PrivateBytes();
    return now;
}

std::vector<std::string> CheckHoldings::GrowthSince(const CheckHoldings& before, const std::string& rounds) const
{
    std::vector<std::string> lines;
    for (const Quantity& quantity : kQuantities)
        if (const double growth = this->*quantity.m_pValue - before.*quantity.m_pValue; growth > quantity.m_Allowed)
        {
            char line[128];
            std::snprintf(line, sizeof(line), "%.0f more %s behind %s", growth, quantity.m_pWhat, rounds.c_str());
            lines.emplace_back(line);
        }
    return lines;
}

void CheckHoldings::Tell(CheckRun& run, const CheckHoldings& before) const
{
    for (const Quantity& quantity : kQuantities)
        run.Tell(quantity.m_pName, this->*quantity.m_pValue - before.*quantity.m_pValue);
}

void CheckHoldings::Watch(CheckRun& run, UINT count, const std::string& name, const std::function<void()>& round)
{
    const UINT warmUp = count / kWarmUpPart;
    for (UINT i = 0; i < warmUp; ++i)
        round();
    const CheckHoldings before = Now();
    for (UINT i = warmUp; i < count; ++i)
        round();
    const std::string rounds = std::to_string(count - warmUp) + " " + name;
    CheckHoldings after = Now();
    for (DWORD waited = 0; waited < kSettle && !after.GrowthSince(before, rounds).empty(); waited += 100)
    {
        Sleep(100);
        after = Now();
    }
    after.Tell(run, before);
    for (const std::string& growth : after.GrowthSince(before, rounds))
        run.Find(growth);
}
