#include "resources/UMDSurfaceList.h"

#include "FailNthAllocation.h"

#include <gtest/gtest.h>

using tesslo::test::FailNthAllocation;

namespace
{
class UMDSurfaceListTest : public testing::Test
{
protected:
    UMDSurfaceListTest()
    {
        m_Create.pSurfList = m_Surfaces;
        m_Create.SurfCount = 2;
    }

    const D3DDDI_SURFACEINFO m_Surfaces[2] = {{64, 32, 1, this, 256, 0}, {32, 16, 1, nullptr, 0, 0}};
    D3DDDIARG_CREATERESOURCE m_Create = {};
};
}  // namespace

TEST_F(UMDSurfaceListTest, Count_NoList_IsNoneWhateverTheArgumentsSay)
{
    EXPECT_EQ(UMDSurfaceCount(&m_Create), 2u);
    m_Create.pSurfList = nullptr;
    EXPECT_EQ(UMDSurfaceCount(&m_Create), 0u);
}

TEST_F(UMDSurfaceListTest, First_ListOrNone_GivesItsSizeOrZero)
{
    EXPECT_EQ(UMDFirstSurface(&m_Create).Width, 64u);
    EXPECT_EQ(UMDFirstSurface(&m_Create).pSysMem, this);
    m_Create.SurfCount = 0;
    EXPECT_EQ(UMDFirstSurface(&m_Create).Width, 0u);
    EXPECT_EQ(UMDFirstSurface(&m_Create).pSysMem, nullptr);
}

TEST_F(UMDSurfaceListTest, Copy_List_OutlivesTheRuntimesOwn)
{
    const UMDSurfaceList pCopy = UMDCopySurfaceList(&m_Create);
    ASSERT_NE(pCopy, nullptr);
    EXPECT_NE(pCopy.get(), m_Create.pSurfList);
    EXPECT_EQ(memcmp(pCopy.get(), m_Surfaces, sizeof m_Surfaces), 0);
}

TEST_F(UMDSurfaceListTest, Copy_NoList_IsNull)
{
    m_Create.pSurfList = nullptr;
    EXPECT_EQ(UMDCopySurfaceList(&m_Create), nullptr);
    m_Create.pSurfList = m_Surfaces;
    m_Create.SurfCount = 0;
    EXPECT_EQ(UMDCopySurfaceList(&m_Create), nullptr);
}

TEST_F(UMDSurfaceListTest, New_AnyCount_IsZeroed)
{
    const UMDSurfaceList pList = UMDNewSurfaceList(3);
    ASSERT_NE(pList, nullptr);
    for (UINT i = 0; i < 3; ++i)
    {
        EXPECT_EQ(pList[i].Width, 0u);
        EXPECT_EQ(pList[i].pSysMem, nullptr);
    }
}

TEST_F(UMDSurfaceListTest, New_MemoryShort_IsNull)
{
    const FailNthAllocation shortage(1);
    EXPECT_EQ(UMDNewSurfaceList(3), nullptr);
}

TEST_F(UMDSurfaceListTest, Copy_MemoryShort_IsNull)
{
    const FailNthAllocation shortage(1);
    EXPECT_EQ(UMDCopySurfaceList(&m_Create), nullptr);
}
