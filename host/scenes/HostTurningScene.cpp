#include "host/scenes/HostTurningScene.h"

#include "host/runtime/HostDevice.h"
#include "host/scenes/HostMesh.h"
#include "host/scenes/HostShading.h"

#include <algorithm>

namespace
{

constexpr UINT kCanvasSize = 480;
constexpr UINT kPatternSize = 64;
constexpr UINT kCanvasColor = 0x182030;
constexpr UINT kBackgroundColor = 0x303848;
constexpr float kPi = 3.14159265f;

// Squares of two colours, with a frame and one corner marked, so that turns and mirror images are seen.
HostImage Pattern()
{
    HostImage image(kPatternSize, kPatternSize);
    const LONG size = kPatternSize, cell = kPatternSize / 8;
    image.Fill({0, 0, size, size}, 0x404040);
    for (LONG y = 1; y < 7; ++y)
        for (LONG x = 1; x < 7; ++x)
            image.Fill({x * cell, y * cell, (x + 1) * cell, (y + 1) * cell}, (x + y) % 2 ? 0xFFFFFF : 0xB0B8C0);
    image.Fill({cell, cell, 3 * cell, 3 * cell}, 0xE03030);
    return image;
}

}  // namespace

HostTurningScene::HostTurningScene() = default;
HostTurningScene::~HostTurningScene() = default;

void HostTurningScene::Draw(HostDevice& device, const HostResource& primary, UINT frame)
{
    if (m_pShading == nullptr)
        Prepare(device);
    DrawCubes(device, frame);
    device.SetDepthStencil(nullptr);
    device.SetRenderTarget(primary);
    device.Clear(kBackgroundColor);
    DrawTiles(device, primary);
    DrawSquare(device, primary, frame);
}

void HostTurningScene::Prepare(HostDevice& device)
{
    m_pCube = std::make_unique<HostMesh>(device, HostGeometry::Cube());
    m_pSquare = std::make_unique<HostMesh>(device, HostGeometry::Square());
    m_pPattern = device.CreateTexture(Pattern());
    m_pCanvas = device.CreateRenderTargetTexture(kCanvasSize, kCanvasSize);
    m_pTile = device.CreateRenderTarget(kCanvasSize, kCanvasSize);
    m_pDepth = device.CreateDepthStencil(kCanvasSize, kCanvasSize);
    m_pShading = std::make_unique<HostShading>(device);
}

// One cube for each way to draw, in a ring about a seventh that they cut into.
void HostTurningScene::DrawCubes(HostDevice& device, UINT frame)
{
    static constexpr UINT kTints[] = {0xFF6060, 0xFFB040, 0xF0F040, 0x60E060, 0x60A0FF, 0xC070FF};
    const float step = static_cast<float>(frame) * kPi / 90;
    const HostMatrix projection = HostMatrix::Perspective(kPi / 3, 1, 1, 20) * HostMatrix::Translation(0, 0, 7);
    device.SetRenderTarget(*m_pCanvas);
    device.SetDepthStencil(m_pDepth.get());
    device.ClearAll(kCanvasColor, 1);
    m_pShading->Bind();
    m_pShading->SetLamp();
    m_pShading->SetTexture(*m_pPattern);
    m_pShading->SetPlace(projection, HostMatrix::Rotation(1, step) * HostMatrix::Rotation(0, step / 2));
    m_pCube->Draw(HostDrawPath::UserMemory);
    for (size_t i = 0; i < std::size(kHostDrawPaths); ++i)
    {
        const HostMatrix turn = HostMatrix::Rotation(2, static_cast<float>(i) * kPi / 3 + step / 2) *
                                HostMatrix::Translation(2, 0, 0) * HostMatrix::Rotation(1, step * 2) *
                                HostMatrix::Scaling(0.7f);
        m_pShading->SetPlace(projection, turn, kTints[i]);
        m_pCube->Draw(kHostDrawPaths[i]);
    }
}

// The whole canvas along the left and the right edge, and the middle of it, stretched, below the square's place.
void HostTurningScene::DrawTiles(HostDevice& device, const HostResource& primary)
{
    const LONG canvas = kCanvasSize;
    const RECT whole = primary.Rect();
    const LONG size = std::min(whole.right, whole.bottom) / 3;
    device.Blt(*m_pCanvas, m_pCanvas->Rect(), *m_pTile, m_pTile->Rect());
    for (LONG row = 0; row < 3; ++row)
    {
        const RECT left = {0, row * size, size, (row + 1) * size};
        const RECT right = {whole.right - size, row * size, whole.right, (row + 1) * size};
        device.Blt(*m_pTile, m_pTile->Rect(), primary, left);
        device.Blt(*m_pTile, m_pTile->Rect(), primary, right);
    }
    const RECT middle = {canvas / 4, canvas / 4, canvas * 3 / 4, canvas * 3 / 4};
    device.Blt(*m_pTile, middle, primary, {size, 2 * size, whole.right - size, whole.bottom});
}

void HostTurningScene::DrawSquare(HostDevice& device, const HostResource& primary, UINT frame)
{
    const RECT whole = primary.Rect();
    const float aspect = static_cast<float>(whole.right) / static_cast<float>(whole.bottom);
    const float angle = static_cast<float>(frame) * kPi / 120;
    m_pShading->SetFullLight();
    m_pShading->SetTexture(*m_pCanvas);
    m_pShading->SetPlace(HostMatrix::Perspective(kPi / 4, aspect, 1, 20) * HostMatrix::Translation(0, 0.8f, 5),
        HostMatrix::Rotation(1, angle));
    m_pSquare->Draw(HostDrawPath::VideoBufferIndexed);
    // Still bound, it could not be drawn into at the next frame.
    device.Functions().pfnSetTexture(device.Handle(), 0, nullptr);
}
