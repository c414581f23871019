// The delegated device: the adapter that it is made on, and its life.
#include "gpu/UMDGpuD3D9.h"

#include "FakeFactory.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace tesslo::test;

namespace
{
const HWND kWindow = reinterpret_cast<HWND>(0x1234);

/// Keeps the arguments of the last device's creation.
class KeepingFactory : public FakeFactory
{
public:
    using FakeFactory::FakeFactory;

    HRESULT STDMETHODCALLTYPE CreateDeviceEx(UINT adapter, D3DDEVTYPE deviceType, HWND hFocusWindow, DWORD flags,
        D3DPRESENT_PARAMETERS* pParameters, D3DDISPLAYMODEEX* pMode, IDirect3DDevice9Ex** ppDevice) override
    {
        m_hFocusWindow = hFocusWindow;
        m_Flags = flags;
        m_Parameters = *pParameters;
        m_pMode = pMode;
        return FakeFactory::CreateDeviceEx(adapter, deviceType, hFocusWindow, flags, pParameters, pMode, ppDevice);
    }

    HWND m_hFocusWindow = nullptr;
    DWORD m_Flags = 0;
    D3DPRESENT_PARAMETERS m_Parameters = {};
    D3DDISPLAYMODEEX* m_pMode = nullptr;
};

class UMDGpuD3D9Test : public testing::Test
{
protected:
    Lines CreationCalls() const { return m_Device.LinesContaining("CreateDeviceEx"); }

    FakeDevice m_Device;
    KeepingFactory m_Factory{m_Device};
    TraceMask m_Mask{UMDTRACE_ERROR | UMDTRACE_DETAIL};
    TraceCapture m_Trace;
};
}  // namespace

TEST_F(UMDGpuD3D9Test, Create_NoClientLibrary_MakesTheDeviceOnTheFirstAdapter)
{
    UMDGpuD3D9 gpu(kWindow);
    EXPECT_EQ(gpu.GetDevice(), nullptr);

    EXPECT_EQ(gpu.Create(nullptr), S_OK);

    EXPECT_EQ(gpu.GetDevice(), &m_Device);
    EXPECT_EQ(
        m_Trace.Lines(), (Lines{"UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 126\n",
                             "UMDGpuD3D9::Create  m_pD3DDevice9Ex->ShowCursor WasPreviouslyVisible:0\n"}));
    gpu.Destroy();
}

TEST_F(UMDGpuD3D9Test, Create_OnAnAdapter_IsWindowedOnTheFocusWindowAndOfItsSize)
{
    UMDGpuD3D9 gpu(kWindow);
    ASSERT_EQ(gpu.Create(nullptr), S_OK);

    D3DPRESENT_PARAMETERS expected = {};
    expected.SwapEffect = D3DSWAPEFFECT_DISCARD;
    expected.Windowed = TRUE;
    EXPECT_EQ(std::memcmp(&m_Factory.m_Parameters, &expected, sizeof(expected)), 0);
    EXPECT_EQ(m_Factory.m_hFocusWindow, kWindow);
    EXPECT_EQ(m_Factory.m_pMode, nullptr);
}

TEST_F(UMDGpuD3D9Test, Create_Always_HidesAndParksTheCursor)
{
    UMDGpuD3D9 gpu(kWindow);
    m_Device.Fail("ShowCursor", TRUE);
    ASSERT_EQ(gpu.Create(nullptr), S_OK);

    EXPECT_EQ(m_Device.LinesContaining("Cursor"), (Lines{"ShowCursor(0)", "SetCursorPosition(100, 100, 1)"}));
    EXPECT_EQ(m_Trace.Count("UMDGpuD3D9::Create  m_pD3DDevice9Ex->ShowCursor WasPreviouslyVisible:1\n"), 1u);
}

TEST_F(UMDGpuD3D9Test, Destroy_AfterCreate_ReleasesTheDeviceAndThenTheFactory)
{
    {
        UMDGpuD3D9 gpu(kWindow);
        EXPECT_EQ(m_Factory.ReferenceCount(), 2u);
        ASSERT_EQ(gpu.Create(nullptr), S_OK);
        EXPECT_EQ(m_Device.ReferenceCount(), 2u);

        gpu.Destroy();
        EXPECT_EQ(gpu.GetDevice(), nullptr);
        EXPECT_EQ(m_Device.ReferenceCount(), 1u);
        EXPECT_EQ(m_Factory.ReferenceCount(), 2u);
        gpu.Destroy();
        EXPECT_EQ(m_Device.ReferenceCount(), 1u);
    }
    EXPECT_EQ(m_Factory.ReferenceCount(), 1u);
}

