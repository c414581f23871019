#include "RealPixels.h"

#include "util/UMDComPtr.h"

#include <cstring>

namespace tesslo::test
{

std::string NameOf(const FormatRow& row)
{
    return "format " + std::to_string(row.Format) + " padding " + std::to_string(row.Padding);
}

Bytes MemoryOf(CreateRequest& request, UINT index, UINT bytesPerPixel)
{
    const D3DDDI_SURFACEINFO& surface = request.m_Surfaces.at(index);
    const Bytes& memory = request.Memory(index);
    Bytes pixels;
    for (UINT y = 0; y < surface.Height; y++)
    {
        const auto row = memory.begin() + static_cast<ptrdiff_t>(size_t{y} * surface.SysMemPitch);
        pixels.insert(pixels.end(), row, row + static_cast<ptrdiff_t>(surface.Width * bytesPerPixel));
    }
    return pixels;
}

Bytes Landed(Bytes memory, UINT pitch, const Bytes& pixels, UINT rowBytes)
{
    for (size_t y = 0; y < pixels.size() / rowBytes; y++)
        std::memcpy(&memory[y * pitch], &pixels[y * rowBytes], rowBytes);
    return memory;
}

Bytes Kept(Bytes pixels, D3DDDIFORMAT format)
{
    if (format == D3DDDIFMT_X8R8G8B8)
        for (size_t i = 3; i < pixels.size(); i += 4)
            pixels[i] = 0xFF;
    if (format == D3DDDIFMT_X1R5G5B5)
        for (size_t i = 1; i < pixels.size(); i += 2)
            pixels[i] |= 0x80;
    return pixels;
}

Bytes Overlaid(Bytes below, UINT belowWidth, POINT point, const Bytes& above, UINT aboveWidth, const RECT& rect,
    UINT bytesPerPixel)
{
    for (LONG y = rect.top; y < rect.bottom; y++)
        for (LONG x = rect.left; x < rect.right; x++)
        {
            const LONG toX = point.x + x - rect.left;
            const LONG toY = point.y + y - rect.top;
            std::memcpy(&below[(static_cast<size_t>(toY) * belowWidth + static_cast<size_t>(toX)) * bytesPerPixel],
                &above[(static_cast<size_t>(y) * aboveWidth + static_cast<size_t>(x)) * bytesPerPixel], bytesPerPixel);
        }
    return below;
}

void RealPixels::SetUp()
{
    m_Callbacks = FakeKernel::Callbacks();
    m_pAdapter = std::make_unique<UMDAdapter>(m_Kernel.RuntimeHandle(), 0x2003, &m_AdapterCallbacks);
    m_pDevice = std::make_unique<UMDDdiDevice>(
        m_Kernel.RuntimeHandle(), 9, 0x2003, m_pAdapter.get(), m_Kernel.RuntimeHandle(), &m_Callbacks);
    ASSERT_TRUE(m_pDevice->Initialize());
    ASSERT_NE(Delegated(), nullptr) << "a real device needs a display";
}

void RealPixels::TearDown()
{
    DestroyAll();
    EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
    m_pDevice->DestroyThreads();
}

void RealPixels::DestroyAll()
{
    for (HANDLE hResource : m_Resources)
        EXPECT_EQ(UMDDdiDestroyResource(m_pDevice.get(), hResource), E_FAIL);
    m_Resources.clear();
}

HRESULT RealPixels::TexBlt(UMDRscBase* pSrc, UMDRscBase* pDst, const RECT& rect, POINT point)
{
    D3DDDIARG_TEXBLT blt = {};
    blt.hSrcResource = ToHandle(pSrc);
    blt.hDstResource = ToHandle(pDst);
    blt.SrcRect = rect;
    blt.DstPoint = point;
    return UMDDdiTexBlt(m_pDevice.get(), &blt);
}

HRESULT RealPixels::Blt(UMDRscBase* pSrc, const RECT& srcRect, UMDRscBase* pDst, const RECT& dstRect)
{
    D3DDDIARG_BLT blt = {};
    blt.hSrcResource = ToHandle(pSrc);
    blt.SrcRect = srcRect;
    blt.hDstResource = ToHandle(pDst);
    blt.DstRect = dstRect;
    return UMDDdiBlt(m_pDevice.get(), &blt);
}

Bytes RealPixels::PixelsOf(IDirect3DSurface9* pSurface, UINT bytesPerPixel)
{
    D3DSURFACE_DESC desc = {};
    EXPECT_EQ(pSurface->GetDesc(&desc), S_OK);
    UMDComPtr<IDirect3DSurface9> pCopy;
    if (desc.Pool == D3DPOOL_DEFAULT)
    {
        UMDComPtr<IDirect3DSurface9> pTarget;
        EXPECT_EQ(Delegated()->CreateRenderTarget(
                      desc.Width, desc.Height, desc.Format, D3DMULTISAMPLE_NONE, 0, FALSE, pTarget.Put(), nullptr),
            S_OK);
        EXPECT_EQ(Delegated()->StretchRect(pSurface, nullptr, pTarget.Get(), nullptr, D3DTEXF_NONE), S_OK);
        EXPECT_EQ(Delegated()->CreateOffscreenPlainSurface(
                      desc.Width, desc.Height, desc.Format, D3DPOOL_SYSTEMMEM, pCopy.Put(), nullptr),
            S_OK);
        EXPECT_EQ(Delegated()->GetRenderTargetData(pTarget.Get(), pCopy.Get()), S_OK);
        pSurface = pCopy.Get();
    }
    D3DLOCKED_RECT locked = {};
    EXPECT_EQ(pSurface->LockRect(&locked, nullptr, D3DLOCK_READONLY), S_OK);
    const UINT rowBytes = desc.Width * bytesPerPixel;
    Bytes pixels;
    for (UINT y = 0; y < desc.Height; y++)
    {
        const BYTE* pRow = static_cast<const BYTE*>(locked.pBits) + size_t{y} * static_cast<UINT>(locked.Pitch);
        pixels.insert(pixels.end(), pRow, pRow + rowBytes);
    }
    EXPECT_EQ(pSurface->UnlockRect(), S_OK);
    return pixels;
}

Bytes RealPixels::Scribble(IDirect3DSurface9* pSurface, UINT bytesPerPixel, BYTE seed)
{
    D3DSURFACE_DESC desc = {};
    EXPECT_EQ(pSurface->GetDesc(&desc), S_OK);
    D3DLOCKED_RECT locked = {};
    EXPECT_EQ(pSurface->LockRect(&locked, nullptr, 0), S_OK);
    const UINT rowBytes = desc.Width * bytesPerPixel;
    Bytes pixels(size_t{rowBytes} * desc.Height);
    for (size_t i = 0; i < pixels.size(); i++)
        pixels[i] = static_cast<BYTE>(i * 7 + i / 251 + seed);
    for (UINT y = 0; y < desc.Height; y++)
        std::memcpy(static_cast<BYTE*>(locked.pBits) + size_t{y} * static_cast<UINT>(locked.Pitch),
            &pixels[size_t{y} * rowBytes], rowBytes);
    EXPECT_EQ(pSurface->UnlockRect(), S_OK);
    return pixels;
}

}  // namespace tesslo::test
