// How the driver's trace prints.
#pragma once

#include <string>

namespace tesslo::test
{

/// A handle or an address: "0x" and the low 32 bits.
std::string Low(const void* pointer);

/// What printf makes of its arguments.
[[gnu::format(printf, 1, 2)]] std::string Text(const char* pFormat, ...);

}  // namespace tesslo::test
