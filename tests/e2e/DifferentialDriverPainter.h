// The painter that calls the driver's entries as the runtime does.
#pragma once

#include "DifferentialPainter.h"

#include "HostSession.h"

class DifferentialDriverPainter : public Painter
{
public:
    DifferentialDriverPainter();

    /// For calls that a painter does not offer.
    const D3DDDI_DEVICEFUNCS& Functions() { return m_Session.Device().Functions(); }
    HANDLE Device() { return m_Session.Device().Handle(); }
    HostDevice& Host() { return m_Session.Device(); }
    /// A target that can be flipped to source 0.
    PainterHandle CreatePrimary(UINT width, UINT height);
    /// The driver's handle of an object.
    static HANDLE Handle(PainterObject& object);

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
    struct Resource;
    struct Shader;

    /// What a resource is made from; like the runtime's record, with the memory of the sub-resources.
    struct Request
    {
        UINT m_Width = 0;
        UINT m_Height = 1;
        UINT m_Format = D3DFMT_UNKNOWN;
        UINT m_Levels = 1;
        D3DDDI_POOL m_Pool = D3DDDIPOOL_VIDEOMEMORY;
        D3DDDI_RESOURCEFLAGS m_Flags{};
        std::vector<DifferentialPicture> m_Memory;  ///< one a level of what lies in system memory
    };

    PainterHandle Create(Request request);
    PainterHandle CreateBuffer(Request request, std::span<const BYTE> content);

    HostSession m_Session;
};
