#include "StressCuzz.h"

#include "StressPauses.h"

namespace tesslo::test
{

namespace
{

bool s_bWanted;
StressPauses s_Pauses;

struct Behind
{
    ~Behind() { s_Pauses.Pause(); }
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
        s_Pauses.Pause();
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
    s_Pauses.Begin(seed, run);
}

}  // namespace tesslo::test
