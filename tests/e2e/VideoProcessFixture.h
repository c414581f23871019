// Tests of the six video-process entries of the DLL, on a stand-in for the platform's video service.
#pragma once

#include "FakeDxva2.h"
#include "VideoCalls.h"
#include "host/runtime/HostSession.h"

#include <gtest/gtest.h>

namespace tesslo::test
{
/// A session without a client library, a target, and a source of another size.
class VideoProcessFixture : public testing::Test
{
protected:
    static constexpr UINT kMask = 0x103;  ///< errors, entries, video

    explicit VideoProcessFixture(UINT mask = kMask) : m_Session({L"TessloWddmUmode.dll", std::nullopt, mask}) {}

    HANDLE CreateVideo()
    {
        D3DDDIARG_CREATEVIDEOPROCESSDEVICE create = VideoCalls::DistinctCreate();
        EXPECT_EQ(m_Video.Create(create), S_OK);
        m_Dxva2.Calls.clear();
        return create.hVideoProcess;
    }

    /// A video process device whose target is set.
    HANDLE CreateVideoWithTarget()
    {
        HANDLE hVideo = CreateVideo();
        EXPECT_EQ(m_Video.SetRenderTarget(hVideo, m_pTarget->Handle()), S_OK);
        return hVideo;
    }

    HRESULT BltOnce(HANDLE hVideo) { return BltFrom(hVideo, m_pSource->Handle()); }

    HRESULT BltFrom(HANDLE hVideo, HANDLE hSource)
    {
        DXVADDI_VIDEOSAMPLE sample = VideoCalls::DistinctSample();
        sample.SrcResource = hSource;
        return m_Video.Blt(VideoCalls::DistinctBlt(hVideo, &sample, 1));
    }

    /// A resource without a surface.
    static HostResourceDescription VertexBuffer()
    {
        HostResourceDescription buffer;
        buffer.m_Width = 256;
        buffer.m_Flags.VertexBuffer = 1;
        return buffer;
    }

    HostSession m_Session;
    FakeDxva2 m_Dxva2{m_Session.Driver().Module()};
    VideoCalls m_Video{m_Session.Device()};
    std::unique_ptr<HostResource> m_pTarget = m_Session.Device().CreateRenderTarget(64, 32);
    std::unique_ptr<HostResource> m_pSource = m_Session.Device().CreateRenderTarget(16, 16);
};
}  // namespace tesslo::test
