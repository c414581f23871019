// The hidden window of the GPU thread: its class, its place, and what its procedure answers.
#include "GpuThreadFixture.h"
#include "ImportPatch.h"

using namespace tesslo::test;

namespace
{
// What the replaced functions saw.
WNDCLASSEXW g_Class;
std::wstring g_ClassName;
decltype(&RegisterClassExW) g_pRegisterClass;

ATOM WINAPI KeepingRegisterClass(const WNDCLASSEXW* pClass)
{
    g_Class = *pClass;
    g_ClassName = pClass->lpszClassName;
    return g_pRegisterClass(pClass);
}

struct Window
{
    DWORD m_ExStyle;
    std::wstring m_Class;
    std::wstring m_Title;
    DWORD m_Style;
    RECT m_Place;  ///< left, top, width, height
    HWND m_hParent;
    HMENU m_hMenu;
    HINSTANCE m_hInstance;
    LPVOID m_pParameter;
    HWND m_hWnd;
};
std::optional<Window> g_Window;
decltype(&CreateWindowExW) g_pCreateWindow;

HWND WINAPI KeepingCreateWindow(DWORD exStyle, LPCWSTR pClass, LPCWSTR pTitle, DWORD style, int x, int y, int width,
    int height, HWND hParent, HMENU hMenu, HINSTANCE hInstance, LPVOID pParameter)
{
    HWND hWnd =
        g_pCreateWindow(exStyle, pClass, pTitle, style, x, y, width, height, hParent, hMenu, hInstance, pParameter);
    g_Window = {exStyle, pClass, pTitle, style, {x, y, width, height}, hParent, hMenu, hInstance, pParameter, hWnd};
    return hWnd;
}

std::vector<HCURSOR> g_Cursors;

HCURSOR WINAPI KeepingSetCursor(HCURSOR hCursor)
{
    g_Cursors.push_back(hCursor);
    return nullptr;
}

int g_QuitCode;

void WINAPI KeepingPostQuitMessage(int exitCode)
{
    g_QuitCode = exitCode;
}

class UMDThreadGpuD3D9WindowTest : public GpuThreadFixture
{
protected:
    UMDThreadGpuD3D9WindowTest() { g_Window.reset(); }

    ImportPatch m_Registered{nullptr, "user32.dll", "RegisterClassExW", KeepingRegisterClass, &g_pRegisterClass};
    ImportPatch m_Created{nullptr, "user32.dll", "CreateWindowExW", KeepingCreateWindow, &g_pCreateWindow};
};
}  // namespace

TEST_F(UMDThreadGpuD3D9WindowTest, Run_Always_RegistersTheClass)
{
    Start();
    Stop();
    EXPECT_EQ(g_Class.cbSize, 80u);
    EXPECT_EQ(g_Class.style, 0x40u);
    EXPECT_NE(g_Class.lpfnWndProc, nullptr);
    EXPECT_EQ(g_Class.cbClsExtra, 0);
    EXPECT_EQ(g_Class.cbWndExtra, 0);
    EXPECT_EQ(g_Class.hInstance, GetModuleHandleW(nullptr));
    EXPECT_EQ(g_Class.hIcon, nullptr);
    EXPECT_EQ(g_Class.hCursor, nullptr);
    EXPECT_EQ(g_Class.hbrBackground, nullptr);
    EXPECT_EQ(g_Class.lpszMenuName, nullptr);
    EXPECT_EQ(g_Class.hIconSm, nullptr);
    EXPECT_EQ(g_ClassName, L"D3D UMD");
}

