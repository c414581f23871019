#include "tools/painters/DifferentialPlainPainter.h"

#include "host/runtime/HostError.h"
#include "tools/painters/DifferentialPlainPixels.h"

#include <cstring>

// HostCheck with the name of the method.
#define CALL(pObject, method, ...) HostCheck((pObject)->method(__VA_ARGS__), #method)

struct DifferentialPlainPainter::Object : PainterObject
{
    bool IsTexture() const { return static_cast<bool>(m_pTexture); }
    RECT Rect() const { return {0, 0, static_cast<LONG>(m_Desc.Width), static_cast<LONG>(m_Desc.Height)}; }

    UMDComPtr<IDirect3DTexture9> m_pTexture;
    UMDComPtr<IDirect3DSurface9> m_pSurface;  ///< level 0 of a texture
    D3DSURFACE_DESC m_Desc{};                 ///< of the surface
    bool m_bPlain = false;                    ///< an offscreen surface in video memory
    UMDComPtr<IDirect3DVertexBuffer9> m_pVertexBuffer;
    std::vector<BYTE> m_Vertices;  ///< what was written into the vertex buffer
    UMDComPtr<IDirect3DIndexBuffer9> m_pIndexBuffer;
    UMDComPtr<IDirect3DVertexShader9> m_pVertexShader;
    UMDComPtr<IDirect3DPixelShader9> m_pPixelShader;
    UMDComPtr<IDirect3DVertexDeclaration9> m_pDeclaration;

    static Object& Of(PainterObject& object) { return static_cast<Object&>(object); }
    void TakeSurface()
    {
        if (m_pTexture)
            CALL(m_pTexture, GetSurfaceLevel, 0, m_pSurface.Put());
        CALL(m_pSurface, GetDesc, &m_Desc);
    }
};

namespace
{

template <typename Buffer>
void WriteBuffer(Buffer& pBuffer, std::span<const BYTE> content)
{
    void* pData = nullptr;
    CALL(pBuffer, Lock, 0, static_cast<UINT>(content.size()), &pData, 0);
    std::memcpy(pData, content.data(), content.size());
    CALL(pBuffer, Unlock);
}

}  // namespace

DifferentialPlainPainter::DifferentialPlainPainter()
{
    m_hWnd = CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    HostCheck(Direct3DCreate9Ex(D3D_SDK_VERSION, m_pD3D9.Put()), "Direct3DCreate9Ex");
    D3DPRESENT_PARAMETERS parameters{};
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.Windowed = TRUE;
    CALL(m_pD3D9, CreateDeviceEx, D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, m_hWnd,
        D3DCREATE_HARDWARE_VERTEXPROCESSING | D3DCREATE_MULTITHREADED, &parameters, nullptr, m_pDevice.Put());
}

DifferentialPlainPainter::~DifferentialPlainPainter()
{
    m_pDevice.Reset();
    m_pD3D9.Reset();
    DestroyWindow(m_hWnd);
}

IDirect3DSurface9* DifferentialPlainPainter::Surface(PainterObject& object)
{
    return Object::Of(object).m_pSurface.Get();
}

IDirect3DTexture9* DifferentialPlainPainter::Texture(PainterObject& object)
{
    return Object::Of(object).m_pTexture.Get();
}

IDirect3DVertexBuffer9* DifferentialPlainPainter::VertexBuffer(PainterObject& object)
{
    return Object::Of(object).m_pVertexBuffer.Get();
}

PainterHandle DifferentialPlainPainter::CreateSurface(
    PainterSurface kind, UINT width, UINT height, D3DFORMAT format, UINT levels)
{
    auto pObject = std::make_unique<Object>();
    if (kind == PainterSurface::Target)
        CALL(m_pDevice, CreateRenderTarget, width, height, format, D3DMULTISAMPLE_NONE, 0, FALSE,
            pObject->m_pSurface.Put(), nullptr);
    else if (kind == PainterSurface::Plain)
        CALL(m_pDevice, CreateOffscreenPlainSurface, width, height, format, D3DPOOL_DEFAULT, pObject->m_pSurface.Put(),
            nullptr);
    else
        CALL(m_pDevice, CreateTexture, width, height, levels,
            kind == PainterSurface::TargetTexture ? D3DUSAGE_RENDERTARGET : 0, format, D3DPOOL_DEFAULT,
            pObject->m_pTexture.Put(), nullptr);
    pObject->TakeSurface();
    pObject->m_bPlain = kind == PainterSurface::Plain;
    return pObject;
}

PainterHandle DifferentialPlainPainter::CreateDepth(UINT width, UINT height, D3DFORMAT format)
{
    auto pObject = std::make_unique<Object>();
    CALL(m_pDevice, CreateDepthStencilSurface, width, height, format, D3DMULTISAMPLE_NONE, 0, FALSE,
        pObject->m_pSurface.Put(), nullptr);
    return pObject;
}

