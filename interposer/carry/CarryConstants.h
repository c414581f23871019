// The shader constants that the driver has, of one kind of shader.
#pragma once

#include "host/runtime/HostDevice.h"

#include <d3d9.h>

#include <span>
#include <vector>

class CarryConstants
{
public:
    enum class Shader
    {
        Vertex,
        Pixel,
    };
    /// @param registers of floating-point constants that the platform has.
    CarryConstants(IDirect3DDevice9* pPlatform, HostDevice& driver, Shader shader, UINT registers);

    /// Carries all registers that differ from what the driver has.
    void Sync();
    void Floats(UINT first, const float* pValues, UINT count);
    void Integers(UINT first, const INT* pValues, UINT count);
    void Booleans(UINT first, const BOOL* pValues, UINT count);

private:
    void Send(UINT first, const float* pValues, UINT count);

    IDirect3DDevice9* m_pPlatform;
    HostDevice& m_Driver;
    Shader m_Shader;
    std::vector<float> m_Sent;  ///< four a register
};
