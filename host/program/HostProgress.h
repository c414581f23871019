// A bar on a console; a line every tenth of the way where the output is a file.
#pragma once

#include <windows.h>

class HostProgress
{
public:
    explicit HostProgress(UINT total);
    void Update(UINT done);

private:
    UINT m_Total;
    bool m_bConsole;
    UINT m_Shown = 0;  ///< tenths or bar cells that are on screen
};
