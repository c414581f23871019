// Text on its way between the program (UTF-8) and the platform (UTF-16).
#pragma once

#include <string>
#include <string_view>

std::string HostUtf8(std::wstring_view text);
std::wstring HostWide(std::string_view text);
