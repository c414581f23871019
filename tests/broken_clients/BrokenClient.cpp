// A client library with one fault, which its build names: for the check that is there to find it. Sound in all else.
#include <tesslo/client.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace __gnu_cxx
{
void __freeres();
}

namespace
{

/// What the library does wrong.
enum class Fault
{
    Nothing,
    CxxNames,             ///< exports Unplug by its decorated name
    HasNoUnplug,          ///< does not export it
    RefusesToReconnect,   ///< serves each source once
    EndsThread,           ///< in Unplug
    Throws,               ///< lets an exception leave Update
    Hangs,                ///< in Update
    ServesOneSource,      ///< refuses while another is open
    RefusesOddWidth,      ///< as a film's format does
    RefusesPortrait,      ///< expects frames that are wider than high
    KeepsFirstSize,       ///< copies later frames to memory for the first
    UnplugsAll,           ///< closes the other sources, too
    IgnoresPitch,         ///< takes rows for packed
    ReadsBehind,          ///< by a register too many
    WritesPixels,         ///< turns the colours in place
    KeepsPixels,          ///< reads them when the next frame comes
    KeepsPixelsInThread,  ///< reads them on a thread of its own
    KeepsSlot,            ///< reads the first slot that it was given
    WritesBesideSlot,     ///< stores more than a pointer
    WaitsInDllMain,       ///< for a thread that the process has ended
    IsSlow,               ///< takes a tenth of a second for each frame
    LeaksMemory,
    LeaksPages,
    LeaksHandle,
    LeaksThread,
    LeavesThread,  ///< running when it is freed
    HoldsItself,   ///< is never unloaded
    LosesOnLoad,   ///< a little memory, each time
};

#ifndef TESSLO_FAULT
#define TESSLO_FAULT Nothing
#endif
constexpr Fault kFault = Fault::TESSLO_FAULT;

constexpr bool Has(Fault fault)
{
    return kFault == fault;
}

struct Connection
{
    UINT m_Source;
    BYTE* m_pCopy = nullptr;
    size_t m_Room = 0;
    const void* m_pLastBits = nullptr;
    HANDLE m_hWorker = nullptr;
};

volatile LONG g_Open;              ///< connections
volatile LONG g_bServed[6];        ///< sources that were plugged once
volatile LONG g_bClosedByAnother;  ///< a source was unplugged while others were open
void** g_ppFirstSlot;
volatile BYTE g_Seen;  ///< keeps what is read from being left out
void* volatile g_pLost;
HANDLE g_hWorker;
volatile LONG g_bStop;
volatile LONG g_bStopped;

DWORD WINAPI Sleeper(void*)
{
    Sleep(INFINITE);
    return 0;
}

DWORD WINAPI Worker(void*)
{
    while (!g_bStop)
        Sleep(20);
    g_bStopped = TRUE;
    return 0;
}

DWORD WINAPI LateReader(void* pBits)
{
    Sleep(2);
    g_Seen = *static_cast<const BYTE*>(pBits);
    return 0;
}

HANDLE Start(LPTHREAD_START_ROUTINE pRoutine, const void* pParameter = nullptr)
{
    return CreateThread(nullptr, 0, pRoutine, const_cast<void*>(pParameter), 0, nullptr);
}

void WaitAndClose(HANDLE hThread)
{
    WaitForSingleObject(hThread, INFINITE);
    CloseHandle(hThread);
}

/// The copy that a sound library makes of a frame.
void Copy(Connection* pConnection, const TessloVirtualMonitorFrame& frame)
{
    const size_t rowBytes = size_t{frame.Width} * 4;
    const size_t bytes = rowBytes * frame.Height;
    if (pConnection->m_Room < bytes && !(Has(Fault::KeepsFirstSize) && pConnection->m_pCopy))
    {
        // By pages: what is written behind them is found at once.
        VirtualFree(pConnection->m_pCopy, 0, MEM_RELEASE);
        pConnection->m_pCopy =
            static_cast<BYTE*>(VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        pConnection->m_Room = bytes;
    }
    const auto* pRow = static_cast<const BYTE*>(frame.pBits);
    if (Has(Fault::IgnoresPitch))
        std::memcpy(pConnection->m_pCopy, pRow, bytes);
    else
        for (UINT y = 0; y < frame.Height; ++y, pRow += frame.Pitch)
            std::memcpy(pConnection->m_pCopy + y * rowBytes, pRow, rowBytes);
    if (Has(Fault::ReadsBehind))
        g_Seen = static_cast<const BYTE*>(frame.pBits)[(frame.Height - 1) * size_t{frame.Pitch} + rowBytes + 15];
}

void MistreatPixels(Connection* pConnection, const TessloVirtualMonitorFrame& frame)
{
    if (Has(Fault::WritesPixels))
        std::memset(const_cast<void*>(frame.pBits), 0, 4);
    if (Has(Fault::KeepsPixels) && pConnection->m_pLastBits)
        g_Seen = *static_cast<const BYTE*>(pConnection->m_pLastBits);
    pConnection->m_pLastBits = frame.pBits;
    if (Has(Fault::KeepsPixelsInThread))
    {
        if (pConnection->m_hWorker)
            WaitAndClose(pConnection->m_hWorker);
        pConnection->m_hWorker = Start(LateReader, frame.pBits);
    }
}

bool IsRefused(const TessloVirtualMonitorFrame& frame)
{
    return (Has(Fault::RefusesOddWidth) && frame.Width % 2) ||
           (Has(Fault::RefusesPortrait) && frame.Height > frame.Width) ||
           (Has(Fault::UnplugsAll) && g_bClosedByAnother);
}

void Leak()
{
    if (Has(Fault::LeaksMemory))
        g_pLost = std::malloc(24);
    if (Has(Fault::LeaksPages))
        VirtualAlloc(nullptr, 1 << 16, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (Has(Fault::LeaksHandle))
        CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (Has(Fault::LeaksThread))
        CloseHandle(Start(Sleeper));
    if (Has(Fault::LeavesThread) && !g_hWorker)
        g_hWorker = Start(Worker);
}

void Hold()
{
    HMODULE hModule = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<const wchar_t*>(&g_hWorker), &hModule);
}

void MistreatSlot(void** ppConnection)
{
    if (Has(Fault::KeepsSlot))
        g_Seen = *reinterpret_cast<const volatile BYTE*>(g_ppFirstSlot);
    if (Has(Fault::WritesBesideSlot))
        ppConnection[-1] = ppConnection;
}

BOOLEAN Close(void** ppConnection)
{
    auto* pConnection = static_cast<Connection*>(*ppConnection);
    if (Has(Fault::EndsThread))
        ExitThread(0);
    if (InterlockedDecrement(&g_Open) > 0)
        g_bClosedByAnother = TRUE;
    if (pConnection->m_hWorker)
        WaitAndClose(pConnection->m_hWorker);
    VirtualFree(pConnection->m_pCopy, 0, MEM_RELEASE);
    delete pConnection;
    return TRUE;
}

}  // namespace

extern "C" BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId)
{
    if (Has(Fault::RefusesToReconnect) && InterlockedExchange(&g_bServed[VidPnSourceId], TRUE))
        return FALSE;
    if (InterlockedIncrement(&g_Open) > 1 && Has(Fault::ServesOneSource))
        return FALSE;
    if (Has(Fault::WaitsInDllMain) && !g_hWorker)
        g_hWorker = Start(Worker);
    if (Has(Fault::HoldsItself))
        Hold();
    Leak();
    if (!g_ppFirstSlot)
        g_ppFirstSlot = ppConnection;
    *ppConnection = new Connection{VidPnSourceId};
    return TRUE;
}

