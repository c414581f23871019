#include "tools/client_check/checks/CheckDevice.h"

#include "tools/client_check/CheckConnection.h"

#include <d3d9.h>

namespace
{

constexpr int kPresents = 20;
constexpr char kStored[] = "what " TESSLO_CLIENT_RESERVED1 " has stored";

/// As the driver's GPU thread has one, hidden, for the device's focus.
class Window
{
public:
    Window() : m_hWnd(CreateWindowW(L"STATIC", L"", 0, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr))
    {
        if (!m_hWnd)
            throw CheckFailure("this machine has no window to give to " TESSLO_CLIENT_RESERVED1);
    }
    ~Window() { DestroyWindow(m_hWnd); }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    const HWND m_hWnd;
};

ULONG References(IUnknown* pObject)
{
    pObject->AddRef();
    return pObject->Release();
}

struct Answer
{
    BOOLEAN m_bGiven;
    IDirect3DDevice9Ex* m_pDevice;  ///< null when the library declines; whatever it stores then is not looked at
};

Answer Ask(CheckRun& run, TessloVirtualMonitorReserved1Function pSupply, const Window& window)
{
    const CheckStep step(run.m_Board, TESSLO_CLIENT_RESERVED1);
    IDirect3DDevice9Ex* pDevice = nullptr;
    const BOOLEAN bGiven = pSupply(window.m_hWnd, &pDevice);
    return {bGiven, bGiven ? pDevice : nullptr};
}

IDirect3DDevice9Ex* DeviceOf(const Answer& answer)
{
    if (answer.m_bGiven && !answer.m_pDevice)
        throw CheckFailure(TESSLO_CLIENT_RESERVED1 " answered true and has stored no device");
    return answer.m_pDevice;
}

/// What the driver does with it at first; a pointer to something else faults here, or tells of itself.
void Use(CheckRun& run, IDirect3DDevice9Ex* pDevice)
{
    const CheckStep step(run.m_Board, std::string("the use of ") + kStored);
    void* pSame = nullptr;
    if (FAILED(pDevice->QueryInterface(IID_IDirect3DDevice9Ex, &pSame)))
        throw CheckFailure(std::string(kStored) + " is no IDirect3DDevice9Ex");
    pDevice->Release();
    D3DDEVICE_CREATION_PARAMETERS parameters = {};
    pDevice->GetCreationParameters(&parameters);
    if (!(parameters.BehaviorFlags & D3DCREATE_MULTITHREADED))
        throw CheckFailure(std::string(kStored) + " was made without D3DCREATE_MULTITHREADED");
    pDevice->ShowCursor(FALSE);
    pDevice->SetCursorPosition(100, 100, D3DCURSOR_IMMEDIATE_UPDATE);
}

void Release(CheckRun& run, IUnknown* pObject)
{
    const CheckStep step(run.m_Board, "the release of the device");
    pObject->Release();
}

/// The second device of a program asks on a GPU thread of its own, while the first is in use.
void AskBeside(CheckRun& run, TessloVirtualMonitorReserved1Function pSupply, IDirect3DDevice9Ex* pFirst)
{
    run.OnThread([&] {
        const Window window;
        IDirect3DDevice9Ex* pDevice = DeviceOf(Ask(run, pSupply, window));
        if (!pDevice)
            return;
        if (pDevice == pFirst && References(pDevice) < 2)
            throw CheckFailure("the same device was stored twice, with one reference for both");
        Use(run, pDevice);
        Release(run, pDevice);
    });
}

/// The driver's own, where the library declines.
IDirect3DDevice9Ex* MakeDevice(const Window& window)
{
    const auto pCreate = reinterpret_cast<decltype(&Direct3DCreate9Ex)>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"d3d9.dll"), "Direct3DCreate9Ex")));
    IDirect3D9Ex* pFactory = nullptr;
    if (!pCreate || FAILED(pCreate(D3D_SDK_VERSION, &pFactory)))
        throw CheckFailure("this machine has no Direct3D 9Ex to make a device with");
    D3DPRESENT_PARAMETERS parameters = {};
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.Windowed = TRUE;
    IDirect3DDevice9Ex* pDevice = nullptr;
    const HRESULT hr = pFactory->CreateDeviceEx(0, D3DDEVTYPE_HAL, window.m_hWnd,
        D3DCREATE_SOFTWARE_VERTEXPROCESSING | D3DCREATE_MULTITHREADED, &parameters, nullptr, &pDevice);
    pFactory->Release();
    if (FAILED(hr))
        throw CheckFailure("this machine makes no Direct3D 9Ex device to tell of presents");
    return pDevice;
}

