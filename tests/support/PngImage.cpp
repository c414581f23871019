#include "PngImage.h"

#include <fstream>
#include <iterator>

#define STBI_ONLY_PNG
#define STBI_NO_STDIO
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#include <stb/stb_image.h>

namespace tesslo::test
{

HostImage ReadPng(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
    int width = 0, height = 0, channels = 0;
    stbi_uc* pPixels = stbi_load_from_memory(
        reinterpret_cast<const stbi_uc*>(bytes.data()), static_cast<int>(bytes.size()), &width, &height, &channels, 0);
    if (pPixels == nullptr || channels != 3)
    {
        stbi_image_free(pPixels);
        return {};
    }
    HostImage image(static_cast<UINT>(width), static_cast<UINT>(height));
    for (size_t i = 0; i < image.m_Pixels.size(); ++i)
        image.m_Pixels[i] = UINT{pPixels[i * 3]} << 16 | UINT{pPixels[i * 3 + 1]} << 8 | pPixels[i * 3 + 2];
    stbi_image_free(pPixels);
    return image;
}

}  // namespace tesslo::test
