#include "PlainVideo.h"

#include "host/runtime/HostError.h"
#include "util/UMDComPtr.h"

#include <cstring>
#include <exception>
#include <thread>

namespace tesslo::test
{

namespace
{
constexpr GUID kIidService = {0xFC51A552, 0xD5E7, 0x11D9, {0xAF, 0x55, 0x00, 0x05, 0x4E, 0x43, 0xFF, 0x02}};
constexpr GUID kProgressive = {0x5A54A0C9, 0xC7EC, 0x4BD9, {0x8E, 0xDE, 0xF3, 0xC7, 0x5D, 0xC4, 0x39, 0x3B}};

class HiddenWindow
{
public:
    HiddenWindow()
        : m_hWindow(CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED, 0, 0, 64, 64, nullptr, nullptr, nullptr, nullptr))
    {
    }
    ~HiddenWindow() { DestroyWindow(m_hWindow); }
    HiddenWindow(const HiddenWindow&) = delete;
    HiddenWindow& operator=(const HiddenWindow&) = delete;

    HWND Handle() const { return m_hWindow; }

private:
    HWND m_hWindow;
};

void CreatePlainDevice(HWND hWindow, UMDComPtr<IDirect3DDevice9Ex>& pDevice)
{
    UMDComPtr<IDirect3D9Ex> pD3D;
    HostCheck(Direct3DCreate9Ex(D3D_SDK_VERSION, pD3D.Put()), "Direct3DCreate9Ex");
    D3DPRESENT_PARAMETERS present = {};
    present.Windowed = TRUE;
    present.SwapEffect = D3DSWAPEFFECT_DISCARD;
    present.hDeviceWindow = hWindow;
    HostCheck(pD3D->CreateDeviceEx(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, hWindow,
                  D3DCREATE_HARDWARE_VERTEXPROCESSING | D3DCREATE_MULTITHREADED, &present, nullptr, pDevice.Put()),
        "CreateDeviceEx");
}

void CreateTarget(IDirect3DDevice9Ex& device, SIZE size, UMDComPtr<IDirect3DSurface9>& pSurface)
{
    HostCheck(device.CreateRenderTarget(
                  size.cx, size.cy, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, pSurface.Put(), nullptr),
        "CreateRenderTarget");
}

HostImage ReadBack(IDirect3DDevice9Ex& device, IDirect3DSurface9& target, SIZE size)
{
    UMDComPtr<IDirect3DSurface9> pCopy;
    HostCheck(
        device.CreateOffscreenPlainSurface(size.cx, size.cy, D3DFMT_X8R8G8B8, D3DPOOL_SYSTEMMEM, pCopy.Put(), nullptr),
        "CreateOffscreenPlainSurface");
    HostCheck(device.GetRenderTargetData(&target, pCopy.Get()), "GetRenderTargetData");
    D3DLOCKED_RECT locked;
    HostCheck(pCopy->LockRect(&locked, nullptr, D3DLOCK_READONLY), "LockRect");
    HostImage image(size.cx, size.cy);
    for (UINT y = 0; y < image.m_Height; ++y)
    {
        const auto* pRow = static_cast<const BYTE*>(locked.pBits) + y * locked.Pitch;
        std::memcpy(&image.m_Pixels[y * image.m_Width], pRow, image.m_Width * sizeof(UINT));
    }
    for (UINT& pixel : image.m_Pixels)
        pixel &= 0xFFFFFF;
    pCopy->UnlockRect();
    return image;
}

HostImage RunOnThisThread(const PlainVideoBlt& blt)
{
    HiddenWindow window;
    UMDComPtr<IDirect3DDevice9Ex> pDevice;
    CreatePlainDevice(window.Handle(), pDevice);
    UMDComPtr<IDirect3DSurface9> pSource;
    CreateTarget(*pDevice.Get(), blt.SourceSize, pSource);
    UMDComPtr<IDirect3DSurface9> pTarget;
    CreateTarget(*pDevice.Get(), blt.TargetSize, pTarget);
    for (const PlainVideoFill& fill : blt.SourceFills)
        HostCheck(pDevice->ColorFill(pSource.Get(), &fill.Rect, fill.Color), "ColorFill");
    HostCheck(pDevice->ColorFill(pTarget.Get(), nullptr, blt.TargetColor), "ColorFill");

    UMDComPtr<IDirectXVideoProcessorService> pService;
    HostCheck(DXVA2CreateVideoService(pDevice.Get(), kIidService, reinterpret_cast<void**>(pService.Put())),
        "DXVA2CreateVideoService");
    UMDComPtr<IDirectXVideoProcessor> pProcessor;
    HostCheck(pService->CreateVideoProcessor(kProgressive, &blt.Desc, D3DFMT_X8R8G8B8, 0, pProcessor.Put()),
        "CreateVideoProcessor");
    DXVA2_VideoSample sample = blt.Sample;
    sample.SrcSurface = pSource.Get();
    HostCheck(pProcessor->VideoProcessBlt(pTarget.Get(), &blt.Params, &sample, 1, nullptr), "VideoProcessBlt");
    return ReadBack(*pDevice.Get(), *pTarget.Get(), blt.TargetSize);
}
}  // namespace

HostImage RunPlainVideoBlt(const PlainVideoBlt& blt)
{
    // A thread of its own: on one that has used the driver's device before, Wine's Direct3D crashes now and then.
    HostImage image;
    std::exception_ptr failure;
    std::thread thread([&] {
        try
        {
            image = RunOnThisThread(blt);
        }
        catch (...)
        {
            failure = std::current_exception();
        }
    });
    thread.join();
    if (failure)
        std::rethrow_exception(failure);
    return image;
}

}  // namespace tesslo::test
