// The arguments of a create-resource call, with the memory that they point at.
#pragma once

#include "ddi/ddi.h"

#include <vector>

namespace tesslo::test
{

// Resource flag bits.
inline constexpr UINT kFlagRenderTarget = 0x1;
inline constexpr UINT kFlagZBuffer = 0x2;
inline constexpr UINT kFlagDynamic = 0x4;
inline constexpr UINT kFlagWriteOnly = 0x40;
inline constexpr UINT kFlagSharedResource = 0x800;
inline constexpr UINT kFlagPrimary = 0x8000;
inline constexpr UINT kFlagTexture = 0x10000;
inline constexpr UINT kFlagCubeMap = 0x20000;
inline constexpr UINT kFlagVertexBuffer = 0x80000;
inline constexpr UINT kFlagIndexBuffer = 0x100000;
inline constexpr UINT kFlagDecodeRenderTarget = 0x200000;
inline constexpr UINT kFlagVideoProcessRenderTarget = 0x800000;

/// One set of flags for each class that mirrors resources, two for surfaces.
inline constexpr UINT kEveryClass[] = {
    kFlagVertexBuffer, kFlagIndexBuffer, kFlagZBuffer, kFlagCubeMap, kFlagTexture, kFlagRenderTarget, 0};

inline constexpr D3DDDI_POOL kVideo = D3DDDIPOOL_LOCALVIDMEM;
inline constexpr D3DDDI_POOL kSystem = D3DDDIPOOL_SYSTEMMEM;

class CreateRequest
{
public:
    /// @param flags  resource flag bits, kFlag...
    /// @param levels sub-resources, each half as wide and high as the one before; a cube's come six times over.
    CreateRequest(UINT flags, D3DDDI_POOL pool, D3DDDIFORMAT format, UINT width, UINT height, UINT levels = 1);
    CreateRequest(const CreateRequest&) = delete;
    CreateRequest& operator=(const CreateRequest&) = delete;

    /// Gives each sub-resource memory of its own, numbered bytes, with padding behind each row.
    CreateRequest& WithMemory(UINT bytesPerPixel, UINT padding);
    std::vector<BYTE>& Memory(UINT index) { return m_Memory.at(index); }
    /// Takes as many surfaces of the first one's size, whatever the flags would have.
    CreateRequest& WithSurfaces(UINT count);

    D3DDDIARG_CREATERESOURCE m_Arg{};
    std::vector<D3DDDI_SURFACEINFO> m_Surfaces;

private:
    std::vector<std::vector<BYTE>> m_Memory;
};

}  // namespace tesslo::test
