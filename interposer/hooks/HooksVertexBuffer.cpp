// IDirect3DVertexBuffer9.
#include "interposer/hooks/Hooks.h"
#include "interposer/hooks/HooksBuffer.h"

void HooksVertexBuffer(IDirect3DVertexBuffer9* pBuffer)
{
    HooksBuffer<IDirect3DVertexBuffer9>::Install(pBuffer);
}
