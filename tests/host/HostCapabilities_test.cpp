// The capability queries that the host asks before it creates a device.
#include "TraceLines.h"
#include "host/kernel/HostKernel.h"
#include "host/runtime/HostAdapter.h"
#include "host/runtime/HostCapabilities.h"
#include "host/runtime/HostDriver.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace tesslo::test;

TEST(HostCapabilities, Asked_AnswersComeWhole)
{
    HostDriver driver({L"TessloWddmUmode.dll", std::nullopt, 0});
    HostKernel kernel;
    HostAdapter adapter(driver, kernel);
    const HostCapabilities capabilities = HostAskCapabilities(adapter);

    ASSERT_EQ(capabilities.m_Formats.size(), 62u);
    EXPECT_EQ(capabilities.m_Formats.back().Format, D3DDDIFMT_A32B32G32R32F);
    ASSERT_EQ(capabilities.m_QueryTypes.size(), 15u);
    EXPECT_EQ(capabilities.m_QueryTypes.back(), D3DDDIQUERYTYPE_CACHEUTILIZATION);
    EXPECT_EQ(capabilities.m_Record.PixelShaderVersion, 0xFFFF0200u);
    ASSERT_EQ(capabilities.m_Processors.size(), 1u);
    EXPECT_EQ(capabilities.m_Processors[0].Data1, 0x5A54A0C9u);
    EXPECT_EQ(capabilities.m_TargetFormats.size(), 2u);
    EXPECT_EQ(capabilities.m_SubstreamFormats.size(), 1u);
    EXPECT_EQ(capabilities.m_ProcessorCaps.VideoProcessorOperations, 0x2F7u);
    EXPECT_EQ(capabilities.m_ProcAmpRanges[3].MaxValue.ll, 0x00030000);
}

TEST(HostCapabilities, Asked_WithTheLevelOfCapabilities_EveryAnswerIsInTheTrace)
{
    HostDriver driver({L"TessloWddmUmode.dll", std::nullopt, 0x10});
    HostKernel kernel;
    HostAdapter adapter(driver, kernel);
    TraceLines trace;
    HostAskCapabilities(adapter);
    const Lines lines = trace.Lines();
    for (const char* pLine : {"UMDGetAdapterFormats 62", "UMDAdapter::GetCaps D3DDDICAPS_GETD3DQUERYDATA count 15",
             ">>> UMDGetAdapterCapabilitiesD3D9", ">>> 842094158", ">>> 3 0 0 842094158 0 15 759 0 0",
             ">>> 6 196608 65536 6"})
        EXPECT_EQ(std::count(lines.begin(), lines.end(), pLine), 1) << pLine;
}
