// The video-present source ids of a device's six frame-buffer threads, as the client library hears them.
#include "DeviceFixture.h"
#include "FrameClient.h"
#include "ImportPatch.h"
#include "RegistryOverride.h"

#include "output/UMDClientLibrary.h"
#include "resources/UMDRscSurface.h"

namespace tesslo::test
{
namespace
{
FrameClient* g_pLoaded;

HMODULE WINAPI GiveClient(LPCWSTR)
{
    return g_pLoaded->Module();
}

BOOL WINAPI KeepClient(HMODULE)
{
    return TRUE;
}

class DeviceSources : public DeviceFixture
{
protected:
    void PrepareStart() override
    {
        g_pLoaded = &m_Client;
        UMDClientLibraryLoad();
        for (UINT i = 0; i < UMD_VIDPN_SOURCE_COUNT; ++i)
            m_Kernel.SetVidPnSourceId(i, 100 + i);
        m_Kernel.Fail("pfnEscapeCb", E_FAIL, 4);  // index 3
    }

    void TearDown() override
    {
        DeviceFixture::TearDown();
        UMDClientLibraryFree();
    }

    RegistryOverride m_Registry;
    ImportPatch m_Load{nullptr, "kernel32.dll", "LoadLibraryW", reinterpret_cast<void*>(GiveClient)};
    ImportPatch m_Free{nullptr, "kernel32.dll", "FreeLibrary", reinterpret_cast<void*>(KeepClient)};
    FrameClient m_Client;
};

TEST_F(DeviceSources, FirstFlipOfEachSource_OneEscapeRefused_PlugsTheKernelsIdsAndThatIndex)
{
    for (UINT source = 0; source < UMD_VIDPN_SOURCE_COUNT; ++source)
    {
        D3DDDI_SURFACEINFO info = {};
        info.Width = 4;
        info.Height = 2;
        D3DDDIARG_CREATERESOURCE create = {};
        create.Format = D3DDDIFMT_X8R8G8B8;
        create.pSurfList = &info;
        create.SurfCount = 1;
        create.VidPnSourceId = source;
        create.Rotation = D3DDDI_ROTATION_IDENTITY;
        create.Flags.RenderTarget = 1;
        create.Flags.Primary = 1;
        UMDRscSurface primary(&Device(), nullptr, &create, FALSE, D3DPOOL_DEFAULT, false);
        ASSERT_EQ(primary.Create(), S_OK);
        D3DDDIARG_PRESENT present = {};
        present.hSrcResource = ToHandle(&primary);
        present.Flags.Flip = 1;
        EXPECT_EQ(Device().Present(&present), S_OK);
        ASSERT_TRUE(m_Client.WaitForCalls(2 * (source + 1)));
        primary.Destroy();

        const UINT expected = source == 3 ? 3 : 100 + source;
        const auto calls = m_Client.Calls();
        EXPECT_EQ(calls[2 * source].m_Name, "Plug");
        EXPECT_EQ(calls[2 * source].m_VidPnSourceId, expected);
        EXPECT_EQ(calls[2 * source + 1].m_Name, "Update");
        EXPECT_EQ(calls[2 * source + 1].m_VidPnSourceId, expected);
    }
}
}  // namespace
}  // namespace tesslo::test
