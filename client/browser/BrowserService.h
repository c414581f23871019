// The library's one thread in a process, and all that it owns. It begins with the first connection and has ended when
// the last one is closed: then no code of the library runs, and it may be unloaded.
#pragma once

#include "BrowserHouse.h"
#include "BrowserHub.h"
#include "BrowserPainter.h"
#include "BrowserServer.h"
#include "BrowserSettings.h"
#include "BrowserWinsock.h"

#include <windows.h>

class BrowserLocalScreen;

class BrowserService
{
public:
    /// The process's service, begun if this is the first connection. Null if a thread or memory is not to be had.
    static BrowserService* Acquire();

    /// Ends and frees the service with the last connection. Waits for what the thread is doing, which is never a wait
    /// for somebody else.
    static void Release();

    /// Shows a screen, and takes it away again. Any thread.
    void Add(std::shared_ptr<BrowserLocalScreen> pScreen);
    void Remove(std::shared_ptr<BrowserLocalScreen> pScreen);

    /// Tells that a screen's mailbox is no longer empty. Any thread.
    void TellFrame();

private:
    explicit BrowserService(BrowserSettings settings);
    ~BrowserService();

    bool Start();
    static DWORD WINAPI Thread(LPVOID pParameter);
    void Run();
    void ServeOrJoin();
    void Join();
    void OnUplinkEnded(bool bWasOpen);
    void TellOnce(const std::string& text);

    const BrowserWinsock m_Winsock;  ///< begins before what uses it, and ends behind
    const BrowserSettings m_Settings;
    HANDLE m_hThread = nullptr;

    // The hub goes last: connections, which the context owns, tell it that they go.
    BrowserHub m_Hub;
    asio::io_context m_Context{1};
    BrowserPainter m_Painter{m_Context};
    const BrowserHouse m_House{m_Settings, m_Hub, m_Painter};
    BrowserServer m_Server{m_Context, m_House};
    asio::steady_timer m_Again{m_Context};
    std::chrono::milliseconds m_Pause;  ///< before the next try to serve or to join
    std::string m_Told;                 ///< last line on the debugger's channel
};
