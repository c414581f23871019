// The device's function table: every slot, its entry's trace line and result, and the guard of every entry.
#include "device/entries/UMDDdiDeviceFuncs.h"

#include "DeviceFixture.h"
#include "EntryCases.h"
#include "Faults.h"

#include "device/entries/UMDDdiEntries.h"
#include "video/UMDDdiDeviceVideo.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>

using namespace tesslo::test;

namespace
{

constexpr UINT kSlotCount = 121;
static_assert(sizeof(D3DDDI_DEVICEFUNCS) == kSlotCount * sizeof(void*));

/// The table as the driver fills it, over memory that is not zero before.
struct FilledTable
{
    FilledTable()
    {
        memset(&m_Funcs, 0xCC, sizeof m_Funcs);
        UMDDdiFillDeviceFuncs(&m_Funcs);
    }

    const void* Slot(UINT slot) const { return reinterpret_cast<void* const*>(&m_Funcs)[slot]; }

    D3DDDI_DEVICEFUNCS m_Funcs;
};

/// Faults once, on this thread, where the driver prints its first line that is not the entry's own: inside the
/// guarded call, whatever that call does.
class FaultOnTrace
{
public:
    void Arm(void (*pFault)(), const char* pEntryName)
    {
        s_pFault = pFault;
        s_EntryLine = L"=> " + std::wstring(pEntryName, pEntryName + strlen(pEntryName));
    }

    bool IsArmed() const { return s_pFault != nullptr; }

private:
    static void WINAPI Output(LPCWSTR pText)
    {
        if (s_pFault && GetCurrentThreadId() == s_ThreadId &&
            std::wstring(pText).find(s_EntryLine) == std::wstring::npos)
            std::exchange(s_pFault, nullptr)();
        s_pOriginal(pText);
    }

    static inline void (*s_pFault)() = nullptr;
    static inline std::wstring s_EntryLine;
    static inline void(WINAPI* s_pOriginal)(LPCWSTR) = nullptr;
    static inline const DWORD s_ThreadId = GetCurrentThreadId();
    ImportPatch m_Patch{nullptr, "KERNEL32.dll", "OutputDebugStringW", Output, &s_pOriginal};
};

struct Fault
{
    void (*m_pRaise)();
    const char* m_pLine;
};

const Fault kFaults[]{
    {RaiseAccessViolation, "EXCEPTION_ACCESS_VIOLATION\n"},
    {RaiseDivisionByZero, "EXCEPTION_INT_DIVIDE_BY_ZERO\n"},
    {[] { RaiseCode(0xE0000123); }, "EXCEPTION_XXX -536870621 unknown\n"},
};

std::string GuardLine(const char* pEntryName)
{
    return std::string("Exception in DDI function! ") + pEntryName + " failed!\n";
}

/// The entries that work on a resource without a method of the device; they are followed where resources are tested.
bool IsResourceEntry(const ForwardedEntry& entry)
{
    static const std::set<std::string> names{
        "UMDDdiLock", "UMDDdiUnlock", "UMDDdiCreateResource", "UMDDdiOpenResource"};
    return names.contains(entry.m_pName);
}

/// The method that an entry calls: the device's of the same name, but for a few.
std::string TargetOf(const ForwardedEntry& entry)
{
    static const std::map<std::string, std::string> others{
        {"UMDDdiDestroyDevice", "UMDDdiDevice::DestroyContext"},
        {"UMDDdiCreateVideoProcessDevice", "UMDDdiDeviceVideo::Create"},
        {"UMDDdiDestroyVideoProcessDevice", "UMDDdiDevice::DeviceVideoProcessDestroy"},
        {"UMDDdiVideoProcessBeginFrame", "UMDDdiDeviceVideo::BeginFrame"},
        {"UMDDdiVideoProcessEndFrame", "UMDDdiDeviceVideo::EndFrame"},
        {"UMDDdiVideoProcessSetRenderTarget", "UMDDdiDeviceVideo::SetRenderTarget"},
        {"UMDDdiVideoProcessBlt", "UMDDdiDeviceVideo::Blt"},
    };
    const auto other = others.find(entry.m_pName);
    return other != others.end() ? other->second : std::string("UMDDdiDevice::") + (entry.m_pName + strlen("UMDDdi"));
}

/// The first "Class::Method" among the lines that say ">>> Class::Method ...".
std::string FirstMethodOf(const Lines& lines)
{
    for (const std::string& line : lines)
        if (line.starts_with(">>> UMDDdiDevice"))
            return line.substr(4, line.find_first_of(" \n", 4) - 4);
    return "";
}

class UMDDdiDeviceFuncsTest : public DeviceFixture
{
protected:
    FilledTable m_Table;
};

}  // namespace

