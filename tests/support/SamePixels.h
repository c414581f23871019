// Compares pictures and tells where they differ.
#pragma once

#include "TraceText.h"

#include "host/runtime/HostImage.h"

#include <gtest/gtest.h>

namespace tesslo::test
{

/// "0x102030"
inline std::string ColorText(UINT color)
{
    return Text("0x%06X", color);
}

inline testing::AssertionResult SamePixels(const HostImage& actual, const HostImage& expected)
{
    if (expected.m_Width != actual.m_Width || expected.m_Height != actual.m_Height)
        return testing::AssertionFailure() << "expected " << expected.m_Width << "x" << expected.m_Height
                                           << " pixels, got " << actual.m_Width << "x" << actual.m_Height;
    size_t count = 0, first = 0;
    for (size_t i = expected.m_Pixels.size(); i-- > 0;)
        if (expected.m_Pixels[i] != actual.m_Pixels[i])
        {
            ++count;
            first = i;
        }
    if (count == 0)
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << count << " pixels differ, the first at " << first % expected.m_Width << ","
                                       << first / expected.m_Width << ": expected "
                                       << ColorText(expected.m_Pixels[first]) << ", got "
                                       << ColorText(actual.m_Pixels[first]);
}

}  // namespace tesslo::test