PainterHandle DifferentialPlainPainter::CreateMemorySurface(const DifferentialPicture& picture)
{
    auto pObject = std::make_unique<Object>();
    CALL(m_pDevice, CreateOffscreenPlainSurface, picture.m_Width, picture.m_Height, picture.m_Format, D3DPOOL_SYSTEMMEM,
        pObject->m_pSurface.Put(), nullptr);
    pObject->TakeSurface();
    DifferentialWrite(pObject->m_pSurface.Get(), picture);
    return pObject;
}

PainterHandle DifferentialPlainPainter::CreateMemoryTexture(std::span<const DifferentialPicture> levels)
{
    auto pObject = std::make_unique<Object>();
    CALL(m_pDevice, CreateTexture, levels[0].m_Width, levels[0].m_Height, static_cast<UINT>(levels.size()), 0,
        levels[0].m_Format, D3DPOOL_SYSTEMMEM, pObject->m_pTexture.Put(), nullptr);
    pObject->TakeSurface();
    for (UINT level = 0; level < levels.size(); ++level)
    {
        UMDComPtr<IDirect3DSurface9> pSurface;
        CALL(pObject->m_pTexture, GetSurfaceLevel, level, pSurface.Put());
        DifferentialWrite(pSurface.Get(), levels[level]);
    }
    return pObject;
}

PainterHandle DifferentialPlainPainter::CreateVertexBuffer(PainterMemory memory, std::span<const BYTE> content)
{
    auto pObject = std::make_unique<Object>();
    CALL(m_pDevice, CreateVertexBuffer, static_cast<UINT>(content.size()), 0, 0,
        memory == PainterMemory::System ? D3DPOOL_SYSTEMMEM : D3DPOOL_DEFAULT, pObject->m_pVertexBuffer.Put(), nullptr);
    WriteBuffer(pObject->m_pVertexBuffer, content);
    pObject->m_Vertices.assign(content.begin(), content.end());
    return pObject;
}

PainterHandle DifferentialPlainPainter::CreateIndexBuffer(D3DFORMAT format, std::span<const BYTE> content)
{
    auto pObject = std::make_unique<Object>();
    CALL(m_pDevice, CreateIndexBuffer, static_cast<UINT>(content.size()), 0, format, D3DPOOL_DEFAULT,
        pObject->m_pIndexBuffer.Put(), nullptr);
    WriteBuffer(pObject->m_pIndexBuffer, content);
    return pObject;
}

PainterHandle DifferentialPlainPainter::CreateVertexShader(std::span<const UINT> code)
{
    auto pObject = std::make_unique<Object>();
    CALL(m_pDevice, CreateVertexShader, reinterpret_cast<const DWORD*>(code.data()), pObject->m_pVertexShader.Put());
    return pObject;
}

PainterHandle DifferentialPlainPainter::CreatePixelShader(std::span<const UINT> code)
{
    auto pObject = std::make_unique<Object>();
    CALL(m_pDevice, CreatePixelShader, reinterpret_cast<const DWORD*>(code.data()), pObject->m_pPixelShader.Put());
    return pObject;
}

PainterHandle DifferentialPlainPainter::CreateDeclaration(std::span<const D3DVERTEXELEMENT9> elements)
{
    std::vector<D3DVERTEXELEMENT9> ended(elements.begin(), elements.end());
    ended.push_back(D3DDECL_END());
    auto pObject = std::make_unique<Object>();
    CALL(m_pDevice, CreateVertexDeclaration, ended.data(), pObject->m_pDeclaration.Put());
    return pObject;
}

void DifferentialPlainPainter::BeginScene()
{
    CALL(m_pDevice, BeginScene);
}

void DifferentialPlainPainter::EndScene()
{
    CALL(m_pDevice, EndScene);
}

void DifferentialPlainPainter::SetRenderState(D3DRENDERSTATETYPE state, DWORD value)
{
    CALL(m_pDevice, SetRenderState, state, value);
}

void DifferentialPlainPainter::SetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD value)
{
    CALL(m_pDevice, SetTextureStageState, stage, state, value);
}

void DifferentialPlainPainter::SetTexture(DWORD stage, PainterObject* pTexture)
{
    CALL(m_pDevice, SetTexture, stage, pTexture ? Object::Of(*pTexture).m_pTexture.Get() : nullptr);
}

void DifferentialPlainPainter::SetTarget(PainterObject& target)
{
    CALL(m_pDevice, SetRenderTarget, 0, Object::Of(target).m_pSurface.Get());
}

