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
            std::memcpy(
                m_Pixels + y * m_Width, pPixels + (rect.m_Y + y) * pitch + rect.m_X, m_Width * sizeof(uint32_t));
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

/// Unpacks into one piece.
class Unpacker
{
public:
    Unpacker(std::span<const uint32_t> words, uint32_t width, uint32_t count)
        : m_Words(words), m_Width(width), m_Count(count)
    {
    }

    bool All()
    {
        while (m_Next < m_Words.size())
            if (!Packet())
                return false;
        return m_Done == m_Count;
    }

    const uint32_t* Row(uint32_t y) const { return m_Pixels + y * m_Width; }

private:
    bool Packet()
    {
        const uint32_t head = m_Words[m_Next++];
        const uint32_t count = head & kCountMask;
        if (count > m_Count - m_Done)
            return false;
        uint32_t* const pOut = m_Pixels + m_Done;
        m_Done += count;
        switch (static_cast<BrowserPacket>(head >> kBrowserPacketShift))
        {
        case BrowserPacket::Literal:
            if (count > m_Words.size() - m_Next)
                return false;
            std::copy_n(m_Words.begin() + static_cast<ptrdiff_t>(m_Next), count, pOut);
            m_Next += count;
            return true;
        case BrowserPacket::Run:
            if (m_Next == m_Words.size())
                return false;
            std::fill_n(pOut, count, m_Words[m_Next++]);
            return true;
        case BrowserPacket::Above:
            if (m_Done - count < m_Width)
                return false;
            // One by one: the rows may overlap what is being written.
            for (uint32_t i = 0; i < count; ++i)
                pOut[i] = pOut[static_cast<ptrdiff_t>(i) - static_cast<ptrdiff_t>(m_Width)];
            return true;
        default:
            return false;
        }
    }

    std::span<const uint32_t> m_Words;
    size_t m_Next = 0;
    uint32_t m_Width;
    uint32_t m_Count;
    uint32_t m_Done = 0;
    uint32_t m_Pixels[kBrowserTilePixels];
};

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

bool BrowserTileDecode(std::span<const uint32_t> words, uint32_t* pPixels, size_t pitch, const BrowserRect& rect)
{
    Unpacker unpacker(words, rect.m_Width, rect.m_Width * rect.m_Height);
    if (!unpacker.All())
        return false;
    for (uint32_t y = 0; y < rect.m_Height; ++y)
        std::memcpy(pPixels + (rect.m_Y + y) * pitch + rect.m_X, unpacker.Row(y), rect.m_Width * sizeof(uint32_t));
    return true;
}
