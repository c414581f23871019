// Memory that ends at a page without access, out of large ranges: of every address can be told whether it lies in such
// a page. Any thread.
#pragma once

#include <windows.h>

#include <cstddef>

namespace tesslo::test
{

/// What an address is to the fenced memory.
enum class FencePlace
{
    Elsewhere,  ///< no concern of it
    Inside,     ///< may be touched
    Fence,      ///< behind somebody's last byte
    GivenBack,  ///< was somebody's
};
FencePlace FindFence(const void* pAddress);

/// The range that memory comes from. Who runs far over the end of bytes never meets an object.
enum class FencedFor
{
    Bytes,
    Objects,
};

/// Takes bytes as others have left them. @param alignment of the first one; what it costs lies behind the last.
/// Throws std::bad_alloc when the range is used up.
BYTE* TakeFenced(size_t bytes, size_t alignment = 1, FencedFor use = FencedFor::Bytes);
/// Gives them back: nobody may touch them from now on. Nothing for null.
void GiveFenced(void* pBytes);
/// How many bytes were taken here; 0 when this is no address that was given out.
size_t FencedSize(const void* pBytes);

/// Bytes of an owner.
class FencedBytes
{
public:
    explicit FencedBytes(size_t bytes = 0) : m_Size(bytes), m_pBytes(bytes ? TakeFenced(bytes) : nullptr) {}
    ~FencedBytes() { GiveFenced(m_pBytes); }
    FencedBytes(FencedBytes&& other) noexcept : m_Size(other.m_Size), m_pBytes(other.m_pBytes)
    {
        other.m_pBytes = nullptr;
    }
    FencedBytes(const FencedBytes&) = delete;
    FencedBytes& operator=(const FencedBytes&) = delete;
    FencedBytes& operator=(FencedBytes&&) = delete;

    BYTE* Get() const { return m_pBytes; }
    size_t Size() const { return m_Size; }

private:
    size_t m_Size;
    BYTE* m_pBytes;
};

}  // namespace tesslo::test
