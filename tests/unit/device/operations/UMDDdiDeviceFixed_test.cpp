// Operations with a fixed answer.
#include "DeviceFixture.h"
#include "TraceLevels.h"

#include "device/entries/UMDDdiEntries.h"

using namespace tesslo::test;

namespace
{
class UMDDdiDeviceFixedTest : public DeviceFixture
{
};
}  // namespace

TEST_F(UMDDdiDeviceFixedTest, EveryOperation_Any_TracesItsEntryAndGivesItsAnswer)
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
        {"QueryResourceResidency", E_NOTIMPL,
            [](UMDDdiDevice& device) { return device.QueryResourceResidency(nullptr); }},
    };
    for (const Row& row : rows)
    {
        EXPECT_EQ(LevelledTrace([&] { EXPECT_EQ(row.m_Call(Device()), row.m_Result) << row.m_pName; }),
            Lines{std::string("0x4 >>> UMDDdiDevice::") + row.m_pName + "\n"});
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiDeviceFixedTest, EveryEntry_Any_PassesTheAnswerOn)
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
    EXPECT_EQ(DeviceLines(), Lines{});
}
