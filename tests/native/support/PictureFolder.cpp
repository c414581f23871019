#include "PictureFolder.h"

#include <unistd.h>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#include <stb/stb_image.h>

namespace tesslo::test
{

PictureFolder::PictureFolder()
    : m_Path(std::filesystem::temp_directory_path() / ("tesslo-pictures-" + std::to_string(getpid())))
{
    Remove();
    std::filesystem::create_directory(m_Path);
}

Picture PictureFolder::Read(const std::string& name) const
{
    int width = 0, height = 0, channels = 0;
    stbi_uc* pRgb = stbi_load((m_Path / name).c_str(), &width, &height, &channels, 3);
    if (pRgb == nullptr)
        return {};
    const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3;
    Picture picture = {static_cast<UINT>(width), static_cast<UINT>(height), {pRgb, pRgb + bytes}};
    stbi_image_free(pRgb);
    return picture;
}

}  // namespace tesslo::test
