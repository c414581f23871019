// tesslo_host.exe as a user starts it.
#include "PngImage.h"
#include "RotatedImage.h"
#include "SamePixels.h"
#include "TemporaryFolder.h"
#include "TraceText.h"
#include "host/runtime/HostProcess.h"
#include "host/scenes/HostCardScene.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{

struct Outcome
{
    DWORD m_Code;
    std::string m_Output;
    std::string m_Errors;
};

HANDLE CreateInheritable(const std::filesystem::path& path)
{
    SECURITY_ATTRIBUTES security = {sizeof(security), nullptr, TRUE};
    return CreateFileW(
        path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &security, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string ReadText(const std::filesystem::path& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

class HostProgramTest : public testing::Test
{
protected:
    Outcome Run(const std::wstring& arguments)
    {
        STARTUPINFOW startup{};
        startup.cb = sizeof(startup);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = INVALID_HANDLE_VALUE;
        startup.hStdOutput = CreateInheritable(m_Folder.Path() / "stdout");
        startup.hStdError = CreateInheritable(m_Folder.Path() / "stderr");
        PROCESS_INFORMATION process{};
        EXPECT_TRUE(HostStartProcess(nullptr, L"tesslo_host.exe " + arguments, true, nullptr, startup, &process));
        CloseHandle(startup.hStdOutput);
        CloseHandle(startup.hStdError);
        DWORD code = 0;
        EXPECT_EQ(WaitForSingleObject(process.hProcess, 120'000), WAIT_OBJECT_0);
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return {code, ReadText(m_Folder.Path() / "stdout"), ReadText(m_Folder.Path() / "stderr")};
    }

    void ExpectOneLine(const Outcome& outcome, DWORD code, const std::string& message)
    {
        EXPECT_EQ(outcome.m_Code, code);
        EXPECT_EQ(outcome.m_Output, "");
        EXPECT_EQ(outcome.m_Errors, "tesslo_host: " + message + "\n");
    }

    TemporaryFolder m_Folder;
};

}  // namespace

TEST_F(HostProgramTest, Help_Asked_PrintsAndSucceeds)
{
    const Outcome outcome = Run(L"--help");
    EXPECT_EQ(outcome.m_Code, 0u);
    EXPECT_NE(outcome.m_Output.find("--every-frame"), std::string::npos);
    EXPECT_EQ(outcome.m_Errors, "");
}

TEST_F(HostProgramTest, BadOption_OneLineAndCode2)
{
    ExpectOneLine(Run(L"--source 12"), 2, "--source 12: expected WIDTHxHEIGHT, each 64 to 8192 pixels");
}

TEST_F(HostProgramTest, DriverMissing_OneLineAndCode1)
{
    const Outcome outcome = Run(L"--driver nosuch.dll");
    EXPECT_EQ(outcome.m_Code, 1u);
    EXPECT_TRUE(outcome.m_Errors.starts_with("tesslo_host: cannot load the driver nosuch.dll: ")) << outcome.m_Errors;
    EXPECT_TRUE(outcome.m_Errors.ends_with(" (126)\n")) << outcome.m_Errors;
    EXPECT_EQ(std::count(outcome.m_Errors.begin(), outcome.m_Errors.end(), '\n'), 1);
}

TEST_F(HostProgramTest, ClientLibraryMissing_OneLineAndCode1)
{
    ExpectOneLine(Run(L"--client nosuch.dll"), 1, "the driver could not load the client library nosuch.dll");
}

TEST_F(HostProgramTest, OutputIsAFile_OneLineAndCode1)
{
    std::ofstream(m_Folder.Path() / "taken") << "x";
    const Outcome outcome = Run(L"--out \"" + (m_Folder.Path() / "taken").wstring() + L"\"");
    EXPECT_EQ(outcome.m_Code, 1u);
    EXPECT_TRUE(outcome.m_Errors.starts_with("tesslo_host: cannot make the folder ")) << outcome.m_Errors;
    EXPECT_EQ(outcome.m_Errors.find('\n'), outcome.m_Errors.size() - 1) << outcome.m_Errors;
}

TEST_F(HostProgramTest, Report_OfThisMachine_IsWrittenWithAllItsParts)
{
    const std::filesystem::path path = m_Folder.Path() / "report.txt";
    const Outcome outcome = Run(L"--report \"" + path.wstring() + L"\"");
    EXPECT_EQ(outcome.m_Code, 0u);
    EXPECT_EQ(outcome.m_Errors, "");
    EXPECT_TRUE(outcome.m_Output.starts_with("The report is in ")) << outcome.m_Output;
    const std::string text = ReadText(path);
    size_t at = 0;
    for (const char* pPart : {"Versions\n\n", "\nRegistry\n\n", "\nAdapters\n\n",
             "\nthe driver draws on: ", "\nClient library\n\n", "\nLast trace\n\n"})
        EXPECT_NE(at = text.find(pPart, at), std::string::npos) << pPart;
}

TEST_F(HostProgramTest, Report_CannotBeWritten_OneLineAndCode1)
{
    const Outcome outcome = Run(L"--report \"" + (m_Folder.Path() / "nosuch" / "report.txt").wstring() + L"\"");
    EXPECT_EQ(outcome.m_Code, 1u);
    EXPECT_EQ(outcome.m_Output, "");
    EXPECT_TRUE(outcome.m_Errors.starts_with("tesslo_host: cannot write ")) << outcome.m_Errors;
    EXPECT_TRUE(outcome.m_Errors.ends_with(" (3)\n")) << outcome.m_Errors;
    EXPECT_EQ(std::count(outcome.m_Errors.begin(), outcome.m_Errors.end(), '\n'), 1);
}

TEST_F(HostProgramTest, TwoSourcesEveryFrame_AllDeliveredAndTold)
{
    const std::filesystem::path folder = m_Folder.Path() / "pictures";
    const Outcome outcome =
        Run(L"--source 160x120 --source 100x80 --rotation 0 --rotation 90 --scene fill --frames 6 --every-frame "
            L"--trace 0x202 --out \"" +
            folder.wstring() + L"\"");
    EXPECT_EQ(outcome.m_Code, 0u) << outcome.m_Errors;
    EXPECT_NE(outcome.m_Output.find("100 %: 6 of 6 frames\n"), std::string::npos) << outcome.m_Output;
    EXPECT_NE(outcome.m_Output.find("\n0       160x120            0          6          6        0"), std::string::npos)
        << outcome.m_Output;
    EXPECT_NE(outcome.m_Output.find("\n1       100x80            90          6          6        0"), std::string::npos)
        << outcome.m_Output;
    EXPECT_TRUE(std::filesystem::exists(folder / "source1-frame000005.png"));
    const std::string trace = ReadText(folder / "trace.log");
    EXPECT_NE(trace.find("=> UMDDdiPresent hSrcResource:0x"), std::string::npos);
}

TEST_F(HostProgramTest, Out_FramesArrived_OverviewAndClosingLineTellAll)
{
    const Outcome outcome = Run(L"--source 160x120 --source 100x80 --rotation 0 --rotation 90 --scene card --frames 3 "
                                L"--every-frame --out \"" +
                                m_Folder.Path().wstring() + L"\"");
    EXPECT_EQ(outcome.m_Code, 0u) << outcome.m_Errors;
    EXPECT_TRUE(outcome.m_Output.ends_with("\n6 of 6 presented frames arrived, 6 pictures were recorded.\n"))
        << outcome.m_Output;
    const HostImage overview = ReadPng(m_Folder.Path() / "overview.png");
    const HostImage card = ReadPng(m_Folder.Path() / "source0-frame000002.png");
    ASSERT_EQ(card.m_Width, 160u);
    EXPECT_GT(overview.m_Width, 160u + 80u);
    EXPECT_EQ(overview.At(16, 16), card.At(0, 0)) << "as large as it is, at the left";
    EXPECT_EQ(overview.At(16 + 70, 16 + 30), card.At(70, 30));
}

TEST_F(HostProgramTest, Out_PictureCannotBeWritten_IsTheExitCode)
{
    std::filesystem::create_directory(m_Folder.Path() / "source0-frame000001.png");
    std::filesystem::create_directory(m_Folder.Path() / "overview.png");
    const Outcome outcome =
        Run(L"--source 64x64 --source 64x64 --scene fill --scene fill --frames 3 --every-frame --out \"" +
            m_Folder.Path().wstring() + L"\"");
    EXPECT_EQ(outcome.m_Code, 1u);
    EXPECT_TRUE(outcome.m_Output.ends_with("\n6 of 6 presented frames arrived, 5 pictures were recorded.\n"))
        << outcome.m_Output;
    EXPECT_NE(outcome.m_Errors.find(": source0-frame000001.png could not be written; 1 of 6 pictures are missing\n"),
        std::string::npos)
        << outcome.m_Errors;
    EXPECT_TRUE(outcome.m_Errors.ends_with(": overview.png could not be written\n")) << outcome.m_Errors;
    EXPECT_EQ(std::count(outcome.m_Errors.begin(), outcome.m_Errors.end(), '\n'), 2) << outcome.m_Errors;
}

TEST_F(HostProgramTest, ChangeEvery_FourChanges_RotationAndSizeGoRound)
{
    const Outcome outcome =
        Run(L"--source 160x120 --rotation 90 --scene card --frames 9 --change-every 2 --every-frame "
            L"--out \"" +
            m_Folder.Path().wstring() + L"\"");
    EXPECT_EQ(outcome.m_Code, 0u) << outcome.m_Errors;
    constexpr D3DDDI_ROTATION kRotations[] = {
        D3DDDI_ROTATION_90, D3DDDI_ROTATION_180, D3DDDI_ROTATION_270, D3DDDI_ROTATION_IDENTITY, D3DDDI_ROTATION_90};
    for (UINT frame = 0; frame < 9; ++frame)
    {
        const UINT mode = frame / 2, width = mode % 2 ? 120 : 160, height = mode % 2 ? 90 : 120;
        const HostImage card = HostCardScene::Expected(width, height, 0, kRotations[mode], frame);
        EXPECT_TRUE(SamePixels(
            ReadPng(m_Folder.Path() / Text("source0-frame%06u.png", frame)), RotatedImage(card, kRotations[mode])))
            << frame;
    }
}

TEST_F(HostProgramTest, Pace_ThirtyFramesASecond_TakesItsTime)
{
    const ULONGLONG start = GetTickCount64();
    const Outcome outcome = Run(L"--source 64x64 --scene fill --frames 31 --fps 30");
    EXPECT_EQ(outcome.m_Code, 0u) << outcome.m_Errors;
    EXPECT_GE(GetTickCount64() - start, 1000u);
}

TEST_F(HostProgramTest, ClientLibraryWithoutAnExport_OneLineAndCode1)
{
    ExpectOneLine(Run(L"--client TessloTestClientWithoutUnplug.dll"), 1,
        "TessloTestClientWithoutUnplug.dll does not export TessloVirtualMonitorUnplug: it is no client library");
}

TEST_F(HostProgramTest, PlainClientLibrary_EveryFrame_AllDeliveredNothingSaidOfPictures)
{
    const Outcome outcome = Run(
        L"--source 160x120 --scene fill --frames 6 --every-frame --client TessloTestClientWithoutReserved1.dll --out \"" +
        m_Folder.Path().wstring() + L"\"");
    EXPECT_EQ(outcome.m_Code, 0u) << outcome.m_Errors;
    EXPECT_NE(outcome.m_Output.find("\n0       160x120            0          6          6        0      0         -  "),
        std::string::npos)
        << outcome.m_Output;
}
