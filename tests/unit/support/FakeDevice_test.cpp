// The fake delegated device itself: what other tests rely on without saying so.
#include "FakeDevice.h"
#include "FakeFactory.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

TEST(FakeDeviceTest, SetRenderState_AnyCall_IsRecordedAsOneLine)
{
    FakeDevice device;
    EXPECT_EQ(device.SetRenderState(D3DRS_ZENABLE, 1), S_OK);
    EXPECT_EQ(device.Lines(), Lines{"SetRenderState(7, 1)"});
}

TEST(FakeDeviceTest, Arguments_RecordsAndArrays_PrintTheirContent)
{
    FakeDevice device;
    const D3DRECT rects[]{{1, 2, 3, 4}, {5, 6, 7, 8}};
    const float constants[]{1, 2.5F, 0, -4};
    const RECT scissor{10, 20, 30, 40};
    const D3DVIEWPORT9 viewport{1, 2, 3, 4, 0, 0.5F};
    const D3DVERTEXELEMENT9 elements[]{{0, 0, D3DDECLTYPE_FLOAT3, 0, D3DDECLUSAGE_POSITION, 0}, D3DDECL_END()};
    IDirect3DVertexDeclaration9* pDeclaration = nullptr;

    device.Clear(2, rects, D3DCLEAR_TARGET, 0xFF00FF00, 1.0F, 0);
    device.SetPixelShaderConstantF(3, constants, 1);
    device.SetScissorRect(&scissor);
    device.SetViewport(&viewport);
    device.SetTexture(0, nullptr);
    device.CreateVertexDeclaration(elements, &pDeclaration);

    EXPECT_EQ(device.Lines(),
        (Lines{"Clear(2, [1,2,3,4 5,6,7,8], 1, 0xff00ff00, 1, 0)", "SetPixelShaderConstantF(3, [1 2.5 0 -4], 1)",
            "SetScissorRect(10,20,30,40)", "SetViewport([1 2 3 4 0 0.5])", "SetTexture(0, null)",
            "CreateVertexDeclaration([0,0,2,0,0,0], out)"}));
}

TEST(FakeDeviceTest, NameMemory_PointerInside_PrintsNameAndOffset)
{
    FakeDevice device;
    const BYTE vertices[48]{};
    device.NameMemory(vertices, sizeof vertices, "vertices");
    device.DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, vertices, 16);
    device.DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, vertices + 16, 16);
    device.DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, &device, 16);
    EXPECT_EQ(device.Lines(), (Lines{"DrawPrimitiveUP(4, 1, vertices, 16)", "DrawPrimitiveUP(4, 1, vertices+16, 16)",
                                  "DrawPrimitiveUP(4, 1, data, 16)"}));
}

TEST(FakeDeviceTest, Fail_NthCall_FailsThatCallOnlyAndMakesNothing)
{
    FakeDevice device;
    device.Fail("CreateOffscreenPlainSurface", D3DERR_OUTOFVIDEOMEMORY, 2);
    IDirect3DSurface9* surfaces[3]{};
    HRESULT results[3];
    for (int i = 0; i < 3; i++)
        results[i] =
            device.CreateOffscreenPlainSurface(4, 4, D3DFMT_A8R8G8B8, D3DPOOL_SYSTEMMEM, &surfaces[i], nullptr);
    EXPECT_EQ(results[0], S_OK);
    EXPECT_EQ(results[1], D3DERR_OUTOFVIDEOMEMORY);
    EXPECT_EQ(results[2], S_OK);
    EXPECT_EQ(surfaces[1], nullptr);
    EXPECT_EQ(device.LiveObjects(), (Lines{"surface#1", "surface#2"}));
}

TEST(FakeDeviceTest, Fail_MethodOfAnObject_MatchesByKindAndByName)
{
    FakeDevice device;
    IDirect3DSurface9* pFirst = nullptr;
    IDirect3DSurface9* pSecond = nullptr;
    device.CreateRenderTarget(2, 2, D3DFMT_A8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, &pFirst, nullptr);
    device.CreateRenderTarget(2, 2, D3DFMT_A8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, &pSecond, nullptr);
    device.Fail("surface#2.GetDesc", E_FAIL);
    device.Fail("surface.LockRect", D3DERR_WASSTILLDRAWING, 1);
    D3DSURFACE_DESC desc{};
    D3DLOCKED_RECT locked{};
    EXPECT_EQ(pFirst->GetDesc(&desc), S_OK);
    EXPECT_EQ(pSecond->GetDesc(&desc), E_FAIL);
    EXPECT_EQ(pFirst->LockRect(&locked, nullptr, 0), D3DERR_WASSTILLDRAWING);
    EXPECT_EQ(pFirst->LockRect(&locked, nullptr, 0), S_OK);
    EXPECT_EQ(device.Calls("surface.LockRect"), 2U);
    EXPECT_EQ(device.Calls("surface#2.LockRect"), 0U);
}

