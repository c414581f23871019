#include "host/program/HostOutput.h"

#include "host/runtime/HostSession.h"
#include "host/scenes/HostCardScene.h"
#include "host/scenes/HostFillScene.h"
#include "host/scenes/HostTurningScene.h"
#include "host/scenes/HostVideoScene.h"

#include <algorithm>

namespace
{

// Generous: a software rasteriser on a busy machine still delivers within it.
constexpr DWORD kDeliveryMilliseconds = 30'000;
constexpr size_t kMeasured = 10'000;  // frames; a program that runs for days remembers no more

std::unique_ptr<HostScene> MakeScene(HostSceneKind kind)
{
    switch (kind)
    {
    case HostSceneKind::Card:
        return std::make_unique<HostCardScene>();
    case HostSceneKind::Fill:
        return std::make_unique<HostFillScene>();
    case HostSceneKind::Video:
        return std::make_unique<HostVideoScene>();
    default:
        return std::make_unique<HostTurningScene>();
    }
}

}  // namespace

const char* HostOutput::Scene() const
{
    return HostSceneName(m_Source.m_Scene);
}

HostOutput::HostOutput(HostSession& session, UINT sourceId, const HostSource& source)
    : m_Session(session), m_SourceId(sourceId), m_First(source), m_Source(source), m_pScene(MakeScene(source.m_Scene))
{
    EnterMode();
}

void HostOutput::Show(UINT frame)
{
    m_pScene->Draw(m_Session.Device(), *m_pPrimaries[m_Mode], frame);
    m_Session.Device().Flush();
    const HostFlipTime time = Present();
    if (m_Frames < kMeasured)
    {
        m_Work.push_back(time.m_Work);
        m_Pause.push_back(time.m_Pause);
    }
    else
    {
        m_Work[m_Frames % kMeasured] = time.m_Work;
        m_Pause[m_Frames % kMeasured] = time.m_Pause;
    }
    ++m_Frames;
}

// Flips fail when the client library has ended the connection: that is what its author wants to know.
HostFlipTime HostOutput::Present()
{
    try
    {
        return m_Session.Present(*m_pPrimaries[m_Mode]);
    }
    catch (const HostError& error)
    {
        throw HostError(error.what() + Ending());
    }
}

void HostOutput::ChangeMode()
{
    m_Mode = (m_Mode + 1) % kModes;
    EnterMode();
}

HostSource HostOutput::Mode() const
{
    HostSource mode = m_First;
    mode.m_Degrees = (m_First.m_Degrees + 90 * m_Mode) % 360;
    if (m_Mode % 2 != 0)
    {
        mode.m_Width = std::max(kHostSizeMin, m_First.m_Width * 3 / 4);
        mode.m_Height = std::max(kHostSizeMin, m_First.m_Height * 3 / 4);
    }
    return mode;
}

void HostOutput::EnterMode()
{
    m_Source = Mode();
    std::unique_ptr<HostResource>& pPrimary = m_pPrimaries[m_Mode];
    if (pPrimary == nullptr)
        pPrimary = m_Session.Device().CreatePrimary(m_Source.m_Width, m_Source.m_Height, m_SourceId,
            static_cast<D3DDDI_ROTATION>(D3DDDI_ROTATION_IDENTITY + m_Source.m_Degrees / 90));
    m_Session.Device().SetDisplayMode(*pPrimary);
}

void HostOutput::WaitDelivered() const
{
    const UINT64 presented = m_Session.Delivery().Counters(m_SourceId).m_Presented;
    if (!m_Session.Delivery().WaitDelivered(m_SourceId, presented, kDeliveryMilliseconds))
        throw HostError("source " + std::to_string(m_SourceId) + ": frame " + std::to_string(presented - 1) +
                        " did not arrive" + Ending());
}

// What the client library did last, behind a text that tells of a failure.
std::string HostOutput::Ending() const
{
    const HostDeliveryCounters counters = m_Session.Delivery().Counters(m_SourceId);
    if (counters.m_bRefused)
        return ": the client library refused to go on after " + std::to_string(counters.m_Delivered) + " frames";
    if (counters.m_bInUpdate)
        return ": the client library has not come back from Update after " + std::to_string(counters.m_Delivered) +
               " frames";
    return "";
}

void HostOutput::WaitRecordable() const
{
    const auto counters = m_Session.Recording().Counters(m_SourceId);
    if (counters && counters->Received >= TESSLO_SAMPLE_QUEUE)
        m_Session.Recording().WaitRecorded(
            m_SourceId, counters->Received - TESSLO_SAMPLE_QUEUE + 1, kDeliveryMilliseconds);
}

void HostOutput::Release()
{
    m_pScene.reset();
    for (std::unique_ptr<HostResource>& pPrimary : m_pPrimaries)
        pPrimary.reset();
}
