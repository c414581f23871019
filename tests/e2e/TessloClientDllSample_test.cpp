// The sample client library, called as the driver calls it.
#include "Gate.h"
#include "ImportPatch.h"
#include "PngImage.h"
#include "SamePixels.h"
#include "SampleClient.h"
#include "TemporaryFolder.h"
#include "TraceText.h"
#include "tools/process/HeapUse.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <thread>

#include "host/program/HostTraceFile.h"
#include <gtest/gtest.h>
#include <tlhelp32.h>

using namespace tesslo::test;

namespace
{

/// A picture in which no two pixels of a small neighbourhood are alike.
HostImage Pattern(UINT width, UINT height, UINT seed)
{
    HostImage image(width, height);
    for (UINT i = 0; i < image.m_Pixels.size(); ++i)
        image.m_Pixels[i] = (i * 2654435761u + seed * 40503u) >> 8;
    return image;
}

UINT ThreadCount()
{
    const HANDLE hSnapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof(entry);
    UINT count = 0;
    for (BOOL bMore = Thread32First(hSnapshot, &entry); bMore; bMore = Thread32Next(hSnapshot, &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(hSnapshot);
    return count;
}

Gate* g_pDisk;  ///< in front of every write
decltype(&WriteFile) g_pWriteFile;

BOOL WINAPI WriteFileBehindGate(HANDLE hFile, LPCVOID pData, DWORD size, LPDWORD pWritten, LPOVERLAPPED pOverlapped)
{
    g_pDisk->Pass();
    return g_pWriteFile(hFile, pData, size, pWritten, pOverlapped);
}

class SampleClientTest : public testing::Test
{
protected:
    SampleClientTest() { SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, nullptr); }
    ~SampleClientTest() override { SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, nullptr); }

    void RecordTo(const std::filesystem::path& folder)
    {
        SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, folder.c_str());
    }

    size_t FileCount() const
    {
        return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(m_Folder.Path()), {}));
    }

    /// What was written to the trace file of this name.
    std::string Lines() const
    {
        std::ifstream file(m_Folder.Path() / "lines");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    HostImage Recorded(UINT source, UINT frame) const
    {
        return ReadPng(m_Folder.Path() / Text("source%u-frame%06u.png", source, frame));
    }

    TemporaryFolder m_Folder;
    SampleClient m_Client;
};

}  // namespace

TEST_F(SampleClientTest, Plug_NoFolderNamed_CountsWithoutRecording)
{
    SampleClientConnection connection(m_Client, 3);
    for (UINT i = 0; i < 5; ++i)
        EXPECT_TRUE(connection.Send(Pattern(8, 8, i)));
    connection.Close();
    const TessloSampleCounters counters = m_Client.Counters(3);
    EXPECT_EQ(counters.Connections, 1u);
    EXPECT_EQ(counters.Received, 5u);
    EXPECT_EQ(counters.Recorded, 0u);
    EXPECT_EQ(counters.Dropped, 0u);
    EXPECT_EQ(counters.Failed, 0u);
    EXPECT_EQ(m_Client.Counters(2).Received, 0u);
    EXPECT_EQ(FileCount(), 0u);
}

TEST_F(SampleClientTest, Plug_SourceBeyondTheLast_IsRefused)
{
    void* pSlot = nullptr;
    EXPECT_FALSE(m_Client.Plug(&pSlot, TESSLO_SAMPLE_SOURCES));
    EXPECT_FALSE(m_Client.Plug(nullptr, 0));
    EXPECT_EQ(pSlot, nullptr);
}

TEST_F(SampleClientTest, Update_NothingToShow_IsRefused)
{
    void* pSlot = nullptr;
    ASSERT_TRUE(m_Client.Plug(&pSlot, 0));
    const TessloVirtualMonitorFrame noBits = {0, 0, 4, 4, 16, 0, nullptr};
    EXPECT_FALSE(m_Client.Update(&pSlot, nullptr));
    EXPECT_FALSE(m_Client.Update(&pSlot, &noBits));
    EXPECT_TRUE(m_Client.Unplug(&pSlot, 0));
    EXPECT_FALSE(m_Client.Unplug(&pSlot, 0)) << "the slot is empty again";
    EXPECT_EQ(m_Client.Counters(0).Received, 0u);
}

