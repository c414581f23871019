// What the draw entries trace.
#include "EntryTrace.h"
#include "ResourceFixture.h"

using namespace tesslo::test;

namespace
{
class UMDDdiEntriesDrawTest : public ResourceFixture
{
};
}  // namespace

TEST_F(UMDDdiEntriesDrawTest, DrawPrimitive_EdgeFlags_ShowWhereTheyLie)
{
    const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_POINTLIST, 0, 1};
    const UINT edges[] = {1};
    EXPECT_EQ(EntryLines({{"edges", edges}}, [&] { UMDDdiDrawPrimitive(DeviceHandle(), &arg, edges); }),
        Lines{"=> UMDDdiDrawPrimitive pEdgeFlags:edges PrimitiveCount:1 PrimitiveType:1 VStart:0\n"});
}
