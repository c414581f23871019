// Every draw entry with every primitive type, source of vertices and index size; first vertices, offsets and strides.
#include "DifferentialCanvas.h"
#include "DifferentialScenes.h"

namespace
{

struct TypeCount
{
    D3DPRIMITIVETYPE m_Type;
    UINT m_Count;  ///< primitives that twelve vertices make
};

constexpr TypeCount kTypes[] = {{D3DPT_POINTLIST, 12}, {D3DPT_LINELIST, 6}, {D3DPT_LINESTRIP, 11},
    {D3DPT_TRIANGLELIST, 4}, {D3DPT_TRIANGLESTRIP, 10}, {D3DPT_TRIANGLEFAN, 10}};

constexpr UINT kVertices = 12;
constexpr UINT kLead = 3;  ///< vertices in front of those that are shown
constexpr UINT kStride = sizeof(ScreenVertex);

/// Vertices that jump between two rows, each of another colour, behind three that make a shape of their own: a draw
/// that starts too early shows it.
constexpr std::array<ScreenVertex, kLead + kVertices> kShape = [] {
    std::array<ScreenVertex, kLead + kVertices> shape{};
    shape[0] = {1, 1, 0, 1, 0xFFFF0000, 0, 0};
    shape[1] = {95, 1, 0, 1, 0xFFFF0000, 0, 0};
    shape[2] = {1, 63, 0, 1, 0xFFFF0000, 0, 0};
    for (UINT i = 0; i < kVertices; ++i)
        shape[kLead + i] = {6.5f + 7 * static_cast<float>(i), (i % 2 ? 54.5f : 9.5f) + static_cast<float>(i), 0, 1,
            0xFF204060 + i * 0x00110C07, 0, 0};
    return shape;
}();

template <typename Index>
constexpr std::array<Index, kLead + kVertices> kIndices = {0, 1, 2, 0, 2, 1, 3, 5, 4, 6, 8, 7, 9, 11, 10};

enum class Source
{
    Memory,
    SystemBuffer,
    VideoBuffer,
};

constexpr const char* kSourceNames[] = {"Memory", "SystemBuffer", "VideoBuffer"};

// Binds the shape as stream 0, its first three vertices included.
PainterHandle Bind(Painter& painter, Source source)
{
    if (source == Source::Memory)
    {
        painter.SetStreamMemory(kShape.data(), kStride);
        return nullptr;
    }
    PainterHandle pBuffer = painter.CreateVertexBuffer(
        source == Source::SystemBuffer ? PainterMemory::System : PainterMemory::Video, BytesOf(kShape));
    painter.SetStreamBuffer(*pBuffer, 0, kStride);
    return pBuffer;
}

// One frame a primitive type.
template <typename DrawOne>
void EachType(Painter& painter, Source source, DrawOne drawOne)
{
    DifferentialCanvas canvas(painter);
    for (const TypeCount& type : kTypes)
    {
        canvas.Clear();
        const PainterHandle pBuffer = Bind(painter, source);
        drawOne(type);
        canvas.Frame();
    }
}

void AddPlainDraws(std::vector<DifferentialScene>& scenes, Source source)
{
    const std::string name = kSourceNames[static_cast<int>(source)];
    scenes.push_back(
        {"Draw_" + name, [source](Painter& painter) {
             EachType(painter, source, [&](const TypeCount& type) { painter.Draw(type.m_Type, kLead, type.m_Count); });
         }});
    // From memory the byte offset is not applied, so there it stays 0.
    const UINT firstByte = source == Source::Memory ? 0 : kLead * kStride;
    scenes.push_back({"DrawFromByte_" + name, [source, firstByte](Painter& painter) {
                          EachType(painter, source, [&](const TypeCount& type) {
                              painter.DrawFromByte(type.m_Type, firstByte, type.m_Count);
                          });
                      }});
}

template <typename Index>
void AddIndexedDraws(std::vector<DifferentialScene>& scenes, D3DFORMAT format, const std::string& bits)
{
    for (Source source : {Source::SystemBuffer, Source::VideoBuffer})
        scenes.push_back({"DrawIndexed_" + std::string(kSourceNames[static_cast<int>(source)]) + bits,
            [source, format](Painter& painter) {
                const PainterHandle pIndices = painter.CreateIndexBuffer(format, BytesOf(kIndices<Index>));
                painter.SetIndices(*pIndices);
                EachType(painter, source, [&](const TypeCount& type) {
                    // This draw does not upload; a plain one in front of it does.
                    painter.Draw(D3DPT_POINTLIST, kLead, 1);
                    painter.DrawIndexed(type.m_Type, kLead, 0, kVertices, kLead, type.m_Count);
                });
            }});
    for (Source source : {Source::Memory, Source::SystemBuffer})
        scenes.push_back({"DrawIndexedFromMemory_" + std::string(kSourceNames[static_cast<int>(source)]) + bits,
            [source](Painter& painter) {
                EachType(painter, source, [&](const TypeCount& type) {
                    painter.DrawIndexedFromMemory(type.m_Type, kLead * kStride, 0, kVertices, type.m_Count,
                        kIndices<Index>.data() + kLead, sizeof(Index));
                });
            }});
}

/// The shape with room behind every vertex.
struct WideVertex
{
    ScreenVertex m_Vertex;
    BYTE m_Room[20];
};

constexpr std::array<WideVertex, kShape.size()> kWideShape = [] {
    std::array<WideVertex, kShape.size()> shape{};
    for (size_t i = 0; i < kShape.size(); ++i)
        shape[i] = {kShape[i], {0xFF, 0xEE, 0xDD}};
    return shape;
}();

void DrawWideStride(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    painter.SetStreamMemory(kWideShape.data(), sizeof(WideVertex));
    painter.Draw(D3DPT_TRIANGLESTRIP, kLead, 10);
    canvas.Frame();
    for (PainterMemory memory : {PainterMemory::System, PainterMemory::Video})
    {
        const PainterHandle pBuffer = painter.CreateVertexBuffer(memory, BytesOf(kWideShape));
        canvas.Clear();
        painter.SetStreamBuffer(*pBuffer, 0, sizeof(WideVertex));
        const bool bSystem = memory == PainterMemory::System;
        painter.Draw(bSystem ? D3DPT_TRIANGLESTRIP : D3DPT_TRIANGLEFAN, kLead, 6);
        painter.DrawFromByte(D3DPT_LINELIST, (kLead + 8) * sizeof(WideVertex), 2);
        canvas.Frame();
    }
}

void DrawBufferOffset(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pBuffer = painter.CreateVertexBuffer(PainterMemory::Video, BytesOf(kShape));
    painter.SetStreamBuffer(*pBuffer, kLead * kStride, kStride);
    painter.Draw(D3DPT_TRIANGLESTRIP, 0, 4);
    painter.DrawFromByte(D3DPT_TRIANGLELIST, 6 * kStride, 2);
    canvas.Frame();
}

void DrawIndexedBase(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pBuffer = painter.CreateVertexBuffer(PainterMemory::Video, BytesOf(kShape));
    constexpr std::array<UINT16, 9> indices = {9, 10, 11, 4, 5, 6, 7, 8, 6};
    const PainterHandle pIndices = painter.CreateIndexBuffer(D3DFMT_INDEX16, BytesOf(indices));
    painter.SetIndices(*pIndices);
    painter.SetStreamBuffer(*pBuffer, 0, kStride);
    painter.DrawIndexed(D3DPT_TRIANGLELIST, 3, 9, 3, 0, 1);
    painter.DrawIndexed(D3DPT_TRIANGLELIST, -1, 4, 5, 3, 2);
    canvas.Frame();
    painter.SetStreamMemory(&kShape[6], kStride);
    painter.DrawIndexedFromMemory(D3DPT_TRIANGLELIST, -3 * static_cast<INT>(kStride), 4, 5, 2, &indices[3], 2);
    canvas.Frame();
}

void DrawRebound(Painter& painter)
{
    // Streams in turn: each draw takes the one bound last.
    DifferentialCanvas canvas(painter);
    const PainterHandle pVideo = painter.CreateVertexBuffer(PainterMemory::Video, BytesOf(kShape));
    const PainterHandle pSystem = painter.CreateVertexBuffer(PainterMemory::System, BytesOf(kWideShape));
    painter.SetStreamBuffer(*pVideo, 0, kStride);
    painter.Draw(D3DPT_TRIANGLELIST, kLead, 1);
    painter.SetStreamMemory(kShape.data(), kStride);
    painter.Draw(D3DPT_TRIANGLELIST, kLead + 3, 1);
    painter.SetStreamBuffer(*pSystem, 0, sizeof(WideVertex));
    painter.DrawFromByte(D3DPT_TRIANGLELIST, (kLead + 6) * sizeof(WideVertex), 1);
    painter.SetStreamBuffer(*pVideo, 0, kStride);
    painter.Draw(D3DPT_TRIANGLELIST, kLead + 9, 1);
    canvas.Frame();
}

}  // namespace

std::vector<DifferentialScene> DifferentialDrawScenes()
{
    std::vector<DifferentialScene> scenes;
    for (Source source : {Source::Memory, Source::SystemBuffer, Source::VideoBuffer})
        AddPlainDraws(scenes, source);
    AddIndexedDraws<UINT16>(scenes, D3DFMT_INDEX16, "16");
    AddIndexedDraws<UINT>(scenes, D3DFMT_INDEX32, "32");
    scenes.push_back({"DrawWideStride", DrawWideStride});
    scenes.push_back({"DrawBufferOffset", DrawBufferOffset});
    scenes.push_back({"DrawIndexedBase", DrawIndexedBase});
    scenes.push_back({"DrawRebound", DrawRebound});
    return scenes;
}