extern "C" BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    auto* pConnection = static_cast<Connection*>(*ppConnection);
    if (Has(Fault::Throws))
        throw std::runtime_error("nobody catches this");
    if (Has(Fault::Hangs))
        Sleep(INFINITE);
    if (Has(Fault::IsSlow))
        Sleep(100);
    if (Has(Fault::KeepsSlot) || Has(Fault::WritesBesideSlot))
        MistreatSlot(ppConnection);
    MistreatPixels(pConnection, *pFrame);
    if (IsRefused(*pFrame))
        return FALSE;
    Copy(pConnection, *pFrame);
    return TRUE;
}

#if defined(TESSLO_FAULT_CxxNames)
__declspec(dllexport) BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, long)
#elif defined(TESSLO_FAULT_HasNoUnplug)
[[maybe_unused]] static BOOLEAN NotExported(void** ppConnection, UINT)
#else
extern "C" BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT)
#endif
{
    return Close(ppConnection);
}

BOOL APIENTRY DllMain(HINSTANCE, DWORD reason, LPVOID pProcessEnds)
{
    if (reason == DLL_PROCESS_ATTACH && Has(Fault::LosesOnLoad))
        g_pLost = std::malloc(24);
    if (reason == DLL_PROCESS_DETACH && !pProcessEnds)
        __gnu_cxx::__freeres();  // what the C++ library has set aside on attach
    g_bStop = reason == DLL_PROCESS_DETACH && Has(Fault::WaitsInDllMain);
    while (g_bStop && g_hWorker && !g_bStopped)
        Sleep(1);
    return TRUE;
}
