// The painter that calls the driver's entries as the runtime does.
#pragma once

#include "tools/painters/DifferentialPainter.h"

#include "host/runtime/HostSession.h"

class DifferentialDriverPainter : public Painter
{
public:
    DifferentialDriverPainter();

    /// For calls that a painter does not offer.
    const D3DDDI_DEVICEFUNCS& Functions() { return m_Session.Device().Functions(); }
    HANDLE Device() { return m_Session.Device().Handle(); }
    HostDevice& Host() { return m_Session.Device(); }
    /// A target that can be flipped to source 0.
    PainterHandle CreatePrimary(UINT width, UINT height);
    /// The driver's handle of an object.
    static HANDLE Handle(PainterObject& object);

#define PAINTER_OPERATION(...) __VA_ARGS__ override;
#include "tools/painters/DifferentialPainterOperations.inc"

private:
    struct Resource;
    struct Shader;

    /// What a resource is made from; like the runtime's record, with the memory of the sub-resources.
    struct Request
    {
        UINT m_Width = 0;
        UINT m_Height = 1;
        UINT m_Format = D3DFMT_UNKNOWN;
        UINT m_Levels = 1;
        D3DDDI_POOL m_Pool = D3DDDIPOOL_VIDEOMEMORY;
        D3DDDI_RESOURCEFLAGS m_Flags{};
        std::vector<DifferentialPicture> m_Memory;  ///< one a level of what lies in system memory
    };

    PainterHandle Create(Request request);
    PainterHandle CreateBuffer(Request request, std::span<const BYTE> content);

    HostSession m_Session;
};
