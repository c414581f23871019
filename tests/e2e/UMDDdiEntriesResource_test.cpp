// Pixels through textures and surfaces of the built driver on a real Direct3D 9Ex device: from the runtime's memory
// into video memory and back.
#include "DriverPixels.h"

#include <d3d9.h>

namespace
{
struct Format
{
    D3DDDIFORMAT Value;
    UINT BytesPerPixel;
};

using ResourcesPixelsTest = DriverPixels;
}  // namespace

TEST_F(ResourcesPixelsTest, TexBlt_OddSizesFormatsAndPadding_PixelsComeBack)
{
    const Format formats[] = {{D3DDDIFMT_A8R8G8B8, 4}, {D3DDDIFMT_R5G6B5, 2}, {D3DDDIFMT_L8, 1}};
    constexpr UINT kWidth = 13, kHeight = 7;
    const RECT whole = {0, 0, kWidth, kHeight};
    for (const Format& format : formats)
    {
        const UINT pitch = kWidth * format.BytesPerPixel + 7;
        std::vector<BYTE> memory(size_t{pitch} * kHeight);
        for (size_t i = 0; i < memory.size(); i++)
            memory[i] = static_cast<BYTE>(i * 11 + 3);
        const D3DDDI_SURFACEINFO size = {kWidth, kHeight, 0, nullptr, 0, 0};
        const D3DDDI_SURFACEINFO withMemory = {kWidth, kHeight, 0, memory.data(), pitch, 0};
        HANDLE hSystem = Create(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, format.Value, {withMemory});
        HANDLE hVideo = Create(kFlagTexture, D3DDDIPOOL_LOCALVIDMEM, format.Value, {size});
        HANDLE hTarget = Create(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, format.Value, {size});
        HANDLE hCopy = Create(0, D3DDDIPOOL_SYSTEMMEM, format.Value, {size});

        ASSERT_EQ(TexBlt(hSystem, hVideo, whole), S_OK);
        ASSERT_EQ(Blt(hVideo, hTarget, whole), S_OK);
        ASSERT_EQ(Blt(hTarget, hCopy, whole), S_OK);

        D3DDDIARG_LOCK lock = {};
        lock.hResource = hCopy;
        ASSERT_EQ(m_pDriver->m_DeviceFuncs.pfnLock(m_pDriver->m_hDevice, &lock), S_OK);
        ASSERT_NE(lock.pSurfData, nullptr);
        for (UINT y = 0; y < kHeight; y++)
            for (UINT x = 0; x < kWidth * format.BytesPerPixel; x++)
                ASSERT_EQ(static_cast<const BYTE*>(lock.pSurfData)[y * lock.Pitch + x], memory[y * pitch + x])
                    << "format " << format.Value << " row " << y << " byte " << x;
        D3DDDIARG_UNLOCK unlock = {};
        unlock.hResource = hCopy;
        EXPECT_EQ(m_pDriver->m_DeviceFuncs.pfnUnlock(m_pDriver->m_hDevice, &unlock), S_OK);
    }
}
