// A scene of fills and blits: coloured bars and a square that move, a four-coloured picture that is blitted (so that
// the way up is seen), and the frame's number in sixteen black and white cells along the top.
//
// Expected() draws the same picture without the driver, to compare with.
#pragma once

#include "host/runtime/HostImage.h"
#include "host/scenes/HostScene.h"

#include <memory>

class HostFillScene : public HostScene
{
public:
    HostFillScene();
    ~HostFillScene() override;

    void Draw(HostDevice& device, const HostResource& primary, UINT frame) override;

    static HostImage Expected(UINT width, UINT height, UINT sourceId, UINT frame);

private:
    std::unique_ptr<HostResource> m_pSprite;  ///< made at the first frame
};
