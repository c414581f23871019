#include "interposer/run/RunReport.h"

#include <cstdio>
#include <nlohmann/json.hpp>
#include <span>

namespace
{

template <typename... Values>
std::string Format(const char* pFormat, Values... values)
{
    char text[512];
    std::snprintf(text, sizeof(text), pFormat, values...);
    return text;
}

std::string EndText(const RunResult& result)
{
    if (result.m_End == RunEnd::FrameLimit)
        return "ended behind the last frame that was asked for";
    if (result.m_End == RunEnd::TimeLimit)
        return "ended when its time was over";
    if (result.m_End == RunEnd::Crash)
        return Format("crashed: exception 0x%08lX", result.m_ExitCode);
    return Format("ended with code %ld", static_cast<long>(result.m_ExitCode));
}

std::string Counts(const char* pTitle, std::span<const RunCount> counts)
{
    std::string lines;
    for (const RunCount& count : counts)
        if (count.m_Count != 0)
            lines += Format("  %9lld  %s\n", count.m_Count, count.m_Name);
    return lines.empty() ? "" : pTitle + lines;
}

std::string Judgement(const RunRecord& record)
{
    std::string lines =
        Format("%lld frames: %lld equal, %lld different\n", record.m_Frames, record.m_Equal, record.m_Different);
    if (record.m_Different > 0)
        lines += Format("first different frame: %lld; worst: %lld of %lld pixels; greatest difference of a channel: "
                        "%lld\n",
            record.m_FirstDifferent, record.m_WorstPixels, record.m_WorstOf, record.m_GreatestDifference);
    if (record.m_Reads > 0)
        lines += Format("%lld reads of pixels: %lld different\n", record.m_Reads, record.m_DifferentReads);
    return lines;
}

nlohmann::json Table(std::span<const RunCount> counts)
{
    nlohmann::json table = nlohmann::json::object();
    for (const RunCount& count : counts)
        if (count.m_Count != 0)
            table[count.m_Name] = count.m_Count;
    return table;
}

bool Differs(const RunRecord& record)
{
    return record.m_Different + record.m_DifferentReads > 0;
}

}  // namespace

bool RunIsDefective(const RunResult& result)
{
    const RunRecord& record = result.m_Record;
    return record.m_Failures[0].m_Count != 0 || (Differs(record) && record.m_Limits[0].m_Count == 0);
}

std::string RunReportText(const RunResult& result)
{
    const RunRecord& record = result.m_Record;
    std::string text = Format("the program %s after %.1f s\n", EndText(result).c_str(), result.m_Seconds);
    if (record.m_Mode == RunMode::Off || record.m_Mode == RunMode::Carry)
        text += Format("%lld frames, %.1f a second; nothing was compared\n", record.m_Frames,
            static_cast<double>(record.m_Frames) / result.m_Seconds);
    else
        text += Judgement(record);
    if (record.m_Mode != RunMode::Off && record.m_Devices == 0)
        text += "the program created no device that the driver could draw for\n";
    text += Counts("limits of the driver that the program touched:\n", record.m_Limits);
    text += Counts("could not be carried:\n", record.m_Failures);
    text += Counts("calls of the driver:\n", record.m_Calls);
    if (Differs(record) && RunIsDefective(result))
        text += "DEFECT: something differs that no limit explains\n";
    return text;
}

std::string RunReportJson(const RunResult& result)
{
    static constexpr const char* kModes[] = {"compare", "answer", "carry", "off"};
    static constexpr const char* kEnds[] = {"itself", "frames", "seconds", "crash"};
    const RunRecord& record = result.m_Record;
    nlohmann::json report;
    report["mode"] = kModes[static_cast<size_t>(record.m_Mode)];
    report["end"] = kEnds[static_cast<size_t>(result.m_End)];
    report["exitCode"] = result.m_ExitCode;
    report["seconds"] = result.m_Seconds;
    report["devices"] = record.m_Devices;
    report["frames"] = record.m_Frames;
    report["equal"] = record.m_Equal;
    report["different"] = record.m_Different;
    report["firstDifferent"] = record.m_FirstDifferent;
    report["worstPixels"] = record.m_WorstPixels;
    report["worstOf"] = record.m_WorstOf;
    report["greatestDifference"] = record.m_GreatestDifference;
    report["reads"] = record.m_Reads;
    report["differentReads"] = record.m_DifferentReads;
    report["limits"] = Table(record.m_Limits);
    report["failures"] = Table(record.m_Failures);
    report["calls"] = Table(record.m_Calls);
    report["defect"] = RunIsDefective(result);
    return report.dump(2) + "\n";
}
