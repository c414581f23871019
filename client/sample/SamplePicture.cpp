#include "SamplePicture.h"

#include <cstring>

#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

// In place: the 3-byte pixels end before the 4-byte ones that are still to be read. The fourth byte is dropped,
// because formats without alpha leave garbage in it.
static void ConvertToRgb(BYTE* pPixels, size_t count)
{
    for (size_t i = 0; i < count; ++i)
    {
        const BYTE rgb[3] = {pPixels[i * 4 + 2], pPixels[i * 4 + 1], pPixels[i * 4]};
        std::memcpy(pPixels + i * 3, rgb, 3);
    }
}

DWORD SamplePictureWrite(const wchar_t* pPath, BYTE* pPixels, UINT width, UINT height)
{
    struct File
    {
        HANDLE hFile;
        DWORD error;
    } file = {CreateFileW(pPath, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr),
        ERROR_NOT_ENOUGH_MEMORY};  // stays if the encoder does not get as far as writing
    if (file.hFile == INVALID_HANDLE_VALUE)
        return GetLastError();
    const auto write = [](void* pContext, void* pData, int size) {
        auto* pFile = static_cast<File*>(pContext);
        DWORD written = 0;
        const BOOL bWritten = WriteFile(pFile->hFile, pData, static_cast<DWORD>(size), &written, nullptr);
        const bool bWhole = written == static_cast<DWORD>(size);
        pFile->error = !bWritten ? GetLastError() : bWhole ? ERROR_SUCCESS : ERROR_DISK_FULL;
    };
    ConvertToRgb(pPixels, static_cast<size_t>(width) * height);
    // The fastest that the encoder has; rendered pictures come out no larger for it.
    stbi_write_png_compression_level = 5;
    stbi_write_force_png_filter = 0;
    stbi_write_png_to_func(
        write, &file, static_cast<int>(width), static_cast<int>(height), 3, pPixels, static_cast<int>(width * 3));
    // A full disk may show only when the file is closed.
    if (!CloseHandle(file.hFile) && file.error == ERROR_SUCCESS)
        file.error = GetLastError();
    if (file.error != ERROR_SUCCESS)
        DeleteFileW(pPath);
    return file.error;
}
