// What LLVM's instrumentation counts, added up in a file that llvm-profdata reads: LLVM's own runtime library is not
// packaged for this target.
//
// Each module that is linked with this adds its counters to the file <module>.profraw in the folder that
// TESSLO_PROFILE_DIR names, when it is unloaded or its process ends. A process that is killed adds nothing. The file is
// a raw profile of version 10, as LLVM 19 has it.
#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>

extern "C" int __llvm_profile_runtime;  // what is instrumented asks for it
int __llvm_profile_runtime = 0;

namespace
{

/// A function's record: 64 bytes, of which nothing is read here.
struct alignas(8) FunctionData
{
    uint64_t m_Words[8];
};

// The linker sorts sections by what stands behind the $: these enclose the compiler's, which are named $M.
#define SECTION(name) __attribute__((section(name), used))
SECTION(".lprfd$A") FunctionData s_DataBegin = {};
SECTION(".lprfd$Z") FunctionData s_DataEnd = {};
SECTION(".lprfc$A") uint64_t s_CountersBegin = 0;
SECTION(".lprfc$Z") uint64_t s_CountersEnd = 0;
SECTION(".lprfn$A") const char s_NamesBegin = 0;
SECTION(".lprfn$Z") const char s_NamesEnd = 0;

struct Header
{
    uint64_t m_Magic;
    uint64_t m_Version;
    uint64_t m_BinaryIdsSize;
    uint64_t m_DataCount;
    uint64_t m_PaddingBeforeCounters;
    uint64_t m_CounterCount;
    uint64_t m_PaddingBehindCounters;
    uint64_t m_BitmapBytes;
    uint64_t m_PaddingBehindBitmap;
    uint64_t m_NamesSize;
    uint64_t m_CountersDelta;  ///< from the records to the counters
    uint64_t m_BitmapDelta;
    uint64_t m_NamesDelta;
    uint64_t m_VTableCount;
    uint64_t m_VTableNamesSize;
    uint64_t m_ValueKindLast;
};

constexpr uint64_t kMagic = 0xFF6C70726F667281;  // "\xFFlprofr\x81"
constexpr uint64_t kVersion = 10;
constexpr uint64_t kValueKindLast = 2;

/// A part of the module's memory that goes into the file.
struct Part
{
    const void* m_pBegin;
    size_t m_Size;
};

template <typename Item>
Part Between(const Item& begin, const Item& end)
{
    const auto* pFirst = reinterpret_cast<const char*>(&begin + 1);
    return {pFirst, static_cast<size_t>(reinterpret_cast<const char*>(&end) - pFirst)};
}

/// The file of this module; empty when nobody wants one.
std::wstring FileName()
{
    wchar_t folder[MAX_PATH] = L"", path[MAX_PATH] = L"";
    if (!GetEnvironmentVariableW(L"TESSLO_PROFILE_DIR", folder, MAX_PATH))
        return {};
    HMODULE hModule = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&s_CountersBegin), &hModule);
    GetModuleFileNameW(hModule, path, MAX_PATH);
    const wchar_t* pName = wcsrchr(path, L'\\');
    return std::wstring(folder) + L"\\" + (pName ? pName + 1 : path) + L".profraw";
}

/// Adds the counters to those that the file has, or begins the file.
void AddTo(HANDLE hFile)
{
    const Part data = Between(s_DataBegin, s_DataEnd);
    const Part counters = Between(s_CountersBegin, s_CountersEnd);
    const Part names = Between(s_NamesBegin, s_NamesEnd);
    const size_t namesPadded = (names.m_Size + 7) / 8 * 8;
    const size_t size = sizeof(Header) + data.m_Size + counters.m_Size + namesPadded;
    const HANDLE hMapping = CreateFileMappingW(hFile, nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(size), nullptr);
    auto* pBytes = static_cast<char*>(MapViewOfFile(hMapping, FILE_MAP_WRITE, 0, 0, size));
    if (pBytes)
    {
        // The records tell where their counters are in 32 bits.
        const auto delta = static_cast<uint32_t>(
            static_cast<const char*>(counters.m_pBegin) - static_cast<const char*>(data.m_pBegin));
        const Header header = {kMagic, kVersion, 0, data.m_Size / sizeof(FunctionData), 0,
            counters.m_Size / sizeof(uint64_t), 0, 0, 0, names.m_Size, delta, 0,
            reinterpret_cast<uint64_t>(names.m_pBegin), 0, 0, kValueKindLast};
        std::memcpy(pBytes, &header, sizeof(header));
        pBytes += sizeof(header);
        std::memcpy(pBytes, data.m_pBegin, data.m_Size);
        pBytes += data.m_Size;
        auto* pSums = reinterpret_cast<uint64_t*>(pBytes);
        const auto* pCounters = static_cast<const uint64_t*>(counters.m_pBegin);
        for (size_t i = 0; i < header.m_CounterCount; ++i)
            pSums[i] += pCounters[i];
        std::memcpy(pBytes + counters.m_Size, names.m_pBegin, names.m_Size);
        UnmapViewOfFile(reinterpret_cast<char*>(pSums) - data.m_Size - sizeof(header));
    }
    CloseHandle(hMapping);
}

struct AtEnd
{
    ~AtEnd()
    {
        const std::wstring name = FileName();
        if (name.empty())
            return;
        const HANDLE hMutex = CreateMutexW(nullptr, FALSE, L"TessloProfile");
        WaitForSingleObject(hMutex, INFINITE);
        const HANDLE hFile =
            CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, 0, nullptr);
        if (hFile != INVALID_HANDLE_VALUE)
        {
            AddTo(hFile);
            CloseHandle(hFile);
        }
        ReleaseMutex(hMutex);
        CloseHandle(hMutex);
    }
} s_AtEnd;

}  // namespace
