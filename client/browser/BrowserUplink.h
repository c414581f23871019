// Sends this process's screens to the process that has the port.
#pragma once

#include "BrowserFeed.h"

#include <functional>

struct BrowserSettings;

class BrowserUplink : public BrowserFeed
{
public:
    /// @param ended called once, when there is no connection (any more)
    BrowserUplink(asio::io_context& context, BrowserHub& hub, std::function<void(bool bWasOpen)> ended);

    void Connect(const BrowserSettings& settings);

private:
    bool Next(BrowserOutgoing* pOutgoing) override { return NextScreens(pOutgoing) || NextUpdate(pOutgoing); }
    void OnClosed() override;
    void Shake(const std::string& target);

    const std::function<void(bool)> m_Ended;
};
