#include "PlatformFailures.h"

#include "StressPlatform.h"
#include "StressRun.h"
#include "StressScenario.h"

#include "util/UMDUtilDebugTrace.h"

namespace tesslo::test
{

namespace
{

constexpr DWORD kTraceMask = UMDTRACE_LOGFILE | UMDTRACE_ERROR;

/// One failing call.
struct Case
{
    size_t m_Function;
    unsigned m_Nth;
    bool m_bNamed;  ///< whether the registry names the client library
};

/// What one life called, and what it left.
struct Life
{
    std::vector<unsigned> m_Calls;  ///< of each function
    StressHoldings m_Left;
    bool m_bFailed = false;  ///< whether the call that should fail was made
};

/// Loads the driver, lives and unloads it. @param pCase null for nothing that fails.
Life Live(StressRun& run, bool named, const std::string& what, const Case* pCase = nullptr)
{
    StressPlatform platform;
    if (pCase)
        platform.Fail(pCase->m_Function, pCase->m_Nth);
    try
    {
        StressDriver driver(kTraceMask, named ? StressDriver::kTestClient : nullptr);
        if (pCase)
            StressScenario(driver).Run();
        else if (named)
            StressUndisturbedLife(run, driver);
        const uint64_t left = driver.Leftovers();
        run.Expect(left == 0, what + std::to_string(left) + " objects or references live on");
    }
    catch (const std::runtime_error& error)
    {
        run.Find(what + error.what());
    }
    run.Expect(platform.Missing().empty(), platform.Missing());
    Life life;
    for (size_t function = 0; function < StressPlatformCount(); ++function)
        life.m_Calls.push_back(platform.Calls(function));
    life.m_Left = platform.Holdings();
    life.m_bFailed = platform.HasFailed();
    return life;
}

std::vector<Case> CasesOf(const Life& named, const Life& unnamed)
{
    std::vector<Case> cases;
    for (size_t function = 0; function < StressPlatformCount(); ++function)
        for (unsigned nth = 1; nth <= named.m_Calls[function]; ++nth)
            cases.push_back({function, nth, true});
    for (size_t function = 0; function < StressPlatformCount(); ++function)
        for (unsigned nth = 1; nth <= unnamed.m_Calls[function]; ++nth)
            cases.push_back({function, nth, false});
    return cases;
}

std::string Describe(const Case& c)
{
    return StressPlatformName(c.m_Function) + " call " + std::to_string(c.m_Nth) +
           (c.m_bNamed ? " fails: " : " fails, without a name in the registry: ");
}

}  // namespace

void StressPlatformFailures(StressRun& run)
{
    const Life named = Live(run, true, "undisturbed, ");
    const Life unnamed = Live(run, false, "undisturbed, ");
    run.Expect(named.m_Left == StressHoldings{}, "undisturbed, the driver keeps " + named.m_Left.Text());
    const std::vector<Case> cases = CasesOf(named, unnamed);
    run.SetCases(cases.size());
    while (run.Next())
    {
        const Case& c = cases[run.Number()];
        const Life life = Live(run, c.m_bNamed, Describe(c), &c);
        run.Expect(life.m_bFailed || !StressPlatformRepeats(c.m_Function), Describe(c) + "it is not called");
        run.Expect(life.m_Left == StressHoldings{}, Describe(c) + "the driver keeps " + life.m_Left.Text());
        Live(run, true, "behind it, ");
    }
}

}  // namespace tesslo::test