TEST_F(UMDGpuD3D9Test, Create_VirtualAdaptersFirst_TakesTheFirstThatIsNot)
{
    const std::vector<FakeAdapter> virtuals = {
        {.m_Driver = "TessloWddmUmode.dll"},
        {.m_Driver = "tesslowddmumode.DLL"},
        {.m_Driver = "TESSLOWDDMUMODE.DLL"},
        {.m_Description = "Zembrilo Tesslo (WDDM)"},
        {.m_Description = "ZEMBRILO TESSLO (wddm)"},
        {.m_Driver = "TessloWddmUmode.dll", .m_Description = "Zembrilo Tesslo (WDDM)"},
    };
    for (const FakeAdapter& adapter : virtuals)
    {
        m_Factory.m_Adapters = {adapter, FakeAdapter{}, FakeAdapter{}};
        m_Device.ClearLines();
        UMDGpuD3D9 gpu(kWindow);
        ASSERT_EQ(gpu.Create(nullptr), S_OK);
        EXPECT_EQ(m_Device.LinesContaining("d3d9.GetAdapterIdentifier").size(), 2u);
        ASSERT_EQ(CreationCalls().size(), 1u);
        EXPECT_EQ(CreationCalls()[0].find("d3d9.CreateDeviceEx(1, 1, "), 0u) << CreationCalls()[0];
    }
}

TEST_F(UMDGpuD3D9Test, Create_AlmostVirtualNames_AreTakenForReal)
{
    for (const FakeAdapter& adapter : {FakeAdapter{.m_Driver = "TessloWddmUmode"},
             FakeAdapter{.m_Driver = "TessloWddmUmode.dll2"}, FakeAdapter{.m_Description = "Zembrilo Tesslo"},
             FakeAdapter{.m_Driver = "Zembrilo Tesslo (WDDM)", .m_Description = "TessloWddmUmode.dll"}})
    {
        m_Factory.m_Adapters = {adapter};
        UMDGpuD3D9 gpu(kWindow);
        EXPECT_EQ(gpu.Create(nullptr), S_OK) << adapter.m_Driver << ", " << adapter.m_Description;
    }
}

TEST_F(UMDGpuD3D9Test, Create_VirtualAdaptersAlone_AsksForTheAdapterBehindTheLastAndFails)
{
    m_Factory.m_Adapters = {{.m_Driver = "TessloWddmUmode.dll"}, {.m_Description = "Zembrilo Tesslo (WDDM)"}};
    UMDGpuD3D9 gpu(kWindow);

    EXPECT_EQ(gpu.Create(nullptr), D3DERR_INVALIDCALL);

    ASSERT_EQ(CreationCalls().size(), 1u);
    EXPECT_EQ(CreationCalls()[0].find("d3d9.CreateDeviceEx(2, 1, "), 0u) << CreationCalls()[0];
    EXPECT_EQ(m_Trace.LinesContaining("InitD3D"),
        Lines{"InitD3D  CreateDevice m_pD3DDevice9Ex failed! hResult:0x8876086c\n"});
    EXPECT_EQ(gpu.GetDevice(), nullptr);
    EXPECT_EQ(m_Device.LinesContaining("Cursor"), Lines{});
    EXPECT_EQ(m_Factory.ReferenceCount(), 2u) << "the factory stays";
}

TEST_F(UMDGpuD3D9Test, Create_NoAdapterAtAll_Fails)
{
    m_Factory.m_Adapters = {};
    UMDGpuD3D9 gpu(kWindow);
    EXPECT_EQ(gpu.Create(nullptr), D3DERR_INVALIDCALL);
    ASSERT_EQ(CreationCalls().size(), 1u);
    EXPECT_EQ(CreationCalls()[0].find("d3d9.CreateDeviceEx(0, 1, "), 0u) << CreationCalls()[0];
}

