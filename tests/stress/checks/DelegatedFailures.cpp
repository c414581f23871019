#include "DelegatedFailures.h"

#include "FakePixels.h"
#include "Faults.h"
#include "StressFenceWatch.h"
#include "StressHeap.h"
#include "StressRun.h"
#include "StressScenario.h"
#include "StressText.h"

#include <atomic>
#include <map>
#include <memory>

namespace tesslo::test
{

namespace
{

constexpr HRESULT kDeviceHung = static_cast<HRESULT>(0x88760874);
constexpr HRESULT kDeviceRemoved = static_cast<HRESULT>(0x88760870);
constexpr HRESULT kCodes[] = {
    D3DERR_DEVICELOST, kDeviceHung, kDeviceRemoved, D3DERR_OUTOFVIDEOMEMORY, E_OUTOFMEMORY, D3DERR_INVALIDCALL};

/// How a call goes wrong.
enum class Wrong
{
    Once,        ///< answers the code at its n-th call
    FromNowOn,   ///< and at all behind it
    Fault,       ///< raises an access violation
    Nothing,     ///< succeeds and gives nothing
    ShortPitch,  ///< gives rows that are shorter than they can be
};

struct Case
{
    std::string m_Method;
    unsigned m_Nth;
    Wrong m_Wrong;
    HRESULT m_hCode;
};

/// "surface#2.LockRect(out, null, 0)" becomes "surface.LockRect", as scripts name it.
std::string MethodOf(const std::string& line)
{
    std::string method = line.substr(0, line.find('('));
    const size_t number = method.find('#');
    const size_t point = method.rfind('.');
    if (number != std::string::npos && point != std::string::npos)
        method.erase(number, point - number);
    return method;
}

/// The calls of an undisturbed life, by method.
std::map<std::string, unsigned> CallsOf(const FakeDevice& fake)
{
    std::map<std::string, unsigned> calls;
    for (const std::string& line : fake.Lines())
        ++calls[MethodOf(line)];
    return calls;
}

std::vector<Case> CasesOf(const std::map<std::string, unsigned>& calls)
{
    std::vector<Case> cases;
    for (const auto& [method, count] : calls)
        for (unsigned nth = 1; nth <= count; ++nth)
        {
            for (HRESULT hCode : kCodes)
                cases.push_back({method, nth, Wrong::Once, hCode});
            cases.push_back({method, nth, Wrong::FromNowOn, D3DERR_DEVICELOST});
            cases.push_back({method, nth, Wrong::Fault, S_OK});
            cases.push_back({method, nth, Wrong::Nothing, S_FALSE});
            if (method.ends_with(".LockRect"))
                cases.push_back({method, nth, Wrong::ShortPitch, S_OK});
        }
    return cases;
}

std::string Describe(const Case& c)
{
    const std::string call = c.m_Method + " call " + std::to_string(c.m_Nth);
    switch (c.m_Wrong)
    {
    case Wrong::Once:
        return call + " answers " + StressHex(c.m_hCode) + ": ";
    case Wrong::FromNowOn:
        return call + " and all behind it answer " + StressHex(c.m_hCode) + ": ";
    case Wrong::Fault:
        return call + " faults: ";
    case Wrong::Nothing:
        return call + " succeeds with nothing: ";
    case Wrong::ShortPitch:
        return call + " answers a short pitch: ";
    }
    return call;
}

/// Sets the script of a case. Calls are counted by the script: the fake's record is empty.
void Script(FakeDevice& fake, const Case& c)
{
    if (c.m_Wrong == Wrong::Once || c.m_Wrong == Wrong::Nothing)
        return fake.Fail(c.m_Method, c.m_hCode, c.m_Nth);
    // Workers and presenter may both call: no call is counted twice.
    const auto pCount = std::make_shared<std::atomic<unsigned>>(0);
    fake.On(c.m_Method, [&fake, c, pCount] {
        if (++*pCount != c.m_Nth)
            return;
        if (c.m_Wrong == Wrong::Fault)
            RaiseAccessViolation();
        if (c.m_Wrong == Wrong::ShortPitch)
            FakePixels::ShortenNextLock();
        else
            fake.Fail(c.m_Method, c.m_hCode);
    });
}

/// Surfaces of a life end at pages without access where a pitch lies.
FakeRows RowsOf(const Case& c)
{
    FakeRows rows;
    rows.m_bFenced = c.m_Wrong == Wrong::ShortPitch;
    return rows;
}

}  // namespace

void StressDelegatedFailures(StressRun& run)
{
    StressFenceWatch watch;
    StressHeap heap;
    std::optional<StressDriver> driver(std::in_place);
    run.Expect(heap.Failure().empty(), heap.Failure());
    StressUndisturbedLife(run, *driver);
    const std::vector<Case> cases = CasesOf(CallsOf(driver->m_Fake));
    driver->Clean();
    run.SetCases(cases.size());
    while (run.Next())
    {
        const Case& c = cases[run.Number()];
        Script(driver->m_Fake, c);
        driver->m_Fake.SetRows(RowsOf(c));
        watch.Enter("an entry");
        StressScenario(*driver).Run();
        watch.Enter(nullptr);
        for (const std::string& touch : watch.Take())
            run.Find(Describe(c) + touch);
        const Lines live = driver->m_Fake.LiveObjects();
        const uint64_t left = driver->Leftovers();
        // What a fault interrupts stays half done, and keeps what it has made so far.
        run.Expect(left == 0 || c.m_Wrong == Wrong::Fault, Describe(c) + std::to_string(left) +
                                                               " objects or references live on" +
                                                               (live.empty() ? "" : ", the first is " + live[0]));
        if (left == 0)
            driver->Clean();
        else
        {
            driver.reset();
            heap.GiveBack();
            driver.emplace();
        }
    }
}

}  // namespace tesslo::test
