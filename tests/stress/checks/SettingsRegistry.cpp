// The values that the driver reads on attach: absent, of any type, too long, cut, with zeros inside.
#include "RegistryOverride.h"
#include "Settings.h"
#include "StressShortLife.h"
#include "TraceCapture.h"

#include <stdexcept>

namespace tesslo::test
{

namespace
{

using Bytes = std::vector<BYTE>;

constexpr wchar_t kServiceKey[] = L"System\\CurrentControlSet\\Services\\TessloWddmKmode";
constexpr wchar_t kMaskValue[] = L"DebugLevelUMD";
constexpr wchar_t kClientKey[] = L"Software\\Zembrilo\\Tesslo";
constexpr wchar_t kClientValue[] = L"DllNameInterface";
constexpr wchar_t kDefault[] = L"TessloClientDllSample.dll";
/// A library of the platform's that nothing else in the process loads: whoever is named is loaded.
constexpr wchar_t kNamed[] = L"msimg32.dll";
constexpr size_t kSixtyFourKilobytes = 64 << 10;

constexpr DWORD kAbsent = ~DWORD{0};  ///< in the place of a type

Bytes Joined(Bytes first, const Bytes& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

void Write(const wchar_t* pKey, const wchar_t* pValue, DWORD type, const Bytes& data)
{
    if (type == kAbsent)
        return;
    // The platform ends a text by itself when it finds a zero behind it.
    const Bytes unended = Joined(data, {0xFF, 0xFF});
    HKEY hKey = nullptr;
    LSTATUS status = RegCreateKeyExW(
        HKEY_LOCAL_MACHINE, pKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, &hKey, nullptr);
    if (status == ERROR_SUCCESS)
        status = RegSetValueExW(hKey, pValue, 0, type, unended.data(), static_cast<DWORD>(data.size()));
    RegCloseKey(hKey);
    if (status != ERROR_SUCCESS)
        throw std::runtime_error("the registry takes no value: " + std::to_string(status));
}

/// The characters alone, without a zero behind them.
Bytes Text(const std::wstring& text)
{
    const auto* pBytes = reinterpret_cast<const BYTE*>(text.data());
    return Bytes(pBytes, pBytes + text.size() * sizeof(wchar_t));
}

Bytes Terminated(const std::wstring& text)
{
    return Text(text + L'\0');
}

enum class Library
{
    Default,  ///< which is then written to the registry
    Named,
    None,
};

struct ClientCase
{
    const char* m_pName;
    DWORD m_Type;
    Bytes m_Data;
    Library m_Library;
};

std::vector<ClientCase> ClientCases()
{
    const Bytes named = Terminated(kNamed);
    return {
        {"absent", kAbsent, {}, Library::Default},
        {"as it should be", REG_SZ, named, Library::Named},
        {"unterminated", REG_SZ, Text(kNamed), Library::Named},
        {"to be expanded", REG_EXPAND_SZ, named, Library::Named},
        {"a list", REG_MULTI_SZ, Joined(named, Terminated(L"other.dll\0")), Library::Named},
        {"binary", REG_BINARY, named, Library::Named},
        {"with zeros inside", REG_SZ, Joined(named, Terminated(L"\0\0more")), Library::Named},
        {"zeros first", REG_SZ, Joined(Terminated(L""), named), Library::None},
        {"of half a character", REG_SZ, Joined(Text(kNamed), {'x'}), Library::None},
        {"one byte", REG_SZ, {'x'}, Library::None},
        {"empty", REG_SZ, Terminated(L""), Library::None},
        {"of no bytes", REG_SZ, {}, Library::None},
        {"a number", REG_DWORD, {1, 0, 0, 0}, Library::None},
        {"a long number", REG_QWORD, {1, 2, 3, 4, 5, 6, 7, 8}, Library::None},
        {"of an unknown type", 0x4711, named, Library::Named},
        {"128 characters", REG_SZ, Text(std::wstring(128, L'x')), Library::None},
        {"129 characters", REG_SZ, Text(std::wstring(129, L'x')), Library::Default},
        {"64 KiB", REG_SZ, Text(std::wstring(kSixtyFourKilobytes / sizeof(wchar_t), L'x')), Library::Default},
        {"64 KiB of zeros", REG_BINARY, Bytes(kSixtyFourKilobytes), Library::Default},
    };
}

const char* NameOf(Library library)
{
    return library == Library::Default ? "the default library"
           : library == Library::Named ? "the named library"
                                       : "no library";
}

Library Loaded()
{
    return GetModuleHandleW(kDefault) ? Library::Default : GetModuleHandleW(kNamed) ? Library::Named : Library::None;
}

StressSettingsCase CaseOf(const ClientCase& c)
{
    return {std::string("client library ") + c.m_pName, [c](const auto& tell) {
                const RegistryOverride registry;
                Write(kClientKey, kClientValue, c.m_Type, c.m_Data);
                tell(StressShortLife([&] {
                    if (const Library loaded = Loaded(); loaded != c.m_Library)
                        tell(std::string(NameOf(loaded)) + " instead of " + NameOf(c.m_Library));
                }));
                if ((registry.ClientDllName() == kDefault) != (c.m_Library == Library::Default))
                    tell("the registry holds another name behind it");
            }};
}

struct MaskCase
{
    const char* m_pName;
    DWORD m_Type;
    Bytes m_Data;
    bool m_bOn;
};

std::vector<MaskCase> MaskCases()
{
    return {
        {"absent", kAbsent, {}, false},
        {"0", REG_DWORD, {0, 0, 0, 0}, false},
        {"all", REG_DWORD, {0xFF, 0xF7, 0xFF, 0xFF}, true},  // but the log file
        {"of swapped bytes", REG_DWORD_BIG_ENDIAN, {1, 0, 0, 0}, true},
        {"binary", REG_BINARY, {1, 0, 0, 0}, true},
        {"one byte", REG_BINARY, {1}, true},
        {"of no bytes", REG_DWORD, {}, false},
        {"five bytes", REG_BINARY, {1, 0, 0, 0, 0}, false},
        {"a long number", REG_QWORD, {1, 0, 0, 0, 0, 0, 0, 0}, false},
        {"a text", REG_SZ, Terminated(L"1"), true},
        {"an unterminated text", REG_SZ, Text(L"11"), true},
        {"a longer text", REG_SZ, Terminated(L"11"), false},
        {"64 KiB", REG_BINARY, Bytes(kSixtyFourKilobytes, 0x11), false},
        {"64 KiB of text", REG_SZ, Text(std::wstring(kSixtyFourKilobytes / sizeof(wchar_t), L'1')), false},
    };
}

StressSettingsCase CaseOf(const MaskCase& c)
{
    return {std::string("trace mask ") + c.m_pName, [c](const auto& tell) {
                RegistryOverride registry;
                registry.SetClientDllName(kNamed);
                Write(kServiceKey, kMaskValue, c.m_Type, c.m_Data);
                const TraceCapture trace;
                tell(StressShortLife());
                if (trace.Lines().empty() == c.m_bOn)
                    tell(c.m_bOn ? "nothing is traced" : "the first line is " + trace.Lines()[0]);
            }};
}

}  // namespace

std::vector<StressSettingsCase> StressRegistryCases()
{
    std::vector<StressSettingsCase> cases;
    for (const ClientCase& c : ClientCases())
        cases.push_back(CaseOf(c));
    for (const MaskCase& c : MaskCases())
        cases.push_back(CaseOf(c));
    return cases;
}

}  // namespace tesslo::test
