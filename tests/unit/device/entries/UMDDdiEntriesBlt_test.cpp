// What the blit entries trace of real resources.
#include "EntryTrace.h"
#include "ResourceFixture.h"
#include "TraceLevels.h"

using namespace tesslo::test;

namespace
{
class UMDDdiEntriesBltTest : public ResourceFixture
{
protected:
    Lines Blt(HANDLE hSrc, HANDLE hDst)
    {
        D3DDDIARG_BLT arg = {};
        arg.hSrcResource = hSrc;
        arg.SrcRect = {1, 2, 3, 4};
        arg.hDstResource = hDst;
        arg.DstRect = {5, 6, 7, 8};
        arg.ColorKey = 9;
        arg.Flags.Value = 10;
        return EntryLines({{"source", hSrc}, {"destination", hDst}}, [&] { UMDDdiBlt(DeviceHandle(), &arg); });
    }
    Lines TexBlt(HANDLE hSrc, HANDLE hDst)
    {
        D3DDDIARG_TEXBLT arg = {};
        arg.hSrcResource = hSrc;
        arg.hDstResource = hDst;
        arg.SrcRect = {1, 2, 3, 4};
        arg.DstPoint = {5, 6};
        return EntryLines({{"source", hSrc}, {"destination", hDst}}, [&] { UMDDdiTexBlt(DeviceHandle(), &arg); });
    }
};
}  // namespace

TEST_F(UMDDdiEntriesBltTest, Blt_BothObjects_WithTypePoolAndKind)
{
    const HANDLE hTarget = CreateTarget(), hTexture = CreateSystemTexture();
    EXPECT_EQ(Blt(hTexture, hTarget),
        (Lines{
            "=> UMDDdiBlt Color:9 Flags:10 DST l:5 t:6 r:7 b:8 Rsc:destination [Type:5 Pool:0] SRC l:1 t:2 r:3 b:4 Rsc:source [Type:6 Pool:2]\n",
            "   RenderTarget\n", "   Texture\n"}));
    EXPECT_EQ(Blt(hTarget, hTexture),
        (Lines{
            "=> UMDDdiBlt Color:9 Flags:10 DST l:5 t:6 r:7 b:8 Rsc:destination [Type:6 Pool:2] SRC l:1 t:2 r:3 b:4 Rsc:source [Type:5 Pool:0]\n",
            "   Texture\n", "   RenderTarget\n"}));
}

TEST_F(UMDDdiEntriesBltTest, TexBlt_BothObjects_WithTypePoolAndKind)
{
    const HANDLE hTarget = CreateTarget(), hTexture = CreateSystemTexture();
    EXPECT_EQ(TexBlt(hTexture, hTarget),
        (Lines{
            "=> UMDDdiTexBlt hSrcResource:source [Type:6 Pool:2] hDstResource:destination [Type:5 Pool:0] SrcRect l:1 t:2 r:3 b:4 DstPoint x:5 y:6\n",
            "   Texture\n", "   RenderTarget\n"}));
    EXPECT_EQ(TexBlt(hTarget, hTexture),
        (Lines{
            "=> UMDDdiTexBlt hSrcResource:source [Type:5 Pool:0] hDstResource:destination [Type:6 Pool:2] SrcRect l:1 t:2 r:3 b:4 DstPoint x:5 y:6\n",
            "   RenderTarget\n", "   Texture\n"}));
}

TEST_F(UMDDdiEntriesBltTest, BufBlt_BothObjects_WithKind)
{
    const HANDLE hVertices = CreateVertices(), hIndices = CreateIndices();
    D3DDDIARG_BUFFERBLT arg = {};
    arg.hSrcResource = hVertices;
    arg.hDstResource = hIndices;
    EXPECT_EQ(EntryLines({{"vertices", hVertices}, {"indices", hIndices}}, [&] { UMDDdiBufBlt(DeviceHandle(), &arg); }),
        (Lines{
            "=> UMDDdiBufBlt hDstResource:indices hSrcResource:vertices Offset:0 SrcRange.Offset:0 SrcRange.Size:0\n",
            "   IndexBuffer\n", "   VertexBuffer\n"}));
}

TEST_F(UMDDdiEntriesBltTest, Clear_Rectangles_AreOfTheEntrysLevel)
{
    const D3DDDIARG_CLEAR clear = {D3DCLEAR_TARGET, 0, 0, 0};
    const RECT rects[] = {{1, 2, 3, 4}, {5, 6, 7, 8}};
    const Lines lines = LevelledTrace([&] { UMDDdiClear(DeviceHandle(), &clear, 2, rects); });
    EXPECT_EQ(Containing(lines, "Rectangle"), (Lines{"0x2 Rectangle index:0 left:1 top:2 right:3 bottom:4\n",
                                                  "0x2 Rectangle index:1 left:5 top:6 right:7 bottom:8\n"}));
}
