#include "BrowserMessage.h"

#include <cstring>

namespace
{

constexpr size_t kHeadWords = 8;

void AppendHead(BrowserWords* pWords, const BrowserMessageHead& head)
{
    pWords->insert(
        pWords->end(), {head.m_Kind, head.m_Screen, head.m_Number, head.m_Grid.m_Width, head.m_Grid.m_Height,
                           static_cast<uint32_t>(head.m_Time), static_cast<uint32_t>(head.m_Time >> 32), head.m_Count});
}

}  // namespace

BrowserWords BrowserMessageOfTiles(const BrowserScreen& screen, uint64_t version, uint32_t id)
{
    BrowserMessageHead head = {
        kBrowserMessageTiles, id, static_cast<uint32_t>(screen.Number()), screen.Grid(), screen.Time(), 0};
    size_t words = kHeadWords;
    for (const BrowserScreen::Tile& tile : screen.Tiles())
    {
        if (tile.m_Version <= version)
            continue;
        ++head.m_Count;
        words += 2 + tile.m_pWords->size();
    }
    BrowserWords message;
    message.reserve(words);
    AppendHead(&message, head);
    for (uint32_t i = 0; i < screen.Tiles().size(); ++i)
    {
        const BrowserScreen::Tile& tile = screen.Tiles()[i];
        if (tile.m_Version <= version)
            continue;
        message.insert(message.end(), {i, static_cast<uint32_t>(tile.m_pWords->size())});
        message.insert(message.end(), tile.m_pWords->begin(), tile.m_pWords->end());
    }
    return message;
}

BrowserWords BrowserMessageOfJpeg(
    const BrowserMessageHead& head, const BrowserRect& rect, std::span<const uint8_t> bytes)
{
    BrowserMessageHead own = head;
    own.m_Kind = kBrowserMessageJpeg;
    own.m_Count = static_cast<uint32_t>(bytes.size());
    BrowserWords message;
    AppendHead(&message, own);
    message.insert(message.end(), {rect.m_X, rect.m_Y, rect.m_Width, rect.m_Height});
    const size_t begin = message.size();
    message.resize(begin + (bytes.size() + 3) / 4);
    std::memcpy(message.data() + begin, bytes.data(), bytes.size());
    return message;
}

std::optional<BrowserMessageHead> BrowserMessageReadHead(std::span<const uint32_t> message)
{
    if (message.size() < kHeadWords)
        return std::nullopt;
    const BrowserMessageHead head = {message[0], message[1], message[2], {message[3], message[4]},
        message[5] | static_cast<uint64_t>(message[6]) << 32, message[7]};
    return head.m_Grid.IsValid() ? std::optional(head) : std::nullopt;
}

std::optional<std::vector<BrowserMessageTile>> BrowserMessageReadTiles(std::span<const uint32_t> message)
{
    const std::optional<BrowserMessageHead> head = BrowserMessageReadHead(message);
    if (!head || head->m_Kind != kBrowserMessageTiles || head->m_Count > head->m_Grid.Count())
        return std::nullopt;
    std::vector<BrowserMessageTile> tiles;
    tiles.reserve(head->m_Count);
    std::span<const uint32_t> rest = message.subspan(kHeadWords);
    for (uint32_t i = 0; i < head->m_Count; ++i)
    {
        if (rest.size() < 2 || rest[0] >= head->m_Grid.Count() || rest[1] > rest.size() - 2)
            return std::nullopt;
        tiles.push_back({rest[0], rest.subspan(2, rest[1])});
        rest = rest.subspan(2 + rest[1]);
    }
    return rest.empty() ? std::optional(std::move(tiles)) : std::nullopt;
}