void DifferentialPlainPainter::SetDepth(PainterObject* pDepth)
{
    CALL(m_pDevice, SetDepthStencilSurface, pDepth ? Object::Of(*pDepth).m_pSurface.Get() : nullptr);
}

void DifferentialPlainPainter::SetViewport(UINT x, UINT y, UINT width, UINT height)
{
    const D3DVIEWPORT9 viewport = {x, y, width, height, 0, 1};
    CALL(m_pDevice, SetViewport, &viewport);
}

void DifferentialPlainPainter::SetScissor(const RECT& rect)
{
    CALL(m_pDevice, SetScissorRect, &rect);
}

void DifferentialPlainPainter::SetTransform(D3DTRANSFORMSTATETYPE type, const D3DMATRIX& matrix)
{
    CALL(m_pDevice, SetTransform, type, &matrix);
}

void DifferentialPlainPainter::SetClipPlane(DWORD index, const float (&plane)[4])
{
    CALL(m_pDevice, SetClipPlane, index, plane);
}

void DifferentialPlainPainter::SetVertexShader(PainterObject& shader)
{
    CALL(m_pDevice, SetVertexShader, Object::Of(shader).m_pVertexShader.Get());
}

void DifferentialPlainPainter::SetPixelShader(PainterObject& shader)
{
    CALL(m_pDevice, SetPixelShader, Object::Of(shader).m_pPixelShader.Get());
}

void DifferentialPlainPainter::SetDeclaration(PainterObject& declaration)
{
    CALL(m_pDevice, SetVertexDeclaration, Object::Of(declaration).m_pDeclaration.Get());
}

void DifferentialPlainPainter::SetVertexConstants(UINT first, std::span<const float> values)
{
    CALL(m_pDevice, SetVertexShaderConstantF, first, values.data(), static_cast<UINT>(values.size() / 4));
}

void DifferentialPlainPainter::SetPixelConstants(UINT first, std::span<const float> values)
{
    CALL(m_pDevice, SetPixelShaderConstantF, first, values.data(), static_cast<UINT>(values.size() / 4));
}

void DifferentialPlainPainter::SetPixelIntegers(UINT first, std::span<const INT> values)
{
    CALL(m_pDevice, SetPixelShaderConstantI, first, values.data(), static_cast<UINT>(values.size() / 4));
}

void DifferentialPlainPainter::SetPixelBooleans(UINT first, std::span<const BOOL> values)
{
    CALL(m_pDevice, SetPixelShaderConstantB, first, values.data(), static_cast<UINT>(values.size()));
}

void DifferentialPlainPainter::SetStreamMemory(const void* pVertices, UINT stride)
{
    m_pStreamMemory = static_cast<const BYTE*>(pVertices);
    m_pStreamBuffer = nullptr;
    m_Stride = stride;
}

void DifferentialPlainPainter::SetStreamBuffer(PainterObject& buffer, UINT offset, UINT stride)
{
    CALL(m_pDevice, SetStreamSource, 0, Object::Of(buffer).m_pVertexBuffer.Get(), offset, stride);
    m_pStreamMemory = nullptr;
    m_pStreamBuffer = &Object::Of(buffer);
    m_Stride = stride;
}

void DifferentialPlainPainter::SetIndices(PainterObject& buffer)
{
    CALL(m_pDevice, SetIndices, Object::Of(buffer).m_pIndexBuffer.Get());
}

void DifferentialPlainPainter::Draw(D3DPRIMITIVETYPE type, UINT firstVertex, UINT count)
{
    if (m_pStreamMemory)
        CALL(m_pDevice, DrawPrimitiveUP, type, count, m_pStreamMemory + size_t{firstVertex} * m_Stride, m_Stride);
    else
        CALL(m_pDevice, DrawPrimitive, type, firstVertex, count);
}

void DifferentialPlainPainter::DrawFromByte(D3DPRIMITIVETYPE type, UINT firstByte, UINT count)
{
    Draw(type, firstByte / m_Stride, count);
}

void DifferentialPlainPainter::DrawIndexed(
    D3DPRIMITIVETYPE type, INT baseVertex, UINT minIndex, UINT vertices, UINT firstIndex, UINT count)
{
    CALL(m_pDevice, DrawIndexedPrimitive, type, baseVertex, minIndex, vertices, firstIndex, count);
}

void DifferentialPlainPainter::DrawIndexedFromMemory(
    D3DPRIMITIVETYPE type, INT baseByte, UINT minIndex, UINT vertices, UINT count, const void* pIndices, UINT indexSize)
{
    const BYTE* pVertices = m_pStreamMemory ? m_pStreamMemory : m_pStreamBuffer->m_Vertices.data();
    CALL(m_pDevice, DrawIndexedPrimitiveUP, type, minIndex, vertices, count, pIndices,
        indexSize == 2 ? D3DFMT_INDEX16 : D3DFMT_INDEX32, pVertices + baseByte, m_Stride);
}

