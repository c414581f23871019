// What the stream entries trace of real resources.
#include "EntryTrace.h"
#include "ResourceFixture.h"

using namespace tesslo::test;

namespace
{
class UMDDdiEntriesStreamTest : public ResourceFixture
{
};
}  // namespace

TEST_F(UMDDdiEntriesStreamTest, SetIndices_Buffer_ShowsTheRecordAndTheHandle)
{
    const HANDLE hIndices = CreateIndices();
    const D3DDDIARG_SETINDICES arg = {hIndices, 2};
    EXPECT_EQ(EntryLines({{"buffer", hIndices}, {"record", &arg}}, [&] { UMDDdiSetIndices(DeviceHandle(), &arg); }),
        Lines{"=> UMDDdiSetIndices pSetIndices:record Stride:2 hIndexBuffer:buffer\n"});
}