IDirect3DSurface9* MakeSurface(CheckRun& run, IDirect3DDevice9Ex* pDevice)
{
    const CheckStep step(run.m_Board, "the use of the device");
    IDirect3DSurface9* pSurface = nullptr;
    if (FAILED(pDevice->CreateRenderTarget(64, 48, D3DFMT_A8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, &pSurface, nullptr)))
        throw CheckFailure("the device makes no surface to present");
    return pSurface;
}

/// What is lent has as many references behind the calls as before. It has more than the calls could take away: a
/// library that releases what is not its own is told so, and goes on with an object that is there.
class Lent
{
public:
    Lent(IUnknown* pObject, const char* pName) : m_pObject(pObject), m_pName(pName)
    {
        for (int i = 0; i < kPresents; ++i)
            m_pObject->AddRef();
        m_Before = References(m_pObject);
    }

    void TakeBack(CheckRun& run)
    {
        const int grown = static_cast<int>(References(m_pObject) - m_Before);
        if (grown != 0)
            run.Find(std::to_string(std::abs(grown)) + (grown > 0 ? " more" : " fewer") + " references of the " +
                     m_pName + " behind " + std::to_string(kPresents) + " presents");
        for (int i = 0; i < kPresents + grown; ++i)
            m_pObject->Release();
    }

private:
    IUnknown* m_pObject;
    const char* m_pName;
    ULONG m_Before;
};

void Present(CheckRun& run, TessloVirtualMonitorReserved2Function pTell, IDirect3DDevice9Ex* pDevice,
    IDirect3DSurface9* pSurface)
{
    for (int i = 0; i < kPresents; ++i)
    {
        const CheckStep step(run.m_Board, TESSLO_CLIENT_RESERVED2);
        pTell(pDevice, pSurface);
    }
}

/// Presents on a thread of the program's, and frames on a worker meanwhile.
void PresentFrames(CheckRun& run, const CheckClient& client, IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface)
{
    const auto pTell = client.Find<TessloVirtualMonitorReserved2Function>(TESSLO_CLIENT_RESERVED2);
    Lent device(pDevice, "device");
    Lent surface(pSurface, "surface");
    run.OnThreads({[&] { Present(run, pTell, pDevice, pSurface); },
        [&] {
            const CheckFrame frame(0, 64, 48);
            CheckConnection connection(client, 0);
            for (int i = 0; i < kPresents; ++i)
                connection.Send(frame);
            connection.Close();
        }});
    surface.TakeBack(run);
    device.TakeBack(run);
}

}  // namespace

void CheckDevice(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    const auto pSupply = client.Find<TessloVirtualMonitorReserved1Function>(TESSLO_CLIENT_RESERVED1);
    if (!pSupply)
        return;
    run.OnThread([&] {
        const Window window;
        IDirect3DDevice9Ex* pDevice = DeviceOf(Ask(run, pSupply, window));
        if (!pDevice)
            return;
        Use(run, pDevice);
        AskBeside(run, pSupply, pDevice);
        Release(run, pDevice);
    });
}

void CheckNotice(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    if (!client.Find<TessloVirtualMonitorReserved2Function>(TESSLO_CLIENT_RESERVED2))
        return;
    const auto pSupply = client.Find<TessloVirtualMonitorReserved1Function>(TESSLO_CLIENT_RESERVED1);
    if (!pSupply)
        throw CheckFailure("there is " TESSLO_CLIENT_RESERVED2 " without " TESSLO_CLIENT_RESERVED1
                           ": the driver looks for it behind that alone");
    run.OnThread([&] {
        const Window window;
        IDirect3DDevice9Ex* pDevice = Ask(run, pSupply, window).m_pDevice;
        if (!pDevice)
            pDevice = MakeDevice(window);
        IDirect3DSurface9* pSurface = MakeSurface(run, pDevice);
        PresentFrames(run, client, pDevice, pSurface);
        pSurface->Release();
        Release(run, pDevice);
    });
}
