#include "FailNthAllocation.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <new>

using namespace tesslo::test;

namespace
{

LONG s_Exceptions;  ///< raised so far on any thread

LONG CALLBACK CountException(EXCEPTION_POINTERS*)
{
    InterlockedIncrement(&s_Exceptions);
    return EXCEPTION_CONTINUE_SEARCH;
}

/// Counts the exceptions that are raised while it lives.
class UMDUtilNew : public testing::Test
{
protected:
    UMDUtilNew() : m_pHandler(AddVectoredExceptionHandler(1, CountException)) { s_Exceptions = 0; }
    ~UMDUtilNew() override { RemoveVectoredExceptionHandler(m_pHandler); }

private:
    void* m_pHandler;
};

}  // namespace

TEST_F(UMDUtilNew, OneObject_MemoryIsShort_IsNullWithoutAnException)
{
    void* pObject = this;
    {
        FailNthAllocation fail(1);
        pObject = ::operator new(16, std::nothrow);
    }
    EXPECT_EQ(pObject, nullptr);
    EXPECT_EQ(s_Exceptions, 0);
}

TEST_F(UMDUtilNew, ManyObjects_MemoryIsShort_AreNullWithoutAnException)
{
    void* pObjects = this;
    {
        FailNthAllocation fail(1);
        pObjects = ::operator new[](16, std::nothrow);
    }
    EXPECT_EQ(pObjects, nullptr);
    EXPECT_EQ(s_Exceptions, 0);
}

TEST_F(UMDUtilNew, NoBytes_GiveAnAddressAllTheSame)
{
    void* pObject = ::operator new(0, std::nothrow);
    EXPECT_NE(pObject, nullptr);
    ::operator delete(pObject);
    void* pObjects = ::operator new[](0, std::nothrow);
    EXPECT_NE(pObjects, nullptr);
    ::operator delete[](pObjects);
}
