// Fills argument records for random calls. Records without a function of their own are filled word by word.
#pragma once

#include "RandomWorld.h"

namespace tesslo::test
{

template <typename Record>
void Fill(RandomWorld& world, Record& record)
{
    for (size_t i = 0; i + sizeof(UINT) <= sizeof(Record); i += sizeof(UINT))
    {
        const UINT number = world.Number();
        std::memcpy(reinterpret_cast<BYTE*>(&record) + i, &number, sizeof(number));
    }
}

inline void Fill(RandomWorld& world, D3DDDIARG_BLT& record)
{
    const HANDLE hSource = world.Image();
    // Between some pools a texture's rectangles stand for an address, by design: huge ones name anybody's memory.
    const auto rect = [&, isTexture = world.IsTexture(hSource)] { return isTexture ? world.NearRect() : world.Rect(); };
    record = {hSource, world.Number(), rect(), world.Image(), world.Number(), rect(), 0, {}};
}

inline void Fill(RandomWorld& world, D3DDDIARG_BUFFERBLT& record)
{
    const HANDLE hDestination = world.Handle(RandomKind::Vertices, RandomKind::Indices);
    record = {hDestination, world.Handle(RandomKind::Vertices, RandomKind::Indices), world.Number(),
        {world.Number(), world.Number()}};
}

inline void Fill(RandomWorld& world, D3DDDIARG_TEXBLT& record)
{
    const HANDLE hDestination = world.Image();
    record = {hDestination, world.Image(), world.Below(7),
        {static_cast<LONG>(world.Below(40)), static_cast<LONG>(world.Below(40))}, world.Rect()};
    if (world.Chance(10))
        record.DstPoint = {static_cast<LONG>(world.Number()), static_cast<LONG>(world.Number())};
}

inline void Fill(RandomWorld& world, D3DDDIARG_COLORFILL& record)
{
    record = {world.Image(), world.Number(), world.Rect(), world.Number(), {}};
}

inline void Fill(RandomWorld& world, D3DDDIARG_LOCK& record)
{
    record = {};
    record.hResource = world.Chance(60) ? world.Image() : world.Handle(RandomKind::Vertices, RandomKind::Indices);
    record.SubResourceIndex = world.Number();
    record.Area = world.Rect();
    record.Flags.Value = world.Below(1 << 10);
}

inline void Fill(RandomWorld& world, D3DDDIARG_UNLOCK& record)
{
    record = {};
    record.hResource = world.Chance(60) ? world.Image() : world.Handle(RandomKind::Vertices, RandomKind::Indices);
    record.SubResourceIndex = world.Number();
}

inline void Fill(RandomWorld& world, D3DDDIARG_SETDISPLAYMODE& record)
{
    record = {world.Handle(RandomKind::Target, RandomKind::Surface, RandomKind::Texture), world.Number()};
}

inline void Fill(RandomWorld& world, D3DDDIARG_SETINDICES& record)
{
    record = {world.Handle(RandomKind::Indices), world.Number()};
}

inline void Fill(RandomWorld& world, D3DDDIARG_SETRENDERTARGET& record)
{
    record = {world.Below(5), world.Image(), world.Number()};
}

inline void Fill(RandomWorld& world, D3DDDIARG_SETDEPTHSTENCIL& record)
{
    record = {world.Chance(80) ? world.Handle(RandomKind::Depth) : nullptr};
}

inline void Fill(RandomWorld& world, D3DDDIARG_SETSTREAMSOURCE& record)
{
    record = {
        world.Chance(90) ? 0 : world.Number(), world.Handle(RandomKind::Vertices), world.Number(), world.Number()};
}

inline void Fill(RandomWorld& world, D3DDDIARG_VIDEOPROCESSENDFRAME& record)
{
    record = {world.Handle(RandomKind::Video), nullptr};
}

inline void Fill(RandomWorld& world, D3DDDIARG_SETVIDEOPROCESSRENDERTARGET& record)
{
    const HANDLE hVideo = world.Handle(RandomKind::Video);
    record = {hVideo, world.Image(), world.Number()};
}

inline void Fill(RandomWorld& world, D3DDDIARG_GENERATEMIPSUBLEVELS& record)
{
    record = {world.Image(), static_cast<D3DDDITEXTUREFILTERTYPE>(world.Number())};
}

inline void Fill(RandomWorld& world, D3DDDIARG_ISSUEQUERY& record)
{
    record = {world.Handle(), {}};
}

inline void Fill(RandomWorld& world, D3DDDIARG_GETQUERYDATA& record)
{
    record = {world.Handle(), world.Bytes(64)};
}

/// A record of the current call; in a lying call one of its words is anything.
template <typename Record>
Record* MakeRecord(RandomWorld& world)
{
    if (world.Lies())
        return static_cast<Record*>(world.Garbage());
    Record record{};
    Fill(world, record);
    if (world.Lies())
    {
        const UINT number = world.Number();
        const size_t at = world.Below(sizeof(Record) / sizeof(UINT)) * sizeof(UINT);
        std::memcpy(reinterpret_cast<BYTE*>(&record) + at, &number, sizeof(number));
    }
    return world.Keep(record);
}

}  // namespace tesslo::test
