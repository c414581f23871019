// What every object behind a handle has in common.
#include "ResourceFixture.h"
#include "TraceText.h"

#include "resources/UMDShaderPixel.h"

using namespace tesslo::test;

namespace
{
class UMDRscBaseTest : public ResourceFixture
{
};

}  // namespace

TEST_F(UMDRscBaseTest, Life_BareObject_TracesTheHandlePairTwice)
{
    const TraceMask mask(UMDTRACE_RESOURCE);
    const HANDLE hResourceOS = reinterpret_cast<HANDLE>(0x7766554433221100);
    std::string own;
    {
        UMDRscBase object(&Device(), hResourceOS, UMDRESOURCETYPE_UNKNOWN);
        own = Low(&object);
    }
    EXPECT_EQ(m_Trace.Lines(), (Lines{"   hResource driver:" + own + " (own) <==> hResource OS:0x33221100 (saved)\n",
                                   "   ~hResource driver:" + own + " (own) <==> hResource OS:0x33221100 (saved)\n"}));
}

TEST_F(UMDRscBaseTest, Operations_BareObject_AnswerTheBaseValues)
{
    UMDRscBase object(&Device(), nullptr, UMDRESOURCETYPE_SHARED);
    void* pData = nullptr;
    UINT pitch = 0;
    EXPECT_EQ(object.Lock(1, 2, 3, &pData, &pitch, 4), E_NOTIMPL);
    EXPECT_EQ(object.Unlock(), E_NOTIMPL);
    EXPECT_EQ(object.GetPool(), D3DPOOL_DEFAULT);
    EXPECT_EQ(object.GetFormat(), D3DDDIFMT_X8R8G8B8);
    EXPECT_EQ(object.Create(), E_FAIL);
    object.Destroy();
    EXPECT_FALSE(object.IsOffscreenPlain());
    EXPECT_EQ(object.GetType(), UMDRESOURCETYPE_SHARED);
    EXPECT_EQ(DeviceLines(), Lines{});
    EXPECT_EQ(KernelLines(), Lines{});
}

TEST_F(UMDRscBaseTest, Handle_AnyObject_IsItsAddressAndNullStaysNull)
{
    UMDRscBase object(&Device(), nullptr, UMDRESOURCETYPE_UNKNOWN);
    EXPECT_EQ(ToHandle(&object), static_cast<void*>(&object));
    EXPECT_EQ(ToResource(ToHandle(&object)), &object);
    EXPECT_EQ(ToResource(nullptr), nullptr);
    UMDShaderPixel shader(&Device());
    EXPECT_EQ(ToHandle(&shader), static_cast<void*>(&shader));
}
