#include "HotEntries.h"

namespace
{
constexpr UINT kStride = 16;
constexpr BYTE kVertices[kStride * 3]{};
constexpr USHORT kIndices[3]{0, 1, 2};

void BindUserMemory(const HotObjects& objects)
{
    const D3DDDIARG_SETSTREAMSOURCEUM arg{0, kStride};
    objects.m_Functions.pfnSetStreamSourceUm(objects.m_hDevice, &arg, kVertices);
}

void BindVertexBuffer(const HotObjects& objects)
{
    const D3DDDIARG_SETSTREAMSOURCE arg{0, objects.m_hVertexBuffer, 0, kStride};
    objects.m_Functions.pfnSetStreamSource(objects.m_hDevice, &arg);
}

HRESULT Draw(const HotObjects& objects)
{
    const D3DDDIARG_DRAWPRIMITIVE arg{D3DPT_TRIANGLELIST, 0, 1};
    return objects.m_Functions.pfnDrawPrimitive(objects.m_hDevice, &arg, nullptr);
}

HRESULT Draw2(const HotObjects& objects)
{
    const D3DDDIARG_DRAWPRIMITIVE2 arg{D3DPT_TRIANGLELIST, 0, 1};
    return objects.m_Functions.pfnDrawPrimitive2(objects.m_hDevice, &arg);
}
}  // namespace

#define CALL [](const HotObjects& o) -> HRESULT

