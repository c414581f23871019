#include "tools/client_check/CheckClient.h"

#include "tools/client_check/CheckImage.h"

#include <cstdio>
#include <vector>

namespace
{

HMODULE Load(const std::wstring& path, CheckBoard& board)
{
    const CheckStep step(board, "LoadLibrary");
    const HMODULE hModule = LoadLibraryW(path.c_str());
    if (!hModule)
        throw CheckFailure(CheckLoadFailure(GetLastError()));
    return hModule;
}

std::string CallOf(const char* pExport, UINT source)
{
    return std::string(pExport) + " of source " + std::to_string(source);
}

void Expect(BOOLEAN answer, const std::string& call)
{
    if (!answer)
        throw CheckFailure(call + " answered false");
}

double Milliseconds()
{
    LARGE_INTEGER frequency, now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) * 1000 / static_cast<double>(frequency.QuadPart);
}

}  // namespace

template <typename Function>
Function CheckClient::Need(const char* pName) const
{
    const auto function = Find<Function>(pName);
    if (!function)
        throw CheckFailure(CheckMissingExport(m_hModule, pName));
    return function;
}

CheckClient::CheckClient(const std::wstring& path, CheckBoard& board)
    : m_Board(board), m_hModule(Load(path, board)), m_pPlug(Need<TessloVirtualMonitorPlugFunction>(TESSLO_CLIENT_PLUG)),
      m_pUpdate(Need<TessloVirtualMonitorUpdateFunction>(TESSLO_CLIENT_UPDATE)),
      m_pUnplug(Need<TessloVirtualMonitorUnplugFunction>(TESSLO_CLIENT_UNPLUG))
{
}

CheckClient::~CheckClient()
{
    Free();
}

void CheckClient::Free()
{
    const CheckStep step(m_Board, "FreeLibrary");
    if (m_hModule)
        FreeLibrary(m_hModule);
    m_hModule = nullptr;
}

void CheckClient::Plug(void** ppConnection, UINT source) const
{
    const std::string call = CallOf("Plug", source);
    const CheckStep step(m_Board, call);
    Expect(m_pPlug(ppConnection, source), call);
}

double CheckClient::Update(void** ppConnection, const TessloVirtualMonitorFrame& frame) const
{
    const std::string call = CallOf("Update", frame.VidPnSourceId) + " (" + std::to_string(frame.Width) + "x" +
                             std::to_string(frame.Height) + ", pitch " + std::to_string(frame.Pitch) + ")";
    const CheckStep step(m_Board, call);
    const double begin = Milliseconds();
    const BOOLEAN answer = m_pUpdate(ppConnection, &frame);
    const double end = Milliseconds();
    Expect(answer, call);
    return end - begin;
}

void CheckClient::Unplug(void** ppConnection, UINT source) const
{
    const std::string call = CallOf("Unplug", source);
    const CheckStep step(m_Board, call);
    Expect(m_pUnplug(ppConnection, source), call);
}
