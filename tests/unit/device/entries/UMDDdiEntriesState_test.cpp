// What the state entries trace of real resources.
#include "EntryTrace.h"
#include "ResourceFixture.h"

using namespace tesslo::test;

namespace
{
class UMDDdiEntriesStateTest : public ResourceFixture
{
};
}  // namespace

TEST_F(UMDDdiEntriesStateTest, RealObjects_ShowHandleTypeAndPool)
{
    const HANDLE hTexture = CreateSystemTexture();
    const HANDLE hDepth = CreateDepth();
    const D3DDDIARG_SETRENDERTARGET target = {0, hTexture, 3};
    const D3DDDIARG_SETDEPTHSTENCIL depth = {hDepth};
    EXPECT_EQ(EntryLines({{"texture", hTexture}, {"depth", hDepth}},
                  [&] {
                      UMDDdiSetTexture(DeviceHandle(), 2, hTexture);
                      UMDDdiSetRenderTarget(DeviceHandle(), &target);
                      UMDDdiSetDepthStencil(DeviceHandle(), &depth);
                  }),
        (Lines{"=> UMDDdiSetTexture Stage:2 hTexture:texture [Type:6 Pool:2]\n",
            "=> UMDDdiSetRenderTarget hRenderTarget:texture [Type:6] RenderTargetIndex:0 SubResourceIndex:0x3\n",
            "=> UMDDdiSetDepthStencil hZBuffer:depth\n"}));
}
