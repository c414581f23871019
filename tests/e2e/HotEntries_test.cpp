// What the entries that are called all the time cost while nothing is traced: counted, not timed.
#include "HotEntries.h"

#include "CreateRequest.h"
#include "DriverDll.h"
#include "FakeDevice.h"
#include "ImportCalls.h"
#include "RegistryOverride.h"
#include "StepCount.h"
#include "TestClient.h"

#include <gtest/gtest.h>

#include <optional>

using namespace tesslo::test;

namespace
{
constexpr UINT kWidth = 16;
constexpr UINT kHeight = 8;
constexpr UINT kCode[]{0xFFFE0200, 0x0000FFFF};  ///< the shortest shader
constexpr UINT kWarmUps = 4;                     ///< a flip makes each of three frame buffers once

/// Plain work on memory and text, which the compiler calls as it likes.
constexpr const char* kPlainWork[]{"memcpy", "memmove", "memset", "strcmp", "strlen"};

/// The built driver on the fake device. The fakes' own work does not count: it is not the driver's module.
class HotEntriesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_Client.SetDevice(&m_Fake);
        m_Registry.SetClientDllName(m_Client.DllName());
        m_Driver.emplace();
        ASSERT_EQ(m_Driver->OpenAdapter(m_Kernel), S_OK);
        ASSERT_EQ(m_Driver->CreateDevice(m_Kernel), S_OK);
        m_Objects.emplace(HotObjects{Functions(), Device(),
            Create(kFlagRenderTarget | kFlagPrimary, D3DDDIFMT_X8R8G8B8), Create(kFlagTexture, D3DDDIFMT_X8R8G8B8),
            Create(kFlagVertexBuffer, D3DDDIFMT_VERTEXDATA), Create(kFlagIndexBuffer, D3DDDIFMT_INDEX16),
            CreatePixelShader(), CreateVertexShader(), CreateDeclaration()});
    }

    void TearDown() override
    {
        if (m_Driver && m_Driver->m_hDevice)
            m_Driver->m_DeviceFuncs.pfnDestroyDevice(m_Driver->m_hDevice);
        m_Calls.reset();
        m_Driver.reset();
    }

    /// Once, as the counted call finds it: nothing is made or awaited for the first time.
    void Warm(const HotEntry& entry)
    {
        if (entry.m_pPrepare)
            entry.m_pPrepare(*m_Objects);
        for (UINT i = 0; i < kWarmUps; ++i)
            Call(entry);
    }

    /// A flip has ended when the client library has its frame.
    void Call(const HotEntry& entry)
    {
        EXPECT_EQ(entry.m_pCall(*m_Objects), S_OK);
        if (entry.m_MostInstructions == 0)
            ASSERT_TRUE(m_Client.WaitForUpdates(++m_Flips));
    }

    const D3DDDI_DEVICEFUNCS& Functions() const { return m_Driver->m_DeviceFuncs; }
    HANDLE Device() const { return m_Driver->m_hDevice; }

    HANDLE Create(UINT flags, D3DDDIFORMAT format)
    {
        CreateRequest create(flags, kVideo, format, kWidth, kHeight);
        EXPECT_EQ(Functions().pfnCreateResource(Device(), &create.m_Arg), S_OK);
        return create.m_Arg.hResource;
    }
    HANDLE CreatePixelShader()
    {
        D3DDDIARG_CREATEPIXELSHADER arg{sizeof(kCode), nullptr};
        EXPECT_EQ(Functions().pfnCreatePixelShader(Device(), &arg, kCode), S_OK);
        return arg.ShaderHandle;
    }
    HANDLE CreateVertexShader()
    {
        D3DDDIARG_CREATEVERTEXSHADERFUNC arg{sizeof(kCode), nullptr};
        EXPECT_EQ(Functions().pfnCreateVertexShaderFunc(Device(), &arg, kCode), S_OK);
        return arg.ShaderHandle;
    }
    HANDLE CreateDeclaration()
    {
        const D3DDDIVERTEXELEMENT element{0, 0, D3DDECLTYPE_FLOAT4, 0, D3DDECLUSAGE_POSITIONT, 0};
        D3DDDIARG_CREATEVERTEXSHADERDECL arg{1, nullptr};
        EXPECT_EQ(Functions().pfnCreateVertexShaderDecl(Device(), &arg, &element), S_OK);
        return arg.ShaderHandle;
    }

    RegistryOverride m_Registry;
    FakeDevice m_Fake;
    TestClient m_Client;
    FakeKernel m_Kernel;
    std::optional<DriverDll> m_Driver;
    std::optional<HotObjects> m_Objects;
    std::optional<ImportCalls> m_Calls;
    size_t m_Flips = 0;
};
}  // namespace

TEST_F(HotEntriesTest, EachEntry_TraceOff_CallsNothingOfThePlatformButWhatItsRowNames)
{
    m_Calls.emplace(m_Driver->Module());
    for (const HotEntry& entry : HotEntries())
    {
        SCOPED_TRACE(entry.m_pName);
        Warm(entry);
        m_Calls->Forget();
        const HRESULT hr = entry.m_pCall(*m_Objects);
        auto made = m_Calls->Made();
        for (const char* pName : kPlainWork)
            made.erase(pName);
        EXPECT_EQ(hr, S_OK);
        EXPECT_EQ(made, entry.m_Calls);
        if (entry.m_MostInstructions == 0)
            ASSERT_TRUE(m_Client.WaitForUpdates(++m_Flips));
    }
}

TEST_F(HotEntriesTest, EachEntry_TraceOff_RunsNoMoreInstructionsThanItsRowAllows)
{
    if (!TESSLO_COUNT_INSTRUCTIONS)
        GTEST_SKIP() << "the limits are those of the optimised driver";
    for (const HotEntry& entry : HotEntries())
    {
        if (entry.m_MostInstructions == 0)
            continue;
        SCOPED_TRACE(entry.m_pName);
        Warm(entry);
        const unsigned first = StepCount(m_Driver->Module(), [&] { entry.m_pCall(*m_Objects); });
        const unsigned second = StepCount(m_Driver->Module(), [&] { entry.m_pCall(*m_Objects); });
        EXPECT_EQ(first, second);
        EXPECT_GT(first, 5U);  // what passes uncounted would pass any limit
        EXPECT_LE(first, entry.m_MostInstructions);
    }
}
