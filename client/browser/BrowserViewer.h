// One page that watches. It may ask for the server's clock, to tell how old frames are, and for compressed pictures.
#pragma once

#include "BrowserFeed.h"

#include <optional>

struct BrowserHouse;
class BrowserPainter;

class BrowserViewer : public BrowserFeed
{
public:
    BrowserViewer(tcp::socket&& socket, const BrowserHouse& house);

    /// Answers the request that asked for a WebSocket.
    void Accept(const http::request<http::empty_body>& request);

private:
    bool Next(BrowserOutgoing* pOutgoing) override;
    bool Update(const BrowserHub::Entry& entry, uint64_t version, BrowserOutgoing* pOutgoing) override;
    bool OnRequest(const nlohmann::json& request) override;

    bool NextAnswer(BrowserOutgoing* pOutgoing);
    bool NextPainted(BrowserOutgoing* pOutgoing);

    BrowserPainter& m_Painter;
    std::optional<double> m_Asked;             ///< the page's time when it asked for ours; its last question counts
    bool m_bJpeg = false;                      ///< compressed pictures are wanted
    bool m_bPainting = false;                  ///< one is being made; updates keep their order behind it
    std::optional<BrowserOutgoing> m_Painted;  ///< it is ready
};
