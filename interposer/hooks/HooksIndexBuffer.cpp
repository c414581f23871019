// IDirect3DIndexBuffer9.
#include "interposer/hooks/Hooks.h"
#include "interposer/hooks/HooksBuffer.h"

void HooksIndexBuffer(IDirect3DIndexBuffer9* pBuffer)
{
    HooksBuffer<IDirect3DIndexBuffer9>::Install(pBuffer);
}
