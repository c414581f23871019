#include "BrowserConnection.h"

#include "BrowserClock.h"

namespace
{

/// The program's file name without its folder.
std::string ProgramName()
{
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring whole(path, length);
    const std::wstring name = whole.substr(whole.find_last_of(L"\\/") + 1);
    char text[MAX_PATH * 3];
    const int bytes = WideCharToMultiByte(
        CP_UTF8, 0, name.data(), static_cast<int>(name.size()), text, static_cast<int>(sizeof(text)), nullptr, nullptr);
    return {text, static_cast<size_t>(bytes)};
}

}  // namespace

BrowserConnection* BrowserConnection::Open(UINT source)
{
    BrowserService* pService = BrowserService::Acquire();
    if (pService == nullptr)
        return nullptr;
    try
    {
        return new BrowserConnection(*pService, source);
    }
    catch (...)
    {
        BrowserService::Release();
        throw;
    }
}

BrowserConnection::BrowserConnection(BrowserService& service, UINT source)
    : m_Service(service),
      m_pScreen(std::make_shared<BrowserLocalScreen>(BrowserOrigin{source, GetCurrentProcessId(), ProgramName()}))
{
    m_Service.Add(m_pScreen);
}

void BrowserConnection::Update(const TessloVirtualMonitorFrame& frame)
{
    if (m_pScreen->Mailbox().Put(frame, BrowserClockNow()) == BrowserMailbox::Outcome::Arrived)
        m_Service.TellFrame();
}

void BrowserConnection::Close()
{
    m_Service.Remove(m_pScreen);
    delete this;
    BrowserService::Release();
}
