#include "util/UMDUtilDebugTraceDirectives.h"

#include <stddef.h>
#include <wchar.h>
#include <wctype.h>

namespace
{
/// True for a format directive that must not be interpreted without an argument of its own: %n, which writes to memory,
/// and widths and precisions that no line of ours has, which would fill the disk.
/// @param length characters of the directive but its last, the conversion.
bool IsHarmfulDirective(const wchar_t* pDirective, size_t length)
{
    size_t digits = 0;
    for (size_t i = 0; i < length; ++i)
    {
        digits = iswdigit(pDirective[i]) ? digits + 1 : 0;
        if (digits > 3)
            return true;
    }
    return pDirective[length] == L'n';
}
}  // namespace

void UMDUtilDebugTraceDropHarmfulDirectives(wchar_t* pLine)
{
    wchar_t* pKept = pLine;
    for (const wchar_t* pNext = pLine; *pNext;)
    {
        // Flags, width, precision and size stand between the % and the conversion.
        const size_t length = *pNext == L'%' ? 1 + wcsspn(pNext + 1, L"-+ #0123456789.*hlLwIFN") : 0;
        const size_t whole = pNext[length] ? length + 1 : length;
        if (!length || !IsHarmfulDirective(pNext, length))
        {
            wmemmove(pKept, pNext, whole);
            pKept += whole;
        }
        pNext += whole;
    }
    *pKept = L'\0';
}
