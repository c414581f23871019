#include "interposer/carry/CarryConstants.h"

#include "interposer/carry/CarryDevice.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"

#include <algorithm>
#include <cstring>

void CarryConstants::Sync()
{
    float values[kRegisters * 4];
    IDirect3DDevice9* pPlatform = m_Device.Platform();
    // A device has as many registers as its shaders may name: fewer for pixels, and for old versions.
    for (UINT count : {kRegisters, 224u, 96u, 32u, 8u})
    {
        const HRESULT hr = m_Shader == Shader::Vertex ? pPlatform->GetVertexShaderConstantF(0, values, count)
                                                      : pPlatform->GetPixelShaderConstantF(0, values, count);
        if (FAILED(hr))
            continue;
        Floats(0, values, count);
        break;
    }
    if (m_Shader == Shader::Vertex)
        return;
    INT integers[16 * 4];
    BOOL booleans[16];
    if (SUCCEEDED(m_Device.Platform()->GetPixelShaderConstantI(0, integers, 16)))
        Integers(0, integers, 16);
    if (SUCCEEDED(m_Device.Platform()->GetPixelShaderConstantB(0, booleans, 16)))
        Booleans(0, booleans, 16);
}

// One run from the first register that differs to the last one.
void CarryConstants::Floats(UINT first, const float* pValues, UINT count)
{
    const auto isSent = [&](UINT i) {
        return std::memcmp(&m_Sent[size_t{first + i} * 4], pValues + size_t{i} * 4, 4 * sizeof(float)) == 0;
    };
    count = std::min(count, kRegisters - std::min(first, kRegisters));
    UINT begin = 0;
    while (begin < count && isSent(begin))
        ++begin;
    while (count > begin && isSent(count - 1))
        --count;
    if (begin < count)
        Send(first + begin, pValues + size_t{begin} * 4, count - begin);
}

void CarryConstants::Send(UINT first, const float* pValues, UINT count)
{
    const std::vector<float> values(pValues, pValues + size_t{count} * 4);
    std::ranges::copy(values, &m_Sent[size_t{first} * 4]);
    if (m_Shader == Shader::Vertex)
    {
        const D3DDDIARG_SETVERTEXSHADERCONST arg = {first, count};
        m_Device.Post(
            [arg, values](HostDevice& driver) { HOST_CALL(driver, pfnSetVertexShaderConst, &arg, values.data()); });
        return;
    }
    const D3DDDIARG_SETPIXELSHADERCONST arg = {first, count};
    m_Device.Post(
        [arg, values](HostDevice& driver) { HOST_CALL(driver, pfnSetPixelShaderConst, &arg, values.data()); });
}

void CarryConstants::Integers(UINT first, const INT* pValues, UINT count)
{
    if (m_Shader == Shader::Vertex)
        return RunLimit(kLimitVertexConstants);
    const D3DDDIARG_SETPIXELSHADERCONSTI arg = {first, count};
    m_Device.Post([arg, values = std::vector<INT>(pValues, pValues + size_t{count} * 4)](
                      HostDevice& driver) { HOST_CALL(driver, pfnSetPixelShaderConstI, &arg, values.data()); });
}

void CarryConstants::Booleans(UINT first, const BOOL* pValues, UINT count)
{
    if (m_Shader == Shader::Vertex)
        return RunLimit(kLimitVertexConstants);
    const D3DDDIARG_SETPIXELSHADERCONSTB arg = {first, count};
    m_Device.Post([arg, values = std::vector<BOOL>(pValues, pValues + count)](
                      HostDevice& driver) { HOST_CALL(driver, pfnSetPixelShaderConstB, &arg, values.data()); });
}
