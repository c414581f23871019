// IDirect3DStateBlock9.
#include "interposer/hooks/HookCarried.h"
#include "interposer/hooks/Hooks.h"

void HooksStateBlock(IDirect3DStateBlock9* pBlock)
{
    const HookRow rows[] = {HookRowCarried<&IDirect3DStateBlock9::Apply, [](CarryDevice& device) { device.Sync(); }>()};
    HookInstall(pBlock, rows);
}
