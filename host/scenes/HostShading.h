// The shaders of the turning scene, the layout of its vertices, and the constants that go with them: a texture, lit
// by one lamp far away.
#pragma once

#include "host/scenes/HostMatrix.h"

#include <windows.h>

class HostDevice;
class HostResource;

class HostShading
{
public:
    /// Creates the shaders from byte code and the vertex declaration. Throws HostError.
    explicit HostShading(HostDevice& device);
    ~HostShading();
    HostShading(const HostShading&) = delete;
    HostShading& operator=(const HostShading&) = delete;

    /// Makes the device use them, with a depth test and without culling.
    void Bind();
    /// What the next draws show, and where.
    void SetTexture(const HostResource& texture);
    /// Where they show it: first turned, then projected. The colour of the texture is multiplied by the tint.
    void SetPlace(const HostMatrix& projection, const HostMatrix& turn, UINT tint = 0xFFFFFF);
    /// Light from everywhere: textures keep their colours.
    void SetFullLight();
    /// The lamp: behind the viewer, above and to the left.
    void SetLamp();

private:
    void SetVertexConstants(UINT first, const float* pValues, UINT count);

    HostDevice& m_Device;
    HANDLE m_hVertexShader = nullptr;
    HANDLE m_hPixelShader = nullptr;
    HANDLE m_hDeclaration = nullptr;
};
