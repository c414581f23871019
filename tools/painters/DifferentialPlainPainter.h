// The painter that draws on a plain Direct3D 9Ex device of the same adapter, as an application does. No line of the
// driver takes part.
#pragma once

#include "tools/painters/DifferentialPainter.h"

#include "util/UMDComPtr.h"

class DifferentialPlainPainter : public Painter
{
public:
    DifferentialPlainPainter();
    ~DifferentialPlainPainter() override;

    /// For calls that a painter does not offer.
    IDirect3DDevice9Ex* Device() { return m_pDevice.Get(); }
    /// The device's own of a painter's object, borrowed; null if the object is no such thing.
    static IDirect3DSurface9* Surface(PainterObject& object);
    static IDirect3DTexture9* Texture(PainterObject& object);
    static IDirect3DVertexBuffer9* VertexBuffer(PainterObject& object);

#define PAINTER_OPERATION(...) __VA_ARGS__ override;
#include "tools/painters/DifferentialPainterOperations.inc"

private:
    struct Object;

    HWND m_hWnd = nullptr;
    UMDComPtr<IDirect3D9Ex> m_pD3D9;
    UMDComPtr<IDirect3DDevice9Ex> m_pDevice;
    const BYTE* m_pStreamMemory = nullptr;  ///< stream 0 in the caller's memory, null for a buffer
    Object* m_pStreamBuffer = nullptr;      ///< stream 0 in a buffer
    UINT m_Stride = 0;                      ///< bytes
};
