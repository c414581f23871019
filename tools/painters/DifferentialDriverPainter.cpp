#include "tools/painters/DifferentialDriverPainter.h"

#include "tools/painters/DifferentialDriverResource.h"

#include <cstring>

// HostCheck with the name of the entry.
#define CALL(member, ...) HostCheck(Functions().member(Device(), __VA_ARGS__), #member)

struct DifferentialDriverPainter::Shader : PainterObject
{
    using DeleteEntry = HRESULT(APIENTRY*)(HANDLE, HANDLE);
    Shader(HANDLE hDevice, HANDLE hShader, DeleteEntry pDelete)
        : m_Device(hDevice), m_Handle(hShader), m_pDelete(pDelete)
    {
    }
    ~Shader() override { m_pDelete(m_Device, m_Handle); }

    HANDLE m_Device;
    HANDLE m_Handle;
    DeleteEntry m_pDelete;
};

DifferentialDriverPainter::DifferentialDriverPainter()
    : m_Session({L"TessloWddmUmode.dll", L"TessloClientDllSample.dll", 0})
{
}

HANDLE DifferentialDriverPainter::Handle(PainterObject& object)
{
    if (auto* pResource = dynamic_cast<DifferentialDriverResource*>(&object))
        return pResource->m_Handle;
    return dynamic_cast<Shader&>(object).m_Handle;
}

PainterHandle DifferentialDriverPainter::Create(DifferentialDriverRequest request)
{
    return std::make_unique<DifferentialDriverResource>(Host(), std::move(request));
}

PainterHandle DifferentialDriverPainter::CreateSurface(
    PainterSurface kind, UINT width, UINT height, D3DFORMAT format, UINT levels)
{
    DifferentialDriverRequest request;
    request.m_Width = width;
    request.m_Height = height;
    request.m_Format = format;
    request.m_Levels = levels;
    request.m_Flags.RenderTarget = kind == PainterSurface::Target || kind == PainterSurface::TargetTexture;
    request.m_Flags.Texture = kind == PainterSurface::Texture || kind == PainterSurface::TargetTexture;
    return Create(std::move(request));
}

PainterHandle DifferentialDriverPainter::CreatePrimary(UINT width, UINT height)
{
    DifferentialDriverRequest request;
    request.m_Width = width;
    request.m_Height = height;
    request.m_Format = D3DFMT_X8R8G8B8;
    request.m_Flags.RenderTarget = 1;
    request.m_Flags.Primary = 1;
    return Create(std::move(request));
}

PainterHandle DifferentialDriverPainter::CreateDepth(UINT width, UINT height, D3DFORMAT format)
{
    DifferentialDriverRequest request;
    request.m_Width = width;
    request.m_Height = height;
    request.m_Format = format;
    request.m_Flags.ZBuffer = 1;
    return Create(std::move(request));
}

PainterHandle DifferentialDriverPainter::CreateMemorySurface(const DifferentialPicture& picture)
{
    DifferentialDriverRequest request;
    request.m_Width = picture.m_Width;
    request.m_Height = picture.m_Height;
    request.m_Format = picture.m_Format;
    request.m_Pool = D3DDDIPOOL_SYSTEMMEM;
    request.m_Memory = {picture};
    return Create(std::move(request));
}

PainterHandle DifferentialDriverPainter::CreateMemoryTexture(std::span<const DifferentialPicture> levels)
{
    DifferentialDriverRequest request;
    request.m_Width = levels[0].m_Width;
    request.m_Height = levels[0].m_Height;
    request.m_Format = levels[0].m_Format;
    request.m_Levels = static_cast<UINT>(levels.size());
    request.m_Pool = D3DDDIPOOL_SYSTEMMEM;
    request.m_Flags.Texture = 1;
    request.m_Memory.assign(levels.begin(), levels.end());
    return Create(std::move(request));
}

