#include "StressCuzz.h"

#include <windows.h>

#include <atomic>
#include <chrono>
#include <iterator>

namespace tesslo::test
{

namespace
{

// Of a thousand calls. Some runs are quiet, some are slow.
constexpr uint64_t kDelayed[] = {10, 50, 50, 250};
constexpr uint64_t kYielding = 150;
constexpr uint64_t kShortest = 100, kLongest = 2000;  ///< microseconds

bool s_bWanted;
std::atomic<uint64_t> s_Run;    ///< seed and number of the run, mixed
std::atomic<uint64_t> s_Rate;   ///< calls of a thousand that are delayed in this run
std::atomic<uint64_t> s_Calls;  ///< in the run so far

/// Spreads the bits of neighbouring numbers over the whole word.
uint64_t Mix(uint64_t value)
{
    value += 0x9E3779B97F4A7C15;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

void Delay()
{
    const DWORD error = GetLastError();
    const uint64_t chance = Mix(s_Run + s_Calls++);
    const uint64_t rate = s_Rate;
    if (chance % 1000 < rate)
    {
        // The platform's own sleep counts in milliseconds.
        const auto end = std::chrono::steady_clock::now() +
                         std::chrono::microseconds(kShortest + (chance >> 32) % (kLongest - kShortest));
        while (std::chrono::steady_clock::now() < end)
            SwitchToThread();
    }
    else if (chance % 1000 < rate + kYielding)
        SwitchToThread();
    SetLastError(error);
}

struct Behind
{
    ~Behind() { Delay(); }
};

/// Stands in for one function of the platform. @tparam Tag tells functions of the same type apart.
template <typename Tag, typename Function>
struct Delayed;

template <typename Tag, typename Result, typename... Arguments>
struct Delayed<Tag, Result(Arguments...)>
{
    inline static Result (*s_pOriginal)(Arguments...);
    static Result Call(Arguments... arguments)
    {
        Delay();
        // Who has woken another thread may fall behind it.
        const Behind behind;
        return s_pOriginal(arguments...);
    }
};

template <typename Function, typename Tag>
std::unique_ptr<ImportPatch> Patch(HMODULE hModule, const char* pDll, const char* pFunction, Tag)
{
    using Call = Delayed<Tag, Function>;
    return std::make_unique<ImportPatch>(hModule, pDll, pFunction, Call::Call, &Call::s_pOriginal);
}

}  // namespace

// A lambda has a type of its own.
#define TESSLO_DELAY(dll, function) m_Patches.push_back(Patch<decltype(function)>(hModule, dll, #function, [] {}))

StressCuzz::StressCuzz(HMODULE hModule)
{
    TESSLO_DELAY("kernel32.dll", CreateThread);
    TESSLO_DELAY("kernel32.dll", SetEvent);
    TESSLO_DELAY("kernel32.dll", ResetEvent);
    TESSLO_DELAY("kernel32.dll", WaitForSingleObject);
    TESSLO_DELAY("kernel32.dll", WaitForMultipleObjects);
    TESSLO_DELAY("kernel32.dll", AcquireSRWLockExclusive);
    TESSLO_DELAY("kernel32.dll", ReleaseSRWLockExclusive);
    TESSLO_DELAY("kernel32.dll", CloseHandle);
    TESSLO_DELAY("user32.dll", MsgWaitForMultipleObjectsEx);
    TESSLO_DELAY("user32.dll", PeekMessageW);
}

#undef TESSLO_DELAY

StressCuzz::~StressCuzz() = default;

void StressCuzz::Want()
{
    s_bWanted = true;
}

bool StressCuzz::IsWanted()
{
    return s_bWanted;
}

void StressCuzz::Begin(uint64_t seed, uint64_t run)
{
    s_Run = Mix(seed ^ Mix(run));
    s_Rate = kDelayed[s_Run % std::size(kDelayed)];
    s_Calls = 0;
}

}  // namespace tesslo::test
