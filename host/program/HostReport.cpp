#include "host/program/HostReport.h"

#include "client/sample/SamplePicture.h"
#include "host/program/HostOverview.h"
#include "host/program/HostStatistics.h"
#include "host/runtime/HostSession.h"

#include <cstdio>

namespace
{

std::string SizeText(UINT width, UINT height)
{
    return std::to_string(width) + "x" + std::to_string(height);
}

std::string PictureName(UINT sourceId, UINT64 frame)
{
    char name[64];
    std::snprintf(name, sizeof(name), "source%u-frame%06llu.png", sourceId, frame);
    return name;
}

}  // namespace

HostReport::HostReport(const std::vector<HostOutput>& outputs, HostSession& session, const HostOptions& options)
    : m_Outputs(outputs), m_Session(session), m_Options(options)
{
    for (const HostOutput& output : outputs)
    {
        const HostDeliveryCounters counters = session.Delivery().Counters(output.SourceId());
        m_Sum.m_Presented += counters.m_Presented;
        m_Sum.m_Delivered += counters.m_Delivered;
        AddRecording(output);
    }
}

void HostReport::AddRecording(const HostOutput& output)
{
    const auto counters = m_Session.Recording().Counters(output.SourceId());
    if (!counters || !m_Options.Records())
        return;
    m_Sum.m_bRecording = true;
    m_Sum.m_Recorded += counters->Recorded;
    m_Sum.m_Failed += counters->Failed;
    const auto failure = m_Session.Recording().Failure(output.SourceId());
    if (!failure || (!m_Sum.m_FirstFailed.empty() && failure->Frame >= m_Sum.m_FirstFrame))
        return;
    m_Sum.m_FirstFrame = failure->Frame;
    m_Sum.m_FirstFailed = PictureName(output.SourceId(), failure->Frame);
    m_Sum.m_FirstError = static_cast<DWORD>(failure->Error);
}

void HostReport::PrintTable() const
{
    std::printf("\n%-7s %-10s %9s %10s %10s %8s %6s %9s   %s\n", "source", "size", "rotation", "presented", "delivered",
        "dropped", "late", "recorded", "present ms: median   99 %    pause");
    for (const HostOutput& output : m_Outputs)
        PrintRow(output);
    std::printf("\nThe pause is the driver's own 10 ms behind each flip; the times before it are without it. Late are\n"
                "frames that the client library was still at when the next one came.\n");
    for (const HostOutput& output : m_Outputs)
        if (const auto counters = m_Session.Recording().Counters(output.SourceId()); counters && counters->Dropped != 0)
            std::printf("Source %u: %llu delivered frames were not recorded, because writing pictures took longer.\n",
                output.SourceId(), counters->Dropped);
}

void HostReport::PrintRow(const HostOutput& output) const
{
    const HostDeliveryCounters delivery = m_Session.Delivery().Counters(output.SourceId());
    const auto counters = m_Session.Recording().Counters(output.SourceId());
    const std::string recorded = counters ? std::to_string(counters->Recorded) : std::string("-");
    std::printf("%-7u %-10s %9u %10llu %10llu %8llu %6llu %9s   %18.2f %6.2f %8.2f\n", output.SourceId(),
        SizeText(output.Source().m_Width, output.Source().m_Height).c_str(), output.Source().m_Degrees,
        delivery.m_Presented, delivery.m_Delivered, delivery.Dropped(), delivery.m_Late, recorded.c_str(),
        HostPercentile(output.Work(), 50), HostPercentile(output.Work(), 99), HostPercentile(output.Pause(), 50));
}

std::vector<std::string> HostReport::Caption(const HostOutput& output) const
{
    const HostDeliveryCounters counters = m_Session.Delivery().Counters(output.SourceId());
    std::vector<std::string> caption = {"source " + std::to_string(output.SourceId()) + ": " + output.Scene(),
        SizeText(output.Source().m_Width, output.Source().m_Height)};
    if (output.Source().m_Degrees != 0)
        caption.back() += " turned by " + std::to_string(output.Source().m_Degrees);
    caption.push_back(
        std::to_string(counters.m_Delivered) + " of " + std::to_string(counters.m_Presented) + " arrived");
    return caption;
}

void HostReport::WriteOverview() const
{
    std::vector<HostOverviewTile> tiles;
    for (const HostOutput& output : m_Outputs)
        tiles.push_back({m_Session.Delivery().LastFrame(output.SourceId()), Caption(output)});
    HostImage overview = HostMakeOverview(tiles);
    const DWORD error = SamplePictureWrite((m_Options.m_Output + L"\\overview.png").c_str(),
        reinterpret_cast<BYTE*>(overview.m_Pixels.data()), overview.m_Width, overview.m_Height);
    if (error != ERROR_SUCCESS)
        throw HostError(HostSystemText(error) + ": overview.png could not be written");
}

void HostReport::PrintClosing() const
{
    std::printf("\n%llu of %llu presented frames arrived", m_Sum.m_Delivered, m_Sum.m_Presented);
    if (m_Sum.m_bRecording)
        std::printf(", %llu pictures were recorded", m_Sum.m_Recorded);
    std::printf(".\n");
}

std::vector<std::string> HostReport::Complaints() const
{
    std::vector<std::string> complaints;
    const UINT64 wanted = UINT64{m_Options.m_Frames} * m_Outputs.size();
    if (m_Sum.m_Presented < wanted)
        complaints.push_back(
            "stopped after " + std::to_string(m_Sum.m_Presented) + " of " + std::to_string(wanted) + " frames");
    for (const HostOutput& output : m_Outputs)
        if (const HostDeliveryCounters counters = m_Session.Delivery().Counters(output.SourceId());
            counters.m_Presented != 0 && counters.m_Delivered == 0)
            complaints.push_back("no frame of source " + std::to_string(output.SourceId()) + " arrived");
    if (m_Options.m_bEveryFrame && m_Sum.m_Delivered < m_Sum.m_Presented)
        complaints.push_back(std::to_string(m_Sum.m_Presented - m_Sum.m_Delivered) + " frames did not arrive");
    const UINT64 missing = m_Sum.m_Delivered - m_Sum.m_Recorded;
    if (m_Sum.m_Failed != 0)
        complaints.push_back(HostSystemText(m_Sum.m_FirstError) + ": " + m_Sum.m_FirstFailed +
                             " could not be written; " + std::to_string(missing) + " of " +
                             std::to_string(m_Sum.m_Delivered) + " pictures are missing");
    else if (m_Sum.m_bRecording && m_Options.m_bEveryFrame && missing != 0)
        complaints.push_back(
            std::to_string(missing) + " of " + std::to_string(m_Sum.m_Delivered) + " pictures are missing");
    return complaints;
}