PainterHandle DifferentialDriverPainter::CreateBuffer(DifferentialDriverRequest request, std::span<const BYTE> content)
{
    request.m_Width = static_cast<UINT>(content.size());
    PainterHandle pBuffer = Create(std::move(request));
    D3DDDIARG_LOCK lock{};
    lock.hResource = Handle(*pBuffer);
    lock.Range = {0, static_cast<UINT>(content.size())};
    lock.Flags.RangeValid = 1;
    Host().WithLock(lock,
        [content](const D3DDDIARG_LOCK& locked) { std::memcpy(locked.pSurfData, content.data(), content.size()); });
    return pBuffer;
}

PainterHandle DifferentialDriverPainter::CreateVertexBuffer(PainterMemory memory, std::span<const BYTE> content)
{
    DifferentialDriverRequest request;
    request.m_Format = D3DFMT_VERTEXDATA;
    request.m_Pool = memory == PainterMemory::System ? D3DDDIPOOL_SYSTEMMEM : D3DDDIPOOL_VIDEOMEMORY;
    request.m_Flags.VertexBuffer = 1;
    return CreateBuffer(std::move(request), content);
}

PainterHandle DifferentialDriverPainter::CreateIndexBuffer(D3DFORMAT format, std::span<const BYTE> content)
{
    DifferentialDriverRequest request;
    request.m_Format = format;
    request.m_Flags.IndexBuffer = 1;
    return CreateBuffer(std::move(request), content);
}

PainterHandle DifferentialDriverPainter::CreateVertexShader(std::span<const UINT> code)
{
    D3DDDIARG_CREATEVERTEXSHADERFUNC arg = {static_cast<UINT>(code.size_bytes()), nullptr};
    CALL(pfnCreateVertexShaderFunc, &arg, code.data());
    return std::make_unique<Shader>(Device(), arg.ShaderHandle, Functions().pfnDeleteVertexShaderFunc);
}

PainterHandle DifferentialDriverPainter::CreatePixelShader(std::span<const UINT> code)
{
    D3DDDIARG_CREATEPIXELSHADER arg = {static_cast<UINT>(code.size_bytes()), nullptr};
    CALL(pfnCreatePixelShader, &arg, code.data());
    return std::make_unique<Shader>(Device(), arg.ShaderHandle, Functions().pfnDeletePixelShader);
}

PainterHandle DifferentialDriverPainter::CreateDeclaration(std::span<const D3DVERTEXELEMENT9> elements)
{
    std::vector<D3DDDIVERTEXELEMENT> copy;
    for (const D3DVERTEXELEMENT9& element : elements)
        copy.push_back(
            {element.Stream, element.Offset, element.Type, element.Method, element.Usage, element.UsageIndex});
    D3DDDIARG_CREATEVERTEXSHADERDECL arg = {static_cast<UINT>(copy.size()), nullptr};
    CALL(pfnCreateVertexShaderDecl, &arg, copy.data());
    return std::make_unique<Shader>(Device(), arg.ShaderHandle, Functions().pfnDeleteVertexShaderDecl);
}

void DifferentialDriverPainter::BeginScene()
{
    const D3DDDIARG_RENDERSTATE arg = {D3DDDIRS_SCENECAPTURE, 1};
    CALL(pfnSetRenderState, &arg);
}

void DifferentialDriverPainter::EndScene()
{
    const D3DDDIARG_RENDERSTATE arg = {D3DDDIRS_SCENECAPTURE, 0};
    CALL(pfnSetRenderState, &arg);
}

void DifferentialDriverPainter::SetRenderState(D3DRENDERSTATETYPE state, DWORD value)
{
    const D3DDDIARG_RENDERSTATE arg = {static_cast<D3DDDIRENDERSTATETYPE>(state), static_cast<UINT>(value)};
    CALL(pfnSetRenderState, &arg);
}

void DifferentialDriverPainter::SetTextureStageState(DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD value)
{
    const D3DDDIARG_TEXTURESTAGESTATE arg = {
        static_cast<UINT>(stage), static_cast<D3DDDITEXTURESTAGESTATETYPE>(state), static_cast<UINT>(value)};
    CALL(pfnSetTextureStageState, &arg);
}

void DifferentialDriverPainter::SetTexture(DWORD stage, PainterObject* pTexture)
{
    CALL(pfnSetTexture, stage, pTexture ? Handle(*pTexture) : nullptr);
}

