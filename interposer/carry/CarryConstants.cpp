#include "interposer/carry/CarryConstants.h"

#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"

#include <algorithm>
#include <cstring>

CarryConstants::CarryConstants(IDirect3DDevice9* pPlatform, HostDevice& driver, Shader shader, UINT registers)
    : m_pPlatform(pPlatform), m_Driver(driver), m_Shader(shader), m_Sent(size_t{registers} * 4)
{
}

void CarryConstants::Sync()
{
    const UINT registers = static_cast<UINT>(m_Sent.size() / 4);
    std::vector<float> values(m_Sent.size());
    const HRESULT hr = m_Shader == Shader::Vertex ? m_pPlatform->GetVertexShaderConstantF(0, values.data(), registers)
                                                  : m_pPlatform->GetPixelShaderConstantF(0, values.data(), registers);
    if (SUCCEEDED(hr))
        Floats(0, values.data(), registers);
    if (m_Shader == Shader::Vertex)
        return;
    INT integers[16 * 4];
    BOOL booleans[16];
    if (SUCCEEDED(m_pPlatform->GetPixelShaderConstantI(0, integers, 16)))
        Integers(0, integers, 16);
    if (SUCCEEDED(m_pPlatform->GetPixelShaderConstantB(0, booleans, 16)))
        Booleans(0, booleans, 16);
}

// One run from the first register that differs to the last one.
void CarryConstants::Floats(UINT first, const float* pValues, UINT count)
{
    const auto isSent = [&](UINT i) {
        return std::memcmp(&m_Sent[size_t{first + i} * 4], pValues + size_t{i} * 4, 4 * sizeof(float)) == 0;
    };
    count = std::min(count, static_cast<UINT>(m_Sent.size() / 4) - first);
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
    {
        const D3DDDIARG_SETVERTEXSHADERCONST arg = {first, count};
        HOST_CALL(m_Driver, pfnSetVertexShaderConst, &arg, pValues);
        return;
    }
    const D3DDDIARG_SETPIXELSHADERCONST arg = {first, count};
    HOST_CALL(m_Driver, pfnSetPixelShaderConst, &arg, pValues);
}

void CarryConstants::Integers(UINT first, const INT* pValues, UINT count)
{
    if (m_Shader == Shader::Vertex)
    {
        RunLimit(kLimitVertexConstants);
        return;
    }
    const D3DDDIARG_SETPIXELSHADERCONSTI arg = {first, count};
    HOST_CALL(m_Driver, pfnSetPixelShaderConstI, &arg, pValues);
}

void CarryConstants::Booleans(UINT first, const BOOL* pValues, UINT count)
{
    if (m_Shader == Shader::Vertex)
    {
        RunLimit(kLimitVertexConstants);
        return;
    }
    const D3DDDIARG_SETPIXELSHADERCONSTB arg = {first, count};
    HOST_CALL(m_Driver, pfnSetPixelShaderConstB, &arg, pValues);
}
