#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

namespace
{
constexpr UINT kLevel = UMDTRACE_RESOURCE | UMDTRACE_DDI;

struct LockFlagName
{
    UINT Flag;
    const wchar_t* pName;
};

/// Names of the lock flags, in bit order.
constexpr LockFlagName kLockFlagNames[] = {
    {1u << 0, L"ReadOnly | "},
    {1u << 1, L"WriteOnly | "},
    {1u << 2, L"NoOverwrite | "},
    {1u << 3, L"Discard | "},
    {1u << 4, L"RangeValid | "},
    {1u << 5, L"AreaValid | "},
    {1u << 6, L"BoxValid | "},
    {1u << 7, L"NotifyOnly | "},
    {1u << 8, L"MightDrawFromLocked | "},
    {1u << 9, L"DoNotWait | "},
};

/// Empty for a kind that has no name here.
const wchar_t* KindName(UMDRESOURCETYPE type)
{
    switch (type)
    {
    case UMDRESOURCETYPE_TEXTURE:
        return L"TEXTURE | ";
    case UMDRESOURCETYPE_RENDERTARGET:
        return L"RENDERTARGET | ";
    case UMDRESOURCETYPE_VERTEXBUFFER:
        return L"VERTEXBUFFER | ";
    case UMDRESOURCETYPE_INDEXBUFFER:
        return L"INDEXBUFFER | ";
    default:
        return L"";
    }
}
}  // namespace

void UMDUtilDebugTracePrintLock(const D3DDDIARG_LOCK* pLock, UMDRESOURCETYPE type)
{
    if (!(g_DebugLevelUMD & kLevel))
        return;
    UMD_TRACE(kLevel,
        L"   Lock: hResource:0x%x SubResourceIndex:%d Offset:%d Size:%d left:%d right:%d top:%d bottom:%d\n",
        UMDLow32(pLock->hResource), pLock->SubResourceIndex, pLock->Range.Offset, pLock->Range.Size, pLock->Area.left,
        pLock->Area.right, pLock->Area.top, pLock->Area.bottom);

    const wchar_t* s[1 + ARRAYSIZE(kLockFlagNames)];
    for (const wchar_t*& pSlot : s)
        pSlot = L"";
    UINT used = 0;
    if (*KindName(type))
        s[used++] = KindName(type);
    for (const LockFlagName& name : kLockFlagNames)
    {
        if (pLock->Flags.Value & name.Flag)
            s[used++] = name.pName;
    }
    UMD_TRACE(kLevel, L"   Flags: %s %s %s %s %s %s %s %s %s %s %s\n", s[0], s[1], s[2], s[3], s[4], s[5], s[6], s[7],
        s[8], s[9], s[10]);
}
