// The client library's part in the delegated device: it may give one, and it may hear of each present.
#include "gpu/UMDGpuD3D9.h"

#include "FakeFactory.h"
#include "ImportPatch.h"
#include "TestClient.h"
#include "TraceAt.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
const HWND kWindow = reinterpret_cast<HWND>(0x1234);
constexpr char kReserved1Missing[] = "UMDGpuD3D9::InternalDeviceRetrieveFromClientDll GetProcAddress (1) failed! 127\n";
constexpr char kReserved1Failed[] =
    "UMDGpuD3D9::InternalDeviceRetrieveFromClientDll m_TessloVirtualMonitorReserved1() failed!\n";

Lines g_LookedUp;
decltype(&GetProcAddress) g_pGetProcAddress;

FARPROC WINAPI KeepingGetProcAddress(HMODULE hModule, const char* pName)
{
    g_LookedUp.push_back(pName);
    return g_pGetProcAddress(hModule, pName);
}

class UMDGpuD3D9ClientTest : public testing::Test
{
protected:
    /// Creates with this library. @return the error lines.
    Lines Create(HMODULE hClient)
    {
        g_LookedUp.clear();
        return ErrorsOf([&] { EXPECT_EQ(m_Gpu.Create(hClient), S_OK); });
    }

    FakeDevice m_Device;
    FakeFactory m_Factory{m_Device};
    TestClient m_Client;
    ImportPatch m_LookUp{nullptr, "kernel32.dll", "GetProcAddress", KeepingGetProcAddress, &g_pGetProcAddress};
    UMDGpuD3D9 m_Gpu{kWindow};
};
}  // namespace

TEST_F(UMDGpuD3D9ClientTest, Create_NoLibrary_LooksUpNothing)
{
    Create(nullptr);
    EXPECT_EQ(g_LookedUp, Lines{}) << "a null module would stand for the host program";
}

TEST_F(UMDGpuD3D9ClientTest, Create_LibraryGivesADevice_UsesItAndAsksNoAdapter)
{
    m_Client.SetDevice(&m_Device);
    m_Device.ClearLines();
    EXPECT_EQ(Create(m_Client.Module()), Lines{});
    EXPECT_EQ(m_Gpu.GetDevice(), &m_Device);
    EXPECT_EQ(m_Client.Lines(), Lines{"Reserved1(0x1234)"});
    EXPECT_EQ(g_LookedUp, (Lines{"TessloVirtualMonitorReserved1", "TessloVirtualMonitorReserved2"}));
    EXPECT_EQ(m_Device.Lines(), (Lines{"ShowCursor(0)", "SetCursorPosition(100, 100, 1)"}));
    m_Gpu.Destroy();
    EXPECT_EQ(m_Device.ReferenceCount(), 1u);
}

TEST_F(UMDGpuD3D9ClientTest, Create_NoFactoryButTheLibraryGivesADevice_Succeeds)
{
    m_Factory.m_hCreateResult = kRefused;
    m_Client.SetDevice(&m_Device);
    UMDGpuD3D9 gpu(kWindow);
    EXPECT_EQ(gpu.Create(m_Client.Module()), S_OK);
    EXPECT_EQ(gpu.GetDevice(), &m_Device);
}

TEST_F(UMDGpuD3D9ClientTest, Create_LibraryWithoutReserved1_FallsBackAndLooksUpNoMore)
{
    const TestClient without("Reserved1");
    EXPECT_EQ(Create(without.Module()), Lines{kReserved1Missing});
    EXPECT_EQ(g_LookedUp, Lines{"TessloVirtualMonitorReserved1"});
    EXPECT_EQ(m_Gpu.GetDevice(), &m_Device);
    m_Gpu.PresentNotification(nullptr);
    EXPECT_EQ(without.Lines(), Lines{});
}

TEST_F(UMDGpuD3D9ClientTest, Create_LibraryDeclines_FallsBackAndLeavesItsDeviceAlone)
{
    FakeDevice notOurs;
    m_Client.SetDevice(&notOurs);
    m_Client.Fail("Reserved1", E_FAIL);
    EXPECT_EQ(Create(m_Client.Module()), Lines{kReserved1Failed});
    EXPECT_EQ(m_Gpu.GetDevice(), &m_Device);
    EXPECT_EQ(notOurs.ReferenceCount(), 1u);
    m_Gpu.Destroy();
    EXPECT_EQ(notOurs.ReferenceCount(), 1u);
}

TEST_F(UMDGpuD3D9ClientTest, Create_LibraryPromisesAndStoresNothing_FallsBack)
{
    m_Client.Fail("Reserved1", S_FALSE);
    EXPECT_EQ(Create(m_Client.Module()), Lines{kReserved1Failed});
    EXPECT_EQ(m_Gpu.GetDevice(), &m_Device);
}

TEST_F(UMDGpuD3D9ClientTest, PresentNotification_LibraryThatDeclined_IsToldDeviceAndSurface)
{
    Create(m_Client.Module());
    UMDComPtr<IDirect3DSurface9> pSurface;
    m_Device.CreateRenderTarget(4, 4, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, pSurface.Put(), nullptr);
    m_Client.NameMemory(m_Gpu.GetDevice(), 1, "the device");
    m_Client.NameMemory(pSurface.Get(), 1, "the surface");
    m_Client.ClearLines();
    m_Gpu.PresentNotification(pSurface.Get());
    EXPECT_EQ(m_Client.Lines(), Lines{"Reserved2(the device, the surface)"});
}

TEST_F(UMDGpuD3D9ClientTest, PresentNotification_LibraryWithoutReserved2_DoesNothing)
{
    TestClient without("Reserved2");
    without.SetDevice(&m_Device);
    Create(without.Module());
    EXPECT_EQ(m_Gpu.GetDevice(), &m_Device);
    without.ClearLines();
    m_Gpu.PresentNotification(nullptr);
    EXPECT_EQ(without.Lines(), Lines{});
}
