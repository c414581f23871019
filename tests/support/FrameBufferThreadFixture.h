// A frame-buffer worker of the test's own, on the delegated device of a started device object.
#pragma once

#include "output/UMDThreadFrameBuffer.h"

#include "DeviceFixture.h"
#include "FakeSurface.h"
#include "Gate.h"
#include "TestClient.h"

#include "util/UMDUtilDebugTrace.h"

#include <optional>

namespace tesslo::test
{
/// A worker of the test's own, in the place of the six of the started device that gives it the delegated device.
class FrameBufferThreadFixture : public DeviceFixture
{
protected:
    static constexpr UINT kSource = 4;
    /// The levels of the errors, and of the line that tells the worker's end.
    static constexpr UINT kErrorsAndEnd = UMDTRACE_ERROR | UMDTRACE_ENTER;

    void SetUp() override
    {
        DeviceFixture::SetUp();
        m_pDevice->InterFrameBufferThreadsStop();
        m_Thread.emplace();
        ForgetCalls();
    }

    void TearDown() override
    {
        m_Gate.Open();
        if (m_Thread && m_Thread->RequestExit())
            m_Thread->Wait(INFINITE);
        m_Thread.reset();
        m_pTarget.Reset();
        DeviceFixture::TearDown();
    }

    void Start() { ASSERT_TRUE(Start(m_Client.Module())); }
    bool Start(HMODULE hClient) { return m_Thread->Start(m_pDevice.get(), kSource, hClient, m_pDevice->GetDevice()); }

    /// Presents a render target whose pixels count up from the first one.
    bool Present(UINT width, UINT height, UINT firstPixel = 0, UINT rotation = D3DDDI_ROTATION_IDENTITY)
    {
        m_Fake.CreateRenderTarget(
            width, height, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, m_pTarget.Put(), nullptr);
        auto& bytes = dynamic_cast<FakeSurface*>(m_pTarget.Get())->Pixels().Bytes();
        auto* pPixels = reinterpret_cast<UINT*>(bytes.data());
        for (UINT i = 0; i < width * height; ++i)
            pPixels[i] = firstPixel + i;
        return m_Thread->FrameBufferAvailable(m_pTarget.Get(), width, height, D3DFMT_X8R8G8B8, rotation);
    }

    bool WaitForEnd() { return m_Thread->Wait(kLong) == WAIT_OBJECT_0; }

    /// Holds the library in its calls of this name, until the gate opens.
    void Hold(const std::string& method)
    {
        m_Client.On(method, [this] { m_Gate.Pass(); });
    }

    /// Ends the worker and waits for it.
    void Stop()
    {
        EXPECT_TRUE(m_Thread->RequestExit());
        ASSERT_TRUE(WaitForEnd());
    }

    /// The worker has ended by itself: presents say so.
    void ExpectExited()
    {
        const TraceMask mask(kAllLevels);
        m_Trace.Clear();
        EXPECT_FALSE(Present(4, 4));
        EXPECT_EQ(m_Trace.Lines(), (Lines{">>> UMDThreadFrameBuffer::FrameBufferAvailable\n",
                                       "UMDThreadFrameBuffer::FrameBufferAvailable thread has exited!\n"}));
    }

    /// The lines that tell of a failure, by their word for it.
    Lines ErrorLines() const
    {
        Lines lines = m_Trace.Lines();
        std::erase_if(lines, [](const std::string& line) {
            return line.find("failed") == std::string::npos && line.find("failded") == std::string::npos;
        });
        return lines;
    }

    TestClient m_Client;
    Gate m_Gate;
    UMDComPtr<IDirect3DSurface9> m_pTarget;
    std::optional<UMDThreadFrameBuffer> m_Thread;
};
}  // namespace tesslo::test
