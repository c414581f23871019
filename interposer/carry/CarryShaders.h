// The driver's shaders and declarations, by what they are made of: the platform's objects have no place to hang a
// record on. They live as long as the device.
#pragma once

#include "host/runtime/HostDevice.h"

#include <d3d9.h>

#include <map>
#include <string>

class CarryDevice;

class CarryShaders
{
public:
    /// Borrows the device.
    explicit CarryShaders(CarryDevice& device) : m_Device(device) {}

    // The driver's handle; made at the first call. Null for null. Throw HostError.
    HANDLE Vertex(IDirect3DVertexShader9* pShader);
    HANDLE Pixel(IDirect3DPixelShader9* pShader);
    HANDLE Declaration(IDirect3DVertexDeclaration9* pDeclaration);

private:
    using Code = std::string;  // bytes

    /// @param create fills the handle in.
    template <typename Argument, typename Shader>
    HANDLE Find(std::map<Code, HANDLE>& shaders, Shader* pShader, void (*create)(HostDevice&, Argument&, const UINT*));

    CarryDevice& m_Device;
    std::map<Code, HANDLE> m_Vertex;
    std::map<Code, HANDLE> m_Pixel;
    std::map<Code, HANDLE> m_Declarations;
};
