#include "gpu/UMDGpuD3D9.h"

#include "FakeFactory.h"
#include "FakeSurface.h"
#include "ImportPatch.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace
{
using tesslo::test::FakeAdapter;
using tesslo::test::FakeDevice;
using tesslo::test::FakeFactory;
using tesslo::test::ImportPatch;
using tesslo::test::TraceCapture;
using tesslo::test::TraceMask;
using Lines = std::vector<std::string>;

const HWND kWindow = reinterpret_cast<HWND>(0x1234);
const HMODULE kClientDll = reinterpret_cast<HMODULE>(0x5000);
constexpr char kReserved1Missing[] = "UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 127\n";
constexpr char kReserved1Failed[] =
    "UMDGpuD3D9::InternalDeviceRetrieveFromClientDll m_TessloVirtualMonitorReserved1() failed!\n";

/// What the client library of a test exports, and what it was told.
struct Client
{
    std::map<std::string, void*> m_Exports;
    Lines m_LookedUp;
    BOOLEAN m_Answer = TRUE;
    IDirect3DDevice9Ex* m_pDevice = nullptr;  ///< what the first reserved export stores
    HWND m_hWnd = nullptr;
    std::vector<std::pair<IDirect3DDevice9Ex*, IDirect3DSurface9*>> m_Notified;
};
Client g_Client;

BOOLEAN Reserved1(HWND hWnd, IDirect3DDevice9Ex** ppDevice)
{
    g_Client.m_hWnd = hWnd;
    *ppDevice = g_Client.m_pDevice;
    return g_Client.m_Answer;
}

BOOLEAN Reserved2(IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface)
{
    g_Client.m_Notified.emplace_back(pDevice, pSurface);
    return FALSE;
}

FARPROC WINAPI LookUp(HMODULE, const char* pName)
{
    g_Client.m_LookedUp.push_back(pName);
    const auto found = g_Client.m_Exports.find(pName);
    if (found == g_Client.m_Exports.end())
    {
        SetLastError(ERROR_PROC_NOT_FOUND);
        return nullptr;
    }
    return reinterpret_cast<FARPROC>(found->second);
}

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
    UMDGpuD3D9Test() : m_LookUp(nullptr, "kernel32.dll", "GetProcAddress", reinterpret_cast<void*>(LookUp))
    {
        g_Client = {};
    }

    void Offer(bool reserved1, bool reserved2)
    {
        if (reserved1)
            g_Client.m_Exports["TessloVirtualMonitorReserved1"] = reinterpret_cast<void*>(Reserved1);
        if (reserved2)
            g_Client.m_Exports["TessloVirtualMonitorReserved2"] = reinterpret_cast<void*>(Reserved2);
    }

    Lines CreationCalls() const { return m_Device.LinesContaining("CreateDeviceEx"); }

    FakeDevice m_Device;
    KeepingFactory m_Factory{m_Device};
    ImportPatch m_LookUp;
    TraceMask m_Mask{UMDTRACE_ERROR | UMDTRACE_DETAIL};
    TraceCapture m_Trace;
};

