// One short life of adapter and device, with whatever registry and client library the process has.
#pragma once

#include <functional>
#include <string>

namespace tesslo::test
{

/// Loads the driver, opens, presents, closes and unloads; only the delegated device is played.
/// @param whileOpen called before the device is closed; may be empty.
/// @return what went wrong, "" when nothing did. Without a client library only the first flip succeeds, and that is
///         not wrong.
std::string StressShortLife(const std::function<void()>& whileOpen = {});

}  // namespace tesslo::test