void DifferentialPlainPainter::Blt(PainterObject& from, const RECT& fromRect, PainterObject& to, const RECT& toRect)
{
    Object& source = Object::Of(from);
    Object& target = Object::Of(to);
    const bool bFromMemory = source.m_Desc.Pool == D3DPOOL_SYSTEMMEM;
    const bool bToMemory = target.m_Desc.Pool == D3DPOOL_SYSTEMMEM;
    const POINT point = {toRect.left, toRect.top};
    const RECT all = source.Rect();
    if (bFromMemory && source.IsTexture())
        TexBlt(from, fromRect, to, point);
    else if (bFromMemory)
        CALL(m_pDevice, UpdateSurface, source.m_pSurface.Get(), &fromRect, target.m_pSurface.Get(), &point);
    else if (!bToMemory && target.m_bPlain && !source.m_bPlain)
    {
        // Strict implementations stretch nothing into an offscreen surface.
        const PainterHandle pMemory =
            CreateMemorySurface({source.m_Desc.Width, source.m_Desc.Height, source.m_Desc.Format});
        IDirect3DSurface9* pCopy = Object::Of(*pMemory).m_pSurface.Get();
        CALL(m_pDevice, GetRenderTargetData, source.m_pSurface.Get(), pCopy);
        CALL(m_pDevice, UpdateSurface, pCopy, &fromRect, target.m_pSurface.Get(), &point);
    }
    else if (!bToMemory)
        CALL(
            m_pDevice, StretchRect, source.m_pSurface.Get(), &fromRect, target.m_pSurface.Get(), &toRect, D3DTEXF_NONE);
    else if (source.IsTexture() && !EqualRect(&fromRect, &all))
    {
        // The whole of it first: what is drawn of a part of a texture is not told to every driver.
        const PainterHandle pWhole =
            CreateSurface(PainterSurface::Target, source.m_Desc.Width, source.m_Desc.Height, source.m_Desc.Format);
        Blt(from, all, *pWhole, all);
        Blt(*pWhole, fromRect, to, toRect);
    }
    else
    {
        const PainterHandle pStretched =
            CreateSurface(PainterSurface::Target, target.m_Desc.Width, target.m_Desc.Height, target.m_Desc.Format);
        Blt(from, fromRect, *pStretched, toRect);
        CALL(m_pDevice, GetRenderTargetData, Object::Of(*pStretched).m_pSurface.Get(), target.m_pSurface.Get());
    }
}

void DifferentialPlainPainter::TexBlt(PainterObject& from, const RECT& rect, PainterObject& to, const POINT& point)
{
    Object& source = Object::Of(from);
    Object& target = Object::Of(to);
    for (UINT level = 0; level < source.m_pTexture->GetLevelCount(); ++level)
    {
        UMDComPtr<IDirect3DSurface9> pFrom, pTo;
        CALL(source.m_pTexture, GetSurfaceLevel, level, pFrom.Put());
        CALL(target.m_pTexture, GetSurfaceLevel, level, pTo.Put());
        CALL(m_pDevice, UpdateSurface, pFrom.Get(), level ? nullptr : &rect, pTo.Get(), level ? nullptr : &point);
    }
}

void DifferentialPlainPainter::ColorFill(PainterObject& target, const RECT& rect, D3DCOLOR color)
{
    CALL(m_pDevice, ColorFill, Object::Of(target).m_pSurface.Get(), &rect, color);
}

void DifferentialPlainPainter::Clear(
    DWORD flags, D3DCOLOR color, float depth, DWORD stencil, std::span<const RECT> rects)
{
    std::vector<D3DRECT> copy;
    for (const RECT& rect : rects)
        copy.push_back({rect.left, rect.top, rect.right, rect.bottom});
    CALL(m_pDevice, Clear, static_cast<DWORD>(copy.size()), copy.empty() ? nullptr : copy.data(), flags, color, depth,
        stencil);
}

DifferentialPicture DifferentialPlainPainter::ReadBack(PainterObject& object)
{
    Object& surface = Object::Of(object);
    if (surface.m_Desc.Pool == D3DPOOL_SYSTEMMEM)
        return DifferentialRead(surface.m_pSurface.Get(), surface.m_Desc);
    const PainterHandle pCopy =
        CreateMemorySurface({surface.m_Desc.Width, surface.m_Desc.Height, surface.m_Desc.Format});
    CALL(m_pDevice, GetRenderTargetData, surface.m_pSurface.Get(), Object::Of(*pCopy).m_pSurface.Get());
    return DifferentialRead(Object::Of(*pCopy).m_pSurface.Get(), surface.m_Desc);
}
