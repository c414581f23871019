// The built driver between the host and the sample client library, on a real Direct3D 9Ex device.
#include "PngImage.h"
#include "RotatedImage.h"
#include "SamePixels.h"
#include "TemporaryFolder.h"
#include "TraceText.h"
#include "host/runtime/HostSession.h"
#include "host/scenes/HostFillScene.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{

constexpr DWORD kWait = 60'000;

HostDriverSettings Settings()
{
    return {L"TessloWddmUmode.dll", L"TessloClientDllSample.dll", 0};
}

class HostSessionTest : public testing::Test
{
protected:
    HostSessionTest() { SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, m_Folder.Path().c_str()); }
    ~HostSessionTest() override { SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, nullptr); }

    std::filesystem::path Picture(UINT source, UINT frame) const
    {
        const std::string name = Text("source%u-frame%06u.png", source, frame);
        return m_Folder.Path() / name;
    }

    TemporaryFolder m_Folder;
};

class HostSessionRotation : public HostSessionTest, public testing::WithParamInterface<D3DDDI_ROTATION>
{
};

}  // namespace

TEST_P(HostSessionRotation, Flip_FillScene_RecordedPictureIsThePresentedOneTurned)
{
    HostSession session(Settings());
    {
        const auto pPrimary = session.Device().CreatePrimary(160, 96, 0, GetParam());
        HostFillScene scene;
        for (UINT frame = 0; frame < 3; ++frame)
        {
            scene.Draw(session.Device(), *pPrimary, frame);
            session.Device().Flip(*pPrimary);
            ASSERT_TRUE(session.Recording().WaitReceived(0, frame + 1, kWait));
        }
    }
    session.Close();
    for (UINT frame = 0; frame < 3; ++frame)
        EXPECT_TRUE(SamePixels(
            ReadPng(Picture(0, frame)), RotatedImage(HostFillScene::Expected(160, 96, 0, frame), GetParam())))
            << frame;
    EXPECT_EQ(session.Recording().Counters(0)->Recorded, 3u);
    EXPECT_TRUE(session.Kernel().Violations().empty()) << session.Kernel().Violations()[0];
}

INSTANTIATE_TEST_SUITE_P(All, HostSessionRotation,
    testing::Values(D3DDDI_ROTATION_IDENTITY, D3DDDI_ROTATION_90, D3DDDI_ROTATION_180, D3DDDI_ROTATION_270),
    [](const auto& info) { return std::to_string((info.param - D3DDDI_ROTATION_IDENTITY) * 90); });

TEST_F(HostSessionTest, ReadBack_FillScene_GivesThePresentedPixels)
{
    HostSession session(Settings());
    const auto pPrimary = session.Device().CreatePrimary(97, 61, 0, D3DDDI_ROTATION_IDENTITY);
    HostFillScene scene;
    scene.Draw(session.Device(), *pPrimary, 5);
    EXPECT_TRUE(SamePixels(session.Device().ReadBack(*pPrimary), HostFillScene::Expected(97, 61, 0, 5)));
}

TEST_F(HostSessionTest, Flip_SixSourcesOfDifferentSize_EachShowsItsOwn)
{
    HostSession session(Settings());
    {
        HostFillScene scene;
        std::vector<std::unique_ptr<HostResource>> primaries;
        for (UINT source = 0; source < 6; ++source)
            primaries.push_back(
                session.Device().CreatePrimary(64 + 16 * source, 100 - 8 * source, source, D3DDDI_ROTATION_IDENTITY));
        for (UINT source = 0; source < 6; ++source)
        {
            scene.Draw(session.Device(), *primaries[source], 9);
            session.Device().Flip(*primaries[source]);
        }
        for (UINT source = 0; source < 6; ++source)
            ASSERT_TRUE(session.Recording().WaitReceived(source, 1, kWait)) << source;
    }
    session.Close();
    for (UINT source = 0; source < 6; ++source)
        EXPECT_TRUE(SamePixels(
            ReadPng(Picture(source, 0)), HostFillScene::Expected(64 + 16 * source, 100 - 8 * source, source, 9)))
            << source;
}

TEST_F(HostSessionTest, Flip_KernelModeNamesOtherSources_FramesCarryThem)
{
    SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, nullptr);
    HostDriver driver(Settings());
    HostRecording recording(driver.ClientLibrary());
    HostKernel kernel;
    kernel.SetSourceId(1, 11);
    HostAdapter adapter(driver, kernel);
    HostDevice device(adapter);
    const auto pPrimary = device.CreatePrimary(32, 32, 1, D3DDDI_ROTATION_IDENTITY);
    device.SetRenderTarget(*pPrimary);
    device.Clear(0x123456);
    device.Flip(*pPrimary);
    EXPECT_TRUE(recording.WaitReceived(11, 1, kWait));
    EXPECT_EQ(recording.Counters(1)->Received, 0u);
}