TEST(FakeDeviceTest, TextureLevel_Referenced_KeepsItsTextureAlive)
{
    FakeDevice device;
    IDirect3DTexture9* pTexture = nullptr;
    IDirect3DSurface9* pLevel = nullptr;
    ASSERT_EQ(device.CreateTexture(8, 4, 0, 0, D3DFMT_A8R8G8B8, D3DPOOL_DEFAULT, &pTexture, nullptr), S_OK);
    EXPECT_EQ(pTexture->GetLevelCount(), 4U);
    ASSERT_EQ(pTexture->GetSurfaceLevel(1, &pLevel), S_OK);
    EXPECT_EQ(pTexture->Release(), 1U);
    EXPECT_EQ(device.LiveObjects(), Lines{"texture#1"});
    EXPECT_EQ(device.Find<FakeSurface>("texture#1[1]").Desc().Width, 4U);
    pLevel->Release();
    EXPECT_EQ(device.LiveObjects(), Lines{});
}

TEST(FakeDeviceTest, SurfaceLock_WithPaddingAndRectangle_PointsIntoPaddedRows)
{
    FakeDevice device;
    device.SetPitchPadding(12);
    IDirect3DSurface9* pSurface = nullptr;
    device.CreateOffscreenPlainSurface(4, 4, D3DFMT_R5G6B5, D3DPOOL_SYSTEMMEM, &pSurface, nullptr);
    D3DLOCKED_RECT locked{};
    const RECT rect{1, 2, 3, 4};
    ASSERT_EQ(pSurface->LockRect(&locked, &rect, 0), S_OK);
    EXPECT_EQ(locked.Pitch, 20);
    EXPECT_EQ(static_cast<BYTE*>(locked.pBits), device.Find<FakeSurface>("surface#1").Pixels().Bytes().data() + 42);
    EXPECT_EQ(pSurface->LockRect(&locked, &rect, 0), D3DERR_INVALIDCALL);
    EXPECT_EQ(pSurface->UnlockRect(), S_OK);
    EXPECT_EQ(pSurface->UnlockRect(), D3DERR_INVALIDCALL);
}

TEST(FakeDeviceTest, GetRenderTargetData_SameSizes_CopiesRowsAcrossPitches)
{
    FakeDevice device;
    IDirect3DSurface9* pTarget = nullptr;
    IDirect3DSurface9* pMemory = nullptr;
    device.CreateRenderTarget(2, 2, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, &pTarget, nullptr);
    device.SetPitchPadding(8);
    device.CreateOffscreenPlainSurface(2, 2, D3DFMT_X8R8G8B8, D3DPOOL_SYSTEMMEM, &pMemory, nullptr);
    device.Find<FakeSurface>("surface#1").Pixels().Bytes()[8] = 0x5A;
    EXPECT_EQ(device.GetRenderTargetData(pTarget, pMemory), S_OK);
    EXPECT_EQ(device.Find<FakeSurface>("surface#2").Pixels().Bytes()[16], 0x5A);
}

TEST(FakeDeviceTest, SetRenderTarget_Set_HoldsAReferenceUntilReplaced)
{
    FakeDevice device;
    IDirect3DSurface9* pTarget = nullptr;
    device.CreateRenderTarget(2, 2, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, &pTarget, nullptr);
    device.SetRenderTarget(0, pTarget);
    EXPECT_EQ(device.Find<FakeSurface>("surface#1").ReferenceCount(), 2U);
    IDirect3DSurface9* pFound = nullptr;
    EXPECT_EQ(device.GetRenderTarget(0, &pFound), S_OK);
    EXPECT_EQ(pFound, pTarget);
    pFound->Release();
    pTarget->Release();
    EXPECT_EQ(device.LiveObjects(), Lines{"surface#1"});
    device.SetRenderTarget(0, nullptr);
    EXPECT_EQ(device.LiveObjects(), Lines{});
}

TEST(FakeFactoryTest, Direct3DCreate9Ex_WhilePatched_GivesTheFactoryAndItsDevice)
{
    FakeDevice device;
    FakeFactory factory(device);
    factory.m_Adapters.push_back({"TessloWddmUmode.dll", "x"});
    IDirect3D9Ex* pFactory = nullptr;
    ASSERT_EQ(Direct3DCreate9Ex(D3D_SDK_VERSION, &pFactory), S_OK);
    EXPECT_EQ(pFactory, &factory);
    EXPECT_EQ(pFactory->GetAdapterCount(), 2U);
    D3DADAPTER_IDENTIFIER9 identifier;
    EXPECT_EQ(pFactory->GetAdapterIdentifier(1, 0, &identifier), S_OK);
    EXPECT_STREQ(identifier.Driver, "TessloWddmUmode.dll");
    IDirect3DDevice9Ex* pDevice = nullptr;
    D3DPRESENT_PARAMETERS parameters{};
    EXPECT_EQ(pFactory->CreateDeviceEx(0, D3DDEVTYPE_HAL, nullptr, 0, &parameters, nullptr, &pDevice), S_OK);
    EXPECT_EQ(pDevice, &device);
    EXPECT_EQ(device.ReferenceCount(), 2U);
    EXPECT_EQ(device.Calls("d3d9.CreateDeviceEx"), 1U);
}
