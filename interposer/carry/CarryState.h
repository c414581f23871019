// The driver's state beside the platform's. What was sent is remembered: only what differs is carried, also when
// the platform's whole state is read back.
#pragma once

#include "host/runtime/HostDevice.h"
#include "interposer/carry/CarryConstants.h"
#include "interposer/carry/CarryObjects.h"
#include "interposer/carry/CarryShaders.h"
#include "util/UMDComPtr.h"

#include <d3d9.h>

#include <map>
#include <optional>

class CarryDevice;

class CarryState
{
public:
    /// Borrows the device.
    explicit CarryState(CarryDevice& device);

    // What the platform has now of one part: after a creation, a reset or a state block.
    void SyncRenderStates();
    void SyncTextures();
    void SyncTransforms();
    void SyncTargets();
    void SyncShaders();

    void RenderState(D3DRENDERSTATETYPE state, DWORD value);
    /// @param state the driver interface's, which has the sampler states among them.
    void StageState(DWORD stage, UINT state, DWORD value);
    void SamplerState(DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD value);
    void Texture(DWORD stage, IDirect3DBaseTexture9* pTexture);
    /// Carries what the platform has there now, as the other operations without values do.
    void Transform(D3DTRANSFORMSTATETYPE type);
    void Viewport();
    void Scissor();
    void ClipPlane(DWORD index);
    void Target(DWORD index, IDirect3DSurface9* pTarget);
    void Depth(IDirect3DSurface9* pDepth);
    void VertexShader(IDirect3DVertexShader9* pShader);
    void PixelShader(IDirect3DPixelShader9* pShader);
    void Declaration();
    /// Once the driver was given a shader it has one for ever.
    bool HasShaders() const { return m_hVertexShader != nullptr || m_hPixelShader != nullptr; }
    CarryConstants& VertexConstants() { return m_VertexConstants; }
    CarryConstants& PixelConstants() { return m_PixelConstants; }

    /// Before each draw: uploads what was written of the bound textures, and counts the limits that show in it.
    void BeforeDraw();
    /// The resource is about to go.
    void Forget(const CarryResource& resource);

private:
    static constexpr size_t kRenderStates = 256;
    static constexpr size_t kStages = 16;
    static constexpr size_t kStageStates = 40;

    void BindTexture(DWORD stage, std::shared_ptr<CarryResource> pResource);

    CarryDevice& m_Device;
    CarryShaders m_Shaders;
    CarryConstants m_VertexConstants;
    CarryConstants m_PixelConstants;
    std::optional<DWORD> m_RenderStates[kRenderStates];
    std::optional<DWORD> m_StageStates[kStages][kStageStates];
    std::shared_ptr<CarryResource> m_Textures[kStages];
    std::map<UINT, D3DMATRIX> m_Transforms;
    HANDLE m_hVertexShader = nullptr;  ///< the driver's; a null one is never carried
    HANDLE m_hPixelShader = nullptr;
    HANDLE m_hDeclaration = nullptr;
    bool m_bStaleVertexShader = false;  ///< the platform has none any more, the driver still has
    bool m_bStalePixelShader = false;
};
