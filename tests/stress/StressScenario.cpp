#include "StressScenario.h"

#include "StressRun.h"
#include "StressText.h"

namespace tesslo::test
{

namespace
{

constexpr UINT kWidth = 16, kHeight = 8;
constexpr int kPatience = 20;  ///< milliseconds
constexpr RECT kAll = {0, 0, kWidth, kHeight};
constexpr UINT kCode[] = {0xFFFE0200, 0x0000FFFF};  ///< the shortest shader
constexpr GUID kProgressive = {0x5a54a0c9, 0xc7ec, 0x4bd9, {0x8e, 0xde, 0xf3, 0xc7, 0x5d, 0xc4, 0x39, 0x3b}};

}  // namespace

bool StressIsOrdinary(const StressStep& step)
{
    if (step.m_Entry == "pfnDestroyResource")
        return step.m_hResult == E_FAIL;
    const bool mayRefuse = step.m_Entry == "pfnBufBlt" || step.m_Entry == "pfnLock";
    return step.m_hResult == S_OK || (mayRefuse && step.m_hResult == E_NOTIMPL);
}

HRESULT StressScenario::InternalNote(const std::string& entry, HRESULT hr)
{
    StressStep& step = m_Steps.emplace_back(entry, hr);
    for (size_t i = 0; i < kStressCallbacks.size(); ++i)
        step.m_Callbacks[i] = m_Driver.m_Kernel.Calls(kStressCallbacks[i]);
    return hr;
}

HANDLE StressScenario::InternalCreate(const char* pWhat, UINT flags, D3DDDI_POOL pool, D3DDDIFORMAT format, UINT width,
    UINT height, UINT levels, UINT source)
{
    CreateRequest& request = m_Requests.emplace_back(flags, pool, format, width, height, levels);
    if (pool == kSystem)
        request.WithMemory(4, 0);
    request.m_Arg.VidPnSourceId = source;
    request.m_Arg.Rotation = D3DDDI_ROTATION_IDENTITY;
    if (FAILED(InternalNote(std::string("pfnCreateResource ") + pWhat,
            m_Driver.Functions().pfnCreateResource(m_Driver.Device(), &request.m_Arg))))
        return nullptr;
    m_Resources.push_back(request.m_Arg.hResource);
    return request.m_Arg.hResource;
}

std::vector<StressStep> StressScenario::Run()
{
    InternalOpen();
    if (m_Driver.Device())
    {
        InternalResources();
        InternalOpenShared();
        InternalState();
        InternalShaders();
        InternalDraws();
        InternalBlits();
        InternalLocks();
        InternalVideo();
        InternalPresents();
    }
    InternalClose();
    return std::move(m_Steps);
}

void StressScenario::InternalOpen()
{
    if (SUCCEEDED(InternalNote("OpenAdapter", m_Driver.m_Dll->OpenAdapter(m_Driver.m_Kernel))))
        InternalNote("pfnCreateDevice", m_Driver.m_Dll->CreateDevice(m_Driver.m_Kernel));
}

void StressScenario::InternalResources()
{
    constexpr D3DDDIFORMAT kColour = D3DDDIFMT_A8R8G8B8;
    m_hSystemTexture = InternalCreate("system texture", kFlagTexture, kSystem, kColour, kWidth, kHeight, 3);
    m_hTexture = InternalCreate("texture", kFlagTexture, kVideo, kColour, kWidth, kHeight, 3);
    InternalCreate("compressed texture", kFlagTexture, kVideo, D3DDDIFMT_DXT5, kWidth, kHeight, 3);
    m_hSystemCube = InternalCreate("system cube", kFlagTexture | kFlagCubeMap, kSystem, kColour, 8, 8, 2);
    m_hCube = InternalCreate("cube", kFlagTexture | kFlagCubeMap, kVideo, kColour, 8, 8, 2);
    m_hMemory = InternalCreate("system surface", 0, kSystem, kColour, kWidth, kHeight);
    m_hTarget = InternalCreate("target", kFlagRenderTarget, kVideo, kColour, kWidth, kHeight);
    InternalCreate("target texture", kFlagRenderTarget | kFlagTexture, kVideo, kColour, kWidth, kHeight);
    m_hPrimary =
        InternalCreate("primary", kFlagRenderTarget | kFlagPrimary, kVideo, D3DDDIFMT_X8R8G8B8, kWidth, kHeight, 1, 2);
    m_hDepth = InternalCreate("depth", kFlagZBuffer, kVideo, D3DDDIFMT_D24S8, kWidth, kHeight);
    m_hVertices = InternalCreate("vertices", kFlagVertexBuffer, kVideo, D3DDDIFMT_VERTEXDATA, 256, 1);
    m_hSystemVertices = InternalCreate("system vertices", kFlagVertexBuffer, kSystem, D3DDDIFMT_VERTEXDATA, 256, 1);
    m_hIndices = InternalCreate("indices", kFlagIndexBuffer, kVideo, D3DDDIFMT_INDEX16, 64, 1);
    m_hVideoTarget = InternalCreate(
        "video target", kFlagRenderTarget | kFlagVideoProcessRenderTarget, kVideo, D3DDDIFMT_X8R8G8B8, kWidth, kHeight);
}

void StressScenario::InternalOpenShared()
{
    m_Driver.m_Fake.SetSharedHandle(reinterpret_cast<HANDLE>(0x1234));
    const HANDLE hShared = InternalCreate("shared texture", kFlagRenderTarget | kFlagTexture | kFlagSharedResource,
        kVideo, D3DDDIFMT_A8R8G8B8, kWidth, kHeight);
    m_Driver.m_Fake.SetSharedHandle(nullptr);
    if (!hShared)
        return;
    // Of whichever was allocated last, should the shared texture have none.
    const D3DKMT_HANDLE hAllocation = m_Driver.m_Kernel.LastAllocation();
    std::vector<BYTE> record = m_Driver.m_Kernel.FindAllocation(hAllocation).m_PrivateData;
    D3DDDI_OPENALLOCATIONINFO info{};
    info.hAllocation = hAllocation;
    info.pPrivateDriverData = record.data();
    info.PrivateDriverDataSize = static_cast<UINT>(record.size());
    D3DDDIARG_OPENRESOURCE open{};
    open.NumAllocations = 1;
    open.pOpenAllocationInfo = &info;
    open.hKMResource = info.hAllocation;
    open.hResource = reinterpret_cast<HANDLE>(0x77);
    if (SUCCEEDED(InternalNote("pfnOpenResource", m_Driver.Functions().pfnOpenResource(m_Driver.Device(), &open))) &&
        open.hResource)
        m_Resources.push_back(open.hResource);
}

void StressScenario::InternalState()
{
    const D3DDDI_DEVICEFUNCS& f = m_Driver.Functions();
    const HANDLE h = m_Driver.Device();
    const D3DDDIARG_RENDERSTATE state{D3DDDIRS_ZENABLE, 1};
    InternalNote("pfnSetRenderState", f.pfnSetRenderState(h, &state));
    const D3DDDIARG_TEXTURESTAGESTATE stage{0, D3DDDITSS_COLOROP, 2};
    InternalNote("pfnSetTextureStageState", f.pfnSetTextureStageState(h, &stage));
    const D3DDDIARG_VIEWPORTINFO viewport{0, 0, kWidth, kHeight};
    InternalNote("pfnSetViewport", f.pfnSetViewport(h, &viewport));
    const D3DDDIARG_ZRANGE range{0, 1};
    InternalNote("pfnSetZRange", f.pfnSetZRange(h, &range));
    InternalNote("pfnSetScissorRect", f.pfnSetScissorRect(h, &kAll));
    const D3DDDIARG_SETCLIPPLANE plane{0, {1, 2, 3, 4}};
    InternalNote("pfnSetClipPlane", f.pfnSetClipPlane(h, &plane));
    if (m_hTarget)
    {
        const D3DDDIARG_SETRENDERTARGET target{0, m_hTarget, 0};
        InternalNote("pfnSetRenderTarget", f.pfnSetRenderTarget(h, &target));
    }
    if (m_hDepth)
    {
        const D3DDDIARG_SETDEPTHSTENCIL depth{m_hDepth};
        InternalNote("pfnSetDepthStencil", f.pfnSetDepthStencil(h, &depth));
    }
    if (m_hTexture)
        InternalNote("pfnSetTexture", f.pfnSetTexture(h, 0, m_hTexture));
    const D3DDDIARG_CLEAR clear{1, 0xFF102030, 1.0F, 0};
    InternalNote("pfnClear", f.pfnClear(h, &clear, 1, &kAll));
}

void StressScenario::InternalShaders()
{
    const D3DDDI_DEVICEFUNCS& f = m_Driver.Functions();
    const HANDLE h = m_Driver.Device();
    D3DDDIARG_CREATEVERTEXSHADERFUNC vertex{sizeof(kCode), nullptr};
    if (SUCCEEDED(InternalNote("pfnCreateVertexShaderFunc", f.pfnCreateVertexShaderFunc(h, &vertex, kCode))))
        InternalNote("pfnSetVertexShaderFunc", f.pfnSetVertexShaderFunc(h, m_hVertexShader = vertex.ShaderHandle));
    D3DDDIARG_CREATEPIXELSHADER pixel{sizeof(kCode), nullptr};
    if (SUCCEEDED(InternalNote("pfnCreatePixelShader", f.pfnCreatePixelShader(h, &pixel, kCode))))
        InternalNote("pfnSetPixelShader", f.pfnSetPixelShader(h, m_hPixelShader = pixel.ShaderHandle));
    const D3DDDIVERTEXELEMENT element{0, 0, 2, 0, 0, 0};
    D3DDDIARG_CREATEVERTEXSHADERDECL declaration{1, nullptr};
    if (SUCCEEDED(InternalNote("pfnCreateVertexShaderDecl", f.pfnCreateVertexShaderDecl(h, &declaration, &element))))
        InternalNote("pfnSetVertexShaderDecl", f.pfnSetVertexShaderDecl(h, m_hDeclaration = declaration.ShaderHandle));
    const FLOAT floats[4]{};
    const INT integers[4]{};
    const BOOL booleans[1]{};
    const D3DDDIARG_SETVERTEXSHADERCONST vertexConst{0, 1};
    InternalNote("pfnSetVertexShaderConst", f.pfnSetVertexShaderConst(h, &vertexConst, floats));
    const D3DDDIARG_SETPIXELSHADERCONST pixelConst{0, 1};
    InternalNote("pfnSetPixelShaderConst", f.pfnSetPixelShaderConst(h, &pixelConst, floats));
    const D3DDDIARG_SETPIXELSHADERCONSTI constI{0, 1};
    InternalNote("pfnSetPixelShaderConstI", f.pfnSetPixelShaderConstI(h, &constI, integers));
    const D3DDDIARG_SETPIXELSHADERCONSTB constB{0, 1};
    InternalNote("pfnSetPixelShaderConstB", f.pfnSetPixelShaderConstB(h, &constB, booleans));
}

void StressScenario::InternalDraws()
{
    const D3DDDI_DEVICEFUNCS& f = m_Driver.Functions();
    const HANDLE h = m_Driver.Device();
    const D3DDDIARG_DRAWPRIMITIVE draw{D3DPT_TRIANGLELIST, 0, 1};
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE indexed{D3DPT_TRIANGLELIST, 0, 0, 3, 0, 1};
    for (HANDLE hVertices : {m_hVertices, m_hSystemVertices})
    {
        if (!hVertices)
            continue;
        const D3DDDIARG_SETSTREAMSOURCE stream{0, hVertices, 0, 16};
        InternalNote("pfnSetStreamSource", f.pfnSetStreamSource(h, &stream));
        InternalNote("pfnDrawPrimitive", f.pfnDrawPrimitive(h, &draw, nullptr));
        if (!m_hIndices)
            continue;
        const D3DDDIARG_SETINDICES indices{m_hIndices, 2};
        InternalNote("pfnSetIndices", f.pfnSetIndices(h, &indices));
        InternalNote("pfnDrawIndexedPrimitive", f.pfnDrawIndexedPrimitive(h, &indexed));
    }
    static const BYTE user[64]{};
    static const USHORT userIndices[3]{0, 1, 2};
    const D3DDDIARG_SETSTREAMSOURCEUM userStream{0, 16};
    InternalNote("pfnSetStreamSourceUm", f.pfnSetStreamSourceUm(h, &userStream, user));
    const D3DDDIARG_DRAWPRIMITIVE2 draw2{D3DPT_TRIANGLELIST, 0, 1};
    InternalNote("pfnDrawPrimitive2", f.pfnDrawPrimitive2(h, &draw2));
    const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 indexed2{D3DPT_TRIANGLELIST, 0, 0, 3, 0, 1};
    InternalNote("pfnDrawIndexedPrimitive2", f.pfnDrawIndexedPrimitive2(h, &indexed2, 2, userIndices, nullptr));
}

HRESULT StressScenario::InternalBlt(HANDLE hSource, HANDLE hDestination)
{
    D3DDDIARG_BLT blt{};
    blt.hSrcResource = hSource;
    blt.SrcRect = kAll;
    blt.hDstResource = hDestination;
    blt.DstRect = kAll;
    return m_Driver.Functions().pfnBlt(m_Driver.Device(), &blt);
}

void StressScenario::InternalBlits()
{
    const D3DDDI_DEVICEFUNCS& f = m_Driver.Functions();
    const HANDLE h = m_Driver.Device();
    if (m_hSystemTexture && m_hTexture)
    {
        const D3DDDIARG_TEXBLT all{m_hTexture, m_hSystemTexture, 0, {0, 0}, kAll};
        InternalNote("pfnTexBlt texture", f.pfnTexBlt(h, &all));
        const D3DDDIARG_TEXBLT part{m_hTexture, m_hSystemTexture, 0, {4, 2}, {2, 1, 9, 7}};
        InternalNote("pfnTexBlt part", f.pfnTexBlt(h, &part));
    }
    if (m_hSystemCube && m_hCube)
    {
        const D3DDDIARG_TEXBLT cube{m_hCube, m_hSystemCube, 2, {0, 0}, {0, 0, 8, 8}};
        InternalNote("pfnTexBlt cube", f.pfnTexBlt(h, &cube));
    }
    const std::pair<HANDLE, HANDLE> pairs[] = {{m_hMemory, m_hTarget}, {m_hTarget, m_hMemory}, {m_hTexture, m_hTarget},
        {m_hTarget, m_hPrimary}, {m_hSystemTexture, m_hTarget}, {m_hTarget, m_hSystemTexture}};
    for (const auto& [hSource, hDestination] : pairs)
        if (hSource && hDestination)
            InternalNote("pfnBlt", InternalBlt(hSource, hDestination));
    if (m_hTarget)
    {
        D3DDDIARG_COLORFILL fill{};
        fill.hResource = m_hTarget;
        fill.DstRect = kAll;
        fill.Color = 0xFF203040;
        InternalNote("pfnColorFill", f.pfnColorFill(h, &fill));
    }
    if (m_hSystemVertices && m_hVertices)
    {
        const D3DDDIARG_BUFFERBLT buffer{m_hVertices, m_hSystemVertices, 0, {0, 64}};
        InternalNote("pfnBufBlt", f.pfnBufBlt(h, &buffer));
    }
}

void StressScenario::InternalLocks()
{
    const D3DDDI_DEVICEFUNCS& f = m_Driver.Functions();
    const HANDLE h = m_Driver.Device();
    for (HANDLE hResource : m_Resources)
    {
        D3DDDIARG_LOCK lock{};
        lock.hResource = hResource;
        if (FAILED(InternalNote("pfnLock", f.pfnLock(h, &lock))))
            continue;
        D3DDDIARG_UNLOCK unlock{};
        unlock.hResource = hResource;
        InternalNote("pfnUnlock", f.pfnUnlock(h, &unlock));
    }
}

void StressScenario::InternalVideo()
{
    const D3DDDI_DEVICEFUNCS& f = m_Driver.Functions();
    const HANDLE h = m_Driver.Device();
    D3DDDIARG_CREATEVIDEOPROCESSDEVICE create{};
    create.pVideoProcGuid = &kProgressive;
    create.RenderTargetFormat = D3DDDIFMT_X8R8G8B8;
    create.VideoDesc.SampleWidth = kWidth;
    create.VideoDesc.SampleHeight = kHeight;
    if (FAILED(InternalNote("pfnCreateVideoProcessDevice", f.pfnCreateVideoProcessDevice(h, &create))))
        return;
    const HANDLE hVideo = create.hVideoProcess;
    InternalNote("pfnVideoProcessBeginFrame", f.pfnVideoProcessBeginFrame(h, hVideo));
    if (m_hVideoTarget && m_hTarget)
    {
        const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET target{hVideo, m_hVideoTarget, 0};
        InternalNote("pfnSetVideoProcessRenderTarget", f.pfnSetVideoProcessRenderTarget(h, &target));
        DXVADDI_VIDEOSAMPLE sample{};
        sample.SrcResource = m_hTarget;
        sample.SrcRect = sample.DstRect = kAll;
        D3DDDIARG_VIDEOPROCESSBLT blt{};
        blt.hVideoProcess = hVideo;
        blt.TargetRect = kAll;
        blt.pSrcSurfaces = &sample;
        blt.NumSrcSurfaces = 1;
        InternalNote("pfnVideoProcessBlt", f.pfnVideoProcessBlt(h, &blt));
    }
    D3DDDIARG_VIDEOPROCESSENDFRAME end{hVideo, nullptr};
    InternalNote("pfnVideoProcessEndFrame", f.pfnVideoProcessEndFrame(h, &end));
    InternalNote("pfnDestroyVideoProcessDevice", f.pfnDestroyVideoProcessDevice(h, hVideo));
}

void StressScenario::InternalPresents()
{
    const D3DDDI_DEVICEFUNCS& f = m_Driver.Functions();
    const HANDLE h = m_Driver.Device();
    if (m_hPrimary)
    {
        const D3DDDIARG_SETDISPLAYMODE mode{m_hPrimary, 0};
        InternalNote("pfnSetDisplayMode", f.pfnSetDisplayMode(h, &mode));
        for (int i = 0; i < 3; ++i)
        {
            D3DDDIARG_PRESENT present{};
            present.hSrcResource = m_hPrimary;
            present.Flags.Flip = 1;
            InternalNote("pfnPresent flip", f.pfnPresent(h, &present));
            InternalAwaitFrame();
        }
    }
    if (m_hTarget)
        InternalNote("pfnPresent blit", m_Driver.PresentBlit(m_hTarget));
    InternalNote("pfnFlush", f.pfnFlush(h));
}

// Each frame is its own, so that lives make the same calls; a disturbed one may have lost its frames.
void StressScenario::InternalAwaitFrame()
{
    const size_t frames = ++m_Frames;
    for (int i = 0; i < kPatience && m_Driver.m_Client.Calls("Update") < frames; ++i)
        Sleep(1);
}

void StressScenario::InternalClose()
{
    if (HANDLE h = m_Driver.Device())
    {
        const D3DDDI_DEVICEFUNCS& f = m_Driver.Functions();
        if (m_hVertexShader)
            InternalNote("pfnDeleteVertexShaderFunc", f.pfnDeleteVertexShaderFunc(h, m_hVertexShader));
        if (m_hPixelShader)
            InternalNote("pfnDeletePixelShader", f.pfnDeletePixelShader(h, m_hPixelShader));
        if (m_hDeclaration)
            InternalNote("pfnDeleteVertexShaderDecl", f.pfnDeleteVertexShaderDecl(h, m_hDeclaration));
        m_Driver.m_Fake.ClearScripts();
        m_Driver.m_Fake.SetRenderTarget(0, nullptr);
        for (HANDLE hResource : m_Resources)
            InternalNote("pfnDestroyResource", f.pfnDestroyResource(h, hResource));
        InternalNote("pfnDestroyDevice", f.pfnDestroyDevice(h));
    }
    if (m_Driver.m_Dll->m_hAdapter)
        InternalNote("pfnCloseAdapter", m_Driver.m_Dll->CloseAdapter());
}

std::vector<StressStep> StressUndisturbedLife(StressRun& run, StressDriver& driver)
{
    std::vector<StressStep> steps = StressScenario(driver).Run();
    for (const StressStep& step : steps)
        run.Expect(StressIsOrdinary(step), "undisturbed, " + step.m_Entry + " answers " + StressHex(step.m_hResult));
    run.Expect(driver.m_Fake.Calls("DrawPrimitive") > 0, "undisturbed, nothing is drawn");
    run.Expect(driver.Leftovers() == 0, "undisturbed, something lives on");
    return steps;
}

}  // namespace tesslo::test
