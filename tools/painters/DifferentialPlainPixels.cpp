#include "tools/painters/DifferentialPlainPixels.h"

#include "host/runtime/HostError.h"

#include <cstring>

// HostCheck with the name of the method.
#define CALL(pObject, method, ...) HostCheck((pObject)->method(__VA_ARGS__), #method)

void DifferentialWrite(IDirect3DSurface9* pSurface, const DifferentialPicture& picture)
{
    D3DLOCKED_RECT locked;
    CALL(pSurface, LockRect, &locked, nullptr, 0);
    for (UINT y = 0; y < picture.m_Height; ++y)
        std::memcpy(static_cast<BYTE*>(locked.pBits) + size_t{y} * locked.Pitch, picture.Row(y), picture.Pitch());
    CALL(pSurface, UnlockRect);
}

DifferentialPicture DifferentialRead(IDirect3DSurface9* pSurface, const D3DSURFACE_DESC& desc)
{
    DifferentialPicture picture(desc.Width, desc.Height, desc.Format);
    D3DLOCKED_RECT locked;
    CALL(pSurface, LockRect, &locked, nullptr, D3DLOCK_READONLY);
    for (UINT y = 0; y < picture.m_Height; ++y)
        std::memcpy(picture.Row(y), static_cast<const BYTE*>(locked.pBits) + size_t{y} * locked.Pitch, picture.Pitch());
    CALL(pSurface, UnlockRect);
    return picture;
}