TEST_F(SampleClientTest, Recording_PaddedRowsAndGarbageAlpha_PictureEqualsThePixels)
{
    RecordTo(m_Folder.Path());
    const HostImage image = Pattern(37, 21, 1);
    SampleClientConnection connection(m_Client, 2);
    ASSERT_TRUE(connection.Send(image));
    connection.Close();
    EXPECT_TRUE(SamePixels(Recorded(2, 0), image));
    EXPECT_EQ(m_Client.Counters(2).Recorded, 1u);
}

TEST_F(SampleClientTest, Recording_SizeChanges_EveryPictureHasItsOwn)
{
    RecordTo(m_Folder.Path());
    SampleClientConnection connection(m_Client, 0);
    // Three rounds of the queue, so that every slot serves a small, a large and a small picture.
    for (UINT i = 0; i < 24; ++i)
    {
        const HostImage image = i / 8 == 1 ? Pattern(200 + i, 300, i) : Pattern(1 + i, 2, i);
        ASSERT_TRUE(connection.Send(image));
        ASSERT_TRUE(WaitUntil([&] { return m_Client.Counters(0).Recorded == i + 1; }));
        EXPECT_TRUE(SamePixels(Recorded(0, i), image)) << i;
    }
}

TEST_F(SampleClientTest, Recording_FourSourcesAtOnce_NobodyTakesAnothersFrames)
{
    RecordTo(m_Folder.Path());
    std::vector<std::thread> workers;
    for (UINT source = 0; source < 4; ++source)
        workers.emplace_back([this, source] {
            SampleClientConnection connection(m_Client, source);
            for (UINT i = 0; i < 8; ++i)
                connection.Send(Pattern(20 + source, 20, source * 100 + i));
        });
    for (std::thread& worker : workers)
        worker.join();
    for (UINT source = 0; source < 4; ++source)
        for (UINT i = 0; i < 8; ++i)
            EXPECT_TRUE(SamePixels(Recorded(source, i), Pattern(20 + source, 20, source * 100 + i)))
                << "source " << source << " frame " << i;
}

TEST_F(SampleClientTest, Recording_SecondConnection_GoesOnNumbering)
{
    RecordTo(m_Folder.Path());
    for (UINT i = 0; i < 2; ++i)
    {
        SampleClientConnection connection(m_Client, 0);
        ASSERT_TRUE(connection.Send(Pattern(8, 8, i)));
    }
    EXPECT_TRUE(SamePixels(Recorded(0, 1), Pattern(8, 8, 1)));
    EXPECT_EQ(m_Client.Counters(0).Connections, 2u);
}

TEST_F(SampleClientTest, Recording_FolderMissing_FirstAndSumAreToldAndFailuresCounted)
{
    RecordTo(m_Folder.Path() / "nowhere");
    std::optional<HostTraceFile> trace(std::in_place, (m_Folder.Path() / "lines").wstring());
    SampleClientConnection connection(m_Client, 1);
    for (UINT i = 0; i < 3; ++i)
        EXPECT_TRUE(connection.Send(Pattern(8, 8, i)));
    connection.Close();
    trace.reset();
    EXPECT_EQ(m_Client.Counters(1).Failed, 3u);
    EXPECT_EQ(m_Client.Counters(1).Recorded, 0u);
    const std::string text = Lines();
    EXPECT_TRUE(text.starts_with("TessloClientDllSample: cannot write ")) << text;
    EXPECT_TRUE(text.ends_with("nowhere\\source1-frame000000.png (error 3); further failures of source 1 are only "
                               "counted\nTessloClientDllSample: lost 3 frames of source 1 to failures\n"))
        << text;
    EXPECT_EQ(std::ranges::count(text, '\n'), 2) << text;
}

