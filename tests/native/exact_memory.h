// Blocks of exactly the bytes that a case may touch: the address sanitizer finds one byte beyond.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

/// A run of bytes that ends with its heap block.
class ExactBytes
{
public:
    static constexpr BYTE kUntouched = 0xC3;

    /// @param shift bytes of the block in front of the run, for odd addresses.
    explicit ExactBytes(std::size_t bytes, std::size_t shift = 0)
        : m_Bytes(bytes), m_Shift(shift), m_Block(new BYTE[shift + bytes])
    {
        std::fill_n(m_Block.get(), shift + bytes, kUntouched);
    }

    BYTE* Get() const { return m_Block.get() + m_Shift; }
    std::size_t Size() const { return m_Bytes; }

    /// Bytes that differ from their neighbours in every direction.
    void FillWithNoise(std::uint32_t seed)
    {
        std::minstd_rand random(seed + 1);
        for (std::size_t i = 0; i < m_Bytes; ++i)
            Get()[i] = static_cast<BYTE>(random() >> 8);
    }

    bool Holds(const std::vector<BYTE>& expected) const
    {
        return expected.size() == m_Bytes && std::equal(expected.begin(), expected.end(), Get());
    }

    bool IsFrontUntouched() const
    {
        return std::all_of(m_Block.get(), Get(), [](BYTE byte) { return byte == kUntouched; });
    }

private:
    std::size_t m_Bytes;
    std::size_t m_Shift;
    std::unique_ptr<BYTE[]> m_Block;
};

/// What a case expects a destination to hold.
inline std::vector<BYTE> UntouchedBytes(std::size_t bytes)
{
    return std::vector<BYTE>(bytes, ExactBytes::kUntouched);
}
