#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

namespace
{
struct StateText
{
    UINT State;
    const wchar_t* pText;
};

constexpr StateText kStateTexts[] = {
    {D3DDDITSS_TEXTUREMAP, L"D3DDDITSS_TEXTUREMAP Stage:%d Value:%d\n"},
    {D3DDDITSS_COLOROP, L"D3DDDITSS_COLOROP Stage:%d Value:%d\n"},
    {D3DDDITSS_COLORARG1, L"D3DDDITSS_COLORARG1 Stage:%d Value:%d\n"},
    {D3DDDITSS_COLORARG2, L"D3DDDITSS_COLORARG2 Stage:%d Value:%d\n"},
    {D3DDDITSS_ALPHAOP, L"D3DDDITSS_ALPHAOP Stage:%d Value:%d\n"},
    {D3DDDITSS_ALPHAARG1, L"D3DDDITSS_ALPHAARG1 Stage:%d Value:%d\n"},
    {D3DDDITSS_ALPHAARG2, L"D3DDDITSS_ALPHAARG2 Stage:%d Value:%d\n"},
    {D3DDDITSS_BUMPENVMAT00, L"D3DDDITSS_BUMPENVMAT00 Stage:%d Value:%d\n"},
    {D3DDDITSS_BUMPENVMAT01, L"D3DDDITSS_BUMPENVMAT01 Stage:%d Value:%d\n"},
    {D3DDDITSS_BUMPENVMAT10, L"D3DDDITSS_BUMPENVMAT10 Stage:%d Value:%d\n"},
    {D3DDDITSS_BUMPENVMAT11, L"D3DDDITSS_BUMPENVMAT11 Stage:%d Value:%d\n"},
    {D3DDDITSS_TEXCOORDINDEX, L"D3DDDITSS_TEXCOORDINDEX Stage:%d Value:%d\n"},
    {D3DDDITSS_ADDRESSU, L"D3DDDITSS_ADDRESSU Stage:%d Value:%d\n"},
    {D3DDDITSS_ADDRESSV, L"D3DDDITSS_ADDRESSV Stage:%d Value:%d\n"},
    {D3DDDITSS_BORDERCOLOR, L"D3DDDITSS_BORDERCOLOR Stage:%d Value:%d\n"},
    {D3DDDITSS_MAGFILTER, L"D3DDDITSS_MAGFILTER Stage:%d Value:%d\n"},
    {D3DDDITSS_MINFILTER, L"D3DDDITSS_MINFILTER Stage:%d Value:%d\n"},
    {D3DDDITSS_MIPFILTER, L"D3DDDITSS_MIPFILTER Stage:%d Value:%d\n"},
    {D3DDDITSS_MIPMAPLODBIAS, L"D3DDDITSS_MIPMAPLODBIAS Stage:%d Value:%d\n"},
    {D3DDDITSS_MAXMIPLEVEL, L"D3DDDITSS_MAXMIPLEVEL Stage:%d Value:%d\n"},
    {D3DDDITSS_MAXANISOTROPY, L"D3DDDITSS_MAXANISOTROPY Stage:%d Value:%d\n"},
    {D3DDDITSS_BUMPENVLSCALE, L"D3DDDITSS_BUMPENVLSCALE Stage:%d Value:%d\n"},
    {D3DDDITSS_BUMPENVLOFFSET, L"D3DDDITSS_BUMPENVLOFFSET Stage:%d Value:%d\n"},
    {D3DDDITSS_TEXTURETRANSFORMFLAGS, L"D3DDDITSS_TEXTURETRANSFORMFLAGS Stage:%d Value:%d\n"},
    {D3DDDITSS_ADDRESSW, L"D3DDDITSS_ADDRESSW Stage:%d Value:%d\n"},
    {D3DDDITSS_COLORARG0, L"D3DDDITSS_COLORARG0 Stage:%d Value:%d\n"},
    {D3DDDITSS_ALPHAARG0, L"D3DDDITSS_ALPHAARG0 Stage:%d Value:%d\n"},
    {D3DDDITSS_RESULTARG, L"D3DDDITSS_RESULTARG Stage:%d Value:%d\n"},
    {D3DDDITSS_SRGBTEXTURE, L"D3DDDITSS_SRGBTEXTURE Stage:%d Value:%d\n"},
    {D3DDDITSS_ELEMENTINDEX, L"D3DDDITSS_ELEMENTINDEX Stage:%d Value:%d\n"},
    {D3DDDITSS_DMAPOFFSET, L"D3DDDITSS_DMAPOFFSET Stage:%d Value:%d\n"},
    {D3DDDITSS_CONSTANT, L"D3DDDITSS_CONSTANT Stage:%d Value:%d\n"},
    {D3DDDITSS_DISABLETEXTURECOLORKEY, L"D3DDDITSS_DISABLETEXTURECOLORKEY Stage:%d Value:%d\n"},
    {D3DDDITSS_TEXTURECOLORKEYVAL, L"D3DDDITSS_TEXTURECOLORKEYVAL Stage:%d Value:%d\n"},
    {D3DDDITSS_FORCE_DWORD, L"D3DDDITSS_FORCE_DWORD Stage:%d Value:%d\n"},
};
}  // namespace

void UMDUtilDebugTracePrintTextureStageState(UINT level, const D3DDDIARG_TEXTURESTAGESTATE* pTextureStageState)
{
    if (!(g_DebugLevelUMD & level))
        return;
    for (const StateText& text : kStateTexts)
    {
        if (text.State == static_cast<UINT>(pTextureStageState->State))
        {
            UMD_TRACE(level, text.pText, pTextureStageState->Stage, pTextureStageState->Value);
            return;
        }
    }
    UMD_TRACE(level, L"pTextureStageState->State unknown:%d\n", pTextureStageState->State);
}
