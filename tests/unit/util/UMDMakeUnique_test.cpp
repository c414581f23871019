#include "util/UMDMakeUnique.h"

#include "FailNthAllocation.h"

#include <gtest/gtest.h>

TEST(UMDMakeUnique, Arguments_OfTheConstructor_AreHandedOn)
{
    struct Owner
    {
        explicit Owner(std::unique_ptr<int> pValue) : m_pValue(std::move(pValue)) {}
        std::unique_ptr<int> m_pValue;
    };
    const auto pOwner = UMDMakeUnique<Owner>(UMDMakeUnique<int>(7));
    ASSERT_NE(pOwner, nullptr);
    EXPECT_EQ(*pOwner->m_pValue, 7);
}

TEST(UMDMakeUnique, Memory_Short_GivesNull)
{
    const tesslo::test::FailNthAllocation shortage(1);
    EXPECT_EQ(UMDMakeUnique<int>(7), nullptr);
}
