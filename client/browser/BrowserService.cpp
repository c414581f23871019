#include "BrowserService.h"

#include "BrowserDebug.h"
#include "BrowserLocalScreen.h"
#include "BrowserUplink.h"

#include <mutex>

namespace
{

std::mutex g_Mutex;  ///< guards the two below
BrowserService* g_pService;
UINT g_Connections;

constexpr std::chrono::milliseconds kFirstPause(20);
constexpr std::chrono::milliseconds kLongestPause(2000);

std::string Variable(const wchar_t* pName)
{
    wchar_t text[128];
    const DWORD length = GetEnvironmentVariableW(pName, text, 128);
    // What is not ASCII, or longer, is nothing that a setting may hold; a mark keeps it from passing for none.
    if (length >= 128)
        return "?";
    std::string narrow;
    for (DWORD i = 0; i < length; ++i)
        narrow += text[i] < 128 ? static_cast<char>(text[i]) : '?';
    return narrow;
}

BrowserSettings ReadSettings()
{
    return BrowserSettings::Read(
        Variable(TESSLO_BROWSER_ADDRESS), Variable(TESSLO_BROWSER_PORT), Variable(TESSLO_BROWSER_TOKEN));
}

}  // namespace

BrowserService* BrowserService::Acquire()
{
    const std::lock_guard lock(g_Mutex);
    if (g_pService == nullptr)
    {
        std::unique_ptr<BrowserService, void (*)(BrowserService*)> pService(
            new BrowserService(ReadSettings()), [](BrowserService* p) { delete p; });
        if (!pService->Start())
            return nullptr;
        g_pService = pService.release();
    }
    ++g_Connections;
    return g_pService;
}

void BrowserService::Release()
{
    const std::lock_guard lock(g_Mutex);
    if (--g_Connections == 0)
        delete std::exchange(g_pService, nullptr);
}

BrowserService::BrowserService(BrowserSettings settings) : m_Settings(std::move(settings))
{
    if (!m_Settings.m_Complaint.empty())
        BrowserDebugTell(m_Settings.m_Complaint + "the setting is ignored");
}

// Stopping the context throws nothing. NOLINTNEXTLINE(bugprone-exception-escape)
BrowserService::~BrowserService()
{
    if (m_hThread == nullptr)
        return;
    m_Context.stop();
    WaitForSingleObject(m_hThread, INFINITE);
    CloseHandle(m_hThread);
}

bool BrowserService::Start()
{
    m_Pause = kFirstPause;
    asio::post(m_Context, [this] { ServeOrJoin(); });
    m_hThread = CreateThread(nullptr, 0, Thread, this, 0, nullptr);
    return m_hThread != nullptr;
}

DWORD WINAPI BrowserService::Thread(LPVOID pParameter)
{
    static_cast<BrowserService*>(pParameter)->Run();
    return 0;
}

// Only a lack of memory throws here. It ends what it met; the others go on.
void BrowserService::Run()
{
    const auto work = asio::make_work_guard(m_Context);
    while (!m_Context.stopped())
    {
        try
        {
            m_Context.run();
        }
        catch (const std::exception& error)
        {
            BrowserDebugTell(error.what());
        }
    }
}

// Whoever gets the port serves; all others join it, and try again when it is gone.
void BrowserService::ServeOrJoin()
{
    const beast::error_code error = m_Server.Listen();
    if (!error)
        return TellOnce("the virtual monitors are shown at " + m_Settings.Url());
    if (error == asio::error::address_in_use || error == asio::error::access_denied)
        return Join();
    TellOnce("cannot listen at " + m_Settings.Url() + ": " + error.message());
    OnUplinkEnded(false);
}

void BrowserService::Join()
{
    const auto ended = [this](bool bWasOpen) { OnUplinkEnded(bWasOpen); };
    std::make_shared<BrowserUplink>(m_Context, m_Hub, ended)->Connect(m_Settings);
}

void BrowserService::OnUplinkEnded(bool bWasOpen)
{
    if (bWasOpen)
        m_Pause = kFirstPause;
    else if (m_Pause == kLongestPause)
        TellOnce(m_Settings.Url() + " is taken by something that is no client library");
    m_Again.expires_after(m_Pause);
    m_Pause = std::min(m_Pause * 2, kLongestPause);
    m_Again.async_wait([this](beast::error_code) { ServeOrJoin(); });
}

void BrowserService::TellOnce(const std::string& text)
{
    if (text != m_Told)
        BrowserDebugTell(text);
    m_Told = text;
}

void BrowserService::Add(std::shared_ptr<BrowserLocalScreen> pScreen)
{
    asio::post(m_Context, [this, pScreen = std::move(pScreen)] { m_Hub.Add(pScreen); });
}

void BrowserService::Remove(std::shared_ptr<BrowserLocalScreen> pScreen)
{
    asio::post(m_Context, [this, pScreen = std::move(pScreen)] { m_Hub.Remove(pScreen.get()); });
}

void BrowserService::TellFrame()
{
    asio::post(m_Context, [this] { m_Hub.TellFrame(); });
}
