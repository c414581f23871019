// Sets the driver's trace level mask in unit tests, and puts the old one back.
#pragma once

#include "util/UMDUtilDebugTrace.h"

namespace tesslo::test
{

/// Every trace level but the log file.
inline constexpr UINT kAllLevels = 0x7FF;

class TraceMask
{
public:
    explicit TraceMask(UINT mask) : m_Previous(g_DebugLevelUMD) { g_DebugLevelUMD = mask; }
    ~TraceMask() { g_DebugLevelUMD = m_Previous; }
    TraceMask(const TraceMask&) = delete;
    TraceMask& operator=(const TraceMask&) = delete;

private:
    UINT m_Previous;
};

}  // namespace tesslo::test
