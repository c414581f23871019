#include "host/scenes/HostFillScene.h"

#include "host/runtime/HostDevice.h"

#include <algorithm>

namespace
{

constexpr LONG kSpriteSize = 64;
constexpr UINT kSpriteColors[] = {0xE03030, 0x30C040, 0x3060E0, 0xF0F0F0};  // top left, top right, bottom left, right
constexpr UINT kBackgrounds[] = {0x203048, 0x284830, 0x483020, 0x402848, 0x204848, 0x484020};  // one a source
constexpr UINT kBarColor = 0x90A0B8;
constexpr UINT kSquareColor = 0xF0C020;
constexpr LONG kNumberBits = 16;

/// Where everything of one frame lies.
struct Layout
{
    std::vector<RECT> m_Bars;
    RECT m_Square;
    RECT m_Sprite;
    std::vector<RECT> m_Zeros;  ///< cells of the number's bits, the lowest at the left
    std::vector<RECT> m_Ones;
};

// A position that runs to and fro between 0 and range.
LONG Swing(LONG step, LONG range)
{
    if (range <= 0)
        return 0;
    const LONG phase = step % (2 * range);
    return phase <= range ? phase : 2 * range - phase;
}

Layout LayOut(LONG width, LONG height, UINT frame)
{
    const LONG step = static_cast<LONG>(frame);
    Layout layout{};
    const LONG barWidth = width / 16;
    for (LONG i = 0; i < 4; ++i)
    {
        const LONG left = (i * width / 4 + step * 3) % width;
        layout.m_Bars.push_back({left, height / 4, std::min(left + barWidth, width), height * 3 / 4});
    }
    const LONG size = std::min(width, height) / 6;
    const LONG x = Swing(step * 5, width - size);
    layout.m_Square = {x, height / 2, x + size, height / 2 + size};
    // Doubled, plain or halved, as there is room: no scaling that would leave the driver a choice of pixels.
    LONG spriteSize = 2 * kSpriteSize;
    while (spriteSize > std::min(width, height))
        spriteSize /= 2;
    const LONG spriteX = std::min(width / 3, width - spriteSize);
    const LONG spriteY = Swing(step * 4, height - spriteSize);
    layout.m_Sprite = {spriteX, spriteY, spriteX + spriteSize, spriteY + spriteSize};
    const LONG cell = width / kNumberBits;
    for (LONG bit = 0; bit < kNumberBits; ++bit)
        ((frame >> bit) & 1 ? layout.m_Ones : layout.m_Zeros).push_back({bit * cell, 0, (bit + 1) * cell, height / 16});
    return layout;
}

std::vector<RECT> SpriteQuarters(const RECT& rect)
{
    const LONG x = (rect.left + rect.right) / 2;
    const LONG y = (rect.top + rect.bottom) / 2;
    return {{rect.left, rect.top, x, y}, {x, rect.top, rect.right, y}, {rect.left, y, x, rect.bottom},
        {x, y, rect.right, rect.bottom}};
}

}  // namespace

HostFillScene::HostFillScene() = default;
HostFillScene::~HostFillScene() = default;

void HostFillScene::Draw(HostDevice& device, const HostResource& primary, UINT frame)
{
    if (m_pSprite == nullptr)
    {
        m_pSprite = device.CreateRenderTarget(kSpriteSize, kSpriteSize);
        const std::vector<RECT> quarters = SpriteQuarters(m_pSprite->Rect());
        for (size_t i = 0; i < quarters.size(); ++i)
            device.ColorFill(*m_pSprite, quarters[i], kSpriteColors[i]);
    }
    const HostResourceDescription& size = primary.Description();
    const Layout layout = LayOut(static_cast<LONG>(size.m_Width), static_cast<LONG>(size.m_Height), frame);
    device.SetRenderTarget(primary);
    device.Clear(kBackgrounds[size.m_VidPnSourceId % std::size(kBackgrounds)]);
    device.Clear(kBarColor, layout.m_Bars);
    device.ColorFill(primary, layout.m_Square, kSquareColor);
    device.Blt(*m_pSprite, m_pSprite->Rect(), primary, layout.m_Sprite);
    if (!layout.m_Zeros.empty())
        device.Clear(0x000000, layout.m_Zeros);
    if (!layout.m_Ones.empty())
        device.Clear(0xFFFFFF, layout.m_Ones);
}

HostImage HostFillScene::Expected(UINT width, UINT height, UINT sourceId, UINT frame)
{
    const Layout layout = LayOut(static_cast<LONG>(width), static_cast<LONG>(height), frame);
    HostImage image(width, height);
    image.Fill(
        {0, 0, static_cast<LONG>(width), static_cast<LONG>(height)}, kBackgrounds[sourceId % std::size(kBackgrounds)]);
    for (const RECT& bar : layout.m_Bars)
        image.Fill(bar, kBarColor);
    image.Fill(layout.m_Square, kSquareColor);
    const std::vector<RECT> quarters = SpriteQuarters(layout.m_Sprite);
    for (size_t i = 0; i < quarters.size(); ++i)
        image.Fill(quarters[i], kSpriteColors[i]);
    for (const RECT& cell : layout.m_Zeros)
        image.Fill(cell, 0x000000);
    for (const RECT& cell : layout.m_Ones)
        image.Fill(cell, 0xFFFFFF);
    return image;
}
