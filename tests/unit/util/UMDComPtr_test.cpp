#include "util/UMDComPtr.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace
{
/// Counts its references; the test holds the first one.
struct Counted
{
    void AddRef() { ++m_References; }
    void Release() { --m_References; }

    int m_References = 1;
};

/// An owner that was given the test's reference, as a creating call gives it.
UMDComPtr<Counted> OwnerOf(Counted& counted)
{
    UMDComPtr<Counted> owner;
    *owner.Put() = &counted;
    return owner;
}
}  // namespace

TEST(UMDComPtr, Empty_HoldsNothing)
{
    const UMDComPtr<Counted> owner;
    EXPECT_FALSE(owner);
    EXPECT_EQ(owner.Get(), nullptr);
}

TEST(UMDComPtr, Put_NewReference_IsReleasedAtTheEnd)
{
    Counted counted;
    {
        const auto owner = OwnerOf(counted);
        EXPECT_TRUE(owner);
        EXPECT_EQ(owner.Get(), &counted);
        EXPECT_EQ(counted.m_References, 1);
    }
    EXPECT_EQ(counted.m_References, 0);
}

TEST(UMDComPtr, Put_SomethingHeld_ReleasesItFirst)
{
    Counted first, second;
    auto owner = OwnerOf(first);
    *owner.Put() = &second;
    EXPECT_EQ(first.m_References, 0);
    EXPECT_EQ(second.m_References, 1);
}

TEST(UMDComPtr, Share_SomebodyElsesReference_TakesOneMore)
{
    Counted counted;
    UMDComPtr<Counted> owner;
    owner.Share(&counted);
    EXPECT_EQ(counted.m_References, 2);
    owner.Reset();
    EXPECT_EQ(counted.m_References, 1);
    EXPECT_FALSE(owner);
}

TEST(UMDComPtr, Share_WhatIsHeldAlready_NeverDropsTheLastReference)
{
    struct Watched : Counted
    {
        void Release() { m_Least = std::min(m_Least, --m_References); }
        int m_Least = 1;
    } watched;
    UMDComPtr<Watched> owner;
    *owner.Put() = &watched;
    owner.Share(&watched);
    EXPECT_EQ(watched.m_Least, 1);
    EXPECT_EQ(watched.m_References, 1);
}

TEST(UMDComPtr, Share_Null_ReleasesWhatWasHeld)
{
    Counted counted;
    auto owner = OwnerOf(counted);
    owner.Share(nullptr);
    EXPECT_EQ(counted.m_References, 0);
    EXPECT_EQ(owner.Get(), nullptr);
}

TEST(UMDComPtr, Move_EitherWay_HandsTheReferenceOver)
{
    Counted first, second;
    auto owner = OwnerOf(first);
    UMDComPtr<Counted> other(std::move(owner));
    EXPECT_EQ(owner.Get(), nullptr);
    EXPECT_EQ(other.Get(), &first);
    owner = OwnerOf(second);
    owner = std::move(other);
    EXPECT_EQ(owner.Get(), &first);
    EXPECT_EQ(first.m_References, 1);
    EXPECT_EQ(second.m_References, 0);
}

TEST(UMDComPtr, Detach_Held_GivesItAwayUnreleased)
{
    Counted counted;
    {
        auto owner = OwnerOf(counted);
        EXPECT_EQ(owner.Detach(), &counted);
    }
    EXPECT_EQ(counted.m_References, 1);
}

TEST(UMDComPtr, Reset_ReleaseLooksBack_FindsNothing)
{
    struct Curious : Counted
    {
        void Release() { m_pSeen = m_pOwner->Get(); }
        UMDComPtr<Curious>* m_pOwner = nullptr;
        Curious* m_pSeen = this;
    } curious;
    UMDComPtr<Curious> owner;
    curious.m_pOwner = &owner;
    *owner.Put() = &curious;
    owner.Reset();
    EXPECT_EQ(curious.m_pSeen, nullptr);
}
