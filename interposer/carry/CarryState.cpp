#include "interposer/carry/CarryState.h"

#include "interposer/carry/CarryDevice.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"
#include "interposer/run/RunSamplers.h"

#include <cstring>

namespace
{

/// @return the shader if the driver has to be told of it.
HANDLE Bind(HANDLE hShader, HANDLE& hBound, bool& bStale)
{
    bStale = hShader == nullptr && hBound != nullptr;
    if (hShader == nullptr || hShader == hBound)
        return nullptr;
    return hBound = hShader;
}

}  // namespace

CarryState::CarryState(CarryDevice& device)
    : m_Device(device), m_Shaders(device), m_VertexConstants(device, CarryConstants::Shader::Vertex),
      m_PixelConstants(device, CarryConstants::Shader::Pixel)
{
}

void CarryState::RenderState(D3DRENDERSTATETYPE state, DWORD value)
{
    if (state >= kRenderStates || m_RenderStates[state] == value)
        return;
    m_RenderStates[state] = value;
    const D3DDDIARG_RENDERSTATE arg = {static_cast<D3DDDIRENDERSTATETYPE>(state), static_cast<UINT>(value)};
    m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnSetRenderState, &arg); });
}

void CarryState::SamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD value)
{
    if (state != 0 && state < std::size(kRunSamplers) && sampler < kStages)
        StageState(sampler, kRunSamplers[state], value);
}

void CarryState::StageState(DWORD stage, UINT state, DWORD value)
{
    if (stage >= kStages || state >= kStageStates || m_StageStates[stage][state] == value)
        return;
    m_StageStates[stage][state] = value;
    const D3DDDIARG_TEXTURESTAGESTATE arg = {
        static_cast<UINT>(stage), static_cast<D3DDDITEXTURESTAGESTATETYPE>(state), static_cast<UINT>(value)};
    m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnSetTextureStageState, &arg); });
}

void CarryState::Texture(DWORD stage, IDirect3DBaseTexture9* pTexture)
{
    if (stage >= kStages)
    {
        if (pTexture != nullptr)
            RunLimit(kLimitVertexTextures);
        return;
    }
    CarryPlace place = pTexture != nullptr ? CarryFind(pTexture) : CarryPlace{};
    BindTexture(stage, place && place->m_pVideo ? place.m_pResource : nullptr);
}

void CarryState::BindTexture(DWORD stage, std::shared_ptr<CarryResource> pResource)
{
    if (m_Textures[stage] == pResource)
        return;
    m_Textures[stage] = std::move(pResource);
    HANDLE hTexture = m_Textures[stage] ? m_Textures[stage]->m_pVideo->Handle() : nullptr;
    m_Device.Post([stage, hTexture](
                      HostDevice& driver) { HOST_CALL(driver, pfnSetTexture, static_cast<UINT>(stage), hTexture); });
}

void CarryState::Transform(D3DTRANSFORMSTATETYPE type)
{
    D3DMATRIX matrix;
    if (FAILED(m_Device.Platform()->GetTransform(type, &matrix)))
        return;
    const auto [sent, bNew] = m_Transforms.try_emplace(type, matrix);
    if (!bNew && std::memcmp(&sent->second, &matrix, sizeof(matrix)) == 0)
        return;
    sent->second = matrix;
    const D3DDDIARG_SETTRANSFORM arg = {type, matrix};
    m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnSetTransform, &arg); });
}

void CarryState::Viewport()
{
    D3DVIEWPORT9 viewport;
    HostCheck(m_Device.Platform()->GetViewport(&viewport), "GetViewport");
    const D3DDDIARG_VIEWPORTINFO arg = {viewport.X, viewport.Y, viewport.Width, viewport.Height};
    const D3DDDIARG_ZRANGE range = {viewport.MinZ, viewport.MaxZ};
    m_Device.Post([arg, range](HostDevice& driver) {
        HOST_CALL(driver, pfnSetViewport, &arg);
        HOST_CALL(driver, pfnSetZRange, &range);
    });
    if (viewport.MinZ != 0 || viewport.MaxZ != 1)
        RunLimit(kLimitDepthRange);
}

