// Shaders of model 2.0 with constants of all three kinds.
#include "DifferentialCanvas.h"
#include "DifferentialScenes.h"

namespace
{

// Byte code, one line an instruction, the assembly behind it.
constexpr UINT kVertexShader[] = {
    0xFFFE0200,                                      // vs_2_0
    0x0200001F, 0x80000000, 0x900F0000,              // dcl_position v0
    0x0200001F, 0x8000000A, 0x900F0001,              // dcl_color v1
    0x0200001F, 0x80000005, 0x900F0002,              // dcl_texcoord v2
    0x03000014, 0xC00F0000, 0x90E40000, 0xA0E40000,  // m4x4 oPos, v0, c0
    0x03000005, 0xD00F0000, 0x90E40001, 0xA0E40004,  // mul oD0, v1, c4
    0x02000001, 0xE0030000, 0x90E40002,              // mov oT0.xy, v2
    0x0000FFFF,                                      // end
};

constexpr UINT kTintShader[] = {
    0xFFFF0200,                                      // ps_2_0
    0x0200001F, 0x80000000, 0x900F0000,              // dcl v0
    0x03000005, 0x800F0000, 0x90E40000, 0xA0E40000,  // mul r0, v0, c0
    0x03000002, 0x800F0000, 0x80E40000, 0xA0E40001,  // add r0, r0, c1
    0x02000001, 0x800F0800, 0x80E40000,              // mov oC0, r0
    0x0000FFFF,                                      // end
};

constexpr UINT kTextureShader[] = {
    0xFFFF0200,                                      // ps_2_0
    0x0200001F, 0x80000000, 0xB0030000,              // dcl t0.xy
    0x0200001F, 0x90000000, 0xA00F0800,              // dcl_2d s0
    0x03000042, 0x800F0000, 0xB0E40000, 0xA0E40800,  // texld r0, t0, s0
    0x03000005, 0x800F0000, 0x80E40000, 0xA0E40000,  // mul r0, r0, c0
    0x02000001, 0x800F0800, 0x80E40000,              // mov oC0, r0
    0x0000FFFF,                                      // end
};

// Static flow control takes the integer and boolean constants: model 2.x.
constexpr UINT kFlowShader[] = {
    0xFFFF0201,                                      // ps_2_x
    0x0200001F, 0x80000000, 0x900F0000,              // dcl v0
    0x02000001, 0x800F0000, 0x90E40000,              // mov r0, v0
    0x01000028, 0xE0E40801,                          // if b1
    0x02000001, 0x800F0000, 0xA0E40000,              // mov r0, c0
    0x0000002B,                                      // endif
    0x01000026, 0xF0E40002,                          // rep i2
    0x03000002, 0x800F0000, 0x80E40000, 0xA0E40001,  // add r0, r0, c1
    0x00000027,                                      // endrep
    0x02000001, 0x800F0800, 0x80E40000,              // mov oC0, r0
    0x0000FFFF,                                      // end
};

constexpr float kPlaces[][20] = {
    {0.8f, 0.2f, 0, 0.1f, -0.2f, 0.7f, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 1, 1, 1, 1},
    {0.5f, 0, 0, -0.4f, 0, 1, 0, 0.3f, 0, 0, 1, 0, 0.2f, 0.1f, 0, 1, 0.25f, 0.5f, 1, 1},
};

void VertexConstants(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.UseSpaceVertices();
    const PainterHandle pShader = painter.CreateVertexShader(kVertexShader);
    painter.SetVertexShader(*pShader);
    for (const auto& place : kPlaces)
    {
        painter.SetVertexConstants(0, place);
        canvas.SpaceQuad(-0.7f, 0.7f, 0.7f, -0.7f, 0.5f, 0xFFFFC080);
        canvas.Frame();
    }
    // Only the tint.
    painter.SetVertexConstants(4, std::span(kPlaces[0]).subspan(12, 4));
    canvas.SpaceQuad(-0.2f, 0.9f, 0.4f, -0.9f, 0.5f, 0xFF00FFFF);
    canvas.Frame();
}

void PixelConstants(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pShader = painter.CreatePixelShader(kTintShader);
    painter.SetPixelShader(*pShader);
    constexpr float constants[] = {0.5f, 1, 0.25f, 1, 0.1f, 0, 0.3f, 0};
    painter.SetPixelConstants(0, constants);
    canvas.Quad({4, 4, 60, 60}, 0, 0xFFFF8040, 0xFF40FF80);
    canvas.Frame();
    painter.SetPixelConstants(1, std::span(constants).first(4));
    canvas.Quad({40, 20, 92, 50}, 0, 0xFF202020, 0xFF8080C0);
    canvas.Frame();
}

void PixelFlow(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pShader = painter.CreatePixelShader(kFlowShader);
    painter.SetPixelShader(*pShader);
    constexpr float constants[] = {0.2f, 0.4f, 0.1f, 1, 0.15f, 0.05f, 0.1f, 0};
    painter.SetPixelConstants(0, constants);
    for (INT repeats : {0, 1, 3})
        for (BOOL bReplace : {FALSE, TRUE})
        {
            const INT integers[] = {repeats, 0, 0, 0};
            const BOOL booleans[] = {!bReplace, bReplace};
            painter.SetPixelIntegers(2, integers);
            painter.SetPixelBooleans(0, booleans);
            canvas.Clear();
            canvas.Quad({4, 4, 92, 60}, 0, 0xFF400000, 0xFF004000);
            canvas.Frame();
        }
}

void ShaderWithTexture(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const DifferentialPicture pattern = DifferentialPattern(32, 16, D3DFMT_X8R8G8B8);
    const PainterHandle pMemory = painter.CreateMemoryTexture({&pattern, 1});
    const PainterHandle pTexture = painter.CreateSurface(PainterSurface::Texture, 32, 16, D3DFMT_X8R8G8B8);
    painter.Blt(*pMemory, {0, 0, 32, 16}, *pTexture, {0, 0, 32, 16});
    canvas.UseSpaceVertices();
    const PainterHandle pVertexShader = painter.CreateVertexShader(kVertexShader);
    const PainterHandle pPixelShader = painter.CreatePixelShader(kTextureShader);
    painter.SetVertexShader(*pVertexShader);
    painter.SetPixelShader(*pPixelShader);
    painter.SetTexture(0, pTexture.get());
    painter.SetVertexConstants(0, kPlaces[0]);
    constexpr float constants[] = {1, 0.5f, 1, 1};
    painter.SetPixelConstants(0, constants);
    canvas.SpaceQuad(-0.9f, 0.9f, 0.9f, -0.9f, 0.5f, 0xFFFFFFFF);
    canvas.Frame();
    painter.SetTexture(0, nullptr);
}

void ShadersInTurn(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    constexpr float constants[] = {1, 0.3f, 0.6f, 1, 0.2f, 0.2f, 0, 0};
    painter.SetPixelConstants(0, constants);
    PainterHandle shaders[] = {painter.CreatePixelShader(kTintShader), painter.CreatePixelShader(kFlowShader)};
    for (LONG i = 0; i < 6; ++i)
    {
        painter.SetPixelShader(*shaders[i % 2]);
        canvas.Quad({i * 16, i * 4, i * 16 + 14, 64}, 0, 0xFFFFFFFF, 0xFF808080);
    }
    canvas.Frame();
    // A deleted shader stays bound until the next one is.
    shaders[1].reset();
    canvas.Quad({0, 50, 96, 60}, 0, 0xFF40FF40);
    painter.SetPixelShader(*shaders[0]);
    canvas.Quad({0, 10, 96, 20}, 0, 0xFF40FF40);
    canvas.Frame();
}

}  // namespace

std::vector<DifferentialScene> DifferentialShaderScenes()
{
    return {{"VertexConstants", VertexConstants}, {"PixelConstants", PixelConstants}, {"PixelFlow", PixelFlow},
        {"ShaderWithTexture", ShaderWithTexture}, {"ShadersInTurn", ShadersInTurn}};
}
