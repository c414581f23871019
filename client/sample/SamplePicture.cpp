#include "SamplePicture.h"

#include <cstring>

#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

namespace
{

struct File
{
    HANDLE hFile;
    DWORD error;
};

// Called by the encoder with the finished picture.
void WriteBytes(void* pContext, void* pData, int size)
{
    File* pFile = static_cast<File*>(pContext);
    DWORD written = 0;
    if (!WriteFile(pFile->hFile, pData, static_cast<DWORD>(size), &written, nullptr))
        pFile->error = GetLastError();
    else if (written != static_cast<DWORD>(size))
        pFile->error = ERROR_DISK_FULL;
    else
        pFile->error = ERROR_SUCCESS;
}

// In place: the 3-byte pixels end before the 4-byte ones that are still to be read. The fourth byte is dropped,
// because formats without alpha leave garbage in it.
void ConvertToRgb(BYTE* pPixels, size_t count)
{
    for (size_t i = 0; i < count; ++i)
    {
        const BYTE* pSource = pPixels + i * 4;
        const BYTE rgb[3] = {pSource[2], pSource[1], pSource[0]};
        std::memcpy(pPixels + i * 3, rgb, 3);
    }
}

}  // namespace

DWORD SamplePictureWrite(const wchar_t* pPath, BYTE* pPixels, UINT width, UINT height)
{
    File file = {CreateFileW(pPath, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr),
        ERROR_NOT_ENOUGH_MEMORY};  // stays if the encoder does not get as far as writing
    if (file.hFile == INVALID_HANDLE_VALUE)
        return GetLastError();
    ConvertToRgb(pPixels, static_cast<size_t>(width) * height);
    // The fastest that the encoder has; rendered pictures come out no larger for it.
    stbi_write_png_compression_level = 5;
    stbi_write_force_png_filter = 0;
    stbi_write_png_to_func(
        WriteBytes, &file, static_cast<int>(width), static_cast<int>(height), 3, pPixels, static_cast<int>(width * 3));
    // A full disk may show only when the file is closed.
    if (!CloseHandle(file.hFile) && file.error == ERROR_SUCCESS)
        file.error = GetLastError();
    if (file.error != ERROR_SUCCESS)
        DeleteFileW(pPath);
    return file.error;
}
