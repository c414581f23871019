// What the differential scenes are drawn with. Two painters make pictures of the same calls: one through the entries
// of the driver, as the runtime calls them, one through a plain Direct3D 9Ex device, as an application does.
//
// Operations have the meaning that they have in Direct3D 9. A failure throws HostError with the operation's name.
#pragma once

#include "DifferentialPicture.h"

#include <memory>
#include <span>
#include <vector>

/// A surface, buffer, shader or declaration of one painter. Goes before its painter.
struct PainterObject
{
    virtual ~PainterObject() = default;
};

using PainterHandle = std::unique_ptr<PainterObject>;

enum class PainterSurface
{
    Target,         ///< can be drawn into
    TargetTexture,  ///< can be drawn into and drawn with
    Texture,        ///< can be drawn with
    Plain,          ///< can be blitted only
};

enum class PainterMemory
{
    Video,
    System,
};

class Painter
{
public:
    virtual ~Painter() = default;

    // Surfaces in video memory.
    virtual PainterHandle CreateSurface(
        PainterSurface kind, UINT width, UINT height, D3DFORMAT format, UINT levels = 1) = 0;
    virtual PainterHandle CreateDepth(UINT width, UINT height, D3DFORMAT format) = 0;
    // Pixels in system memory. A texture has one picture a level.
    virtual PainterHandle CreateMemorySurface(const DifferentialPicture& picture) = 0;
    virtual PainterHandle CreateMemoryTexture(std::span<const DifferentialPicture> levels) = 0;
    virtual PainterHandle CreateVertexBuffer(PainterMemory memory, std::span<const BYTE> content) = 0;
    virtual PainterHandle CreateIndexBuffer(D3DFORMAT format, std::span<const BYTE> content) = 0;
    virtual PainterHandle CreateVertexShader(std::span<const UINT> code) = 0;
    virtual PainterHandle CreatePixelShader(std::span<const UINT> code) = 0;
    /// @param elements without the end marker.
    virtual PainterHandle CreateDeclaration(std::span<const D3DVERTEXELEMENT9> elements) = 0;

    virtual void BeginScene() = 0;
    virtual void EndScene() = 0;
    virtual void SetRenderState(D3DRENDERSTATETYPE state, DWORD value) = 0;
    virtual void SetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD value) = 0;
    virtual void SetTexture(DWORD stage, PainterObject* pTexture) = 0;
    virtual void SetTarget(PainterObject& target) = 0;
    virtual void SetDepth(PainterObject* pDepth) = 0;
    virtual void SetViewport(UINT x, UINT y, UINT width, UINT height) = 0;
    virtual void SetScissor(const RECT& rect) = 0;
    virtual void SetTransform(D3DTRANSFORMSTATETYPE type, const D3DMATRIX& matrix) = 0;
    virtual void SetClipPlane(DWORD index, const float (&plane)[4]) = 0;
    virtual void SetVertexShader(PainterObject& shader) = 0;
    virtual void SetPixelShader(PainterObject& shader) = 0;
    virtual void SetDeclaration(PainterObject& declaration) = 0;
    virtual void SetVertexConstants(UINT first, std::span<const float> values) = 0;
    virtual void SetPixelConstants(UINT first, std::span<const float> values) = 0;
    virtual void SetPixelIntegers(UINT first, std::span<const INT> values) = 0;
    virtual void SetPixelBooleans(UINT first, std::span<const BOOL> values) = 0;

    // Stream 0 is bound before every draw: a draw from memory may unbind it.
    virtual void SetStreamMemory(const void* pVertices, UINT stride) = 0;
    virtual void SetStreamBuffer(PainterObject& buffer, UINT offset, UINT stride) = 0;
    virtual void SetIndices(PainterObject& buffer) = 0;
    virtual void Draw(D3DPRIMITIVETYPE type, UINT firstVertex, UINT count) = 0;
    /// @param firstByte of the first vertex, a multiple of the stride.
    virtual void DrawFromByte(D3DPRIMITIVETYPE type, UINT firstByte, UINT count) = 0;
    virtual void DrawIndexed(
        D3DPRIMITIVETYPE type, INT baseVertex, UINT minIndex, UINT vertices, UINT firstIndex, UINT count) = 0;
    /// Indices from memory. Vertices from memory or from a buffer in system memory, bound from its start.
    /// @param indexSize bytes.
    virtual void DrawIndexedFromMemory(D3DPRIMITIVETYPE type, INT baseByte, UINT minIndex, UINT vertices, UINT count,
        const void* pIndices, UINT indexSize) = 0;

    /// Copies, stretched without a filter between surfaces in video memory.
    virtual void Blt(PainterObject& from, const RECT& fromRect, PainterObject& to, const RECT& toRect) = 0;
    /// Copies a texture from system memory: a rectangle of level 0, the other levels whole.
    virtual void TexBlt(PainterObject& from, const RECT& rect, PainterObject& to, const POINT& point) = 0;
    virtual void ColorFill(PainterObject& target, const RECT& rect, D3DCOLOR color) = 0;
    virtual void Clear(
        DWORD flags, D3DCOLOR color, float depth, DWORD stencil, std::span<const RECT> rects = {}) = 0;

    /// The pixels of a target, or level 0 of what lies in system memory.
    virtual DifferentialPicture ReadBack(PainterObject& object) = 0;

    /// Takes the object's picture as the next frame of the scene.
    void Frame(PainterObject& object) { m_Frames.push_back(ReadBack(object)); }
    const std::vector<DifferentialPicture>& Frames() const { return m_Frames; }

private:
    std::vector<DifferentialPicture> m_Frames;
};