TEST(UMDDdiFillDeviceFuncsTest, EverySlot_Filled_HoldsItsEntryOrNull)
{
    const FilledTable table;
    std::vector<const void*> expected(kSlotCount, nullptr);
    for (const ForwardedEntry& entry : ForwardedEntries())
        expected[entry.m_Slot] = entry.m_pEntry;
    for (const RefusedEntry& entry : RefusedEntries())
        expected[entry.m_Slot] = entry.m_pEntry;
    for (UINT slot = 0; slot < kSlotCount; slot++)
        EXPECT_EQ(table.Slot(slot), expected[slot]) << "slot " << slot;
}

TEST(UMDDdiFillDeviceFuncsTest, EverySlot_Counted_Is68ForwardedAnd50RefusedAnd3Null)
{
    const FilledTable table;
    EXPECT_EQ(ForwardedEntries().size(), 68U);
    EXPECT_EQ(RefusedEntries().size(), 50U);
    EXPECT_EQ(table.m_Funcs.pfnLockAsync, nullptr);
    EXPECT_EQ(table.m_Funcs.pfnUnlockAsync, nullptr);
    EXPECT_EQ(table.m_Funcs.pfnRename, nullptr);
}

TEST(UMDDdiFillDeviceFuncsTest, RefusedEntry_EachLevelBit_AnswersNotImplementedWithOneLineAtErrorOrEntryLevel)
{
    const FilledTable table;
    using AnyEntry = HRESULT(APIENTRY*)(HANDLE, const void*, const void*, const void*, const void*);
    TraceCapture trace;
    for (const RefusedEntry& entry : RefusedEntries())
    {
        SCOPED_TRACE(entry.m_pName);
        const auto pEntry = reinterpret_cast<AnyEntry>(const_cast<void*>(table.Slot(entry.m_Slot)));
        for (UINT bit = 1; bit <= 0x800; bit <<= 1)
        {
            TraceMask mask(bit);
            trace.Clear();
            // No device, no record: a refused entry looks at nothing.
            EXPECT_EQ(pEntry(nullptr, nullptr, nullptr, nullptr, nullptr), E_NOTIMPL);
            const Lines expected = bit & 3 ? Lines{std::string("=> ") + entry.m_pName + " E_NOT_IMPL\n"} : Lines{};
            EXPECT_EQ(trace.Lines(), expected) << "mask " << bit;
        }
    }
}

TEST_F(UMDDdiDeviceFuncsTest, ForwardedEntry_EachLevelBit_TracesItsLineAtItsLevelsOnly)
{
    for (const ForwardedEntry& entry : ForwardedEntries())
    {
        SCOPED_TRACE(entry.m_pName);
        for (UINT bit = 1; bit <= 0x400; bit <<= 1)
        {
            TraceMask mask(bit);
            m_Trace.Clear();
            std::string line;
            entry.m_pCall(m_Table.m_Funcs, DeviceHandle(), nullptr, line);
            const Lines lines = m_Trace.LinesOfThisThread();
            const std::string prefix = std::string("=> ") + entry.m_pName;
            if (entry.m_Level & bit)
                EXPECT_EQ(lines.empty() ? "" : lines.front(), line) << "mask " << bit;
            else
                EXPECT_TRUE(m_Trace.LinesContaining(prefix).empty()) << "mask " << bit;
        }
    }
}

TEST_F(UMDDdiDeviceFuncsTest, ForwardedEntry_Called_ReachesItsOwnMethod)
{
    for (const ForwardedEntry& entry : ForwardedEntries())
    {
        if (IsResourceEntry(entry) || entry.m_Level == 0)
            continue;
        SCOPED_TRACE(entry.m_pName);
        auto pVideo = std::make_unique<UMDDdiDeviceVideo>(&Device());
        m_Trace.Clear();
        std::string line;
        entry.m_pCall(m_Table.m_Funcs, DeviceHandle(), pVideo.get(), line);
        EXPECT_EQ(FirstMethodOf(m_Trace.LinesOfThisThread()), TargetOf(entry));
        if (entry.m_pEntry == reinterpret_cast<const void*>(UMDDdiDestroyVideoProcessDevice))
            pVideo.release();
    }
}

