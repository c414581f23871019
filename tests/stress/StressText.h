// How findings print results.
#pragma once

#include <windows.h>

#include <cstdio>
#include <string>

namespace tesslo::test
{

inline std::string StressHex(HRESULT hr)
{
    char text[16];
    std::snprintf(text, sizeof(text), "0x%08lX", static_cast<unsigned long>(hr));
    return text;
}

}  // namespace tesslo::test
