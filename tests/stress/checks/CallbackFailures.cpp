#include "CallbackFailures.h"

#include "StressRun.h"
#include "StressScenario.h"
#include "StressText.h"

namespace tesslo::test
{

namespace
{

constexpr HRESULT kCodes[] = {E_FAIL, E_OUTOFMEMORY, E_INVALIDARG, D3DERR_OUTOFVIDEOMEMORY, D3DERR_DEVICELOST};

/// What the entry answers whose callback fails.
enum class Answer
{
    AsEver,  ///< the failure is told in the trace alone
    Code,    ///< the callback's
    Fail,    ///< E_FAIL
};

/// One row for each of kStressCallbacks.
constexpr Answer kAnswers[] = {
    Answer::AsEver,  // pfnAllocateCb
    Answer::AsEver,  // pfnDeallocateCb
    Answer::Code,    // pfnSetDisplayModeCb
    Answer::AsEver,  // pfnPresentCb
    Answer::Code,    // pfnRenderCb
    Answer::Code,    // pfnLockCb
    Answer::Code,    // pfnUnlockCb
    Answer::AsEver,  // pfnEscapeCb
    Answer::Fail,    // pfnCreateContextCb
    Answer::AsEver,  // pfnDestroyContextCb
};
static_assert(std::size(kAnswers) == kStressCallbacks.size());

/// One failing call.
struct Case
{
    size_t m_Callback;
    unsigned m_Nth;
    size_t m_Step;  ///< the step of the undisturbed life that makes the call
    HRESULT m_hCode;
};

std::vector<Case> CasesOf(const std::vector<StressStep>& steps)
{
    std::vector<Case> cases;
    for (size_t callback = 0; callback < kStressCallbacks.size(); ++callback)
    {
        size_t before = 0;
        for (size_t step = 0; step < steps.size(); ++step)
        {
            const size_t behind = steps[step].m_Callbacks[callback];
            for (size_t nth = before + 1; nth <= behind; ++nth)
                for (HRESULT hCode : kCodes)
                    cases.push_back({callback, static_cast<unsigned>(nth), step, hCode});
            before = behind;
        }
    }
    return cases;
}

std::string Describe(const Case& c)
{
    return std::string(kStressCallbacks[c.m_Callback]) + " call " + std::to_string(c.m_Nth) + " answers " +
           StressHex(c.m_hCode) + ": ";
}

/// The steps up to the failing one are the undisturbed ones; that one answers what its callback's row says.
void ExpectAnswers(
    StressRun& run, const Case& c, const std::vector<StressStep>& steps, const std::vector<StressStep>& undisturbed)
{
    if (!run.Expect(steps.size() > c.m_Step, Describe(c) + "the life ended before the failing step"))
        return;
    for (size_t i = 0; i <= c.m_Step; ++i)
    {
        const Answer answer = i < c.m_Step ? Answer::AsEver : kAnswers[c.m_Callback];
        const HRESULT hExpected = answer == Answer::Code   ? c.m_hCode
                                  : answer == Answer::Fail ? E_FAIL
                                                           : undisturbed[i].m_hResult;
        run.Expect(steps[i].m_hResult == hExpected, Describe(c) + steps[i].m_Entry + " answers " +
                                                        StressHex(steps[i].m_hResult) + " instead of " +
                                                        StressHex(hExpected));
    }
}

}  // namespace

void StressCallbackFailures(StressRun& run)
{
    StressDriver driver;
    const std::vector<StressStep> undisturbed = StressUndisturbedLife(run, driver);
    driver.Clean();
    const std::vector<Case> cases = CasesOf(undisturbed);
    run.SetCases(cases.size());
    while (run.Next())
    {
        const Case& c = cases[run.Number()];
        driver.m_Kernel.Fail(kStressCallbacks[c.m_Callback], c.m_hCode, c.m_Nth);
        const std::vector<StressStep> steps = StressScenario(driver).Run();
        ExpectAnswers(run, c, steps, undisturbed);
        const uint64_t left = driver.Leftovers();
        run.Expect(left == 0, Describe(c) + std::to_string(left) + " objects or references live on");
        run.SetReferences(left);
        driver.Clean();
    }
}

}  // namespace tesslo::test
