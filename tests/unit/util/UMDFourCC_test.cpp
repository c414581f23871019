#include "util/UMDFourCC.h"

#include <gtest/gtest.h>

TEST(UMDFourCC, Code_FirstCharacter_IsTheLowByte)
{
    EXPECT_EQ(static_cast<UINT>(UMDFourCC("NV12")), 0x3231564Eu);
    EXPECT_EQ(static_cast<UINT>(UMDFourCC("UYVY")), 0x59565955u);
}
