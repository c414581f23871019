// The counters of a source, as the sample client library's export tells them.
#pragma once

#include <tesslo/sample_client.h>

#include <gtest/gtest.h>

inline TessloSampleCounters SampleCounts(UINT source)
{
    TessloSampleCounters counters = {};
    EXPECT_TRUE(TessloSampleGetCounters(source, &counters));
    return counters;
}
