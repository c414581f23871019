// Memory for image tests: pages that may be touched, between pages that may not.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

/// A run of bytes between two pages without access. One byte read or written too far at either end faults.
class GuardedBytes
{
public:
    enum class Edge
    {
        Front,  ///< the first byte follows the page in front
        Back    ///< the last byte precedes the page behind
    };

    GuardedBytes(std::size_t bytes, Edge edge)
    {
        const std::size_t room = (bytes + kPage - 1) / kPage * kPage;
        m_pPages = static_cast<BYTE*>(VirtualAlloc(nullptr, room + 2 * kPage, MEM_RESERVE, PAGE_NOACCESS));
        if (room != 0)
            VirtualAlloc(m_pPages + kPage, room, MEM_COMMIT, PAGE_READWRITE);
        m_pBytes = m_pPages + kPage + (edge == Edge::Back ? room - bytes : 0);
    }
    ~GuardedBytes() { VirtualFree(m_pPages, 0, MEM_RELEASE); }
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;

    BYTE* Get() const { return m_pBytes; }

private:
    static constexpr std::size_t kPage = 4096;
    BYTE* m_pPages;
    BYTE* m_pBytes;
};

/// Bytes that differ from their neighbours in every direction.
inline void FillWithNoise(BYTE* pBytes, std::size_t count, std::uint32_t seed)
{
    // Modulo 2^64: of its numbers the upper halves are the good ones.
    std::linear_congruential_engine<std::uint64_t, 6364136223846793005u, 1442695040888963407u, 0> random(seed + 1);
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
    {
        const auto word = static_cast<std::uint32_t>(random() >> 32);
        std::memcpy(pBytes + i, &word, 4);
    }
    for (; i < count; ++i)
        pBytes[i] = static_cast<BYTE>(random() >> 32);
}
