#include "resources/UMDSurfaceList.h"

#include "FailNthAllocation.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

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

TEST_F(UMDSurfaceListTest, Fit_LargerThanItsLevel_IsCutToIt)
{
    const struct
    {
        UINT Levels;
        SIZE Expected[6];
    } rows[] = {
        {6, {{5, 9}, {2, 4}, {1, 2}, {1, 1}, {1, 1}, {1, 1}}},
        {2, {{5, 9}, {2, 4}, {5, 9}, {2, 4}, {5, 9}, {2, 4}}},
        {1, {{5, 9}, {5, 9}, {5, 9}, {5, 9}, {5, 9}, {5, 9}}},
    };
    for (const auto& row : rows)
    {
        const UMDSurfaceList pList = UMDNewSurfaceList(6);
        for (UINT i = 0; i < 6; ++i)
            pList[i] = {100, 0xFFFFFFFF, 1, this, 77, 0};
        UMDFitSurfaceList(pList.get(), 6, 5, 9, row.Levels);
        for (UINT i = 0; i < 6; ++i)
        {
            EXPECT_EQ(pList[i].Width, static_cast<UINT>(row.Expected[i].cx)) << i;
            EXPECT_EQ(pList[i].Height, static_cast<UINT>(row.Expected[i].cy)) << i;
            EXPECT_EQ(pList[i].pSysMem, this);
            EXPECT_EQ(pList[i].SysMemPitch, 77u);
        }
    }
}

TEST_F(UMDSurfaceListTest, Fit_SmallerThanItsLevelOrNoList_Stays)
{
    const UMDSurfaceList pList = UMDCopySurfaceList(&m_Create);
    UMDFitSurfaceList(pList.get(), 2, 640, 480, 2);
    EXPECT_EQ(memcmp(pList.get(), m_Surfaces, sizeof m_Surfaces), 0);
    UMDFitSurfaceList(nullptr, 2, 640, 480, 2);
}
