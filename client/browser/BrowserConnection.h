// One source's connection, from Plug to Unplug, on the driver's worker.
#pragma once

#include "BrowserLocalScreen.h"
#include "BrowserService.h"

class BrowserConnection
{
public:
    /// Shows the source's screen. Null if memory or a thread is not to be had.
    static BrowserConnection* Open(UINT source);

    /// Takes one frame. Costs the copy of its pixels.
    void Update(const TessloVirtualMonitorFrame& frame);

    /// Takes the screen away and frees the object.
    void Close();

private:
    BrowserConnection(BrowserService& service, UINT source);
    ~BrowserConnection() = default;

    BrowserService& m_Service;
    const std::shared_ptr<BrowserLocalScreen> m_pScreen;
};
