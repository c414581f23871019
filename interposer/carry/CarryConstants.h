// The shader constants that the driver has, of one kind of shader.
#pragma once

#include <d3d9.h>

#include <array>

class CarryDevice;

class CarryConstants
{
public:
    enum class Shader
    {
        Vertex,
        Pixel,
    };
    /// Borrows the device.
    CarryConstants(CarryDevice& device, Shader shader) : m_Device(device), m_Shader(shader) {}

    /// Carries all registers that differ from what the driver has.
    void Sync();
    void Floats(UINT first, const float* pValues, UINT count);
    void Integers(UINT first, const INT* pValues, UINT count);
    void Booleans(UINT first, const BOOL* pValues, UINT count);

private:
    void Send(UINT first, const float* pValues, UINT count);

    // More than any of the platform's has.
    static constexpr UINT kRegisters = 256;

    CarryDevice& m_Device;
    Shader m_Shader;
    std::array<float, kRegisters * 4> m_Sent{};
};
