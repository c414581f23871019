// A film through the video processor: the classic colour bars with a white block that runs along below them, kept as
// 4:2:2 samples (YUY2) as a decoder leaves them, converted and scaled to the output by a video-processing blit.
#pragma once

#include "host/scenes/HostScene.h"

#include <memory>

class HostVideoScene : public HostScene
{
public:
    static constexpr UINT kWidth = 320;  ///< of the film, in pixels
    static constexpr UINT kHeight = 180;

    HostVideoScene();
    /// Goes before the device.
    ~HostVideoScene() override;

    void Draw(HostDevice& device, const HostResource& primary, UINT frame) override;

    /// Where the film lies on an output: as large as it fits, in the middle.
    static RECT Place(const RECT& output);

private:
    void Prepare(HostDevice& device);
    void WriteFrame(HostDevice& device, UINT frame);
    void Blt(HostDevice& device, const HostResource& primary, UINT frame);

    HostDevice* m_pDevice = nullptr;          ///< borrowed; this and all below from the first frame on
    std::unique_ptr<HostResource> m_pSample;  ///< the film's current frame
    HANDLE m_hVideoProcess = nullptr;
};
