#include "BenchDriver.h"

#include "BenchSides.h"
#include "BenchTimer.h"

namespace
{
constexpr UINT kTargetSize = 256;
constexpr UINT kTextureSize = 64;

struct ScreenVertex
{
    float m_Position[4];
    D3DCOLOR m_Color;
};

constexpr D3DVERTEXELEMENT9 kElements[] = {
    {0, 0, D3DDECLTYPE_FLOAT4, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_POSITIONT, 0},
    {0, 16, D3DDECLTYPE_D3DCOLOR, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_COLOR, 0},
};

/// A triangle of 8 x 8 pixels.
constexpr ScreenVertex kTriangle[] = {
    {{8, 8, 0.5f, 1}, 0xFFFF0000}, {{16, 8, 0.5f, 1}, 0xFF00FF00}, {{8, 16, 0.5f, 1}, 0xFF0000FF}};

/// What the calls of one side name: two of each, since a device may skip what is set already.
struct Objects
{
    explicit Objects(Painter& painter) : m_Painter(painter)
    {
        const std::span<const BYTE> triangle(reinterpret_cast<const BYTE*>(kTriangle), sizeof(kTriangle));
        for (int i = 0; i < 2; ++i)
        {
            m_Textures[i] = painter.CreateSurface(PainterSurface::Texture, kTextureSize, kTextureSize, D3DFMT_X8R8G8B8);
            m_Buffers[i] = painter.CreateVertexBuffer(PainterMemory::Video, triangle);
        }
        m_Source = painter.CreateSurface(PainterSurface::Target, 256, 256, D3DFMT_X8R8G8B8);
        m_Target = painter.CreateSurface(PainterSurface::Target, kTargetSize, kTargetSize, D3DFMT_X8R8G8B8);
        m_Declaration = painter.CreateDeclaration(kElements);
        painter.SetTarget(*m_Target);
        painter.SetViewport(0, 0, kTargetSize, kTargetSize);
        painter.Clear(D3DCLEAR_TARGET, 0xFF102030, 0, 0);
        painter.ColorFill(*m_Source, {0, 0, 256, 256}, 0xFF405060);
        painter.SetDeclaration(*m_Declaration);
        painter.SetStreamBuffer(*m_Buffers[0], 0, sizeof(ScreenVertex));
    }

    /// Waits until the device has done all that it was told, so that no side pays for the calls of a round before.
    void Drain() { m_Painter.ReadBack(*m_Target); }

    Painter& m_Painter;
    PainterHandle m_Textures[2];
    PainterHandle m_Buffers[2];
    PainterHandle m_Source;
    PainterHandle m_Target;
    PainterHandle m_Declaration;
};

/// The same call on both sides, as runtime and application make it.
class Calls
{
public:
    explicit Calls(BenchReport& report) : m_Report(report) {}

    void RenderState()
    {
        UINT value = 0;
        Compare(
            "SetRenderState", 2000,
            [&] {
                const D3DDDIARG_RENDERSTATE arg = {static_cast<D3DDDIRENDERSTATETYPE>(D3DRS_TEXTUREFACTOR), ++value};
                m_Entries.pfnSetRenderState(m_hDevice, &arg);
            },
            [&] { m_pDevice->SetRenderState(D3DRS_TEXTUREFACTOR, ++value); });
    }

    void Texture()
    {
        HANDLE handles[2];
        IDirect3DTexture9* textures[2];
        for (int i = 0; i < 2; ++i)
        {
            handles[i] = DifferentialDriverPainter::Handle(*m_Ours.m_Textures[i]);
            textures[i] = DifferentialPlainPainter::Texture(*m_Other.m_Textures[i]);
        }
        UINT turn = 0;
        Compare(
            "SetTexture", 2000, [&] { m_Entries.pfnSetTexture(m_hDevice, 0, handles[++turn % 2]); },
            [&] { m_pDevice->SetTexture(0, textures[++turn % 2]); });
        m_Entries.pfnSetTexture(m_hDevice, 0, nullptr);
        m_pDevice->SetTexture(0, nullptr);
    }

    void StreamSource()
    {
        D3DDDIARG_SETSTREAMSOURCE args[2] = {};
        IDirect3DVertexBuffer9* buffers[2];
        for (int i = 0; i < 2; ++i)
        {
            args[i].hVertexBuffer = DifferentialDriverPainter::Handle(*m_Ours.m_Buffers[i]);
            args[i].Stride = sizeof(ScreenVertex);
            buffers[i] = DifferentialPlainPainter::VertexBuffer(*m_Other.m_Buffers[i]);
        }
        UINT turn = 0;
        Compare(
            "SetStreamSource", 2000, [&] { m_Entries.pfnSetStreamSource(m_hDevice, &args[++turn % 2]); },
            [&] { m_pDevice->SetStreamSource(0, buffers[++turn % 2], 0, sizeof(ScreenVertex)); });
    }

