// One line on the debugger's channel.
#pragma once

#include <string>

void BrowserDebugTell(const std::string& text);