TEST_F(SampleClientTest, Recording_OneFileCannotBeMade_TheOthersAreWritten)
{
    RecordTo(m_Folder.Path());
    std::filesystem::create_directory(m_Folder.Path() / "source0-frame000000.png");
    SampleClientConnection connection(m_Client, 0);
    EXPECT_TRUE(connection.Send(Pattern(8, 8, 0)));
    EXPECT_TRUE(connection.Send(Pattern(8, 8, 1)));
    connection.Close();
    EXPECT_EQ(m_Client.Counters(0).Failed, 1u);
    EXPECT_EQ(m_Client.Counters(0).Recorded, 1u);
    EXPECT_TRUE(SamePixels(Recorded(0, 1), Pattern(8, 8, 1)));
}

TEST_F(SampleClientTest, Recording_DiskFull_NoHalfPictureIsLeftAndTheNextIsTried)
{
    RecordTo(m_Folder.Path());
    SampleClientConnection connection(m_Client, 0);
    {
        const FailingImport full(m_Client.Module(), "kernel32.dll", "WriteFile", FALSE, ERROR_DISK_FULL);
        EXPECT_TRUE(connection.Send(Pattern(8, 8, 0)));
        ASSERT_TRUE(WaitUntil([this] { return m_Client.Counters(0).Failed == 1; }));
    }
    EXPECT_EQ(FileCount(), 0u);
    EXPECT_TRUE(connection.Send(Pattern(8, 8, 1)));
    connection.Close();
    EXPECT_EQ(m_Client.Counters(0).Failed, 1u);
    EXPECT_TRUE(SamePixels(Recorded(0, 1), Pattern(8, 8, 1)));
    const HostRecording recording(m_Client.Module());
    ASSERT_TRUE(recording.Failure(0).has_value());
    EXPECT_EQ(recording.Failure(0)->Frame, 0u);
    EXPECT_EQ(recording.Failure(0)->Error, DWORD{ERROR_DISK_FULL});
    EXPECT_FALSE(recording.Failure(1).has_value());
    EXPECT_TRUE(recording.WaitRecorded(0, 2, 0)) << "one failed, one recorded";
    EXPECT_FALSE(recording.WaitRecorded(0, 3, 20));
}

TEST_F(SampleClientTest, Recording_WriterStuck_UpdateDoesNotWaitAndDropsAreCounted)
{
    RecordTo(m_Folder.Path());
    Gate disk;
    g_pDisk = &disk;
    const ImportPatch patch(m_Client.Module(), "kernel32.dll", "WriteFile", WriteFileBehindGate, &g_pWriteFile);
    SampleClientConnection connection(m_Client, 0);
    EXPECT_TRUE(connection.Send(Pattern(8, 8, 0)));
    ASSERT_TRUE(disk.WaitForOne());
    // The writer holds the first frame's slot; seven more fit behind it.
    for (UINT i = 1; i < 12; ++i)
        EXPECT_TRUE(connection.Send(Pattern(8, 8, i)));
    EXPECT_EQ(m_Client.Counters(0).Received, 12u);
    EXPECT_EQ(m_Client.Counters(0).Dropped, 4u);
    EXPECT_EQ(m_Client.Counters(0).Recorded, 0u);
    std::optional<HostTraceFile> trace(std::in_place, (m_Folder.Path() / "lines").wstring());
    disk.Open();
    connection.Close();
    trace.reset();
    EXPECT_EQ(Lines(), "TessloClientDllSample: dropped 4 frames of source 0, for which the writer was too slow\n");
    EXPECT_EQ(m_Client.Counters(0).Recorded, 8u);
    EXPECT_TRUE(SamePixels(Recorded(0, 7), Pattern(8, 8, 7)));
    EXPECT_FALSE(std::filesystem::exists(m_Folder.Path() / "source0-frame000008.png"));
}

