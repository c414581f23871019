// Plain capital letters, digits and a few signs, five pixels wide and seven high, as rectangles: for pictures that
// explain themselves.
#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

constexpr LONG kHostLetterWidth = 6;   ///< from one letter to the next, at scale 1
constexpr LONG kHostLetterHeight = 7;  ///< at scale 1

/// The pixels of a text whose top left corner is at x, y: runs of each row, `scale` times as large. Small letters
/// become capitals; what has no shape leaves a blank.
std::vector<RECT> HostLetters(std::string_view text, LONG x, LONG y, LONG scale);

/// Pixels from the first letter's left to the last one's right.
LONG HostLettersWidth(std::string_view text, LONG scale);