TEST_F(UMDGpuD3D9Test, Create_IdentifierRefused_ReturnsItsCode)
{
    m_Factory.m_Adapters = {{.m_Driver = "TessloWddmUmode.dll"}, {}, {}};
    m_Device.Fail("d3d9.GetAdapterIdentifier", kRefused, 2);
    UMDGpuD3D9 gpu(kWindow);

    EXPECT_EQ(gpu.Create(nullptr), kRefused);

    EXPECT_EQ(m_Trace.LinesContaining("InitD3D"), Lines{"InitD3D  GetAdapterIdentifier failed! hResult:0x8876086a\n"});
    EXPECT_EQ(CreationCalls(), Lines{});
    EXPECT_EQ(gpu.GetDevice(), nullptr);
}

TEST_F(UMDGpuD3D9Test, Create_DeviceRefused_ReturnsItsCode)
{
    m_Device.Fail("d3d9.CreateDeviceEx", D3DERR_OUTOFVIDEOMEMORY);
    UMDGpuD3D9 gpu(kWindow);

    EXPECT_EQ(gpu.Create(nullptr), D3DERR_OUTOFVIDEOMEMORY);

    EXPECT_EQ(m_Trace.LinesContaining("InitD3D"),
        Lines{"InitD3D  CreateDevice m_pD3DDevice9Ex failed! hResult:0x8876017c\n"});
    EXPECT_EQ(gpu.GetDevice(), nullptr);
}

TEST_F(UMDGpuD3D9Test, Create_FactoryMissing_FailsWithoutIt)
{
    m_Factory.m_hCreateResult = kRefused;
    UMDGpuD3D9 gpu(kWindow);
    EXPECT_EQ(m_Trace.Lines(), Lines{"InitD3D  Direct3DCreate9 failed! hResult:0x8876086a\n"});
    m_Trace.Clear();

    EXPECT_EQ(gpu.Create(nullptr), E_FAIL);

    EXPECT_EQ(m_Trace.LinesContaining("InitD3D"),
        Lines{"InitD3D  CreateDevice m_pD3DDevice9Ex failed! hResult:0x80004005\n"});
    EXPECT_EQ(m_Device.Lines(), Lines{"d3d9.Direct3DCreate9Ex(32)"});
}

TEST_F(UMDGpuD3D9Test, Create_AnyAdapter_ChoosesVertexProcessingByItsCapabilities)
{
    struct Case
    {
        DWORD m_DevCaps;
        DWORD m_VertexShaderVersion;
        bool m_CapsFail;
        DWORD m_Flags;
    };
    const Case cases[] = {
        {D3DDEVCAPS_HWTRANSFORMANDLIGHT, D3DVS_VERSION(1, 1), false, 0x44},
        {D3DDEVCAPS_HWTRANSFORMANDLIGHT, D3DVS_VERSION(3, 0), false, 0x44},
        {D3DDEVCAPS_HWTRANSFORMANDLIGHT | D3DDEVCAPS_PUREDEVICE, D3DVS_VERSION(2, 0), false, 0x44},
        {D3DDEVCAPS_HWTRANSFORMANDLIGHT, D3DVS_VERSION(1, 0), false, 0x24},
        {D3DDEVCAPS_HWTRANSFORMANDLIGHT, 0, false, 0x24},
        {0, D3DVS_VERSION(3, 0), false, 0x24},
        {D3DDEVCAPS_PUREDEVICE, D3DVS_VERSION(3, 0), false, 0x24},
        {D3DDEVCAPS_HWTRANSFORMANDLIGHT, D3DVS_VERSION(3, 0), true, 0x24},
    };
    for (const Case& row : cases)
    {
        m_Factory.m_Adapters = {{.m_DevCaps = row.m_DevCaps, .m_VertexShaderVersion = row.m_VertexShaderVersion}};
        m_Device.ClearScripts();
        m_Device.ClearLines();
        m_Trace.Clear();
        if (row.m_CapsFail)
            m_Device.Fail("d3d9.GetDeviceCaps", kRefused);
        UMDGpuD3D9 gpu(kWindow);
        ASSERT_EQ(gpu.Create(nullptr), S_OK);

        EXPECT_EQ(m_Factory.m_Flags, row.m_Flags);
        EXPECT_EQ(m_Trace.LinesContaining("InitD3D"), Lines{});
    }
}
