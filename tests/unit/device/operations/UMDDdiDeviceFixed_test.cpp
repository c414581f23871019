// Operations with a fixed answer.
#include "DeviceObjects.h"
#include "ImportPatch.h"
#include "TraceLevels.h"

namespace
{
class UMDDdiDeviceFixed : public DeviceObjects
{
};

void* volatile g_pWatched = nullptr;  ///< null once it was freed: the address may serve another allocation then
void (*g_pFree)(void*) = nullptr;

void WatchFree(void* pMemory)
{
    if (pMemory == g_pWatched)
        g_pWatched = nullptr;
    g_pFree(pMemory);
}
}  // namespace

TEST_F(UMDDdiDeviceFixed, EveryOperation_Any_TracesItsEntryAndGivesItsAnswer)
{
    struct Row
    {
        const char* m_pName;
        HRESULT m_Result;
        std::function<HRESULT(UMDDdiDevice&)> m_Call;
    };
    const Row rows[] = {
        {"UpdateWInfo", S_OK, [](UMDDdiDevice& device) { return device.UpdateWInfo(nullptr); }},
        {"SetZRange", S_OK, [](UMDDdiDevice& device) { return device.SetZRange(nullptr); }},
        {"SetStreamSourceFreq", S_OK, [](UMDDdiDevice& device) { return device.SetStreamSourceFreq(nullptr); }},
        {"SetConvolutionKernelMono", S_OK,
            [](UMDDdiDevice& device) { return device.SetConvolutionKernelMono(nullptr); }},
        {"ComposeRects", S_OK, [](UMDDdiDevice& device) { return device.ComposeRects(nullptr); }},
        {"MultiplyTransform", E_NOTIMPL, [](UMDDdiDevice& device) { return device.MultiplyTransform(nullptr); }},
        {"SetMaterial", E_NOTIMPL, [](UMDDdiDevice& device) { return device.SetMaterial(nullptr); }},
        {"SetLight", E_NOTIMPL, [](UMDDdiDevice& device) { return device.SetLight(nullptr, nullptr); }},
        {"CreateLight", E_NOTIMPL, [](UMDDdiDevice& device) { return device.CreateLight(nullptr); }},
        {"DestroyLight", E_NOTIMPL, [](UMDDdiDevice& device) { return device.DestroyLight(nullptr); }},
        {"GetInfo", E_NOTIMPL, [](UMDDdiDevice& device) { return device.GetInfo(0, nullptr, 0); }},
        {"GenerateMipSubLevels", E_NOTIMPL, [](UMDDdiDevice& device) { return device.GenerateMipSubLevels(nullptr); }},
        {"DepthFill", E_NOTIMPL, [](UMDDdiDevice& device) { return device.DepthFill(nullptr); }},
        {"CreateFence", E_NOTIMPL, [](UMDDdiDevice& device) { return device.CreateFence(); }},
        {"IssueQuery", E_NOTIMPL, [](UMDDdiDevice& device) { return device.IssueQuery(nullptr); }},
        {"GetQueryData", E_NOTIMPL, [](UMDDdiDevice& device) { return device.GetQueryData(nullptr); }},
        {"QueryResourceResidency", E_NOTIMPL,
            [](UMDDdiDevice& device) { return device.QueryResourceResidency(nullptr); }},
    };
    for (const Row& row : rows)
    {
        EXPECT_EQ(
            tesslo::test::LevelledTrace(m_Trace, [&] { EXPECT_EQ(row.m_Call(Device()), row.m_Result) << row.m_pName; }),
            Lines{std::string("0x4 >>> UMDDdiDevice::") + row.m_pName + "\n"});
    }
    EXPECT_EQ(Calls(), Lines{});
}

TEST_F(UMDDdiDeviceFixed, EveryEntry_Any_PassesTheAnswerOn)
{
    const D3DDDIARG_ZRANGE range = {};
    const HANDLE hDevice = DeviceHandle();
    EXPECT_EQ(UMDDdiUpdateWInfo(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiSetZRange(hDevice, &range), S_OK);
    EXPECT_EQ(UMDDdiSetStreamSourceFreq(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiSetConvolutionKernelMono(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiComposeRects(hDevice, nullptr), S_OK);
    EXPECT_EQ(UMDDdiMultiplyTransform(hDevice, nullptr), E_NOTIMPL);
    EXPECT_EQ(UMDDdiSetMaterial(hDevice, nullptr), E_NOTIMPL);
    EXPECT_EQ(UMDDdiSetLight(hDevice, nullptr, nullptr), E_NOTIMPL);
    EXPECT_EQ(UMDDdiCreateLight(hDevice, nullptr), E_NOTIMPL);
    EXPECT_EQ(UMDDdiDestroyLight(hDevice, nullptr), E_NOTIMPL);
    EXPECT_EQ(UMDDdiGenerateMipSubLevels(hDevice, nullptr), E_NOTIMPL);
    EXPECT_EQ(UMDDdiDepthFill(hDevice, nullptr), E_NOTIMPL);
    EXPECT_EQ(Calls(), Lines{});
}

TEST_F(UMDDdiDeviceFixed, CreateQuery_EveryType_IsRefusedForWantOfAFence)
{
    for (int type = 0; type < 20; ++type)
    {
        m_Trace.Clear();
        D3DDDIARG_CREATEQUERY arg = {static_cast<D3DDDIQUERYTYPE>(type), this};
        EXPECT_EQ(UMDDdiCreateQuery(DeviceHandle(), &arg), E_FAIL);
        EXPECT_EQ(arg.hQuery, this) << "left alone";
        EXPECT_EQ(Trace(),
            (Lines{"=> UMDDdiCreateQuery\n", ">>> UMDDdiDevice::CreateQuery\n", ">>> UMDDdiDevice::CreateFence\n"}));
    }
}

TEST_F(UMDDdiDeviceFixed, DeleteQuery_NullOrAllocated_AnswersOk)
{
    EXPECT_EQ(UMDDdiDeleteQuery(DeviceHandle(), nullptr), S_OK);
    g_pWatched = new UINT(0xDEADBEEF);
    {
        const tesslo::test::ImportPatch patch(nullptr, "msvcrt.dll", "free", reinterpret_cast<void*>(WatchFree));
        g_pFree = patch.Original<void (*)(void*)>();
        EXPECT_EQ(UMDDdiDeleteQuery(DeviceHandle(), g_pWatched), S_OK);
    }
    EXPECT_EQ(g_pWatched, nullptr);
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::DeleteQuery\n"), 2u);
}
