// A test card: an arrow that points up, what the source is, the frame's number, colour bars, and lines of one pixel: a
// border along the very edge, a grid, and two patches of stripes. It is shown as the desktop is drawn, so that what a
// monitor that hangs turned makes of it is seen by the arrow and by a mark of another colour in each corner.
//
// Expected() draws the same picture without the driver, to compare with.
#pragma once

#include "ddi/ddi.h"
#include "host/runtime/HostImage.h"
#include "host/scenes/HostScene.h"

#include <memory>

class HostCardScene : public HostScene
{
public:
    static constexpr UINT kTopLeft = 0xE03030;
    static constexpr UINT kTopRight = 0x30C040;
    static constexpr UINT kBottomLeft = 0x3060E0;
    static constexpr UINT kBottomRight = 0xF0C020;

    HostCardScene();
    ~HostCardScene() override;

    void Draw(HostDevice& device, const HostResource& primary, UINT frame) override;

    static HostImage Expected(UINT width, UINT height, UINT sourceId, D3DDDI_ROTATION rotation, UINT frame);

private:
    std::unique_ptr<HostResource> m_pCard;  ///< all but the number; made anew when the output's mode has changed
    D3DDDI_ROTATION m_Rotation{};           ///< that the card names
};
