// What the user of the check says.
#pragma once

#include <windows.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

struct CheckOptions
{
    std::wstring m_Library;           ///< full path
    std::vector<std::string> m_Only;  ///< names of the checks to run; all when there is none
    std::wstring m_Json;              ///< file of the results; empty for none
    double m_Limit = 33;              ///< milliseconds that one Update in a hundred may take longer than
    UINT m_Width = 1920;              ///< pixels of the frames whose Updates are timed
    UINT m_Height = 1080;
    UINT m_Frames = 120;        ///< that are timed
    UINT m_Connections = 1000;  ///< that are opened and closed to find leaks
    UINT m_Loads = 200;         ///< that the library is loaded and freed to find leaks
    double m_Patience = 30;     ///< seconds in which some call must return

    // Of a child alone.
    std::string m_Child;    ///< the check that it runs; empty for the parent
    uint64_t m_hBoard = 0;  ///< the CheckBoard
};

/// What the help says.
class CheckHelp : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Reads a command line, without the program's name. Throws CheckHelp, or HostError for what cannot be meant.
CheckOptions CheckParseOptions(std::vector<std::string> arguments);

/// The command line that a child is told the same by, behind the program's name.
std::wstring CheckChildArguments(const CheckOptions& options);
