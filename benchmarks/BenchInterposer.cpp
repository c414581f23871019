// A program of a thousand draws a frame: alone, with the interposer's d3d9.dll, and drawn by the driver too.
#include "BenchDriver.h"

#include "BenchTimer.h"
#include "host/runtime/HostError.h"
#include "interposer/run/RunProcess.h"

#include <filesystem>

namespace
{

constexpr UINT kRounds = 9;
constexpr double kFrames = 20;  // that the program measures

/// @param folder of the program, beside this one: with a backslash at its end, or empty.
/// @return frames a second of one run.
double RunOnce(const std::wstring& folder, RunMode mode)
{
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const std::wstring program =
        std::filesystem::path(own).parent_path().wstring() + L"\\" + folder + L"bench_program.exe";
    RunRecord settings{};
    settings.m_Mode = mode;
    const RunResult result = RunProgram(settings, program, {}, 120'000);
    if (result.m_ExitCode == 0 || result.m_End != RunEnd::Itself)
        throw HostError("the program of the interposer's rows did not come to its end");
    if (mode == RunMode::Carry && result.m_Record.m_Devices == 0)
        throw HostError("the interposer's d3d9.dll was not loaded: WINEDLLOVERRIDES lacks d3d9=n,b");
    return kFrames * 10'000 / result.m_ExitCode;
}

}  // namespace

void BenchInterposer(BenchReport& report)
{
    const std::string off = "interposer, mode off", carried = "interposer, drawn by the driver too";
    if (!report.WantsAny({off, carried}))
        return;
    std::vector<double> plain, withOff, withCarry;
    for (UINT round = 0; round < kRounds; ++round)
    {
        plain.push_back(RunOnce(L"", RunMode::Off));
        withOff.push_back(RunOnce(L"interposer\\", RunMode::Off));
        withCarry.push_back(RunOnce(L"interposer\\", RunMode::Carry));
    }
    if (report.Wants(off))
        report.AddRate(off, BenchMedian(withOff), "plain program", BenchMedian(plain), 0.97);
    // It draws twice.
    if (report.Wants(carried))
        report.AddRate(carried, BenchMedian(withCarry), "plain program", BenchMedian(plain), 0.45);
}
