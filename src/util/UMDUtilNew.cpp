// Allocation for all of the driver. The C++ library's own nothrow forms throw inside and catch it again: the first
// throw makes structures for the thread that outlive the unloading of the DLL, and a TLS index with them.
#include <cstdlib>
#include <new>

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return std::malloc(size ? size : 1);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return std::malloc(size ? size : 1);
}
