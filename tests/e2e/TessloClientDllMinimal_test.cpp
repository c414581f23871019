// The smallest client library, called as the driver calls it: what lands in its files.
#include "ClientDll.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using namespace tesslo::test;

namespace
{
std::vector<UINT> Pixels(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::vector<UINT> pixels(bytes.size() / sizeof(UINT));
    std::memcpy(pixels.data(), bytes.data(), pixels.size() * sizeof(UINT));
    return pixels;
}

class TessloClientDllMinimalTest : public testing::Test
{
protected:
    TessloClientDllMinimalTest() : m_Library((Announce(m_Folder.Path()), L"TessloClientDllMinimal.dll")) {}

    /// Read by the library's C runtime, which takes its copy of the environment when it is loaded.
    static void Announce(const std::filesystem::path& folder)
    {
        SetEnvironmentVariableW(L"TESSLO_RAW_DIR", folder.c_str());
        _wputenv_s(L"TESSLO_RAW_DIR", folder.c_str());
    }

    /// A frame with one pixel more behind each row than it shows.
    bool Send(UINT source, UINT width, UINT height, std::vector<UINT> rows)
    {
        const TessloVirtualMonitorFrame frame = {0, source, width, height, (width + 1) * 4, 0, rows.data()};
        return m_Library.Update(&m_pSlot, &frame);
    }

    TemporaryFolder m_Folder;
    ClientDll m_Library;
    void* m_pSlot = nullptr;
};
}  // namespace

TEST_F(TessloClientDllMinimalTest, Update_TwoFrames_FollowEachOtherWithoutThePadding)
{
    ASSERT_TRUE(m_Library.Plug(&m_pSlot, 3));
    EXPECT_TRUE(Send(3, 2, 2, {1, 2, 99, 3, 4, 99}));
    EXPECT_TRUE(Send(3, 2, 2, {5, 6, 99, 7, 8, 99}));
    EXPECT_TRUE(m_Library.Unplug(&m_pSlot, 3));
    EXPECT_EQ(Pixels(m_Folder.Path() / "source3-2x2.raw"), (std::vector<UINT>{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(TessloClientDllMinimalTest, Update_AnotherSize_BeginsAFileOfItsOwn)
{
    ASSERT_TRUE(m_Library.Plug(&m_pSlot, 0));
    EXPECT_TRUE(Send(0, 2, 1, {1, 2, 99}));
    EXPECT_TRUE(Send(0, 1, 2, {3, 99, 4, 99}));
    EXPECT_TRUE(m_Library.Unplug(&m_pSlot, 0));
    EXPECT_EQ(Pixels(m_Folder.Path() / "source0-2x1.raw"), (std::vector<UINT>{1, 2}));
    EXPECT_EQ(Pixels(m_Folder.Path() / "source0-1x2.raw"), (std::vector<UINT>{3, 4}));
}

TEST_F(TessloClientDllMinimalTest, Update_FolderIsGone_GoesOnWithoutAFile)
{
    ASSERT_TRUE(m_Library.Plug(&m_pSlot, 0));
    std::filesystem::remove_all(m_Folder.Path());
    EXPECT_TRUE(Send(0, 1, 1, {1, 99}));
    EXPECT_TRUE(m_Library.Unplug(&m_pSlot, 0));
}

TEST_F(TessloClientDllMinimalTest, Unplug_BeforeAnyFrame_LeavesNoFile)
{
    ASSERT_TRUE(m_Library.Plug(&m_pSlot, 0));
    EXPECT_TRUE(m_Library.Unplug(&m_pSlot, 0));
    EXPECT_TRUE(std::filesystem::is_empty(m_Folder.Path()));
}
