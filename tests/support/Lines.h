// Lists of lines: what the fakes record, what the driver traces, what a test expects.
#pragma once

#include <string>
#include <vector>

namespace tesslo::test
{

using Lines = std::vector<std::string>;

/// The lines that contain the text.
inline Lines Containing(Lines lines, const std::string& text)
{
    std::erase_if(lines, [&](const std::string& line) { return line.find(text) == std::string::npos; });
    return lines;
}

/// The lines that do not.
inline Lines Without(Lines lines, const std::string& text)
{
    std::erase_if(lines, [&](const std::string& line) { return line.find(text) != std::string::npos; });
    return lines;
}

inline Lines Joined(Lines first, const Lines& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

}  // namespace tesslo::test
