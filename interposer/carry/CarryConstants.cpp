#include "interposer/carry/CarryConstants.h"

#include "interposer/carry/CarryDevice.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"

#include <algorithm>
#include <cstring>

/// Posts an entry's call with a copy of its values.
#define POST_CONSTANTS(entry, Arg, each)                                                                      \
    m_Device.Post([arg = Arg{first, count}, values = std::vector(pValues, pValues + size_t{count} * (each))]( \
                      HostDevice& driver) { HOST_CALL(driver, entry, &arg, values.data()); })

void CarryConstants::Sync()
{
    float values[kRegisters * 4];
    IDirect3DDevice9* pPlatform = m_Device.Platform();
    // A device has as many registers as its shaders may name: fewer for pixels, and for old versions.
    for (UINT count : {kRegisters, 224u, 96u, 32u, 8u})
        if (SUCCEEDED(m_Shader == Shader::Vertex ? pPlatform->GetVertexShaderConstantF(0, values, count)
                                                 : pPlatform->GetPixelShaderConstantF(0, values, count)))
        {
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
    std::copy_n(pValues, size_t{count} * 4, &m_Sent[size_t{first} * 4]);
    if (m_Shader == Shader::Vertex)
        POST_CONSTANTS(pfnSetVertexShaderConst, D3DDDIARG_SETVERTEXSHADERCONST, 4);
    else
        POST_CONSTANTS(pfnSetPixelShaderConst, D3DDDIARG_SETPIXELSHADERCONST, 4);
}

void CarryConstants::Integers(UINT first, const INT* pValues, UINT count)
{
    if (m_Shader == Shader::Vertex)
        return RunLimit(kLimitVertexConstants);
    POST_CONSTANTS(pfnSetPixelShaderConstI, D3DDDIARG_SETPIXELSHADERCONSTI, 4);
}

void CarryConstants::Booleans(UINT first, const BOOL* pValues, UINT count)
{
    if (m_Shader == Shader::Vertex)
        return RunLimit(kLimitVertexConstants);
    POST_CONSTANTS(pfnSetPixelShaderConstB, D3DDDIARG_SETPIXELSHADERCONSTB, 1);
}
