// Reads a recorded picture.
#pragma once

#include "host/runtime/HostImage.h"

#include <filesystem>

namespace tesslo::test
{

/// The picture's pixels. An empty picture if the file is missing, broken, or does not hold plain 24-bit colour.
HostImage ReadPng(const std::filesystem::path& path);

}  // namespace tesslo::test
