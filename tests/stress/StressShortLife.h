// One short life of adapter and device, with whatever registry and client library the process has.
#pragma once

#include "Lines.h"
#include "MachineLog.h"

#include <windows.h>

#include <functional>
#include <string>

namespace tesslo::test
{

/// Loads the driver, opens, presents, closes and unloads; only the delegated device is played.
/// @param whileOpen called before the device is closed; may be empty.
/// @return what went wrong, "" when nothing did. Without a client library only the first flip succeeds, and that is
///         not wrong.
std::string StressShortLife(const std::function<void()>& whileOpen = {});

/// Errors and entries, to the log file too.
inline constexpr DWORD kStressTraceMask = 0x803;

/// A short life whose lines, with this mask, all reach the debugger and the log file, whole. Nobody else traces.
class StressTracedLife
{
public:
    void Live();
    /// @param logged whether the lines have reached the log file: none of them otherwise.
    /// @return what went wrong, as above.
    std::string Judge(bool logged) const;

private:
    const MachineLog m_Log;
    std::string m_Wrong;
    Lines m_Debugger;
};

}  // namespace tesslo::test
