#include "SupportProgram.h"
#include "SupportScenes.h"
#include "TestClient.h"
#include "TraceCapture.h"
#include "Waiting.h"
#include "host/runtime/HostProcess.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tesslo::test
{

namespace
{

constexpr char kNoPicture[] = "No picture";
constexpr char kBlack[] = "Black picture";
constexpr char kStandsStill[] = "Picture stands still";
constexpr char kWrongSize[] = "Wrong rotation or size";
constexpr char kSlow[] = "Slow";
constexpr char kEnded[] = "Program ended";
constexpr wchar_t kMaskOfTheChild[] = L"TESSLO_TEST_MASK";

/// Whether the frame that was delivered last is one, and black.
bool ShowsBlack(const SupportProgram& program)
{
    const HostImage frame = program.LastFrame();
    return frame.m_Width != 0 && std::ranges::all_of(frame.m_Pixels, [](UINT pixel) { return pixel == 0; });
}

DWORD NoAdapter(DWORD mask)
{
    const TestClient client;
    FakeDevice device;
    SupportProgram program(mask, client.DllName(), &device, "TessloWddmUmode.dll");
    EXPECT_THROW(program.MakeScreen(), HostError);
    return GetCurrentProcessId();
}

DWORD SixteenBits(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    HostResourceDescription description{.m_Width = 64, .m_Height = 64, .m_Format = D3DFMT_R5G6B5};
    description.m_Flags.RenderTarget = 1;
    description.m_Flags.Primary = 1;
    const HostResource screen(program.Device(), description);
    EXPECT_THROW(program.Device().Flip(screen), HostError);
    EXPECT_EQ(program.Delivered(), 0u);
    return GetCurrentProcessId();
}

DWORD Copies(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    program.MakeScreen();
    program.Device().SetRenderTarget(program.Screen());
    program.Device().Clear(0x123456);
    D3DDDIARG_PRESENT present{};
    present.hSrcResource = program.Screen().Handle();
    present.Flags.Blt = 1;
    EXPECT_EQ(program.Device().Functions().pfnPresent(program.Device().Handle(), &present), S_OK);
    EXPECT_EQ(program.Delivered(), 0u);
    return GetCurrentProcessId();
}

DWORD DrawingFaults(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    program.MakeScreen();
    program.Device().SetRenderTarget(program.Screen());
    program.Device().Clear(0);
    EXPECT_EQ(program.Device().Functions().pfnClear(program.Device().Handle(), nullptr, 0, nullptr), S_OK);
    program.Show();
    EXPECT_TRUE(ShowsBlack(program));
    return GetCurrentProcessId();
}

DWORD ShaderIsRefused(DWORD mask)
{
    const TestClient client;
    FakeDevice device;
    device.Fail("CreatePixelShader", kRefused);
    SupportProgram program(mask, client.DllName(), &device);
    program.MakeScreen();
    constexpr UINT kNothing[] = {0xFFFF0200, 0x0000FFFF};
    D3DDDIARG_CREATEPIXELSHADER create{};
    create.CodeSize = sizeof(kNothing);
    const D3DDDI_DEVICEFUNCS& functions = program.Device().Functions();
    EXPECT_EQ(functions.pfnCreatePixelShader(program.Device().Handle(), &create, kNothing), kRefused);
    program.Show();
    EXPECT_TRUE(ShowsBlack(program));
    return GetCurrentProcessId();
}

DWORD PresentsBlack(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    program.MakeScreen();
    program.Device().SetRenderTarget(program.Screen());
    program.Device().Clear(0);
    program.Show();
    EXPECT_TRUE(ShowsBlack(program));
    return GetCurrentProcessId();
}

DWORD ReadBackFails(DWORD mask)
{
    const TestClient client;
    FakeDevice device;
    SupportProgram program(mask, client.DllName(), &device);
    program.MakeScreen();
    program.Show();
    device.Fail("GetRenderTargetData", kRefused);
    EXPECT_FALSE(program.Flip());
    EXPECT_EQ(program.Delivered(), 1u);
    return GetCurrentProcessId();
}

DWORD ReadBackIsTriedAgain(DWORD mask)
{
    const TestClient client;
    FakeDevice device;
    SupportProgram program(mask, client.DllName(), &device);
    program.MakeScreen();
    program.Show();
    device.Fail("GetRenderTargetData", kRefused, 1);
    program.Show();
    return GetCurrentProcessId();
}

DWORD DestroysItsScreen(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    program.MakeScreen();
    program.Show();
    program.DestroyScreen();
    program.MakeScreen();
    EXPECT_FALSE(program.Flip());
    EXPECT_EQ(program.Delivered(), 1u);
    return GetCurrentProcessId();
}

DWORD AnotherSize(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    program.MakeScreen(96, 64, D3DDDI_ROTATION_90);
    const TraceCapture trace;
    program.Show();
    EXPECT_EQ(trace.LinesContaining("::Duplicate SRC[96 64 22] ").size(), 1u);
    EXPECT_EQ(program.LastFrame().m_Width, 64u) << "the sides are exchanged";
    EXPECT_EQ(program.LastFrame().m_Height, 96u);
    return GetCurrentProcessId();
}

/// A primary that was flipped lives on: the driver's threads would end with it.
DWORD SizeChanges(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    program.MakeScreen();
    for (int i = 0; i < 3; ++i)
        program.Show();
    const auto pSmaller = program.Device().CreatePrimary(80, 48, 0, D3DDDI_ROTATION_IDENTITY);
    program.Delivery().Presenting(0);
    program.Device().Flip(*pSmaller);
    EXPECT_TRUE(program.Delivery().WaitDelivered(0, 4, kLong));
    EXPECT_EQ(program.LastFrame().m_Width, 80u);
    return GetCurrentProcessId();
}

DWORD UnknownRotation(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    program.MakeScreen(96, 64, static_cast<D3DDDI_ROTATION>(5));
    program.FlipUntilRefused();
    EXPECT_EQ(program.Delivered(), 0u);
    return GetCurrentProcessId();
}

/// All is well, but the trace is on.
DWORD IsTraced(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    program.MakeScreen();
    program.Show();
    return GetCurrentProcessId();
}

DWORD CreationFaults(DWORD mask)
{
    const TestClient client;
    SupportProgram program(mask, client.DllName());
    D3DDDIARG_CREATERESOURCE create{};
    create.SurfCount = 1;
    create.pSurfList = reinterpret_cast<D3DDDI_SURFACEINFO*>(8);  // there is nothing
    create.Flags.RenderTarget = 1;
    EXPECT_EQ(program.Device().Functions().pfnCreateResource(program.Device().Handle(), &create), S_OK);
    EXPECT_EQ(create.hResource, nullptr) << "the program has nothing in its hand";
    return GetCurrentProcessId();
}

/// The part of a program whose client library ends it, in a process of its own.
TEST(SupportEnding, DISABLED_Update_EndsTheProcess)
{
    wchar_t mask[16] = L"";
    ASSERT_NE(GetEnvironmentVariableW(kMaskOfTheChild, mask, ARRAYSIZE(mask)), 0u);
    TestClient client;
    client.SetOnFrame([](const TessloVirtualMonitorFrame&) { TerminateProcess(GetCurrentProcess(), 3); });
    SupportProgram program(std::stoul(mask), client.DllName());
    program.MakeScreen();
    program.Flip();
    Sleep(INFINITE);
}

DWORD IsEnded(DWORD mask)
{
    SetEnvironmentVariableW(kMaskOfTheChild, std::to_wstring(mask).c_str());
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, ARRAYSIZE(program));
    std::wstring line =
        L"\"" + std::wstring(program) + L"\" --gtest_also_run_disabled_tests --gtest_filter=SupportEnding.*";
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    EXPECT_TRUE(HostStartProcess(nullptr, std::move(line), false, nullptr, startup, &process));
    EXPECT_EQ(WaitForSingleObject(process.hProcess, kLong), WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    EXPECT_EQ(code, 3u);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return process.dwProcessId;
}

constexpr SupportScene kScenes[] = {
    {kNoPicture, "there is no adapter to draw on", NoAdapter},
    {kNoPicture, "the program's screen has no 32 bits a pixel", SixteenBits},
    {kNoPicture, "the program copies instead of flipping", Copies},
    {kBlack, "a call that draws came to harm", DrawingFaults},
    {kBlack, "a shader is refused", ShaderIsRefused},
    {kBlack, "the program presents black, or the screen shows it so", PresentsBlack},
    {kStandsStill, "frames cannot be read back", ReadBackFails},
    {kStandsStill, "the program destroyed a screen that was shown", DestroysItsScreen},
    {kWrongSize, "the program presents another size than the screen's", AnotherSize},
    {kWrongSize, "the size has changed, and the client library keeps the old one", SizeChanges},
    {kWrongSize, "the runtime names a rotation that there is not", UnknownRotation},
    {kSlow, "the trace is on", IsTraced},
    {kSlow, "reading back succeeds only when it is tried again", ReadBackIsTriedAgain},
    {kEnded, "a call came to harm, and the program fell over what it did not get", CreationFaults},
    {kEnded, "something in the program ended it", IsEnded},
};

}  // namespace

std::span<const SupportScene> SupportScenesDevice()
{
    return kScenes;
}

}  // namespace tesslo::test
