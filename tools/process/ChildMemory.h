// A block of memory that a program shares with its child: what the child has written there outlives it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

class ChildMemory
{
public:
    /// The parent's: zeros, which every child started from now on inherits. Throws std::runtime_error.
    explicit ChildMemory(size_t bytes);
    ~ChildMemory();
    ChildMemory(const ChildMemory&) = delete;
    ChildMemory& operator=(const ChildMemory&) = delete;

    /// Tells the child where the block is, on its command line.
    uint64_t Handle() const { return reinterpret_cast<uint64_t>(m_hMapping); }
    void* Get() const { return m_pBytes; }

    /// The child's view of it, which stays for good. Null when there is none.
    static void* View(uint64_t handle, size_t bytes);

private:
    HANDLE m_hMapping;
    void* m_pBytes;
};
