#include "interposer/carry/CarryShaders.h"

#include "interposer/carry/CarryDevice.h"

#include <vector>

namespace
{

template <typename Shader>
std::string CodeOf(Shader* pShader)
{
    UINT bytes = 0;
    HostCheck(pShader->GetFunction(nullptr, &bytes), "GetFunction");
    std::string code(bytes, '\0');
    HostCheck(pShader->GetFunction(code.data(), &bytes), "GetFunction");
    return code;
}

}  // namespace

template <typename Argument, typename Shader>
HANDLE CarryShaders::Find(
    std::map<Code, HANDLE>& shaders, Shader* pShader, void (*create)(HostDevice&, Argument&, const UINT*))
{
    if (pShader == nullptr)
        return nullptr;
    const Code code = CodeOf(pShader);
    HANDLE& hShader = shaders[code];
    if (hShader == nullptr)
    {
        Argument arg = {static_cast<UINT>(code.size()), nullptr};
        m_Device.Do([&](HostDevice& driver) { create(driver, arg, reinterpret_cast<const UINT*>(code.data())); });
        hShader = arg.ShaderHandle;
    }
    return hShader;
}

HANDLE CarryShaders::Vertex(IDirect3DVertexShader9* pShader)
{
    return Find<D3DDDIARG_CREATEVERTEXSHADERFUNC>(
        m_Vertex, pShader, [](HostDevice& driver, auto& arg, const UINT* pCode) {
            HOST_CALL(driver, pfnCreateVertexShaderFunc, &arg, pCode);
        });
}

HANDLE CarryShaders::Pixel(IDirect3DPixelShader9* pShader)
{
    return Find<D3DDDIARG_CREATEPIXELSHADER>(m_Pixel, pShader,
        [](HostDevice& driver, auto& arg, const UINT* pCode) { HOST_CALL(driver, pfnCreatePixelShader, &arg, pCode); });
}

HANDLE CarryShaders::Declaration(IDirect3DVertexDeclaration9* pDeclaration)
{
    if (pDeclaration == nullptr)
        return nullptr;
    UINT count = 0;
    D3DVERTEXELEMENT9 elements[MAXD3DDECLLENGTH + 1];
    HostCheck(pDeclaration->GetDeclaration(elements, &count), "GetDeclaration");
    const auto* pBytes = reinterpret_cast<const char*>(elements);
    HANDLE& hDeclaration = m_Declarations[Code(pBytes, pBytes + count * sizeof(elements[0]))];
    if (hDeclaration == nullptr)
    {
        std::vector<D3DDDIVERTEXELEMENT> copy;
        for (UINT i = 0; i + 1 < count; ++i)
            copy.push_back({elements[i].Stream, elements[i].Offset, elements[i].Type, elements[i].Method,
                elements[i].Usage, elements[i].UsageIndex});
        D3DDDIARG_CREATEVERTEXSHADERDECL arg = {static_cast<UINT>(copy.size()), nullptr};
        m_Device.Do([&](HostDevice& driver) { HOST_CALL(driver, pfnCreateVertexShaderDecl, &arg, copy.data()); });
        hDeclaration = arg.ShaderHandle;
    }
    return hDeclaration;
}