TEST_F(SampleClientTest, Plug_ThreadOrSemaphoreRefused_IsRefused)
{
    RecordTo(m_Folder.Path());
    for (const char* pCall : {"CreateThread", "CreateSemaphoreW"})
    {
        const FailingImport none(m_Client.Module(), "kernel32.dll", pCall, 0, ERROR_NOT_ENOUGH_MEMORY);
        void* pSlot = nullptr;
        EXPECT_FALSE(m_Client.Plug(&pSlot, 0)) << pCall;
        EXPECT_EQ(pSlot, nullptr) << pCall;
        EXPECT_EQ(m_Client.Counters(0).Connections, 0u) << pCall;
    }
}

TEST_F(SampleClientTest, Recording_PitchShorterThanTheRow_CountsAFailure)
{
    RecordTo(m_Folder.Path());
    void* pSlot = nullptr;
    ASSERT_TRUE(m_Client.Plug(&pSlot, 0));
    const UINT bits[16] = {};
    const TessloVirtualMonitorFrame frame = {0, 0, 4, 4, 12, 0, bits};
    EXPECT_TRUE(m_Client.Update(&pSlot, &frame));
    EXPECT_TRUE(m_Client.Unplug(&pSlot, 0));
    EXPECT_EQ(m_Client.Counters(0).Failed, 1u);
    EXPECT_EQ(FileCount(), 0u);
}

TEST_F(SampleClientTest, Recording_FasterThanTheWriter_EveryFrameIsAccountedFor)
{
    RecordTo(m_Folder.Path());
    SampleClientConnection connection(m_Client, 0);
    const HostImage image = Pattern(640, 480, 0);
    for (UINT i = 0; i < 40; ++i)
        EXPECT_TRUE(connection.Send(image));
    connection.Close();
    const TessloSampleCounters counters = m_Client.Counters(0);
    EXPECT_EQ(counters.Received, 40u);
    EXPECT_EQ(counters.Recorded + counters.Dropped, 40u);
    EXPECT_GE(counters.Recorded, 8u) << "what was queued is written before the connection is closed";
    EXPECT_EQ(FileCount(), counters.Recorded);
}

TEST_F(SampleClientTest, Unplug_LastConnection_LeavesNoThread)
{
    RecordTo(m_Folder.Path());
    const UINT before = ThreadCount();
    {
        SampleClientConnection first(m_Client, 0);
        SampleClientConnection second(m_Client, 1);
        EXPECT_EQ(ThreadCount(), before + 2) << "one writer each";
        first.Send(Pattern(8, 8, 0));
    }
    EXPECT_EQ(ThreadCount(), before);
}

TEST_F(SampleClientTest, WaitReceived_FrameMissing_TimesOut)
{
    const HostRecording recording(m_Client.Module());
    SampleClientConnection connection(m_Client, 0);
    connection.Send(Pattern(8, 8, 0));
    EXPECT_TRUE(recording.WaitReceived(0, 1, 0));
    EXPECT_FALSE(recording.WaitReceived(0, 2, 20));
    // The pause lets the wait begin first. Without it the test would still hold, and see less.
    std::thread late([&] {
        Sleep(50);
        connection.Send(Pattern(8, 8, 1));
    });
    const ULONGLONG start = GetTickCount64();
    EXPECT_TRUE(recording.WaitReceived(0, 2, 60'000));
    EXPECT_LT(GetTickCount64() - start, 30'000u) << "woken by the frame, not by the end of the time";
    late.join();
}

TEST(SampleClientLoad, ManyRounds_StillLoadsAndNothingIsLeft)
{
    // A library that leaks one thread-local index a load would end this process on the way.
    constexpr UINT kRounds = 1500, kWarm = 10;
    HeapUse before{};
    for (UINT i = 0; i < kRounds; ++i)
    {
        if (i == kWarm)
            before = HeapUse::Now();
        const HMODULE hModule = LoadLibraryW(TESSLO_CLIENT_DEFAULT_DLL);
        ASSERT_NE(hModule, nullptr) << "round " << i;
        FreeLibrary(hModule);
    }
    const HeapUse after = HeapUse::Now();
    EXPECT_LT(after.m_Blocks, before.m_Blocks + kRounds / 10);
    EXPECT_LT(after.m_Bytes, before.m_Bytes + kRounds * 100);
}
