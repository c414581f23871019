// What the differential scenes are drawn with. Two painters make pictures of the same calls: one through the entries
// of the driver, as the runtime calls them, one through a plain Direct3D 9Ex device, as an application does.
//
// Operations have the meaning that they have in Direct3D 9. A failure throws HostError with the operation's name.
#pragma once

#include "tools/painters/DifferentialPicture.h"

#include <memory>
#include <span>
#include <vector>

/// A surface, buffer, shader or declaration of one painter. Goes before its painter.
struct PainterObject
{
    virtual ~PainterObject() = default;
};

using PainterHandle = std::unique_ptr<PainterObject>;

enum class PainterSurface
{
    Target,         ///< can be drawn into
    TargetTexture,  ///< can be drawn into and drawn with
    Texture,        ///< can be drawn with
    Plain,          ///< can be blitted only
};

enum class PainterMemory
{
    Video,
    System,
};

class Painter
{
public:
    virtual ~Painter() = default;

#define PAINTER_OPERATION(...) virtual __VA_ARGS__ = 0;
#include "tools/painters/DifferentialPainterOperations.inc"

    /// Takes the object's picture as the next frame of the scene.
    void Frame(PainterObject& object) { m_Frames.push_back(ReadBack(object)); }
    const std::vector<DifferentialPicture>& Frames() const { return m_Frames; }

private:
    std::vector<DifferentialPicture> m_Frames;
};
