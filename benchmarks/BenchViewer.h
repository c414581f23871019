// A page as the client library for web browsers sees it: a WebSocket that takes every update and calls it drawn. Reads
// on a thread of its own, and looks at nothing but the head of a message.
#pragma once

#include <windows.h>
#include <winsock2.h>

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

class BenchViewer
{
public:
    /// Connects to a page's server on this machine. Throws HostError.
    explicit BenchViewer(u_short port);
    ~BenchViewer();
    BenchViewer(const BenchViewer&) = delete;
    BenchViewer& operator=(const BenchViewer&) = delete;

    UINT64 Bytes() const { return m_Bytes; }    ///< received so far
    UINT Updates() const { return m_Updates; }  ///< of pictures, so far
    /// Seconds from the driver's call of the library to the last byte of the update here, one an update since the last
    /// call.
    std::vector<double> TakeAges();

private:
    void Run();
    bool ReadMessage(std::vector<char>* pMessage);
    bool Read(void* pData, size_t bytes);
    bool SendDrawn(UINT screen) const;

    SOCKET m_hSocket;
    std::atomic<UINT64> m_Bytes = 0;
    std::atomic<UINT> m_Updates = 0;
    std::mutex m_Mutex;  ///< guards the one below
    std::vector<double> m_Ages;
    std::thread m_Thread;
};
