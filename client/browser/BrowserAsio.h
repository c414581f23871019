// The parts of Boost that the library uses, under short names. No other file includes any of it.
//
// The C++ library's own headers come first and tell of POSIX threads, which are a layer of the compiler's over those of
// the system. Boost would take them, and each load of the library would then lose a thread-local index for good.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

#undef _POSIX_THREADS

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <boost/beast/websocket/stream.hpp>

#ifdef BOOST_ASIO_HAS_PTHREADS
#error Boost has been included before
#endif

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;

using tcp = asio::ip::tcp;
using BrowserStream = websocket::stream<beast::tcp_stream>;
