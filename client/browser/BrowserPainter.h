// A thread for what takes long: pictures in other formats. It begins with the first of them, and nothing that is sent
// in tiles waits for it.
#pragma once

#include "BrowserAsio.h"
#include "BrowserCompress.h"

#include <functional>
#include <optional>

class BrowserPainter
{
public:
    using Work = std::function<BrowserBytes()>;
    using Done = std::function<void(BrowserBytes bytes)>;  ///< empty if memory was not to be had

    explicit BrowserPainter(asio::io_context& context) : m_Context(context) {}

    /// Does the work on the thread, and tells of it on the library's own.
    ///
    /// @return false if too much waits already: then done is not called.
    bool Do(Work work, Done done);

private:
    static constexpr size_t kWaiting = 80;  ///< one for each page, and some stills

    void End(const Done& done, BrowserBytes bytes);

    asio::io_context& m_Context;
    size_t m_Waiting = 0;
    std::optional<asio::thread_pool> m_Thread;  ///< goes first, and waits for the work that it is on
};