void DifferentialDriverPainter::SetTarget(PainterObject& target)
{
    D3DDDIARG_SETRENDERTARGET arg{};
    arg.hRenderTarget = Handle(target);
    CALL(pfnSetRenderTarget, &arg);
}

void DifferentialDriverPainter::SetDepth(PainterObject* pDepth)
{
    D3DDDIARG_SETDEPTHSTENCIL arg{};
    arg.hZBuffer = pDepth ? Handle(*pDepth) : nullptr;
    CALL(pfnSetDepthStencil, &arg);
}

void DifferentialDriverPainter::SetViewport(UINT x, UINT y, UINT width, UINT height)
{
    const D3DDDIARG_VIEWPORTINFO arg = {x, y, width, height};
    CALL(pfnSetViewport, &arg);
}

void DifferentialDriverPainter::SetScissor(const RECT& rect)
{
    CALL(pfnSetScissorRect, &rect);
}

void DifferentialDriverPainter::SetTransform(D3DTRANSFORMSTATETYPE type, const D3DMATRIX& matrix)
{
    const D3DDDIARG_SETTRANSFORM arg = {type, matrix};
    CALL(pfnSetTransform, &arg);
}

void DifferentialDriverPainter::SetClipPlane(DWORD index, const float (&plane)[4])
{
    const D3DDDIARG_SETCLIPPLANE arg = {static_cast<UINT>(index), {plane[0], plane[1], plane[2], plane[3]}};
    CALL(pfnSetClipPlane, &arg);
}

void DifferentialDriverPainter::SetVertexShader(PainterObject& shader)
{
    CALL(pfnSetVertexShaderFunc, Handle(shader));
}

void DifferentialDriverPainter::SetPixelShader(PainterObject& shader)
{
    CALL(pfnSetPixelShader, Handle(shader));
}

void DifferentialDriverPainter::SetDeclaration(PainterObject& declaration)
{
    CALL(pfnSetVertexShaderDecl, Handle(declaration));
}

void DifferentialDriverPainter::SetVertexConstants(UINT first, std::span<const float> values)
{
    const D3DDDIARG_SETVERTEXSHADERCONST arg = {first, static_cast<UINT>(values.size() / 4)};
    CALL(pfnSetVertexShaderConst, &arg, values.data());
}

void DifferentialDriverPainter::SetPixelConstants(UINT first, std::span<const float> values)
{
    const D3DDDIARG_SETPIXELSHADERCONST arg = {first, static_cast<UINT>(values.size() / 4)};
    CALL(pfnSetPixelShaderConst, &arg, values.data());
}

void DifferentialDriverPainter::SetPixelIntegers(UINT first, std::span<const INT> values)
{
    const D3DDDIARG_SETPIXELSHADERCONSTI arg = {first, static_cast<UINT>(values.size() / 4)};
    CALL(pfnSetPixelShaderConstI, &arg, values.data());
}

void DifferentialDriverPainter::SetPixelBooleans(UINT first, std::span<const BOOL> values)
{
    const D3DDDIARG_SETPIXELSHADERCONSTB arg = {first, static_cast<UINT>(values.size())};
    CALL(pfnSetPixelShaderConstB, &arg, values.data());
}

void DifferentialDriverPainter::SetStreamMemory(const void* pVertices, UINT stride)
{
    const D3DDDIARG_SETSTREAMSOURCEUM arg = {0, stride};
    CALL(pfnSetStreamSourceUm, &arg, pVertices);
}

void DifferentialDriverPainter::SetStreamBuffer(PainterObject& buffer, UINT offset, UINT stride)
{
    const D3DDDIARG_SETSTREAMSOURCE arg = {0, Handle(buffer), offset, stride};
    CALL(pfnSetStreamSource, &arg);
}

void DifferentialDriverPainter::SetIndices(PainterObject& buffer)
{
    const UINT stride = static_cast<DifferentialDriverResource&>(buffer).m_Request.m_Format == D3DFMT_INDEX16 ? 2 : 4;
    const D3DDDIARG_SETINDICES arg = {Handle(buffer), stride};
    CALL(pfnSetIndices, &arg);
}

