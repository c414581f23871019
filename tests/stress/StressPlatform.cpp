#include "StressPlatform.h"

#include <shlobj.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <map>
#include <mutex>
#include <share.h>
#include <tuple>

namespace tesslo::test
{

namespace
{

/// What a function gives, or takes back by its first argument.
enum class Holds
{
    Nothing,
    Block,
    Moved,  ///< a block in place of the first argument's
    Handle,
    Key,  ///< by the eighth argument
    File,
    Window,
    Library,
};

std::mutex s_Mutex;
std::map<UINT_PTR, Holds> s_Held;  ///< what was given and did not come back
std::wstring s_LogFolder;
std::atomic<unsigned> s_WriteCalls;
std::atomic<void*> s_pFailing;  ///< the counter of the function that fails, null for none
std::atomic<unsigned> s_Countdown;
std::atomic<bool> s_bFailed;

void Give(UINT_PTR value, Holds what)
{
    std::lock_guard lock(s_Mutex);
    s_Held[value] = what;
}

void TakeBack(UINT_PTR value)
{
    std::lock_guard lock(s_Mutex);
    s_Held.erase(value);
}

/// Counts a call. @return whether it is the one that fails.
bool Counts(std::atomic<unsigned>& calls)
{
    ++calls;
    if (s_pFailing != &calls || --s_Countdown != 0)
        return false;
    s_pFailing = nullptr;
    s_bFailed = true;
    return true;
}

template <size_t kSize>
struct Name
{
    constexpr Name(const char (&text)[kSize]) { std::ranges::copy(text, m_Text); }
    char m_Text[kSize];
};

/// Stands in for one function. @tparam kFailure what a failing call answers.
template <Name kName, typename Function, Holds kGives, LONG_PTR kFailure>
struct Giver;

template <Name kName, Holds kGives, LONG_PTR kFailure, typename Result, typename... Arguments>
struct Giver<kName, Result(Arguments...), kGives, kFailure>
{
    static Result Call(Arguments... arguments)
    {
        if (Counts(s_Calls))
        {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return (Result)kFailure;
        }
        // Before the call: behind it another thread may be given the same.
        if constexpr (kGives == Holds::Moved)
            TakeBack(reinterpret_cast<UINT_PTR>(std::get<0>(std::tie(arguments...))));
        const Result result = s_pOriginal(arguments...);
        if constexpr (kGives == Holds::Key)
        {
            if (result == ERROR_SUCCESS)
                Give(reinterpret_cast<UINT_PTR>(*std::get<7>(std::tie(arguments...))), kGives);
        }
        else if constexpr (kGives != Holds::Nothing)
        {
            if (result)
                Give(reinterpret_cast<UINT_PTR>(result), kGives);
        }
        return result;
    }
    static std::unique_ptr<ImportPatch> Patch(HMODULE hModule, const char* pDll)
    {
        return std::make_unique<ImportPatch>(hModule, pDll, kName.m_Text, Call, &s_pOriginal);
    }
    static inline std::atomic<unsigned> s_Calls;
    static inline Result (*s_pOriginal)(Arguments...);
};

/// Stands in for one that takes back what another one gave, and never fails.
template <Name kName, typename Function>
struct Taker;

template <Name kName, typename Result, typename First>
struct Taker<kName, Result(First)>
{
    static Result Call(First first)
    {
        // Before the call: behind it another thread may be given the same.
        TakeBack(reinterpret_cast<UINT_PTR>(first));
        return s_pOriginal(first);
    }
    static std::unique_ptr<ImportPatch> Patch(HMODULE hModule, const char* pDll)
    {
        return std::make_unique<ImportPatch>(hModule, pDll, kName.m_Text, Call, &s_pOriginal);
    }
    static inline Result (*s_pOriginal)(First);
};

BOOL WINAPI LogFolder(HWND, wchar_t* pPath, int, BOOL)
{
    wcscpy_s(pPath, MAX_PATH, s_LogFolder.c_str());
    return TRUE;
}

/// What fails at writing is a file that was opened for reading alone.
FILE* OpenLog(const wchar_t* pPath, const wchar_t* pMode, int share)
{
    return Counts(s_WriteCalls) ? _wfsopen(L"NUL", L"r", share) : _wfsopen(pPath, pMode, share);
}

using LogFolderGiver = Giver<"SHGetSpecialFolderPathW", decltype(SHGetSpecialFolderPathW), Holds::Nothing, FALSE>;
using LogGiver = Giver<"_wfsopen", decltype(_wfsopen), Holds::File, 0>;

struct Row
{
    const char* m_pName;
    const char* m_pDll;
    std::unique_ptr<ImportPatch> (*m_pPatch)(HMODULE hModule, const char* pDll);
    std::atomic<unsigned>* m_pCalls;  ///< null for what never fails
};

template <Name kName, typename Function, Holds kGives = Holds::Nothing, LONG_PTR kFailure = 0>
Row Fails(const char* pDll)
{
    using Stand = Giver<kName, Function, kGives, kFailure>;
    return {kName.m_Text, pDll, Stand::Patch, &Stand::s_Calls};
}

template <Name kName, typename Function>
Row TakesBack(const char* pDll)
{
    return {kName.m_Text, pDll, Taker<kName, Function>::Patch, nullptr};
}

constexpr char kAdvapi[] = "advapi32.dll", kKernel[] = "kernel32.dll", kMsvcrt[] = "msvcrt.dll", kUser[] = "user32.dll";

/// Neither here are waits, whose calls are as many as it happens, nor what cannot fail on an object of one's own:
/// SetEvent, CloseHandle, DestroyWindow.
const Row kFailing[] = {
    Fails<"malloc", decltype(malloc), Holds::Block>(kMsvcrt),
    Fails<"calloc", decltype(calloc), Holds::Block>(kMsvcrt),
    Fails<"realloc", decltype(realloc), Holds::Moved>(kMsvcrt),
    Fails<"_strdup", decltype(_strdup), Holds::Block>(kMsvcrt),
    Fails<"CreateEventW", decltype(CreateEventW), Holds::Handle>(kKernel),
    Fails<"CreateEventA", decltype(CreateEventA), Holds::Handle>(kKernel),
    Fails<"CreateSemaphoreA", decltype(CreateSemaphoreA), Holds::Handle>(kKernel),
    Fails<"CreateThread", decltype(CreateThread), Holds::Handle>(kKernel),
    Fails<"SetThreadPriority", decltype(SetThreadPriority)>(kKernel),
    Fails<"TlsAlloc", decltype(TlsAlloc), Holds::Nothing, TLS_OUT_OF_INDEXES>(kKernel),
    Fails<"RegCreateKeyExW", decltype(RegCreateKeyExW), Holds::Key, ERROR_ACCESS_DENIED>(kAdvapi),
    Fails<"RegQueryValueExW", decltype(RegQueryValueExW), Holds::Nothing, ERROR_ACCESS_DENIED>(kAdvapi),
    Fails<"RegSetValueExW", decltype(RegSetValueExW), Holds::Nothing, ERROR_ACCESS_DENIED>(kAdvapi),
    Fails<"LoadLibraryW", decltype(LoadLibraryW), Holds::Library>(kKernel),
    Fails<"GetProcAddress", decltype(GetProcAddress)>(kKernel),
    Fails<"GetModuleHandleW", decltype(GetModuleHandleW)>(kKernel),
    Fails<"RegisterClassExW", decltype(RegisterClassExW)>(kUser),
    Fails<"CreateWindowExW", decltype(CreateWindowExW), Holds::Window>(kUser),
    {"SHGetSpecialFolderPathW", "shell32.dll",
        [](HMODULE hModule, const char* pDll) {
            auto pPatch = LogFolderGiver::Patch(hModule, pDll);
            LogFolderGiver::s_pOriginal = LogFolder;
            return pPatch;
        },
        &LogFolderGiver::s_Calls},
    {"_wfsopen", kMsvcrt,
        [](HMODULE hModule, const char* pDll) {
            auto pPatch = LogGiver::Patch(hModule, pDll);
            LogGiver::s_pOriginal = OpenLog;
            return pPatch;
        },
        &LogGiver::s_Calls},
    {"vfwprintf", nullptr, nullptr, &s_WriteCalls},
};

const Row kTakers[] = {
    TakesBack<"free", decltype(free)>(kMsvcrt),
    TakesBack<"CloseHandle", decltype(CloseHandle)>(kKernel),
    TakesBack<"RegCloseKey", decltype(RegCloseKey)>(kAdvapi),
    TakesBack<"fclose", decltype(fclose)>(kMsvcrt),
    TakesBack<"DestroyWindow", decltype(DestroyWindow)>(kUser),
    TakesBack<"FreeLibrary", decltype(FreeLibrary)>(kKernel),
};

}  // namespace

size_t StressPlatformCount()
{
    return std::size(kFailing);
}

std::string StressPlatformName(size_t function)
{
    return kFailing[function].m_pName;
}

bool StressPlatformRepeats(size_t function)
{
    const auto* pCalls = kFailing[function].m_pCalls;
    return pCalls != &LogFolderGiver::s_Calls && pCalls != &LogGiver::s_Calls && pCalls != &s_WriteCalls;
}

std::string StressHoldings::Text() const
{
    const std::pair<size_t, const char*> kinds[] = {{m_Blocks, "blocks"}, {m_Handles, "handles"}, {m_Keys, "keys"},
        {m_Files, "files"}, {m_Windows, "windows"}, {m_Libraries, "libraries"}};
    std::string text;
    for (const auto& [count, pKind] : kinds)
        if (count > 0)
            text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + pKind;
    return text;
}

StressPlatform::StressPlatform()
{
    s_LogFolder = m_Folder.Path().wstring();
    s_Held.clear();
    for (const Row& row : kFailing)
        *row.m_pCalls = 0;
    s_bFailed = false;
}

StressPlatform::~StressPlatform()
{
    s_pFailing = nullptr;
}

StressLoad::Patches StressPlatform::InternalPatch(HMODULE hModule)
{
    StressLoad::Patches patches;
    for (const Row& row : kFailing)
        if (row.m_pPatch)
            patches.push_back(row.m_pPatch(hModule, row.m_pDll));
    for (const Row& row : kTakers)
        patches.push_back(row.m_pPatch(hModule, row.m_pDll));
    return patches;
}

void StressPlatform::Fail(size_t function, unsigned nth)
{
    s_bFailed = false;
    s_Countdown = nth;
    s_pFailing = kFailing[function].m_pCalls;
}

bool StressPlatform::HasFailed() const
{
    return s_bFailed;
}

unsigned StressPlatform::Calls(size_t function) const
{
    return *kFailing[function].m_pCalls;
}

StressHoldings StressPlatform::Holdings() const
{
    std::lock_guard lock(s_Mutex);
    const auto count = [](Holds what) {
        return static_cast<size_t>(std::ranges::count(s_Held, what, &decltype(s_Held)::value_type::second));
    };
    return {count(Holds::Block) + count(Holds::Moved), count(Holds::Handle), count(Holds::Key), count(Holds::File),
        count(Holds::Window), count(Holds::Library)};
}

}  // namespace tesslo::test
