// The sample client library, called as the driver calls it.
#include "support/PngImage.h"
#include "support/SamePixels.h"
#include "support/SampleClient.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <thread>

#include "HostTraceFile.h"
#include <gtest/gtest.h>
#include <tlhelp32.h>

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
    EXPECT_EQ(1u, counters.Connections);
    EXPECT_EQ(5u, counters.Received);
    EXPECT_EQ(0u, counters.Recorded);
    EXPECT_EQ(0u, counters.Dropped);
    EXPECT_EQ(0u, counters.Failed);
    EXPECT_EQ(0u, m_Client.Counters(2).Received);
    EXPECT_EQ(0u, FileCount());
}

TEST_F(SampleClientTest, Plug_SourceBeyondTheLast_IsRefused)
{
    void* pSlot = nullptr;
    EXPECT_FALSE(m_Client.Plug(&pSlot, TESSLO_SAMPLE_SOURCES));
    EXPECT_FALSE(m_Client.Plug(nullptr, 0));
    EXPECT_EQ(nullptr, pSlot);
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
    EXPECT_EQ(0u, m_Client.Counters(0).Received);
}

TEST_F(SampleClientTest, Recording_PaddedRowsAndGarbageAlpha_PictureEqualsThePixels)
{
    RecordTo(m_Folder.Path());
    const HostImage image = Pattern(37, 21, 1);
    SampleClientConnection connection(m_Client, 2);
    ASSERT_TRUE(connection.Send(image));
    connection.Close();
    EXPECT_TRUE(SamePixels(image, ReadPng(m_Folder.Path() / "source2-frame000000.png")));
    EXPECT_EQ(1u, m_Client.Counters(2).Recorded);
}

TEST_F(SampleClientTest, Recording_SizeChanges_EveryPictureHasItsOwn)
{
    RecordTo(m_Folder.Path());
    const HostImage images[] = {Pattern(16, 16, 0), Pattern(64, 48, 1), Pattern(5, 90, 2), Pattern(1, 1, 3)};
    SampleClientConnection connection(m_Client, 0);
    for (const HostImage& image : images)
        ASSERT_TRUE(connection.Send(image));
    connection.Close();
    for (size_t i = 0; i < std::size(images); ++i)
        EXPECT_TRUE(SamePixels(images[i], ReadPng(m_Folder.Path() / ("source0-frame00000" + std::to_string(i) + ".png")))) << i;
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
            EXPECT_TRUE(SamePixels(Pattern(20 + source, 20, source * 100 + i),
                ReadPng(m_Folder.Path() / ("source" + std::to_string(source) + "-frame00000" + std::to_string(i) + ".png"))))
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
    EXPECT_TRUE(SamePixels(Pattern(8, 8, 1), ReadPng(m_Folder.Path() / "source0-frame000001.png")));
    EXPECT_EQ(2u, m_Client.Counters(0).Connections);
}

TEST_F(SampleClientTest, Recording_FolderMissing_OneLineAndFailuresCounted)
{
    RecordTo(m_Folder.Path() / "nowhere");
    std::optional<HostTraceFile> trace(std::in_place, (m_Folder.Path() / "lines").wstring());
    SampleClientConnection connection(m_Client, 1);
    for (UINT i = 0; i < 3; ++i)
        EXPECT_TRUE(connection.Send(Pattern(8, 8, i)));
    connection.Close();
    trace.reset();
    EXPECT_EQ(3u, m_Client.Counters(1).Failed);
    EXPECT_EQ(0u, m_Client.Counters(1).Recorded);
    std::ifstream file(m_Folder.Path() / "lines");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    EXPECT_TRUE(text.starts_with("TessloClientDllSample: cannot write ")) << text;
    EXPECT_TRUE(text.ends_with("nowhere\\source1-frame000000.png (error 3); further failures of source 1 are only "
                               "counted\n"))
        << text;
    EXPECT_EQ(1, std::ranges::count(text, '\n')) << text;
}

TEST_F(SampleClientTest, Recording_OneFileCannotBeMade_TheOthersAreWritten)
{
    RecordTo(m_Folder.Path());
    std::filesystem::create_directory(m_Folder.Path() / "source0-frame000000.png");
    SampleClientConnection connection(m_Client, 0);
    EXPECT_TRUE(connection.Send(Pattern(8, 8, 0)));
    EXPECT_TRUE(connection.Send(Pattern(8, 8, 1)));
    connection.Close();
    EXPECT_EQ(1u, m_Client.Counters(0).Failed);
    EXPECT_EQ(1u, m_Client.Counters(0).Recorded);
    EXPECT_TRUE(SamePixels(Pattern(8, 8, 1), ReadPng(m_Folder.Path() / "source0-frame000001.png")));
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
    EXPECT_EQ(1u, m_Client.Counters(0).Failed);
    EXPECT_EQ(0u, FileCount());
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
    EXPECT_EQ(40u, counters.Received);
    EXPECT_EQ(40u, counters.Recorded + counters.Dropped);
    EXPECT_GE(counters.Recorded, 8u) << "what was queued is written before the connection is closed";
    EXPECT_EQ(counters.Recorded, FileCount());
}

TEST_F(SampleClientTest, Unplug_LastConnection_LeavesNoThread)
{
    RecordTo(m_Folder.Path());
    const UINT before = ThreadCount();
    {
        SampleClientConnection first(m_Client, 0);
        SampleClientConnection second(m_Client, 1);
        EXPECT_EQ(before + 2, ThreadCount()) << "one writer each";
        first.Send(Pattern(8, 8, 0));
    }
    EXPECT_EQ(before, ThreadCount());
}

TEST_F(SampleClientTest, WaitReceived_FrameMissing_TimesOut)
{
    const HostDelivery delivery(m_Client.Module());
    SampleClientConnection connection(m_Client, 0);
    connection.Send(Pattern(8, 8, 0));
    EXPECT_TRUE(delivery.WaitReceived(0, 1, 0));
    EXPECT_FALSE(delivery.WaitReceived(0, 2, 20));
    std::thread late([&] { connection.Send(Pattern(8, 8, 1)); });
    EXPECT_TRUE(delivery.WaitReceived(0, 2, 30'000));
    late.join();
}

TEST(SampleClientLoad, ManyRounds_StillLoads)
{
    // A library that leaks one thread-local index a load would end this process on the way.
    for (UINT i = 0; i < 1500; ++i)
    {
        const HMODULE hModule = LoadLibraryW(TESSLO_CLIENT_DEFAULT_DLL);
        ASSERT_NE(nullptr, hModule) << "round " << i;
        FreeLibrary(hModule);
    }
}