// A limit is a fifth above what the driver needed when its row was written.
// clang-format off: an entry is a row
const std::vector<HotEntry>& HotEntries()
{
    static const std::vector<HotEntry> entries{
        {"SetRenderState", 50, {}, CALL {
            const D3DDDIARG_RENDERSTATE arg{D3DDDIRS_ZENABLE, 1};
            return o.m_Functions.pfnSetRenderState(o.m_hDevice, &arg);
        }},
        {"SetTextureStageState", 50, {}, CALL {
            const D3DDDIARG_TEXTURESTAGESTATE arg{1, D3DDDITSS_COLOROP, 2};
            return o.m_Functions.pfnSetTextureStageState(o.m_hDevice, &arg);
        }},
        {"SetTexture", 80, {}, CALL {
            return o.m_Functions.pfnSetTexture(o.m_hDevice, 0, o.m_hTexture);
        }},
        {"SetTexture, none", 70, {}, CALL {
            return o.m_Functions.pfnSetTexture(o.m_hDevice, 0, nullptr);
        }},
        {"SetRenderTarget", 300, {}, CALL {
            const D3DDDIARG_SETRENDERTARGET arg{0, o.m_hPrimary, 0};
            return o.m_Functions.pfnSetRenderTarget(o.m_hDevice, &arg);
        }},
        {"SetDepthStencil", 60, {}, CALL {
            const D3DDDIARG_SETDEPTHSTENCIL arg{nullptr};
            return o.m_Functions.pfnSetDepthStencil(o.m_hDevice, &arg);
        }},
        {"SetViewport", 70, {}, CALL {
            const D3DDDIARG_VIEWPORTINFO arg{0, 0, 16, 8};
            return o.m_Functions.pfnSetViewport(o.m_hDevice, &arg);
        }},
        {"SetZRange", 40, {}, CALL {
            const D3DDDIARG_ZRANGE arg{0, 1};
            return o.m_Functions.pfnSetZRange(o.m_hDevice, &arg);
        }},
        {"SetScissorRect", 50, {}, CALL {
            const RECT rect{0, 0, 16, 8};
            return o.m_Functions.pfnSetScissorRect(o.m_hDevice, &rect);
        }},
        {"SetClipPlane", 60, {}, CALL {
            const D3DDDIARG_SETCLIPPLANE arg{0, {1, 2, 3, 4}};
            return o.m_Functions.pfnSetClipPlane(o.m_hDevice, &arg);
        }},
        {"SetPixelShader", 70, {}, CALL {
            return o.m_Functions.pfnSetPixelShader(o.m_hDevice, o.m_hPixelShader);
        }},
        {"SetPixelShaderConst", 80, {}, CALL {
            const D3DDDIARG_SETPIXELSHADERCONST arg{0, 1};
            const FLOAT data[4]{};
            return o.m_Functions.pfnSetPixelShaderConst(o.m_hDevice, &arg, data);
        }},
        {"SetPixelShaderConstI", 80, {}, CALL {
            const D3DDDIARG_SETPIXELSHADERCONSTI arg{0, 1};
            const INT data[4]{};
            return o.m_Functions.pfnSetPixelShaderConstI(o.m_hDevice, &arg, data);
        }},
        {"SetPixelShaderConstB", 80, {}, CALL {
            const D3DDDIARG_SETPIXELSHADERCONSTB arg{0, 1};
            const BOOL data[1]{};
            return o.m_Functions.pfnSetPixelShaderConstB(o.m_hDevice, &arg, data);
        }},
        {"SetVertexShaderFunc", 80, {}, CALL {
            return o.m_Functions.pfnSetVertexShaderFunc(o.m_hDevice, o.m_hVertexShader);
        }},
        {"SetVertexShaderDecl", 80, {}, CALL {
            return o.m_Functions.pfnSetVertexShaderDecl(o.m_hDevice, o.m_hDeclaration);
        }},
        {"SetVertexShaderConst", 90, {}, CALL {
            const D3DDDIARG_SETVERTEXSHADERCONST arg{0, 1};
            const FLOAT data[4]{};
            return o.m_Functions.pfnSetVertexShaderConst(o.m_hDevice, &arg, data);
        }},
        {"SetStreamSource", 70, {}, CALL {
            const D3DDDIARG_SETSTREAMSOURCE arg{0, o.m_hVertexBuffer, 0, kStride};
            return o.m_Functions.pfnSetStreamSource(o.m_hDevice, &arg);
        }},
        {"SetStreamSourceUM", 70, {}, CALL {
            const D3DDDIARG_SETSTREAMSOURCEUM arg{0, kStride};
            return o.m_Functions.pfnSetStreamSourceUm(o.m_hDevice, &arg, kVertices);
        }},
        {"SetIndices", 70, {}, CALL {
            const D3DDDIARG_SETINDICES arg{o.m_hIndexBuffer, 2};
            return o.m_Functions.pfnSetIndices(o.m_hDevice, &arg);
        }},
        {"DrawPrimitive", 100, {}, Draw, BindVertexBuffer},
        {"DrawPrimitive, user memory", 70, {}, Draw, BindUserMemory},
        {"DrawPrimitive2", 90, {}, Draw2, BindVertexBuffer},
        {"DrawPrimitive2, user memory", 70, {}, Draw2, BindUserMemory},
        {"DrawIndexedPrimitive", 70, {}, CALL {
            const D3DDDIARG_DRAWINDEXEDPRIMITIVE arg{D3DPT_TRIANGLELIST, 0, 0, 3, 0, 1};
            return o.m_Functions.pfnDrawIndexedPrimitive(o.m_hDevice, &arg);
        }, BindVertexBuffer},
        {"DrawIndexedPrimitive2", 90, {}, CALL {
            const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg{D3DPT_TRIANGLELIST, 0, 0, 3, 0, 1};
            return o.m_Functions.pfnDrawIndexedPrimitive2(o.m_hDevice, &arg, 2, kIndices, nullptr);
        }, BindUserMemory},
        {"Clear", 90, {}, CALL {
            const D3DDDIARG_CLEAR arg{D3DCLEAR_TARGET, 0xFF102030, 1.0F, 0};
            const RECT rect{0, 0, 16, 8};
            return o.m_Functions.pfnClear(o.m_hDevice, &arg, 1, &rect);
        }},
        {"Flush", 80, {}, CALL {
            return o.m_Functions.pfnFlush(o.m_hDevice);
        }},
        // The worker is woken; who presents then rests, as it does behind each flip.
        {"Present", 0, {{"SetEvent", 1}, {"Sleep", 1}}, CALL {
            D3DDDIARG_PRESENT arg{};
            arg.hSrcResource = o.m_hPrimary;
            arg.Flags.Flip = 1;
            return o.m_Functions.pfnPresent(o.m_hDevice, &arg);
        }},
    };
    return entries;
}
// clang-format on
