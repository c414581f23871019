// A folder of a test's own for pictures, and what is read back of them.
#pragma once

#include <windows.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace tesslo::test
{

struct Picture
{
    UINT m_Width;
    UINT m_Height;
    std::vector<BYTE> m_Rgb;

    bool operator==(const Picture&) const = default;
};

/// The size alone: nobody reads thousands of bytes.
inline void PrintTo(const Picture& picture, std::ostream* pOut)
{
    *pOut << picture.m_Width << 'x' << picture.m_Height << " pixels";
}

class PictureFolder
{
public:
    PictureFolder();
    ~PictureFolder() { Remove(); }
    PictureFolder(const PictureFolder&) = delete;
    PictureFolder& operator=(const PictureFolder&) = delete;

    const std::filesystem::path& Path() const { return m_Path; }
    std::wstring Wide(const std::string& name) const { return (m_Path / name).wstring(); }
    /// Empty when there is no such picture.
    Picture Read(const std::string& name) const;
    void Remove() { std::filesystem::remove_all(m_Path); }

private:
    std::filesystem::path m_Path;
};

}  // namespace tesslo::test
