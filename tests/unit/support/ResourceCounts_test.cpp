// Whether what a process holds is counted as it is.
#include "tools/process/ResourceCounts.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

TEST(ResourceCountsTest, Handles_OpenedAndClosed_AreCountedOneByOne)
{
    const unsigned before = ResourceCounts::Now().m_Handles;
    std::vector<HANDLE> handles(200);
    for (HANDLE& hEvent : handles)
        hEvent = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    EXPECT_EQ(ResourceCounts::Now().m_Handles, before + 200);
    for (size_t i = 0; i + 1 < handles.size(); ++i)
        CloseHandle(handles[i]);
    EXPECT_EQ(ResourceCounts::Now().m_Handles, before + 1) << "behind a gap";
    CloseHandle(handles.back());
    EXPECT_EQ(ResourceCounts::Now().m_Handles, before);
}

TEST(ResourceCountsTest, Threads_OneMore_IsCountedWhileItRuns)
{
    const unsigned before = ResourceCounts::Now().m_Threads;
    const HANDLE hGo = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::thread thread([=] { WaitForSingleObject(hGo, INFINITE); });
    EXPECT_EQ(ResourceCounts::Now().m_Threads, before + 1);
    SetEvent(hGo);
    thread.join();
    EXPECT_EQ(ResourceCounts::Now().m_Threads, before);
    CloseHandle(hGo);
}
