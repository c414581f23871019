#include "interposer/judge/JudgeFrame.h"

#include "host/runtime/HostError.h"
#include "interposer/carry/CarryResource.h"
#include "interposer/judge/JudgePictures.h"
#include "interposer/run/RunLedger.h"
#include "util/UMDComPtr.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

HostImage JudgeReadPlatform(IDirect3DDevice9* pDevice, IDirect3DSurface9* pTarget, const D3DSURFACE_DESC& desc)
{
    UMDComPtr<IDirect3DSurface9> pCopy, pPlain;
    D3DFORMAT format = desc.Format;
    if (desc.MultiSampleType != D3DMULTISAMPLE_NONE || (format != D3DFMT_X8R8G8B8 && format != D3DFMT_A8R8G8B8))
    {
        format = D3DFMT_X8R8G8B8;
        HostCheck(pDevice->CreateRenderTarget(
                      desc.Width, desc.Height, format, D3DMULTISAMPLE_NONE, 0, FALSE, pPlain.Put(), nullptr),
            "CreateRenderTarget");
        HostCheck(pDevice->StretchRect(pTarget, nullptr, pPlain.Get(), nullptr, D3DTEXF_NONE), "StretchRect");
        pTarget = pPlain.Get();
    }
    HostCheck(
        pDevice->CreateOffscreenPlainSurface(desc.Width, desc.Height, format, D3DPOOL_SYSTEMMEM, pCopy.Put(), nullptr),
        "CreateOffscreenPlainSurface");
    HostCheck(pDevice->GetRenderTargetData(pTarget, pCopy.Get()), "GetRenderTargetData");
    D3DLOCKED_RECT locked;
    HostCheck(pCopy->LockRect(&locked, nullptr, D3DLOCK_READONLY), "LockRect");
    HostImage image(desc.Width, desc.Height);
    for (UINT y = 0; y < desc.Height; ++y)
    {
        const auto* pRow =
            reinterpret_cast<const UINT*>(static_cast<const BYTE*>(locked.pBits) + size_t{y} * locked.Pitch);
        std::transform(pRow, pRow + desc.Width, &image.m_Pixels[size_t{y} * desc.Width],
            [](UINT pixel) { return pixel & 0xFFFFFF; });
    }
    pCopy->UnlockRect();
    return image;
}

JudgeDifference JudgeCompare(const HostImage& fromDriver, const HostImage& expected)
{
    JudgeDifference difference;
    if (fromDriver.m_Width != expected.m_Width || fromDriver.m_Height != expected.m_Height)
        return {expected.m_Pixels.size(), 255};
    for (size_t i = 0; i < expected.m_Pixels.size(); ++i)
    {
        const UINT a = fromDriver.m_Pixels[i], b = expected.m_Pixels[i];
        if (a == b)
            continue;
        ++difference.m_Pixels;
        for (int shift : {0, 8, 16})
        {
            const int channel = std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF));
            difference.m_Channel = std::max(difference.m_Channel, static_cast<UINT>(channel));
        }
    }
    return difference;
}

void JudgeFrame(const HostImage& fromDriver, const HostImage& expected)
{
    RunRecord& run = RunOf();
    const JudgeDifference difference = JudgeCompare(fromDriver, expected);
    if (difference.m_Pixels == 0)
    {
        ++run.m_Equal;
        return;
    }
    JudgeKeepPictures(fromDriver, expected);
    if (++run.m_Different == 1)
        run.m_FirstDifferent = run.m_Frames + 1;
    const auto pixels = static_cast<LONG64>(difference.m_Pixels);
    if (pixels > run.m_WorstPixels)
    {
        run.m_WorstPixels = pixels;
        run.m_WorstOf = static_cast<LONG64>(expected.m_Pixels.size());
    }
    run.m_GreatestDifference = std::max<LONG64>(run.m_GreatestDifference, difference.m_Channel);
}

void JudgeRead(D3DFORMAT format, const RECT& rect, JudgePixels fromDriver, JudgePixels expected)
{
    const UINT bytes = CarryMemoryOf(format, 1, 1).m_Pitch;
    // What stands where there is no alpha is nobody's promise.
    const size_t compared = format == D3DFMT_X8R8G8B8 || format == D3DFMT_X8B8G8R8 ? 3 : bytes;
    ++RunOf().m_Reads;
    for (LONG y = rect.top; y < rect.bottom; ++y)
        for (LONG x = rect.left; x < rect.right; ++x)
        {
            const auto at = [&](JudgePixels pixels) {
                return static_cast<const BYTE*>(pixels.m_pFirst) + size_t{pixels.m_Pitch} * y + size_t{bytes} * x;
            };
            if (std::memcmp(at(fromDriver), at(expected), compared) == 0)
                continue;
            ++RunOf().m_DifferentReads;
            return;
        }
}
