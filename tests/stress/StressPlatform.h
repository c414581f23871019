// The platform's functions as the driver's module imports them, from before its entry point runs until it is unmapped:
// their calls are counted, one of them can be made to fail, and what they gave must come back.
#pragma once

#include "StressLoad.h"
#include "TemporaryFolder.h"

#include <string>

namespace tesslo::test
{

/// Functions that can fail, by number.
size_t StressPlatformCount();
std::string StressPlatformName(size_t function);
/// Whether each life makes the same calls of it. Those of the log file are as many as threads come and go.
bool StressPlatformRepeats(size_t function);

/// Blocks, handles, keys, files, windows and libraries that the driver has not given back, one number a kind.
struct StressHoldings
{
    size_t m_Blocks = 0, m_Handles = 0, m_Keys = 0, m_Files = 0, m_Windows = 0, m_Libraries = 0;
    auto operator<=>(const StressHoldings&) const = default;
    /// "2 blocks, 1 handles".
    std::string Text() const;
};

/// One at a time in a process, made before the driver is loaded and ended behind its unloading. The log file is one of
/// its own.
class StressPlatform
{
public:
    StressPlatform();
    ~StressPlatform();
    StressPlatform(const StressPlatform&) = delete;
    StressPlatform& operator=(const StressPlatform&) = delete;

    /// The n-th call from now of the function fails.
    void Fail(size_t function, unsigned nth);
    /// Whether that call was made.
    bool HasFailed() const;
    unsigned Calls(size_t function) const;
    StressHoldings Holdings() const;
    /// What the driver does not import although it is listed; "" for nothing.
    const std::string& Missing() const { return m_Load.Failure(); }

private:
    static StressLoad::Patches InternalPatch(HMODULE hModule);

    TemporaryFolder m_Folder;
    StressLoad m_Load{InternalPatch};
};

}  // namespace tesslo::test
