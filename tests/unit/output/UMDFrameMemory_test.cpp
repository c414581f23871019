#include "output/UMDFrameMemory.h"

#include "FailNthAllocation.h"
#include "ImportPatch.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
int g_Freed;
void (*g_pFree)(void*);

void CountingFree(void* pMemory)
{
    g_Freed += pMemory != nullptr;
    g_pFree(pMemory);
}

/// Counts the blocks that are freed.
class UMDFrameMemoryTest : public testing::Test
{
    ImportPatch m_Free{nullptr, "msvcrt.dll", "free", CountingFree, &g_pFree};
};

TEST_F(UMDFrameMemoryTest, Release_LastReference_FreesTheBytesAndTheObject)
{
    unsigned allocations = 0;
    UMDFrameMemory* pMemory = nullptr;
    {
        FailNthAllocation counter(0);
        pMemory = UMDFrameMemory::Create(16);
        allocations = counter.Count();
    }
    ASSERT_NE(pMemory, nullptr);
    EXPECT_EQ(allocations, 2u);
    pMemory->Bits()[15] = 1;
    pMemory->AddRef();
    g_Freed = 0;
    pMemory->Release();
    EXPECT_EQ(g_Freed, 0);
    pMemory->Release();
    EXPECT_EQ(g_Freed, 2);
}

TEST_F(UMDFrameMemoryTest, IsToBeRead_TwoReaders_UntilBothHaveEnded)
{
    UMDFrameMemory* pMemory = UMDFrameMemory::Create(16);
    EXPECT_FALSE(pMemory->IsToBeRead());
    pMemory->BeginRead();
    pMemory->BeginRead();
    pMemory->EndRead();
    EXPECT_TRUE(pMemory->IsToBeRead());
    pMemory->EndRead();
    EXPECT_FALSE(pMemory->IsToBeRead());
    pMemory->Release();
}

TEST_F(UMDFrameMemoryTest, Create_NoMemoryForTheObject_GivesNull)
{
    FailNthAllocation shortage(1);
    EXPECT_EQ(UMDFrameMemory::Create(16), nullptr);
}

TEST_F(UMDFrameMemoryTest, Create_NoMemoryForTheBytes_GivesNullAndFreesTheObject)
{
    UMDFrameMemory* pMemory = nullptr;
    int freed = 0;
    {
        FailNthAllocation shortage(2);
        g_Freed = 0;
        pMemory = UMDFrameMemory::Create(16);
        freed = g_Freed;
    }
    EXPECT_EQ(pMemory, nullptr);
    EXPECT_EQ(freed, 1);
}
}  // namespace
