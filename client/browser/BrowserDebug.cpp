#include "BrowserDebug.h"

#include <windows.h>

void BrowserDebugTell(const std::string& text)
{
    OutputDebugStringA(("TessloClientDllBrowser: " + text + "\n").c_str());
}
