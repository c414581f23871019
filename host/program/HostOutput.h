// One virtual monitor of the program: what it shows, and how long each present took.
#pragma once

#include "host/program/HostOptions.h"
#include "host/runtime/HostDevice.h"
#include "host/scenes/HostScene.h"

#include <memory>
#include <vector>

class HostSession;

class HostOutput
{
public:
    /// Makes the primary and sets its display mode.
    HostOutput(HostSession& session, UINT sourceId, const HostSource& source);

    /// Draws a frame and presents it.
    void Show(UINT frame);
    /// Turns the monitor by 90 degrees more and gives it another size; four changes lead back.
    void ChangeMode();
    /// Waits until the client library has taken every frame presented so far. Throws HostError.
    void WaitDelivered() const;
    /// Waits until the sample library can record one more frame without dropping it. Another one is not waited for.
    void WaitRecordable() const;
    /// Gives up what was made with the device. What was measured stays.
    void Release();

    UINT SourceId() const { return m_SourceId; }
    /// As it is now.
    const HostSource& Source() const { return m_Source; }
    /// The scene's name, as --scene knows it.
    const char* Scene() const;
    /// Milliseconds, one a frame, of the newest frames: the driver's work, and its pause behind it.
    const std::vector<double>& Work() const { return m_Work; }
    const std::vector<double>& Pause() const { return m_Pause; }

private:
    static constexpr UINT kModes = 4;

    HostSource Mode() const;
    void EnterMode();
    HostFlipTime Present();
    std::string Ending() const;

    HostSession& m_Session;
    UINT m_SourceId;
    HostSource m_First;  ///< as the user wants it
    HostSource m_Source;
    std::unique_ptr<HostScene> m_pScene;
    UINT m_Mode = 0;
    /// A primary that was flipped lives as long as the device: with it the driver would end its frame-buffer threads.
    std::unique_ptr<HostResource> m_pPrimaries[kModes];
    UINT64 m_Frames = 0;
    std::vector<double> m_Work;
    std::vector<double> m_Pause;
};
