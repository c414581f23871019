#include "host/program/HostReport.h"

#include "host/program/HostStatistics.h"
#include "host/runtime/HostSession.h"

#include <cstdio>

namespace
{

void PrintRow(const HostOutput& output, const HostDeliveryCounters& delivery, const HostRecording& recording)
{
    const std::string size = std::to_string(output.Source().m_Width) + "x" + std::to_string(output.Source().m_Height);
    const auto counters = recording.Counters(output.SourceId());
    const std::string recorded = counters ? std::to_string(counters->Recorded) : std::string("-");
    std::printf("%-7u %-10s %9u %10llu %10llu %8llu %6llu %9s   %18.2f %6.2f %8.2f\n", output.SourceId(), size.c_str(),
        output.Source().m_Degrees, delivery.m_Presented, delivery.m_Delivered, delivery.Dropped(), delivery.m_Late,
        recorded.c_str(), HostPercentile(output.Work(), 50), HostPercentile(output.Work(), 99),
        HostPercentile(output.Pause(), 50));
}

// Pictures that are missing although the client library had the frame.
void PrintNotRecorded(UINT sourceId, const TessloSampleCounters& counters)
{
    if (counters.Dropped != 0)
        std::printf("Source %u: %llu delivered frames were not recorded, because writing pictures took longer.\n",
            sourceId, counters.Dropped);
    if (counters.Failed != 0)
        std::printf("Source %u: %llu delivered frames could not be recorded.\n", sourceId, counters.Failed);
}

}  // namespace

void HostPrintReport(const std::vector<HostOutput>& outputs, HostSession& session)
{
    std::printf("\n%-7s %-10s %9s %10s %10s %8s %6s %9s   %s\n", "source", "size", "rotation", "presented", "delivered",
        "dropped", "late", "recorded", "present ms: median   99 %    pause");
    for (const HostOutput& output : outputs)
        PrintRow(output, session.Delivery().Counters(output.SourceId()), session.Recording());
    std::printf("\nThe pause is the driver's own 10 ms behind each flip; the times before it are without it. Late are\n"
                "frames that the client library was still at when the next one came.\n");
    for (const HostOutput& output : outputs)
        if (const auto counters = session.Recording().Counters(output.SourceId()))
            PrintNotRecorded(output.SourceId(), *counters);
}