void DifferentialDriverPainter::Draw(D3DPRIMITIVETYPE type, UINT firstVertex, UINT count)
{
    const D3DDDIARG_DRAWPRIMITIVE arg = {type, firstVertex, count};
    CALL(pfnDrawPrimitive, &arg, nullptr);
}

void DifferentialDriverPainter::DrawFromByte(D3DPRIMITIVETYPE type, UINT firstByte, UINT count)
{
    const D3DDDIARG_DRAWPRIMITIVE2 arg = {type, firstByte, count};
    CALL(pfnDrawPrimitive2, &arg);
}

void DifferentialDriverPainter::DrawIndexed(
    D3DPRIMITIVETYPE type, INT baseVertex, UINT minIndex, UINT vertices, UINT firstIndex, UINT count)
{
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE arg = {type, baseVertex, minIndex, vertices, firstIndex, count};
    CALL(pfnDrawIndexedPrimitive, &arg);
}

void DifferentialDriverPainter::DrawIndexedFromMemory(
    D3DPRIMITIVETYPE type, INT baseByte, UINT minIndex, UINT vertices, UINT count, const void* pIndices, UINT indexSize)
{
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg = {type, baseByte, minIndex, vertices, 0, count};
    CALL(pfnDrawIndexedPrimitive2, &arg, indexSize, pIndices, nullptr);
}

void DifferentialDriverPainter::Blt(PainterObject& from, const RECT& fromRect, PainterObject& to, const RECT& toRect)
{
    D3DDDIARG_BLT arg{};
    arg.hSrcResource = Handle(from);
    arg.SrcRect = fromRect;
    arg.hDstResource = Handle(to);
    arg.DstRect = toRect;
    arg.Flags.Point = 1;
    CALL(pfnBlt, &arg);
}

void DifferentialDriverPainter::TexBlt(PainterObject& from, const RECT& rect, PainterObject& to, const POINT& point)
{
    const D3DDDIARG_TEXBLT arg = {Handle(to), Handle(from), 0, point, rect};
    CALL(pfnTexBlt, &arg);
}

void DifferentialDriverPainter::ColorFill(PainterObject& target, const RECT& rect, D3DCOLOR color)
{
    D3DDDIARG_COLORFILL arg{};
    arg.hResource = Handle(target);
    arg.DstRect = rect;
    arg.Color = color;
    CALL(pfnColorFill, &arg);
}

void DifferentialDriverPainter::Clear(
    DWORD flags, D3DCOLOR color, float depth, DWORD stencil, std::span<const RECT> rects)
{
    D3DDDIARG_CLEAR arg{};
    arg.Flags = flags;
    arg.FillColor = color;
    arg.FillDepth = depth;
    arg.FillStencil = stencil;
    CALL(pfnClear, &arg, static_cast<UINT>(rects.size()), rects.data());
}

DifferentialPicture DifferentialDriverPainter::ReadBack(PainterObject& object)
{
    auto& resource = static_cast<DifferentialDriverResource&>(object);
    const DifferentialDriverRequest& request = resource.m_Request;
    // The driver writes a texture of system memory back into the runtime's memory.
    if (request.m_Pool == D3DDDIPOOL_SYSTEMMEM && request.m_Flags.Texture)
        return request.m_Memory[0];

    DifferentialPicture picture(request.m_Width, request.m_Height, static_cast<D3DFORMAT>(request.m_Format));
    PainterHandle pCopy;
    D3DDDIARG_LOCK lock{};
    lock.hResource = resource.m_Handle;
    if (request.m_Pool != D3DDDIPOOL_SYSTEMMEM)
    {
        const RECT all = {0, 0, static_cast<LONG>(picture.m_Width), static_cast<LONG>(picture.m_Height)};
        pCopy = CreateMemorySurface(picture);
        Blt(object, all, *pCopy, all);
        lock.hResource = Handle(*pCopy);
    }
    lock.Flags.ReadOnly = 1;
    Host().WithLock(lock, [&picture](const D3DDDIARG_LOCK& locked) {
        for (UINT y = 0; y < picture.m_Height; ++y)
            std::memcpy(
                picture.Row(y), static_cast<const BYTE*>(locked.pSurfData) + size_t{y} * locked.Pitch, picture.Pitch());
    });
    return picture;
}
