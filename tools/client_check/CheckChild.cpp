#include "tools/client_check/CheckChild.h"

#include "tools/client_check/CheckFolder.h"
#include "tools/client_check/CheckPages.h"
#include "tools/process/ChildCrash.h"
#include "tools/process/ChildMemory.h"
#include "tools/process/ChildProcess.h"

#include <io.h>

#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <thread>

namespace
{

constexpr double kLookEvery = 0.1;              ///< seconds between looks at the child's board
constexpr DWORD kExceptionOfGcc = 0x20474343;   ///< a C++ exception of gcc's and clang's kind
constexpr DWORD kExceptionOfMsvc = 0xE06D7363;  ///< and of the platform's own compiler
constexpr char kOwnCode[] = " tesslo_client_check.exe+";
constexpr std::string_view kNowhere = "; in";  ///< before the places, and all that is left where they are its own

/// What the check itself writes goes to the parent; the library's own output must not come between.
FILE* TakeOutput()
{
    FILE* pStream = _fdopen(_dup(_fileno(stdout)), "w");
    if (!std::freopen("NUL", "w", stdout))
        throw std::runtime_error("no null device");
    SetStdHandle(STD_OUTPUT_HANDLE, reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stdout))));
    return pStream;
}

/// Where it was, and what the address means that it must not touch.
void Explain(FILE* pStream, const EXCEPTION_RECORD& record)
{
    const char* pStep = CheckStep::Current();
    std::fprintf(pStream, " in %s", pStep ? pStep : "a thread of the library's own");
    const DWORD code = record.ExceptionCode;
    std::string meaning;
    if (code == EXCEPTION_ACCESS_VIOLATION && record.NumberParameters >= 2)
        meaning = CheckPages::MeaningOf(reinterpret_cast<const void*>(record.ExceptionInformation[1]));
    if (code == kExceptionOfGcc || code == kExceptionOfMsvc)
        std::fprintf(pStream, ": an exception of C++ has left the export");
    else if (!meaning.empty())
        std::fprintf(pStream, ": it %s %s", record.ExceptionInformation[0] == 0 ? "reads" : "writes", meaning.c_str());
    std::fprintf(pStream, ";");
}

/// Ends a child in which no step begins or ends for a while.
class Patience
{
public:
    Patience(ChildProcess& child, const CheckBoard& board, double seconds)
        : m_Thread([this, &child, &board, seconds] { Watch(child, board, seconds); })
    {
    }
    ~Patience() { Join(); }
    Patience(const Patience&) = delete;
    Patience& operator=(const Patience&) = delete;

    /// Waits for the child's end. @return whether it had to be ended, and what it was at then.
    const std::string& Join()
    {
        if (m_Thread.joinable())
            m_Thread.join();
        return m_HungIn;
    }

private:
    void Watch(ChildProcess& child, const CheckBoard& board, double seconds)
    {
        LONG64 beats = board.m_Beats;
        for (double still = 0; !child.Wait(kLookEvery); still += kLookEvery)
        {
            if (beats != board.m_Beats)
                still = 0;
            beats = board.m_Beats;
            if (still < seconds)
                continue;
            m_HungIn = board.Unfinished();
            if (m_HungIn.empty())
                m_HungIn = "the check itself";
            child.Kill();
        }
    }

    std::string m_HungIn;
    std::thread m_Thread;
};

/// Lines of the child, as they come.
void TakeLine(const std::string& line, CheckResult* pResult, std::string* pCrash, bool* pEnded)
{
    const auto rest = [&](size_t size) { return line.substr(size - 1); };
    if (line.starts_with(CheckRun::kFinding))
        pResult->m_Findings.push_back(rest(sizeof(CheckRun::kFinding)));
    else if (line.starts_with(kChildCrash))
        *pCrash = rest(sizeof(kChildCrash));
    else if (line.starts_with(CheckRun::kFigure))
    {
        const std::string figure = rest(sizeof(CheckRun::kFigure));
        const size_t blank = figure.find(' ');
        pResult->m_Figures[figure.substr(0, blank)] = std::stod(figure.substr(blank));
    }
    else if (line == CheckRun::kEnd)
        *pEnded = true;
}

std::string EndOf(const std::string& crash, DWORD code, const std::string& step)
{
    if (!crash.empty())
    {
        std::string known = crash.substr(0, crash.find(kOwnCode));
        if (known.ends_with(kNowhere))
            known.resize(known.size() - kNowhere.size());
        return "exception " + known;
    }
    char text[32];
    std::snprintf(text, sizeof(text), "0x%08lX", code);
    return "the process ended with code " + std::string(text) + (step.empty() ? "" : " in " + step);
}

std::string HungText(const std::string& step, double seconds)
{
    return step + " did not return within " + std::to_string(static_cast<int>(seconds)) + " s";
}

}  // namespace

void CheckRunChild(const CheckRow& row, const CheckOptions& options)
{
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);  // nobody sees a dialog
    FILE* pStream = TakeOutput();
    ChildReportCrashes(pStream, Explain);
    auto* pBoard = static_cast<CheckBoard*>(ChildMemory::View(options.m_hBoard, sizeof(CheckBoard)));
    CheckRun run(options, *pBoard, pStream);
    try
    {
        row.m_pRun(run);
    }
    catch (const CheckFailure& failure)
    {
        run.Find(failure.what());
    }
    run.End();
    const CheckStep step(*pBoard, "the end of the process (DllMain, DLL_PROCESS_DETACH)");
    ExitProcess(0);
}

CheckResult CheckStartChild(const CheckRow& row, const CheckOptions& options)
{
    const auto begin = std::chrono::steady_clock::now();
    const ChildMemory memory(sizeof(CheckBoard));
    const auto& board = *static_cast<const CheckBoard*>(memory.Get());
    CheckOptions forChild = options;
    forChild.m_Child = row.m_pName;
    forChild.m_hBoard = memory.Handle();
    const CheckFolder folder;
    CheckResult result;
    result.m_Name = row.m_pName;
    result.m_What = row.m_pWhat;
    std::string crash;
    bool ended = false;
    ChildProcess child(ChildProcess::OwnPath() + CheckChildArguments(forChild), folder.Path().c_str());
    Patience patience(child, board, options.m_Patience);
    child.ReadLines([&](const std::string& line) { TakeLine(line, &result, &crash, &ended); });
    const std::string hungIn = patience.Join();
    if (!hungIn.empty())
        result.m_Findings.push_back(HungText(hungIn, options.m_Patience));
    else if (!ended || child.ExitCode() != 0)
        result.m_Findings.push_back(EndOf(crash, child.ExitCode(), board.Unfinished()));
    if (!result.m_Findings.empty())
        result.m_Change = row.m_pChange;
    result.m_Seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return result;
}
