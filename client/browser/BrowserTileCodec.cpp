#include "BrowserTileCodec.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr uint32_t kCountMask = (1u << kBrowserPacketShift) - 1;

/// A packet other than a literal pays from this length on: it ends the literal before it and begins another behind.
constexpr uint32_t kShortest = 4;

uint32_t Head(BrowserPacket kind, uint32_t count)
{
    return static_cast<uint32_t>(kind) << kBrowserPacketShift | count;
}

/// The tile's pixels in one piece, and what may be said of those at a place.
struct Tile
{
    uint32_t m_Width;
    uint32_t m_Count;
    uint32_t m_Pixels[kBrowserTilePixels];

    Tile(const uint32_t* pPixels, size_t pitch, const BrowserRect& rect)
        : m_Width(rect.m_Width), m_Count(rect.m_Width * rect.m_Height)
    {
        for (uint32_t y = 0; y < rect.m_Height; ++y)
            std::memcpy(m_Pixels + size_t{y} * m_Width, pPixels + (rect.m_Y + y) * pitch + rect.m_X,
                m_Width * sizeof(uint32_t));
    }

    uint32_t Run(uint32_t at) const
    {
        uint32_t end = at + 1;
        while (end < m_Count && m_Pixels[end] == m_Pixels[at])
            ++end;
        return end - at;
    }

    uint32_t Above(uint32_t at) const
    {
        if (at < m_Width)
            return 0;
        uint32_t end = at;
        while (end < m_Count && m_Pixels[end] == m_Pixels[end - m_Width])
            ++end;
        return end - at;
    }
};

void AppendLiteral(const Tile& tile, uint32_t begin, uint32_t end, std::vector<uint32_t>* pWords)
{
    if (begin == end)
        return;
    pWords->push_back(Head(BrowserPacket::Literal, end - begin));
    pWords->insert(pWords->end(), tile.m_Pixels + begin, tile.m_Pixels + end);
}

/// One packet, with all that it refers to.
struct Packet
{
    BrowserPacket m_Kind;
    uint32_t m_Begin;  ///< pixels of the tile before it
    uint32_t m_Count;  ///< pixels that it makes
    std::span<const uint32_t> m_Words;
};

/// Calls visit for each packet, as far as they are in order.
///
/// @return false if they do not make a tile of that width and number of pixels.
template <typename Visit>
bool ForEachPacket(std::span<const uint32_t> words, uint32_t width, uint32_t pixels, const Visit& visit)
{
    uint32_t done = 0;
    while (!words.empty())
    {
        const BrowserPacket kind = static_cast<BrowserPacket>(words[0] >> kBrowserPacketShift);
        const uint32_t count = words[0] & kCountMask;
        const size_t own = kind == BrowserPacket::Literal ? count : kind == BrowserPacket::Run ? 1 : 0;
        words = words.subspan(1);
        if (kind > BrowserPacket::Above || count > pixels - done || own > words.size() ||
            (kind == BrowserPacket::Above && done < width))
            return false;
        visit(Packet{kind, done, count, words.first(own)});
        words = words.subspan(own);
        done += count;
    }
    return done == pixels;
}

void Unpack(const Packet& packet, uint32_t width, uint32_t* pPixels)
{
    uint32_t* const pOut = pPixels + packet.m_Begin;
    if (packet.m_Kind == BrowserPacket::Literal)
        std::ranges::copy(packet.m_Words, pOut);
    else if (packet.m_Kind == BrowserPacket::Run)
        std::fill_n(pOut, packet.m_Count, packet.m_Words[0]);
    else  // one by one: the rows may overlap what is being written
        for (uint32_t i = 0; i < packet.m_Count; ++i)
            pOut[i] = *(pOut + i - width);
}

}  // namespace

void BrowserTileEncode(const uint32_t* pPixels, size_t pitch, const BrowserRect& rect, std::vector<uint32_t>* pWords)
{
    const Tile tile(pPixels, pitch, rect);
    uint32_t literal = 0;
    for (uint32_t at = 0; at < tile.m_Count;)
    {
        const uint32_t run = tile.Run(at);
        const uint32_t above = tile.Above(at);
        if (std::max(run, above) < kShortest)
        {
            ++at;
            continue;
        }
        AppendLiteral(tile, literal, at, pWords);
        if (above >= run)
            pWords->push_back(Head(BrowserPacket::Above, above));
        else
            pWords->insert(pWords->end(), {Head(BrowserPacket::Run, run), tile.m_Pixels[at]});
        at += std::max(run, above);
        literal = at;
    }
    AppendLiteral(tile, literal, tile.m_Count, pWords);
}

bool BrowserTileIsWhole(std::span<const uint32_t> words, const BrowserRect& rect)
{
    return ForEachPacket(words, rect.m_Width, rect.m_Width * rect.m_Height, [](const Packet&) {});
}

bool BrowserTileDecode(std::span<const uint32_t> words, uint32_t* pPixels, size_t pitch, const BrowserRect& rect)
{
    uint32_t tile[kBrowserTilePixels];
    const auto unpack = [&](const Packet& packet) { Unpack(packet, rect.m_Width, tile); };
    if (!ForEachPacket(words, rect.m_Width, rect.m_Width * rect.m_Height, unpack))
        return false;
    for (uint32_t y = 0; y < rect.m_Height; ++y)
        std::memcpy(pPixels + (rect.m_Y + y) * pitch + rect.m_X, tile + size_t{y} * rect.m_Width,
            rect.m_Width * sizeof(uint32_t));
    return true;
}
