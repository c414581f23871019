// An empty folder that a check's process begins in: what the library writes beside itself goes with it.
#pragma once

#include <windows.h>

#include <filesystem>

class CheckFolder
{
public:
    CheckFolder()
        : m_Path(std::filesystem::temp_directory_path() /
                 (L"tesslo-client-check-" + std::to_wstring(GetCurrentProcessId())))
    {
        std::filesystem::create_directories(m_Path);
    }
    ~CheckFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_Path, ignored);
    }
    CheckFolder(const CheckFolder&) = delete;
    CheckFolder& operator=(const CheckFolder&) = delete;

    const std::filesystem::path& Path() const { return m_Path; }

private:
    std::filesystem::path m_Path;
};
