// The guard of calls into foreign code, and of threads.
#include "util/UMDUtilGuard.h"

#include "Faults.h"
#include "ImportPatch.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
class UMDUtilGuardTest : public testing::Test
{
protected:
    TraceMask m_Mask{UMDTRACE_ERROR};
    TraceCapture m_Trace;
};

TEST_F(UMDUtilGuardTest, Guard_WorkReturns_AnswersTrueAndTracesNothing)
{
    int done = 0;
    EXPECT_TRUE(UMDUtilGuard([&] { ++done; }));
    EXPECT_EQ(done, 1);
    EXPECT_EQ(m_Trace.Lines(), Lines{});
}

TEST_F(UMDUtilGuardTest, Guard_WorkFaults_AnswersFalseAndNamesTheException)
{
    EXPECT_FALSE(UMDUtilGuard([] { RaiseAccessViolation(); }));
    EXPECT_FALSE(UMDUtilGuard([] { RaiseDivisionByZero(); }));
    EXPECT_FALSE(UMDUtilGuard([] { RaiseCode(0xE0001234); }));
    EXPECT_EQ(m_Trace.Lines(), (Lines{"EXCEPTION_ACCESS_VIOLATION\n", "EXCEPTION_INT_DIVIDE_BY_ZERO\n",
                                   "EXCEPTION_XXX -536866252 unknown\n"}));
}

TEST_F(UMDUtilGuardTest, Guard_WorkFaultsHalfWay_WhatItDidBeforeStays)
{
    int done = 0;
    EXPECT_FALSE(UMDUtilGuard([&] {
        done = 1;
        RaiseAccessViolation();
        done = 2;
    }));
    EXPECT_EQ(done, 1);
}

TEST_F(UMDUtilGuardTest, Guard_OwnerHasDestructors_RunsEachOnce)
{
    struct Counted
    {
        explicit Counted(int* pEnds) : m_pEnds(pEnds) {}
        ~Counted() { ++*m_pEnds; }
        int* m_pEnds;
    };
    int ends = 0;
    {
        const Counted counted(&ends);
        EXPECT_FALSE(UMDUtilGuard([&] { RaiseAccessViolation(); }));
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 1);
}

TEST_F(UMDUtilGuardTest, Guard_InsideAGuard_LeavesTheOuterOneAlone)
{
    bool inner = true;
    EXPECT_TRUE(UMDUtilGuard([&] { inner = UMDUtilGuard([] { RaiseAccessViolation(); }); }));
    EXPECT_FALSE(inner);
    EXPECT_EQ(m_Trace.Lines(), Lines{"EXCEPTION_ACCESS_VIOLATION\n"});
}

// The platform alone can make a real overflow survive: Wine 8 ends the thread.
TEST_F(UMDUtilGuardTest, Guard_StackOverflow_MakesTheStackFitForAnother)
{
    static int s_Resets;
    s_Resets = 0;
    const ImportPatch reset(
        nullptr, "msvcrt.dll", "_resetstkoflw", reinterpret_cast<void*>(+[] { return ++s_Resets; }));
    EXPECT_FALSE(UMDUtilGuard([] { RaiseAccessViolation(); }));
    EXPECT_EQ(s_Resets, 0);
    EXPECT_FALSE(UMDUtilGuard([] { RaiseCode(EXCEPTION_STACK_OVERFLOW); }));
    EXPECT_EQ(s_Resets, 1);
    EXPECT_EQ(m_Trace.Lines(), (Lines{"EXCEPTION_ACCESS_VIOLATION\n", "EXCEPTION_STACK_OVERFLOW\n"}));
}

TEST_F(UMDUtilGuardTest, Guard_ErrorsOff_TracesNothing)
{
    const TraceMask mask(~(UMDTRACE_ERROR | UMDTRACE_LOGFILE));
    EXPECT_FALSE(UMDUtilGuard([] { RaiseAccessViolation(); }));
    EXPECT_EQ(m_Trace.Lines(), Lines{});
}
}  // namespace
