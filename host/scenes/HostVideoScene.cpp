#include "host/scenes/HostVideoScene.h"

#include "host/runtime/HostDevice.h"

namespace
{

constexpr GUID kProgressiveDevice = {0x5A54A0C9, 0xC7EC, 0x4BD9, {0x8E, 0xDE, 0xF3, 0xC7, 0x5D, 0xC4, 0x39, 0x3B}};
constexpr LONG kOne = 1 << 16;  // as a 16.16 fixed-point number
constexpr UINT kSampleProgressive = 2;
constexpr UINT kFramesPerSecond = 30;
constexpr UINT kBlock = 20;  // pixels

/// One colour in the video range: luma 16 to 235, chroma around 128.
struct Yuv
{
    BYTE m_Y;
    BYTE m_U;
    BYTE m_V;
};

// Full bars of ITU-R BT.601, from the left: white, yellow, cyan, green, magenta, red, blue.
constexpr Yuv kBars[] = {
    {235, 128, 128}, {210, 16, 146}, {170, 166, 16}, {145, 54, 34}, {106, 202, 222}, {81, 90, 240}, {41, 240, 110}};
constexpr Yuv kBlack = {16, 128, 128};
constexpr Yuv kWhite = {235, 128, 128};

Yuv ColorAt(UINT x, UINT y, UINT frame)
{
    if (y < HostVideoScene::kHeight * 3 / 4)
        return kBars[x * std::size(kBars) / HostVideoScene::kWidth];
    // In steps of two pixels: a pair shares its chroma.
    const UINT left = frame * 4 % (HostVideoScene::kWidth - kBlock);
    const bool bBlock = x >= left && x < left + kBlock && y >= HostVideoScene::kHeight - 2 * kBlock &&
                        y < HostVideoScene::kHeight - kBlock;
    return bBlock ? kWhite : kBlack;
}

// Pairs of pixels in YUY2: two lumas and the chroma that they share.
void WriteLine(BYTE* pPair, UINT y, UINT frame)
{
    for (UINT x = 0; x < HostVideoScene::kWidth; x += 2, pPair += 4)
    {
        const Yuv left = ColorAt(x, y, frame);
        pPair[0] = left.m_Y;
        pPair[1] = left.m_U;
        pPair[2] = ColorAt(x + 1, y, frame).m_Y;
        pPair[3] = left.m_V;
    }
}

}  // namespace

HostVideoScene::HostVideoScene() = default;

HostVideoScene::~HostVideoScene()
{
    if (m_hVideoProcess != nullptr)
        m_pDevice->Functions().pfnDestroyVideoProcessDevice(m_pDevice->Handle(), m_hVideoProcess);
}

RECT HostVideoScene::Place(const RECT& output)
{
    LONG width = output.right;
    LONG height = width * static_cast<LONG>(kHeight) / static_cast<LONG>(kWidth);
    if (height > output.bottom)
    {
        height = output.bottom;
        width = height * static_cast<LONG>(kWidth) / static_cast<LONG>(kHeight);
    }
    const LONG left = (output.right - width) / 2, top = (output.bottom - height) / 2;
    return {left, top, left + width, top + height};
}

void HostVideoScene::Draw(HostDevice& device, const HostResource& primary, UINT frame)
{
    if (m_hVideoProcess == nullptr)
        Prepare(device);
    WriteFrame(device, frame);
    device.SetDepthStencil(nullptr);
    Blt(device, primary, frame);
}

void HostVideoScene::Prepare(HostDevice& device)
{
    m_pDevice = &device;
    HostResourceDescription description{.m_Width = kWidth, .m_Height = kHeight, .m_Format = D3DFMT_YUY2};
    description.m_Flags.DecodeRenderTarget = 1;
    m_pSample = std::make_unique<HostResource>(device, description);

    D3DDDIARG_CREATEVIDEOPROCESSDEVICE arg{};
    arg.pVideoProcGuid = &kProgressiveDevice;
    arg.VideoDesc.SampleWidth = kWidth;
    arg.VideoDesc.SampleHeight = kHeight;
    arg.VideoDesc.SampleFormat.SampleFormat = kSampleProgressive;
    arg.VideoDesc.Format = static_cast<D3DDDIFORMAT>(D3DFMT_YUY2);
    arg.VideoDesc.InputSampleFreq = {kFramesPerSecond, 1};
    arg.VideoDesc.OutputFrameFreq = {kFramesPerSecond, 1};
    arg.RenderTargetFormat = static_cast<D3DDDIFORMAT>(D3DFMT_X8R8G8B8);
    HostCheck(device.Functions().pfnCreateVideoProcessDevice(device.Handle(), &arg), "pfnCreateVideoProcessDevice");
    m_hVideoProcess = arg.hVideoProcess;
}

void HostVideoScene::WriteFrame(HostDevice& device, UINT frame)
{
    D3DDDIARG_LOCK lock{};
    lock.hResource = m_pSample->Handle();
    device.WithLock(lock, [frame](const D3DDDIARG_LOCK& locked) {
        for (UINT y = 0; y < kHeight; ++y)
            WriteLine(static_cast<BYTE*>(locked.pSurfData) + size_t{y} * locked.Pitch, y, frame);
    });
}

void HostVideoScene::Blt(HostDevice& device, const HostResource& primary, UINT frame)
{
    const D3DDDI_DEVICEFUNCS& functions = device.Functions();
    const REFERENCE_TIME duration = 10'000'000 / kFramesPerSecond;  // 100 ns units

    DXVADDI_VIDEOSAMPLE sample{};
    sample.Start = frame * duration;
    sample.End = sample.Start + duration;
    sample.SampleFormat.SampleFormat = kSampleProgressive;
    sample.SrcResource = m_pSample->Handle();
    sample.SrcRect = m_pSample->Rect();
    sample.DstRect = Place(primary.Rect());
    sample.PlanarAlpha.ll = kOne;

    D3DDDIARG_VIDEOPROCESSBLT blt{};
    blt.TargetFrame = sample.Start;
    blt.hVideoProcess = m_hVideoProcess;
    blt.TargetRect = primary.Rect();
    blt.ConstrictionSize = {primary.Rect().right, primary.Rect().bottom};
    blt.BackgroundColor = {0x8000, 0x8000, 0x1000, 0xFFFF};
    blt.DestFormat.SampleFormat = kSampleProgressive;
    blt.ProcAmpValues.Contrast.ll = kOne;
    blt.ProcAmpValues.Saturation.ll = kOne;
    blt.Alpha.ll = kOne;
    blt.pSrcSurfaces = &sample;
    blt.NumSrcSurfaces = 1;

    const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET target = {m_hVideoProcess, primary.Handle(), 0};
    HostCheck(functions.pfnSetVideoProcessRenderTarget(device.Handle(), &target), "pfnSetVideoProcessRenderTarget");
    HostCheck(functions.pfnVideoProcessBeginFrame(device.Handle(), m_hVideoProcess), "pfnVideoProcessBeginFrame");
    HostCheck(functions.pfnVideoProcessBlt(device.Handle(), &blt), "pfnVideoProcessBlt");
    D3DDDIARG_VIDEOPROCESSENDFRAME end{};
    end.hVideoProcess = m_hVideoProcess;
    HostCheck(functions.pfnVideoProcessEndFrame(device.Handle(), &end), "pfnVideoProcessEndFrame");
}
