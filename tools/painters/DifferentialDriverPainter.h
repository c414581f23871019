// The painter that calls the driver's entries as the runtime does.
#pragma once

#include "tools/painters/DifferentialPainter.h"

#include "host/runtime/HostSession.h"

struct DifferentialDriverRequest;

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
    struct Shader;

    PainterHandle Create(DifferentialDriverRequest request);
    PainterHandle CreateBuffer(DifferentialDriverRequest request, std::span<const BYTE> content);

    HostSession m_Session;
};
