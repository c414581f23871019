// A scene in three dimensions: textured cubes, lit and turning through each other under a depth test, drawn into a
// texture in all the ways that the interface knows; that texture is blitted onto the output as a row of tiles, and
// shown once more on a square that turns on the output itself.
#pragma once

#include "host/scenes/HostScene.h"

#include <memory>

class HostMesh;
class HostShading;

class HostTurningScene : public HostScene
{
public:
    HostTurningScene();
    ~HostTurningScene() override;

    void Draw(HostDevice& device, const HostResource& primary, UINT frame) override;

private:
    void Prepare(HostDevice& device);
    void DrawCubes(HostDevice& device, UINT frame);
    void DrawTiles(HostDevice& device, const HostResource& primary);
    void DrawSquare(HostDevice& device, const HostResource& primary, UINT frame);

    std::unique_ptr<HostShading> m_pShading;  ///< this and all below: made at the first frame
    std::unique_ptr<HostMesh> m_pCube;
    std::unique_ptr<HostMesh> m_pSquare;
    std::unique_ptr<HostResource> m_pPattern;  ///< the texture of the cubes
    std::unique_ptr<HostResource> m_pCanvas;   ///< render target and texture
    std::unique_ptr<HostResource> m_pTile;     ///< the canvas as a surface: only surfaces blit a part onto a part
    std::unique_ptr<HostResource> m_pDepth;
};