    void PixelShaderConst(UINT count)
    {
        std::vector<float> registers(count * 4);
        Compare(
            "SetPixelShaderConst of " + std::to_string(count), 2000,
            [&] {
                registers[0] += 1;
                D3DDDIARG_SETPIXELSHADERCONST arg = {};
                arg.Count = count;
                m_Entries.pfnSetPixelShaderConst(m_hDevice, &arg, registers.data());
            },
            [&] {
                registers[0] += 1;
                m_pDevice->SetPixelShaderConstantF(0, registers.data(), count);
            });
    }

    void SmallDraw()
    {
        const D3DDDIARG_DRAWPRIMITIVE arg = {D3DPT_TRIANGLELIST, 0, 1};
        CompareFinished(
            "draw of one small triangle", 2000, [&] { m_Entries.pfnDrawPrimitive(m_hDevice, &arg, nullptr); },
            [&] { m_pDevice->DrawPrimitive(D3DPT_TRIANGLELIST, 0, 1); });
    }

    // No filter: what the driver asks of its device, whatever the runtime asks of the driver.
    void Blit()
    {
        const RECT rect = {0, 0, 256, 256};
        D3DDDIARG_BLT arg = {};
        arg.hSrcResource = DifferentialDriverPainter::Handle(*m_Ours.m_Source);
        arg.SrcRect = rect;
        arg.hDstResource = DifferentialDriverPainter::Handle(*m_Ours.m_Target);
        arg.DstRect = rect;
        arg.Flags.Point = 1;
        IDirect3DSurface9* pSource = DifferentialPlainPainter::Surface(*m_Other.m_Source);
        IDirect3DSurface9* pTarget = DifferentialPlainPainter::Surface(*m_Other.m_Target);
        CompareFinished(
            "blit of 256x256", 500, [&] { m_Entries.pfnBlt(m_hDevice, &arg); },
            [&] { m_pDevice->StretchRect(pSource, &rect, pTarget, &rect, D3DTEXF_NONE); });
    }

private:
    void Compare(const std::string& name, unsigned repeat, std::function<void()> ours, std::function<void()> other)
    {
        if (!m_Report.Wants(name))
            return;
        const std::vector<double> times = BenchCompare(
            {{std::move(ours), [this] { m_Ours.Drain(); }}, {std::move(other), [this] { m_Other.Drain(); }}}, 31,
            repeat);
        m_Report.AddFigure(name, times[0], "plain device", times[1]);
    }

    /// Of work that a device may put off, until all of it is done: one of two devices was seen to draw at once, and the
    /// other when its target was read. The reading is a part of it.
    void CompareFinished(
        const std::string& name, unsigned count, std::function<void()> ours, std::function<void()> other)
    {
        if (!m_Report.Wants(name))
            return;
        const auto finished = [count](std::function<void()> call, Objects& objects) {
            return BenchWork{[=, &objects] {
                for (unsigned n = 0; n < count; ++n)
                    call();
                objects.Drain();
            }};
        };
        const std::vector<double> times =
            BenchCompare({finished(std::move(ours), m_Ours), finished(std::move(other), m_Other)}, 31);
        m_Report.AddFigure(name, times[0] / count, "plain device", times[1] / count);
    }

    BenchReport& m_Report;
    BenchSides& m_Sides = BenchSides::Make();
    Objects m_Ours{m_Sides.Driver()};
    Objects m_Other{m_Sides.Plain()};
    const D3DDDI_DEVICEFUNCS m_Entries = m_Sides.Driver().Functions();
    const HANDLE m_hDevice = m_Sides.Driver().Device();
    IDirect3DDevice9Ex* const m_pDevice = m_Sides.Plain().Device();
};
}  // namespace

void BenchCalls(BenchReport& report)
{
    if (!report.WantsAny({"SetRenderState", "SetTexture", "SetStreamSource", "SetPixelShaderConst of 1",
            "SetPixelShaderConst of 32", "draw of one small triangle", "blit of 256x256"}))
        return;
    Calls calls(report);
    calls.RenderState();
    calls.Texture();
    calls.StreamSource();
    calls.PixelShaderConst(1);
    calls.PixelShaderConst(32);
    calls.SmallDraw();
    calls.Blit();
}