void CarryState::Scissor()
{
    RECT rect;
    HostCheck(m_Device.Platform()->GetScissorRect(&rect), "GetScissorRect");
    m_Device.Post([rect](HostDevice& driver) { HOST_CALL(driver, pfnSetScissorRect, &rect); });
}

void CarryState::ClipPlane(DWORD index)
{
    float plane[4];
    if (FAILED(m_Device.Platform()->GetClipPlane(index, plane)))
        return;
    const D3DDDIARG_SETCLIPPLANE arg = {static_cast<UINT>(index), {plane[0], plane[1], plane[2], plane[3]}};
    m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnSetClipPlane, &arg); });
}

void CarryState::Target(DWORD index, IDirect3DSurface9* pTarget)
{
    if (index > 0)
    {
        // The driver could never be told that there is none any more.
        if (pTarget != nullptr)
            RunLimit(kLimitSeveralTargets);
        return;
    }
    const CarryPlace place = CarryFind(pTarget);
    if (!place || place->m_pVideo == nullptr)
        throw HostError("a target that the driver does not have");
    if (place.m_Level > 0)
        RunLimit(kLimitLevelTarget);
    D3DDDIARG_SETRENDERTARGET arg{};
    arg.hRenderTarget = place->m_pVideo->Handle();
    m_Device.Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnSetRenderTarget, &arg); });
    // A new target brings both with it, on either side.
    Viewport();
    Scissor();
}

void CarryState::Depth(IDirect3DSurface9* pDepth)
{
    const CarryPlace place = pDepth != nullptr ? CarryFind(pDepth) : CarryPlace{};
    m_Device.Post(
        [pVideo = place ? place->m_pVideo : nullptr](HostDevice& driver) { driver.SetDepthStencil(pVideo.get()); });
}

void CarryState::VertexShader(IDirect3DVertexShader9* pShader)
{
    if (const HANDLE hShader = Bind(m_Shaders.Vertex(pShader), m_hVertexShader, m_bStaleVertexShader))
        m_Device.Post([hShader](HostDevice& driver) { HOST_CALL(driver, pfnSetVertexShaderFunc, hShader); });
}

void CarryState::PixelShader(IDirect3DPixelShader9* pShader)
{
    if (const HANDLE hShader = Bind(m_Shaders.Pixel(pShader), m_hPixelShader, m_bStalePixelShader))
        m_Device.Post([hShader](HostDevice& driver) { HOST_CALL(driver, pfnSetPixelShader, hShader); });
}

// The platform answers the declaration of a vertex format, too.
void CarryState::Declaration()
{
    UMDComPtr<IDirect3DVertexDeclaration9> pDeclaration;
    HostCheck(m_Device.Platform()->GetVertexDeclaration(pDeclaration.Put()), "GetVertexDeclaration");
    HANDLE hDeclaration = m_Shaders.Declaration(pDeclaration.Get());
    if (hDeclaration == nullptr || hDeclaration == m_hDeclaration)
        return;
    m_hDeclaration = hDeclaration;
    m_Device.Post([hDeclaration](HostDevice& driver) { HOST_CALL(driver, pfnSetVertexShaderDecl, hDeclaration); });
}

void CarryState::BeforeDraw()
{
    for (const std::shared_ptr<CarryResource>& pTexture : m_Textures)
        if (pTexture)
            pTexture->Upload();
    if (m_bStaleVertexShader)
        RunLimit(kLimitNullVertexShader);
    if (m_bStalePixelShader)
        RunLimit(kLimitNullPixelShader);
}

void CarryState::Forget(const CarryResource& resource)
{
    for (DWORD stage = 0; stage < kStages; ++stage)
        if (m_Textures[stage].get() == &resource)
            BindTexture(stage, nullptr);
}
