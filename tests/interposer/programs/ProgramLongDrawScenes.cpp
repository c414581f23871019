// Draws of more primitives than the driver takes at once: in each shape, from buffers and from memory, with indices and
// without. Each vertex has a place and a colour of its own, so that a part that begins elsewhere shows.
#include "ProgramCanvas.h"
#include "ProgramScene.h"

#include <cstring>

namespace
{

constexpr UINT kPrimitives = 70'000;
constexpr UINT kVertices = kPrimitives * 3;
// What lies before the draw.
constexpr UINT kFirstVertex = 5;
constexpr UINT kFirstIndex = 7;
constexpr UINT kOffset = 2 * sizeof(ProgramVertex);

const std::vector<ProgramVertex>& Vertices()
{
    static const std::vector<ProgramVertex> vertices = [] {
        std::vector<ProgramVertex> made;
        for (UINT i = 0; i < kVertices + 100; ++i)
            made.push_back({static_cast<float>(i / 4 % 150 + i % 3 * 3), static_cast<float>(i / 600 % 110 + i * 7 % 5),
                0.5f, 1, 0xFF000000 | i * 40503u, 0, 0});
        // A fan's.
        made[0].m_X = 80, made[0].m_Y = 60;
        return made;
    }();
    return vertices;
}

/// Those of half the vertices there and back again, so that 16 bits hold them.
template <typename Index>
std::vector<Index> Indices()
{
    std::vector<Index> indices;
    for (UINT i = 0; i < kVertices + 100; ++i)
        indices.push_back(static_cast<Index>(i / 30'000 % 2 != 0 ? 29'999 - i % 30'000 : i % 30'000));
    return indices;
}

template <typename Buffer, typename Element>
void Fill(Buffer* pBuffer, const std::vector<Element>& elements)
{
    void* pMemory = nullptr;
    PROGRAM_CALL(pBuffer, Lock, 0, 0, &pMemory, 0);
    std::memcpy(pMemory, elements.data(), elements.size() * sizeof(Element));
    PROGRAM_CALL(pBuffer, Unlock);
}

/// Draws in each shape, a frame each.
void DrawShapes(ProgramCanvas& canvas, const std::function<void(D3DPRIMITIVETYPE)>& draw)
{
    // Of a strip, only the triangles that turn one way.
    canvas.State(D3DRS_CULLMODE, D3DCULL_CW);
    for (UINT type = D3DPT_POINTLIST; type <= D3DPT_TRIANGLEFAN; ++type)
    {
        canvas.Clear();
        draw(static_cast<D3DPRIMITIVETYPE>(type));
        canvas.Present();
    }
}

void LongDrawsFromMemory()
{
    ProgramCanvas canvas;
    DrawShapes(canvas, [&](D3DPRIMITIVETYPE type) {
        PROGRAM_CALL(canvas, DrawPrimitiveUP, type, kPrimitives, Vertices().data(), sizeof(ProgramVertex));
    });
}

void LongIndexedDrawsFromMemory()
{
    ProgramCanvas canvas;
    const std::vector<WORD> indices = Indices<WORD>();
    DrawShapes(canvas, [&](D3DPRIMITIVETYPE type) {
        PROGRAM_CALL(canvas, DrawIndexedPrimitiveUP, type, 0, 30'000, kPrimitives, indices.data(), D3DFMT_INDEX16,
            Vertices().data(), sizeof(ProgramVertex));
    });
}

void LongDrawsFromBuffers()
{
    ProgramCanvas canvas;
    UMDComPtr<IDirect3DVertexBuffer9> pVertices;
    UMDComPtr<IDirect3DIndexBuffer9> pIndices;
    const std::vector<DWORD> indices = Indices<DWORD>();
    PROGRAM_CALL(canvas, CreateVertexBuffer, static_cast<UINT>(Vertices().size() * sizeof(ProgramVertex)), 0, 0,
        D3DPOOL_MANAGED, pVertices.Put(), nullptr);
    PROGRAM_CALL(canvas, CreateIndexBuffer, static_cast<UINT>(indices.size() * sizeof(DWORD)), 0, D3DFMT_INDEX32,
        D3DPOOL_MANAGED, pIndices.Put(), nullptr);
    Fill(pVertices.Get(), Vertices());
    Fill(pIndices.Get(), indices);
    PROGRAM_CALL(canvas, SetStreamSource, 0, pVertices.Get(), kOffset, sizeof(ProgramVertex));
    PROGRAM_CALL(canvas, SetIndices, pIndices.Get());
    DrawShapes(
        canvas, [&](D3DPRIMITIVETYPE type) { PROGRAM_CALL(canvas, DrawPrimitive, type, kFirstVertex, kPrimitives); });
    DrawShapes(canvas, [&](D3DPRIMITIVETYPE type) {
        PROGRAM_CALL(canvas, DrawIndexedPrimitive, type, kFirstVertex, 0, 30'000, kFirstIndex, kPrimitives);
    });
    // The buffers are still bound behind a fan.
    canvas.Clear();
    PROGRAM_CALL(canvas, DrawIndexedPrimitive, D3DPT_TRIANGLELIST, 0, 0, 30'000, 0, 500);
    canvas.Present();
}

}  // namespace

std::vector<ProgramScene> ProgramLongDrawScenes()
{
    return {{"LongDrawsFromMemory", LongDrawsFromMemory}, {"LongIndexedDrawsFromMemory", LongIndexedDrawsFromMemory},
        {"LongDrawsFromBuffers", LongDrawsFromBuffers}};
}
