// The fake delegated device: records every call, answers scripted results, and makes fake objects with real reference
// counts over real memory. What is not overridden here records itself and answers S_OK or 0.
//
//     FakeDevice device;
//     device.Fail("CreateTexture", D3DERR_OUTOFVIDEOMEMORY, 2);          // the second one
//     device.On("Clear", RaiseAccessViolation);
//     ...
//     EXPECT_EQ(device.LiveObjects(), std::vector<std::string>{"texture#1"});
//
// The test owns the device: it outlives all its users, and starts with one reference of the test.
#pragma once

#include "FakeBuffer.h"
#include "FakeCubeTexture.h"
#include "FakeObjects.h"
#include "FakeTexture.h"

#include <array>

namespace tesslo::test
{

/// What a copy to a locked surface is answered, as real devices do.
inline constexpr HRESULT kSurfaceBusy = static_cast<HRESULT>(0x887601AE);

class FakeDevice : public FakeObjects, public FakeDeviceMethods
{
public:
    static constexpr UINT kRenderTargetCount = 4;

    FakeDevice();
    ~FakeDevice() override;

    /// Bytes behind each row of surfaces created from now on; 0 at first.
    void SetPitchPadding(UINT bytes) { m_Rows = bytes; }
    /// How surfaces created from now on lie in memory; tight at first.
    void SetRows(const FakeRows& rows) { m_Rows = rows; }
    /// What is wider, higher or has more bytes is refused with D3DERR_INVALIDCALL; nothing at first.
    void SetLargest(UINT size) { m_Largest = size; }
    /// What creating calls write to a shared handle that holds null; null at first.
    void SetSharedHandle(HANDLE hShared) { m_hShared = hShared; }

    /// The shared handle that the newest creating call with one was given.
    HANDLE LastSharedHandle() const { return m_hLastShared; }

    /// The surface that the calling thread made last, of any device; null before the first.
    static FakeSurface* NewestSurface();

    bool IsPart() const override { return true; }

    // Kinds of names: "surface", "texture", "cube", "vertexbuffer", "indexbuffer", "vertexshader", "pixelshader",
    // "declaration".
    HRESULT STDMETHODCALLTYPE CreateTexture(UINT width, UINT height, UINT levels, DWORD usage, D3DFORMAT format,
        D3DPOOL pool, IDirect3DTexture9** ppTexture, HANDLE* pSharedHandle) override;
    HRESULT STDMETHODCALLTYPE CreateCubeTexture(UINT edge, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool,
        IDirect3DCubeTexture9** ppTexture, HANDLE* pSharedHandle) override;
    HRESULT STDMETHODCALLTYPE CreateVertexBuffer(UINT size, DWORD usage, DWORD fvf, D3DPOOL pool,
        IDirect3DVertexBuffer9** ppBuffer, HANDLE* pSharedHandle) override;
    HRESULT STDMETHODCALLTYPE CreateIndexBuffer(UINT size, DWORD usage, D3DFORMAT format, D3DPOOL pool,
        IDirect3DIndexBuffer9** ppBuffer, HANDLE* pSharedHandle) override;
    HRESULT STDMETHODCALLTYPE CreateRenderTarget(UINT width, UINT height, D3DFORMAT format,
        D3DMULTISAMPLE_TYPE multisampleType, DWORD multisampleQuality, BOOL lockable, IDirect3DSurface9** ppSurface,
        HANDLE* pSharedHandle) override;
    HRESULT STDMETHODCALLTYPE CreateDepthStencilSurface(UINT width, UINT height, D3DFORMAT format,
        D3DMULTISAMPLE_TYPE multisampleType, DWORD multisampleQuality, BOOL discard, IDirect3DSurface9** ppSurface,
        HANDLE* pSharedHandle) override;
    HRESULT STDMETHODCALLTYPE CreateOffscreenPlainSurface(UINT width, UINT height, D3DFORMAT format, D3DPOOL pool,
        IDirect3DSurface9** ppSurface, HANDLE* pSharedHandle) override;
    HRESULT STDMETHODCALLTYPE CreateVertexDeclaration(
        const D3DVERTEXELEMENT9* pElements, IDirect3DVertexDeclaration9** ppDeclaration) override;
    HRESULT STDMETHODCALLTYPE CreateVertexShader(const DWORD* pByteCode, IDirect3DVertexShader9** ppShader) override;
    HRESULT STDMETHODCALLTYPE CreatePixelShader(const DWORD* pByteCode, IDirect3DPixelShader9** ppShader) override;

    /// Keeps a reference of what is set, as long as it is set.
    HRESULT STDMETHODCALLTYPE SetRenderTarget(DWORD index, IDirect3DSurface9* pSurface) override;
    /// With a reference for the caller; D3DERR_NOTFOUND when none is set.
    HRESULT STDMETHODCALLTYPE GetRenderTarget(DWORD index, IDirect3DSurface9** ppSurface) override;
    /// Copies the bytes when format and size match, else D3DERR_INVALIDCALL; kSurfaceBusy while the destination is
    /// locked.
    HRESULT STDMETHODCALLTYPE GetRenderTargetData(
        IDirect3DSurface9* pRenderTarget, IDirect3DSurface9* pDestination) override;

protected:
    void LastRelease() override {}

private:
    template <typename Object, typename Interface, typename... Arguments>
    HRESULT InternalMake(Interface** ppObject, const char* pName, const Arguments&... arguments);
    HRESULT InternalMakeSurface(const D3DSURFACE_DESC& desc, IDirect3DSurface9** ppSurface, HANDLE* pSharedHandle);
    void InternalShare(HANDLE* pSharedHandle);

    FakeRows m_Rows;
    UINT m_Largest = UINT_MAX;
    HANDLE m_hShared = nullptr;
    HANDLE m_hLastShared = nullptr;
    std::array<IDirect3DSurface9*, kRenderTargetCount> m_RenderTargets{};
};

}  // namespace tesslo::test
