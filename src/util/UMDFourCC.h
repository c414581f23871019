// Formats that are named by four characters.
#pragma once

#include "ddi/ddi.h"

/// The format of a four-character code: the first character is the low byte.
consteval D3DDDIFORMAT UMDFourCC(const char (&code)[5])
{
    return static_cast<D3DDDIFORMAT>(code[0] | code[1] << 8 | code[2] << 16 | code[3] << 24);
}
