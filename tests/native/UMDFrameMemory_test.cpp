// The buffer of a frame's rotated image: its bytes, its end, and what a shortage leaves behind.
#include "output/UMDFrameMemory.h"

#include <gtest/gtest.h>

#include <sanitizer/lsan_interface.h>

#include <cstring>
#include <limits>
#include <thread>

TEST(UMDFrameMemory, Bits_EveryByte_MayBeWritten)
{
    for (const std::size_t bytes : {1u, 3u, 4u, 63u, 64u, 4097u})
    {
        UMDFrameMemory* pMemory = UMDFrameMemory::Create(bytes);
        ASSERT_NE(pMemory, nullptr);
        std::memset(pMemory->Bits(), 0xAB, bytes);
        EXPECT_EQ(pMemory->Bits()[bytes - 1], 0xAB);
        pMemory->Release();
    }
}

TEST(UMDFrameMemory, Release_References_OnlyTheLastEndsTheBytes)
{
    UMDFrameMemory* pMemory = UMDFrameMemory::Create(16);
    ASSERT_NE(pMemory, nullptr);
    pMemory->AddRef();
    pMemory->Release();
    BYTE* pBits = pMemory->Bits();
    pBits[15] = 7;
    pMemory->Release();
    EXPECT_DEATH(pBits[15] = 8, "heap-use-after-free");
    EXPECT_EQ(__lsan_do_recoverable_leak_check(), 0);
}

TEST(UMDFrameMemory, Create_NoMemoryForTheBytes_GivesNullAndLeavesNothing)
{
    EXPECT_EQ(UMDFrameMemory::Create(std::numeric_limits<std::ptrdiff_t>::max()), nullptr);
    EXPECT_EQ(__lsan_do_recoverable_leak_check(), 0);
}

TEST(UMDFrameMemory, References_OfTwoThreads_EndTheBufferOnce)
{
    for (int round = 0; round < 500; ++round)
    {
        UMDFrameMemory* pMemory = UMDFrameMemory::Create(64);
        ASSERT_NE(pMemory, nullptr);
        pMemory->AddRef();
        const auto use = [pMemory](std::size_t place) {
            pMemory->AddRef();
            pMemory->Bits()[place] = static_cast<BYTE>(place);
            pMemory->Release();
            pMemory->Release();
        };
        std::thread other(use, 1);
        use(0);
        other.join();
    }
}
