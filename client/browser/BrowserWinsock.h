// The network, begun with the library's thread and not with its image: where DLLs are loaded nothing may load another.
#pragma once

class BrowserWinsock
{
public:
    BrowserWinsock();
    ~BrowserWinsock();
    BrowserWinsock(const BrowserWinsock&) = delete;
    BrowserWinsock& operator=(const BrowserWinsock&) = delete;

private:
    bool m_bBegun;
};