TEST_F(UMDThreadGpuD3D9WindowTest, Run_Always_MakesAWindowThatIsNeverShown)
{
    Start();
    ASSERT_TRUE(g_Window);
    EXPECT_EQ(g_Window->m_ExStyle, 0u);
    EXPECT_EQ(g_Window->m_Class, L"D3D UMD");
    EXPECT_EQ(g_Window->m_Title, L"D3D UMD Testwindow");
    EXPECT_EQ(g_Window->m_Style, 0x80800000u);
    EXPECT_EQ(g_Window->m_Place.left, 200);
    EXPECT_EQ(g_Window->m_Place.top, 200);
    EXPECT_EQ(g_Window->m_Place.right, 100);
    EXPECT_EQ(g_Window->m_Place.bottom, 100);
    EXPECT_EQ(g_Window->m_hParent, nullptr);
    EXPECT_EQ(g_Window->m_hMenu, nullptr);
    EXPECT_EQ(g_Window->m_hInstance, GetModuleHandleW(nullptr));
    EXPECT_EQ(g_Window->m_pParameter, nullptr);
    EXPECT_FALSE(IsWindowVisible(g_Window->m_hWnd));
    Stop();
    EXPECT_FALSE(IsWindow(g_Window->m_hWnd));
}

TEST_F(UMDThreadGpuD3D9WindowTest, Run_WindowRefused_ReleasesTheStarterAndEnds)
{
    const FailingImport patch(nullptr, "user32.dll", "CreateWindowExW", 0, ERROR_NOT_ENOUGH_QUOTA);
    Start();
    ExpectEnd();
    EXPECT_EQ(StepLines(), (Lines{"UMDThreadGpuD3D9::UMDThreadGpuD3D9\n", "UMDThreadGpuD3D9::ThreadGuiStart\n",
                               ">>> UMDThreadGpuD3D9::Run\n", "UMDThreadGpuD3D9::Run CreateWindow failed! 1816\n"}));
    EXPECT_EQ(m_Thread->GetDevice(), nullptr);
    EXPECT_TRUE(ClassExists());
    UnregisterClassW(L"D3D UMD", GetModuleHandleW(nullptr));
}

TEST_F(UMDThreadGpuD3D9WindowTest, Run_SentMessages_AreAnsweredWithoutCountingAsPosted)
{
    Start();
    const HWND hWnd = HiddenWindow();
    m_Trace.Clear();
    for (int i = 0; i < 3; ++i)
    {
        DWORD_PTR answer = 0;
        ASSERT_NE(SendMessageTimeoutW(hWnd, WM_SETCURSOR, 0, 0, SMTO_NORMAL, kLong, &answer), 0);
        EXPECT_EQ(answer, 1u);
    }
    Stop();
    EXPECT_EQ(m_Trace.Count(">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc 32\n"), 3u);
    EXPECT_EQ(m_Trace.Count("UMDThreadGpuD3D9::Run MsgWaitForMultipleObjects MSG received\n"), 0u);
}

TEST_F(UMDThreadGpuD3D9WindowTest, WindowProcedure_AnyMessage_AnswersByTheTable)
{
    Start();
    const WNDPROC pProcedure = g_Class.lpfnWndProc;
    const HWND hWnd = HiddenWindow();
    Stop();

    const ImportPatch cursor(nullptr, "user32.dll", "SetCursor", KeepingSetCursor);
    const ImportPatch quit(nullptr, "user32.dll", "PostQuitMessage", KeepingPostQuitMessage);
    const FailingImport other(nullptr, "user32.dll", "DefWindowProcW", 0x77, 0);
    g_Cursors.clear();
    g_QuitCode = -1;
    m_Trace.Clear();
    EXPECT_EQ(pProcedure(hWnd, WM_SETCURSOR, 1, 2), 1);
    EXPECT_EQ(g_Cursors, std::vector<HCURSOR>{nullptr});
    EXPECT_EQ(pProcedure(hWnd, WM_USER, 1, 2), 0x77);
    EXPECT_EQ(g_QuitCode, -1);
    EXPECT_EQ(pProcedure(hWnd, WM_DESTROY, 0, 0), 0);
    EXPECT_EQ(g_QuitCode, 0);
    EXPECT_EQ(m_Trace.Lines(),
        (Lines{">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc 32\n", ">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc 1024\n",
            ">>> UMDThreadGpuD3D9::InternalGuiWndMsgProc 2\n"}));
}
