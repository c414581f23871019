// The video-present source ids of a device's six frame-buffer threads, as the client library hears them.
#include "RegistryOverride.h"
#include "ResourceFixture.h"
#include "TestClient.h"

#include "output/UMDClientLibrary.h"

using namespace tesslo::test;

namespace
{
class UMDDdiDevicePresentSourcesTest : public ResourceFixture
{
protected:
    void PrepareStart() override
    {
        m_Registry.SetClientDllName(m_Client.DllName());
        UMDClientLibraryLoad();
        for (UINT i = 0; i < UMD_VIDPN_SOURCE_COUNT; ++i)
            m_Kernel.SetVidPnSourceId(i, 100 + i);
        m_Kernel.Fail("pfnEscapeCb", E_FAIL, 4);  // index 3
    }

    void TearDown() override
    {
        ResourceFixture::TearDown();
        UMDClientLibraryFree();
    }

    HRESULT Flip(HANDLE hSrc)
    {
        D3DDDIARG_PRESENT present = {};
        present.hSrcResource = hSrc;
        present.Flags.Flip = 1;
        return Device().Present(&present);
    }

    RegistryOverride m_Registry;
    TestClient m_Client;
};
}  // namespace

TEST_F(UMDDdiDevicePresentSourcesTest, FirstFlipOfEachSource_OneEscapeRefused_PlugsTheKernelsIdsAndThatIndex)
{
    for (UINT source = 0; source < UMD_VIDPN_SOURCE_COUNT; ++source)
    {
        EXPECT_EQ(Flip(CreatePrimary(source)), S_OK);
        ASSERT_TRUE(m_Client.WaitForCalls(2 * (source + 1)));

        const UINT expected = source == 3 ? 3 : 100 + source;
        const auto calls = m_Client.History();
        EXPECT_EQ(calls[2 * source].m_Name, "Plug");
        EXPECT_EQ(calls[2 * source].m_VidPnSourceId, expected);
        EXPECT_EQ(calls[2 * source + 1].m_Name, "Update");
        EXPECT_EQ(calls[2 * source + 1].m_VidPnSourceId, expected);
    }
}
