// The log file that all drivers of the machine share. Tests that look into it hold a lock in ctest:
// tests/CMakeLists.txt.
#pragma once

#include <windows.h>

#include <shlobj.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tesslo::test
{

/// Its path. The folder is made: a new Wine prefix may lack it, and the driver makes none.
inline std::filesystem::path MachineLogPath()
{
    wchar_t folder[MAX_PATH] = L"";
    SHGetSpecialFolderPathW(nullptr, folder, CSIDL_COMMON_DOCUMENTS, TRUE);
    return std::filesystem::path(folder) / L"Tesslo.log";
}

/// What is appended to it from now on.
class MachineLog
{
public:
    MachineLog()
    {
        std::error_code none;
        const auto size = std::filesystem::file_size(MachineLogPath(), none);
        m_Begin = none ? 0 : static_cast<std::streamoff>(size);
    }

    /// All lines, whosoever they are, without their ends.
    std::vector<std::string> Lines() const
    {
        std::ifstream file(MachineLogPath(), std::ios::binary);
        file.seekg(m_Begin);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);)
        {
            if (line.ends_with('\r'))
                line.pop_back();
            lines.push_back(line);
        }
        return lines;
    }

    /// The messages of one process, each with a line feed: as its debugger got them.
    std::vector<std::string> MessagesOf(DWORD processId) const
    {
        char begin[32];
        snprintf(begin, sizeof(begin), "UMD: [%04u:", static_cast<UINT>(processId));
        std::vector<std::string> messages;
        for (const std::string& line : Lines())
        {
            if (line.starts_with(begin))
                messages.push_back(line.substr(line.find("] ") + 2) + "\n");
        }
        return messages;
    }

private:
    std::streamoff m_Begin;
};

}  // namespace tesslo::test