TEST_F(UMDDdiDeviceFuncsTest, EntryWithoutLine_Called_ReachesTheDelegatedCallOfItsName)
{
    const D3DDDIARG_RENDERSTATE renderState{D3DDDIRS_ZENABLE, 1};
    const D3DDDIARG_TEXTURESTAGESTATE stageState{1, D3DDDITSS_COLOROP, 2};
    EXPECT_EQ(m_Table.m_Funcs.pfnSetRenderState(DeviceHandle(), &renderState), S_OK);
    EXPECT_EQ(m_Table.m_Funcs.pfnSetTextureStageState(DeviceHandle(), &stageState), S_OK);
    EXPECT_EQ(m_Fake.Lines().size(), 2U);
    EXPECT_EQ(m_Fake.Calls("SetRenderState"), 1U);
    EXPECT_EQ(m_Fake.Calls("SetTextureStageState"), 1U);
}

TEST_F(UMDDdiDeviceFuncsTest, ForwardedEntry_AnyFaultInside_AnswersSuccessWithExactlyTwoLines)
{
    FaultOnTrace faults;
    for (const ForwardedEntry& entry : ForwardedEntries())
        for (const Fault& fault : kFaults)
        {
            SCOPED_TRACE(std::string(entry.m_pName) + " " + fault.m_pLine);
            // Lost to the fault: what an entry held when it faulted is not destroyed.
            auto* pVideo = new UMDDdiDeviceVideo(&Device());
            m_Trace.Clear();
            // The two entries whose whole path prints nothing fault in the delegated call of the same name.
            if (entry.m_Level == 0)
                m_Fake.On(entry.m_pName + strlen("UMDDdi"), fault.m_pRaise);
            else
                faults.Arm(fault.m_pRaise, entry.m_pName);
            std::string line;
            const HRESULT hr = entry.m_pCall(m_Table.m_Funcs, DeviceHandle(), pVideo, line);
            const Lines lines = m_Trace.LinesOfThisThread();
            m_Fake.ClearScripts();

            EXPECT_EQ(hr, S_OK);
            EXPECT_FALSE(faults.IsArmed()) << "the entry called nothing that prints";
            Lines expected{fault.m_pLine, GuardLine(entry.m_pName)};
            if (!line.empty())
                expected.insert(expected.begin(), line);
            EXPECT_EQ(lines, expected);
        }
}

TEST_F(UMDDdiDeviceFuncsTest, SetRenderState_DelegatedCallFaults_AnswersSuccessAndTheNextCallWorks)
{
    const D3DDDIARG_RENDERSTATE state{D3DDDIRS_ZENABLE, 1};
    for (const Fault& fault : kFaults)
    {
        SCOPED_TRACE(fault.m_pLine);
        m_Trace.Clear();
        m_Fake.On("SetRenderState", fault.m_pRaise);
        TraceMask mask(UMDTRACE_ERROR);
        EXPECT_EQ(m_Table.m_Funcs.pfnSetRenderState(DeviceHandle(), &state), S_OK);
        EXPECT_EQ(m_Trace.Lines(), (Lines{fault.m_pLine, GuardLine("UMDDdiSetRenderState")}));
        m_Fake.ClearScripts();
    }
    m_Trace.Clear();
    EXPECT_EQ(m_Table.m_Funcs.pfnSetRenderState(DeviceHandle(), &state), S_OK);
    EXPECT_EQ(m_Trace.LinesContaining("Exception"), Lines{});
    EXPECT_EQ(m_Fake.Calls("SetRenderState"), 4U);
}

TEST_F(UMDDdiDeviceFuncsTest, DelegatedCallFails_AnyCode_IsTheEntrysResult)
{
    m_Fake.Fail("Clear", D3DERR_DEVICELOST);
    const D3DDDIARG_CLEAR clear{D3DCLEAR_TARGET, 0, 1.0F, 0};
    const RECT rect{0, 0, 1, 1};
    EXPECT_EQ(m_Table.m_Funcs.pfnClear(DeviceHandle(), &clear, 1, &rect), D3DERR_DEVICELOST);
}

TEST_F(UMDDdiDeviceFuncsTest, DestroyDevice_NullHandle_AnswersSuccessAndDoesNothing)
{
    EXPECT_EQ(m_Table.m_Funcs.pfnDestroyDevice(nullptr), S_OK);
    EXPECT_EQ(m_Trace.Lines(), Lines{"=> UMDDdiDestroyDevice\n"});
    EXPECT_EQ(m_Kernel.Lines(), Lines{});
}
