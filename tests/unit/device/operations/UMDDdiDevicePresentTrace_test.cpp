// The trace of the end of a frame.
#include "OperationTraceFixture.h"

using namespace tesslo::test;

namespace
{
class UMDDdiDevicePresentTraceTest : public OperationTraceFixture
{
protected:
    HRESULT Present(HANDLE hSrc, bool flip, bool blt)
    {
        D3DDDIARG_PRESENT present = {};
        present.hSrcResource = hSrc;
        present.Flags.Flip = flip;
        present.Flags.Blt = blt;
        return Device().Present(&present);
    }
    HRESULT SetDisplayMode(HANDLE hResource)
    {
        const D3DDDIARG_SETDISPLAYMODE mode = {hResource, 0};
        return Device().SetDisplayMode(&mode);
    }
};
}  // namespace

TEST_F(UMDDdiDevicePresentTraceTest, Present_EachWay_EachLineOfTheDeviceHasItsLevel)
{
    const HANDLE hPrimary = CreatePrimary(0);
    const HANDLE hElsewhere = CreatePrimary(6);
    const Lines lines = LevelledTrace([&] {
        Present(hPrimary, false, false);
        Present(hElsewhere, true, false);
        Present(hPrimary, false, true);  // without a render target
        Device().Flush();
    });
    EXPECT_EQ(Containing(lines, " UMDDdiDevice::"),
        (Lines{"0x4 >>> UMDDdiDevice::Present FLIP:0 BLT:0 hSrcResource:0x#\n", "0x8 <<< UMDDdiDevice::Present\n",
            "0x4 >>> UMDDdiDevice::Present FLIP:1 BLT:0 hSrcResource:0x#\n",
            "0x1 UMDDdiDevice::InternalProcessPresentFLIP failed! VidPnSourceId:6\n",
            "0x1 UMDDdiDevice::Present InternalProcessPresentFLIP failed! hResult: 0x80004005\n",
            "0x4 >>> UMDDdiDevice::Present FLIP:0 BLT:1 hSrcResource:0x#\n",
            "0x1 UMDDdiDevice::Present InternalProcessPresentBLT failed! hResult: 0x88760866\n",
            "0x4 >>> UMDDdiDevice::Flush\n"}));
}

TEST_F(UMDDdiDevicePresentTraceTest, SetDisplayMode_Target_EntersAndLeaves)
{
    const HANDLE hTarget = CreateTarget();
    ExpectEntersAndLeaves({{"SetDisplayMode", nullptr, nullptr, [&] { return SetDisplayMode(hTarget); }}});
}

TEST_F(UMDDdiDevicePresentTraceTest, NullResource_PresentedOrSet_IsToldWithoutALeave)
{
    ExpectDeclined({
        {E_FAIL, [&] { return Present(nullptr, false, false); },
            {"0x4 >>> UMDDdiDevice::Present FLIP:0 BLT:0 hSrcResource:0x#\n",
                "0x1 UMDDdiDevice::Present pResource is NULL\n"}},
        {S_OK, [&] { return SetDisplayMode(nullptr); },
            {"0x4 >>> UMDDdiDevice::SetDisplayMode\n",
                "0x1 UMDDdiDevice::SetDisplayMode pResourceRenderTarget is NULL\n"}},
    });
}
