// A folder of its own for one test, deleted with all that is in it.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace tesslo::test
{

class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        static LONG number = 0;
        m_Path = std::filesystem::temp_directory_path() / (L"tesslo-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                                                              std::to_wstring(InterlockedIncrement(&number)));
        std::filesystem::create_directories(m_Path);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_Path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_Path; }

private:
    std::filesystem::path m_Path;
};

}  // namespace tesslo::test