TEST_F(UMDGpuD3D9Test, Create_NoClientLibrary_MakesTheDeviceOnTheFirstAdapter)
{
    UMDGpuD3D9 gpu(kWindow);
    EXPECT_EQ(gpu.GetDevice(), nullptr);

    EXPECT_EQ(gpu.Create(nullptr), S_OK);

    EXPECT_EQ(gpu.GetDevice(), &m_Device);
    EXPECT_EQ(
        m_Trace.Lines(), (Lines{"UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 126\n",
                             "UMDGpuD3D9::Create  m_pD3DDevice9Ex->ShowCursor WasPreviouslyVisible:0\n"}));
    EXPECT_EQ(g_Client.m_LookedUp, Lines{}) << "a null module would stand for the host program";
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

TEST_F(UMDGpuD3D9Test, Create_ClientLibraryGivesADevice_UsesItAndAsksNoAdapter)
{
    Offer(true, true);
    g_Client.m_pDevice = &m_Device;
    m_Device.AddRef();
    UMDGpuD3D9 gpu(kWindow);
    m_Device.ClearLines();

    EXPECT_EQ(gpu.Create(kClientDll), S_OK);

    EXPECT_EQ(gpu.GetDevice(), &m_Device);
    EXPECT_EQ(g_Client.m_hWnd, kWindow);
    EXPECT_EQ(g_Client.m_LookedUp, (Lines{"TessloVirtualMonitorReserved1", "TessloVirtualMonitorReserved2"}));
    EXPECT_EQ(m_Device.Lines(), (Lines{"ShowCursor(0)", "SetCursorPosition(100, 100, 1)"}));
    gpu.Destroy();
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}

TEST_F(UMDGpuD3D9Test, Create_ClientLibraryWithoutReserved1_FallsBackAndLooksUpNoMore)
{
    Offer(false, true);
    UMDGpuD3D9 gpu(kWindow);

    EXPECT_EQ(gpu.Create(kClientDll), S_OK);

    EXPECT_EQ(m_Trace.LinesContaining("failed!"), Lines{kReserved1Missing});
    EXPECT_EQ(g_Client.m_LookedUp, Lines{"TessloVirtualMonitorReserved1"});
    EXPECT_EQ(CreationCalls().size(), 1u);
    gpu.PresentNotification(nullptr);
    EXPECT_EQ(g_Client.m_Notified.size(), 0u);
}

TEST_F(UMDGpuD3D9Test, Create_ClientLibraryDeclines_FallsBackAndLeavesItsDeviceAlone)
{
    Offer(true, true);
    g_Client.m_Answer = FALSE;
    FakeDevice notOurs;
    g_Client.m_pDevice = &notOurs;
    UMDGpuD3D9 gpu(kWindow);

    EXPECT_EQ(gpu.Create(kClientDll), S_OK);

    EXPECT_EQ(m_Trace.LinesContaining("failed!"), Lines{kReserved1Failed});
    EXPECT_EQ(gpu.GetDevice(), &m_Device);
    EXPECT_EQ(notOurs.ReferenceCount(), 1u);
    gpu.Destroy();
    EXPECT_EQ(notOurs.ReferenceCount(), 1u);
}

TEST_F(UMDGpuD3D9Test, Create_ClientLibraryPromisesAndStoresNothing_FallsBack)
{
    Offer(true, false);
    UMDGpuD3D9 gpu(kWindow);

    EXPECT_EQ(gpu.Create(kClientDll), S_OK);

    EXPECT_EQ(m_Trace.LinesContaining("failed!"), Lines{kReserved1Failed});
    EXPECT_EQ(gpu.GetDevice(), &m_Device);
}

TEST_F(UMDGpuD3D9Test, PresentNotification_LibraryWantsIt_PassesDeviceAndSurface)
{
    Offer(true, true);
    g_Client.m_Answer = FALSE;  // also a library that declined to give a device is told
    UMDGpuD3D9 gpu(kWindow);
    ASSERT_EQ(gpu.Create(kClientDll), S_OK);
    UMDComPtr<IDirect3DSurface9> pSurface;
    m_Device.CreateRenderTarget(4, 4, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, pSurface.Put(), nullptr);

    gpu.PresentNotification(pSurface.Get());

    ASSERT_EQ(g_Client.m_Notified.size(), 1u);
    EXPECT_EQ(g_Client.m_Notified[0].first, &m_Device);
    EXPECT_EQ(g_Client.m_Notified[0].second, pSurface.Get());
}

TEST_F(UMDGpuD3D9Test, PresentNotification_LibraryHasNoReserved2_DoesNothing)
{
    Offer(true, false);
    g_Client.m_pDevice = &m_Device;
    m_Device.AddRef();
    UMDGpuD3D9 gpu(kWindow);
    ASSERT_EQ(gpu.Create(kClientDll), S_OK);
    EXPECT_EQ(gpu.GetDevice(), &m_Device);

    gpu.PresentNotification(nullptr);

    EXPECT_EQ(g_Client.m_Notified.size(), 0u);
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
    m_Device.Fail("d3d9.GetAdapterIdentifier", D3DERR_NOTAVAILABLE, 2);
    UMDGpuD3D9 gpu(kWindow);

    EXPECT_EQ(gpu.Create(nullptr), D3DERR_NOTAVAILABLE);

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
    m_Factory.m_hCreateResult = D3DERR_NOTAVAILABLE;
    UMDGpuD3D9 gpu(kWindow);
    EXPECT_EQ(m_Trace.Lines(), Lines{"InitD3D  Direct3DCreate9 failed! hResult:0x8876086a\n"});
    m_Trace.Clear();

    EXPECT_EQ(gpu.Create(nullptr), E_FAIL);

    EXPECT_EQ(m_Trace.LinesContaining("InitD3D"),
        Lines{"InitD3D  CreateDevice m_pD3DDevice9Ex failed! hResult:0x80004005\n"});
    EXPECT_EQ(m_Device.Lines(), Lines{"d3d9.Direct3DCreate9Ex(32)"});
}

TEST_F(UMDGpuD3D9Test, Create_FactoryMissingButClientLibraryGivesADevice_Succeeds)
{
    m_Factory.m_hCreateResult = D3DERR_NOTAVAILABLE;
    Offer(true, true);
    g_Client.m_pDevice = &m_Device;
    m_Device.AddRef();
    UMDGpuD3D9 gpu(kWindow);
    EXPECT_EQ(gpu.Create(kClientDll), S_OK);
    EXPECT_EQ(gpu.GetDevice(), &m_Device);
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
            m_Device.Fail("d3d9.GetDeviceCaps", D3DERR_NOTAVAILABLE);
        UMDGpuD3D9 gpu(kWindow);
        ASSERT_EQ(gpu.Create(nullptr), S_OK);

        EXPECT_EQ(m_Factory.m_Flags, row.m_Flags);
        EXPECT_EQ(m_Trace.LinesContaining("InitD3D"), Lines{});
    }
}
}  // namespace
