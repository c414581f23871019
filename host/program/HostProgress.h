// How far the program is: one line on a console, whatever its width; a line every tenth of the way in a file.
#pragma once

#include <windows.h>

#include <string>

/// " 50 %: 30 of 60 frames", with a bar before it as far as there is room. The last column stays free: some consoles
/// wrap as soon as it is written.
std::string HostProgressLine(UINT done, UINT total, UINT columns);

class HostProgress
{
public:
    /// @param total 0: nobody knows. Then there is a line every 600 frames.
    explicit HostProgress(UINT total);
    void Update(UINT done);

private:
    UINT Step(UINT done) const;

    UINT m_Total;
    bool m_bConsole;
    UINT m_Shown = 0;  ///< the step that is on screen
};