TEST_F(HostSessionTest, Flip_EveryFrame_IsToldToTheKernelModeDriverAndPausesTenMilliseconds)
{
    HostSession session(Settings());
    const auto pPrimary = session.Device().CreatePrimary(32, 32, 0, D3DDDI_ROTATION_IDENTITY);
    session.Device().SetRenderTarget(*pPrimary);
    session.Device().Clear(0);
    for (UINT frame = 0; frame < 3; ++frame)
        EXPECT_GE(session.Device().Flip(*pPrimary).m_Pause, 9.0);
    EXPECT_EQ(session.Kernel().PresentCount(), 3u);
    EXPECT_EQ(session.Kernel().LastPresent().m_hSrcAllocation,
        session.Kernel().FindAllocation(pPrimary->RuntimeHandle())->m_hAllocation);
}

TEST_F(HostSessionTest, CreatePrimary_PrivateRecord_TellsTheKernelModeDriverAll)
{
    HostSession session(Settings());
    const auto pPrimary = session.Device().CreatePrimary(640, 480, 3, D3DDDI_ROTATION_270);
    const auto allocation = session.Kernel().FindAllocation(pPrimary->RuntimeHandle());
    ASSERT_TRUE(allocation.has_value());
    EXPECT_TRUE(allocation->m_bPrimary);
    EXPECT_EQ(allocation->m_VidPnSourceId, 3u);
    const UMDAllocationPrivateData& data = allocation->m_PrivateData;
    EXPECT_EQ(data.Kind, UMDALLOCATIONKIND_PRIMARY);
    EXPECT_EQ(data.Width, 640u);
    EXPECT_EQ(data.Height, 480u);
    EXPECT_EQ(data.Format, UINT{D3DFMT_X8R8G8B8});
    EXPECT_EQ(data.MipLevels, 1u);
    EXPECT_EQ(data.VidPnSourceId, 3u);
    EXPECT_EQ(data.RefreshNumerator, 60u);
    EXPECT_EQ(data.RefreshDenominator, 1u);
    EXPECT_EQ(data.ResourceFlags, 0x8001u);
    EXPECT_EQ(data.Rotation, UINT{D3DDDI_ROTATION_270});
}

TEST_F(HostSessionTest, SetDisplayMode_Primary_NamesItsAllocation)
{
    HostSession session(Settings());
    const auto pPrimary = session.Device().CreatePrimary(32, 32, 0, D3DDDI_ROTATION_IDENTITY);
    session.Device().SetDisplayMode(*pPrimary);
    EXPECT_EQ(session.Kernel().DisplayModeAllocation(),
        session.Kernel().FindAllocation(pPrimary->RuntimeHandle())->m_hAllocation);
}

TEST_F(HostSessionTest, Flush_ManyTimes_TakesOverTheNewBuffers)
{
    HostSession session(Settings());
    for (UINT i = 0; i < 5; ++i)
        session.Device().Flush();
    EXPECT_EQ(session.Kernel().Calls("pfnRenderCb"), 5u);
    EXPECT_TRUE(session.Kernel().Violations().empty());
}

TEST_F(HostSessionTest, Close_AfterWork_LeavesNoContextAndNoAllocation)
{
    HostSession session(Settings());
    {
        const auto pPrimary = session.Device().CreatePrimary(32, 32, 0, D3DDDI_ROTATION_IDENTITY);
        HostFillScene scene;
        scene.Draw(session.Device(), *pPrimary, 0);
        session.Device().Flip(*pPrimary);
    }
    session.Close();
    EXPECT_EQ(session.Kernel().ContextCount(), 0u);
    EXPECT_EQ(session.Kernel().AllocationCount(), 0u);
    EXPECT_TRUE(session.Kernel().Violations().empty());
}

TEST_F(HostSessionTest, OpenAdapter_ReportsWindows7Interface)
{
    HostSession session(Settings());
    EXPECT_EQ(session.Adapter().DriverVersion(), 0x2003u);
    const D3DCAPS9 caps = session.Adapter().Caps<D3DCAPS9>(D3DDDICAPS_GETD3D9CAPS);
    EXPECT_EQ(caps.PixelShaderVersion, D3DPS_VERSION(2, 0));
}

TEST_F(HostSessionTest, Driver_NoClientLibraryNamed_TakesAndWritesTheDefault)
{
    HostDriver driver({L"TessloWddmUmode.dll", std::nullopt, 0});
    EXPECT_EQ(driver.ClientLibrary(), GetModuleHandleW(L"TessloClientDllSample.dll"));
    EXPECT_NE(driver.ClientLibrary(), nullptr);
}

TEST_F(HostSessionTest, Driver_ClientLibraryMissing_IsTold)
{
    try
    {
        HostDriver driver({L"TessloWddmUmode.dll", L"nosuch.dll", 0});
        FAIL() << "loaded";
    }
    catch (const HostError& error)
    {
        EXPECT_STREQ(error.what(), "the driver could not load the client library nosuch.dll");
    }
    EXPECT_EQ(GetModuleHandleW(L"TessloWddmUmode.dll"), nullptr) << "unloaded again";
}

TEST_F(HostSessionTest, Driver_NotADriver_IsTold)
{
    try
    {
        HostDriver driver({L"TessloClientDllSample.dll", std::nullopt, 0});
        FAIL() << "loaded";
    }
    catch (const HostError& error)
    {
        EXPECT_STREQ(error.what(), "TessloClientDllSample.dll does not export OpenAdapter: it is no display driver");
    }
}
