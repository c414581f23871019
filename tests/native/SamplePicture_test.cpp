#include "SamplePicture.h"

#include "PictureFolder.h"
#include "exact_memory.h"

#include <gtest/gtest.h>

namespace
{
using tesslo::test::Picture;
using tesslo::test::PictureFolder;

void CheckPicture(const PictureFolder& folder, UINT width, UINT height)
{
    ExactBytes pixels(std::size_t{width} * height * 4);
    pixels.FillWithNoise(width * 64 + height);
    Picture expected = {width, height, {}};
    for (std::size_t i = 0; i < pixels.Size(); i += 4)
        expected.m_Rgb.insert(expected.m_Rgb.end(), {pixels.Get()[i + 2], pixels.Get()[i + 1], pixels.Get()[i]});

    EXPECT_EQ(SamplePictureWrite(folder.Wide("picture.png").c_str(), pixels.Get(), width, height), ERROR_SUCCESS);

    EXPECT_EQ(folder.Read("picture.png"), expected) << width << 'x' << height;
}
}  // namespace

TEST(SamplePicture, OddSizes_ReadBackTheSame)
{
    const PictureFolder folder;
    for (UINT width : {1u, 2u, 3u, 7u, 64u, 255u})
    {
        for (UINT height : {1u, 2u, 5u, 33u})
            CheckPicture(folder, width, height);
    }
}

TEST(SamplePicture, FolderIsNotThere_TellsTheError)
{
    PictureFolder folder;
    folder.Remove();
    BYTE pixels[4] = {1, 2, 3, 4};
    EXPECT_EQ(SamplePictureWrite(folder.Wide("picture.png").c_str(), pixels, 1, 1), ERROR_PATH_NOT_FOUND);
}
