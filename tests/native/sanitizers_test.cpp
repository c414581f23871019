// That the sanitizers are on: what each of them is here for ends the program.
#include "exact_memory.h"

#include <gtest/gtest.h>

#include <sanitizer/lsan_interface.h>

#include <limits>

namespace
{
/// A value that the compiler cannot foresee.
template <typename Number>
Number Unforeseen(Number number)
{
    volatile Number kept = number;
    return kept;
}

/// Several, because the stack may still know the last one.
void ForgetBlocks()
{
    for (int i = 0; i < 10; ++i)
        Unforeseen(new int);
}
}  // namespace

TEST(Sanitizers, OneByteBeyondABlock_IsFound)
{
    const ExactBytes bytes(13);
    EXPECT_DEATH(bytes.Get()[Unforeseen(13)] = 0, "heap-buffer-overflow");
}

TEST(Sanitizers, SignedOverflow_IsFound)
{
    EXPECT_DEATH(Unforeseen(Unforeseen(std::numeric_limits<int>::max()) + 1), "signed integer overflow");
}

TEST(Sanitizers, ForgottenBlock_IsFound)
{
    EXPECT_EXIT(
        {
            ForgetBlocks();
            std::exit(__lsan_do_recoverable_leak_check());
        },
        testing::ExitedWithCode(1), "detected memory leaks");
}
