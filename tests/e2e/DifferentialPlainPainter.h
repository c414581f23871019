// The painter that draws on a plain Direct3D 9Ex device of the same adapter, as an application does. No line of the
// driver takes part.
#pragma once

#include "DifferentialPainter.h"

#include "util/UMDComPtr.h"

class DifferentialPlainPainter : public Painter
{
public:
    DifferentialPlainPainter();
    ~DifferentialPlainPainter() override;

    /// For calls that a painter does not offer.
    IDirect3DDevice9Ex* Device() { return m_pDevice.Get(); }
    /// The device's own of a painter's object, borrowed; null if the object is no such thing.
    static IDirect3DSurface9* Surface(PainterObject& object);
    static IDirect3DTexture9* Texture(PainterObject& object);
    static IDirect3DVertexBuffer9* VertexBuffer(PainterObject& object);

    PainterHandle CreateSurface(
        PainterSurface kind, UINT width, UINT height, D3DFORMAT format, UINT levels = 1) override;
    PainterHandle CreateDepth(UINT width, UINT height, D3DFORMAT format) override;
    PainterHandle CreateMemorySurface(const DifferentialPicture& picture) override;
    PainterHandle CreateMemoryTexture(std::span<const DifferentialPicture> levels) override;
    PainterHandle CreateVertexBuffer(PainterMemory memory, std::span<const BYTE> content) override;
    PainterHandle CreateIndexBuffer(D3DFORMAT format, std::span<const BYTE> content) override;
    PainterHandle CreateVertexShader(std::span<const UINT> code) override;
    PainterHandle CreatePixelShader(std::span<const UINT> code) override;
    PainterHandle CreateDeclaration(std::span<const D3DVERTEXELEMENT9> elements) override;

    void BeginScene() override;
    void EndScene() override;
    void SetRenderState(D3DRENDERSTATETYPE state, DWORD value) override;
    void SetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD value) override;
    void SetTexture(DWORD stage, PainterObject* pTexture) override;
    void SetTarget(PainterObject& target) override;
    void SetDepth(PainterObject* pDepth) override;
    void SetViewport(UINT x, UINT y, UINT width, UINT height) override;
    void SetScissor(const RECT& rect) override;
    void SetTransform(D3DTRANSFORMSTATETYPE type, const D3DMATRIX& matrix) override;
    void SetClipPlane(DWORD index, const float (&plane)[4]) override;
    void SetVertexShader(PainterObject& shader) override;
    void SetPixelShader(PainterObject& shader) override;
    void SetDeclaration(PainterObject& declaration) override;
    void SetVertexConstants(UINT first, std::span<const float> values) override;
    void SetPixelConstants(UINT first, std::span<const float> values) override;
    void SetPixelIntegers(UINT first, std::span<const INT> values) override;
    void SetPixelBooleans(UINT first, std::span<const BOOL> values) override;

    void SetStreamMemory(const void* pVertices, UINT stride) override;
    void SetStreamBuffer(PainterObject& buffer, UINT offset, UINT stride) override;
    void SetIndices(PainterObject& buffer) override;
    void Draw(D3DPRIMITIVETYPE type, UINT firstVertex, UINT count) override;
    void DrawFromByte(D3DPRIMITIVETYPE type, UINT firstByte, UINT count) override;
    void DrawIndexed(
        D3DPRIMITIVETYPE type, INT baseVertex, UINT minIndex, UINT vertices, UINT firstIndex, UINT count) override;
    void DrawIndexedFromMemory(D3DPRIMITIVETYPE type, INT baseByte, UINT minIndex, UINT vertices, UINT count,
        const void* pIndices, UINT indexSize) override;

    void Blt(PainterObject& from, const RECT& fromRect, PainterObject& to, const RECT& toRect) override;
    void TexBlt(PainterObject& from, const RECT& rect, PainterObject& to, const POINT& point) override;
    void ColorFill(PainterObject& target, const RECT& rect, D3DCOLOR color) override;
    void Clear(DWORD flags, D3DCOLOR color, float depth, DWORD stencil, std::span<const RECT> rects = {}) override;
    DifferentialPicture ReadBack(PainterObject& object) override;

private:
    struct Object;

    HWND m_hWnd = nullptr;
    UMDComPtr<IDirect3D9Ex> m_pD3D9;
    UMDComPtr<IDirect3DDevice9Ex> m_pDevice;
    const BYTE* m_pStreamMemory = nullptr;  ///< stream 0 in the caller's memory, null for a buffer
    Object* m_pStreamBuffer = nullptr;      ///< stream 0 in a buffer
    UINT m_Stride = 0;                      ///< bytes
};
