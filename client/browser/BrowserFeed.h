// A WebSocket that screens are sent over: to a page, or to the process that serves pages.
//
// The newest wins: of each screen at most two updates are on their way, and what changed meanwhile goes with the next.
#pragma once

#include "BrowserHub.h"
#include "BrowserSocket.h"

#include <nlohmann/json_fwd.hpp>

#include <map>

class BrowserFeed : public BrowserSocket, public BrowserWatcher
{
public:
    void OnFrame() override { Wake(); }
    void OnScreens() override;

protected:
    BrowserFeed(tcp::socket&& socket, BrowserHub& hub, std::chrono::seconds patience);

    void OnOpen() override;
    void OnClosed() override;
    bool OnText(std::string_view text) override;
    bool OnBinary(std::span<const uint32_t>) override { return false; }

    /// The message with all that changed on a screen since a version. @return false if it comes later.
    virtual bool Update(const BrowserHub::Entry& entry, uint64_t version, BrowserOutgoing* pOutgoing);
    /// A message other than that of a drawn update. @return false to end the connection.
    virtual bool OnRequest(const nlohmann::json& request);

    /// The list of screens, if it changed.
    bool NextScreens(BrowserOutgoing* pOutgoing);
    /// What changed on one of them, if anything did and the other side is ready for it.
    bool NextUpdate(BrowserOutgoing* pOutgoing);

    /// All screens are sent whole, as if to somebody who sees them for the first time.
    void Restart();

    BrowserHub& Hub() { return m_Hub; }

private:
    static constexpr uint32_t kUnderWay = 2;

    /// What the other side has of a screen.
    struct Sent
    {
        uint64_t m_Version = 0;
        uint32_t m_UnderWay = 0;  ///< updates that were not drawn yet
    };

    std::string ScreensText() const;

    BrowserHub& m_Hub;
    std::map<uint32_t, Sent> m_Sent;
    uint32_t m_Turn = 0;  ///< screen that was served last
    bool m_bTellScreens = true;
};
