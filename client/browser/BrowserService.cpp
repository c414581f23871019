#include "BrowserService.h"

#include "BrowserDebug.h"
#include "BrowserLocalScreen.h"

#include <boost/asio/post.hpp>

#include <mutex>

namespace
{

std::mutex g_Mutex;  ///< guards the two below
BrowserService* g_pService;
UINT g_Connections;

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
    asio::post(m_Context, [this] { Serve(); });
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

void BrowserService::Serve()
{
    if (const beast::error_code error = m_Server.Listen())
        BrowserDebugTell("cannot listen at " + m_Settings.Url() + ": " + error.message());
    else
        BrowserDebugTell("the virtual monitors are shown at " + m_Settings.Url());
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
