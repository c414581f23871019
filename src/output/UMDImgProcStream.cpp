#include "output/UMDImgProcWalks.h"

#include <emmintrin.h>

#include <cstdint>
#include <cstring>

namespace
{
constexpr std::size_t kLineBytes = 64;
constexpr std::size_t kLineWords = kLineBytes / 4;

__m128i Load(const BYTE* p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

__m128i LoadReversed(const BYTE* p)
{
    return _mm_shuffle_epi32(Load(p), _MM_SHUFFLE(0, 1, 2, 3));
}

/// Words before the first whole line of the destination.
std::size_t WordsToLine(const BYTE* pDst, std::size_t count)
{
    const std::size_t words = (0 - reinterpret_cast<std::uintptr_t>(pDst)) % kLineBytes / 4;
    return words < count ? words : count;
}

void StorePart(__m128i* pTo, __m128i part)
{
    _mm_store_si128(pTo, part);
}

void StreamPart(__m128i* pTo, __m128i part)
{
    _mm_stream_si128(pTo, part);
}

template <void (*Write)(__m128i*, __m128i)>
void Reverse(BYTE* pDst, const BYTE* pSrc, std::size_t count)
{
    const auto moveWord = [=](std::size_t to) { std::memcpy(pDst + to * 4, pSrc + (count - 1 - to) * 4, 4); };
    const std::size_t head = WordsToLine(pDst, count);
    std::size_t to = 0;
    while (to < head)
        moveWord(to++);
    for (; to + kLineWords <= count; to += kLineWords)
    {
        __m128i* pLine = reinterpret_cast<__m128i*>(pDst + to * 4);
        const BYTE* pFrom = pSrc + (count - kLineWords - to) * 4;
        Write(pLine, LoadReversed(pFrom + 48));
        Write(pLine + 1, LoadReversed(pFrom + 32));
        Write(pLine + 2, LoadReversed(pFrom + 16));
        Write(pLine + 3, LoadReversed(pFrom));
    }
    while (to < count)
        moveWord(to++);
}
} // namespace

void UMDImgProcReverse(BYTE* pDst, const BYTE* pSrc, std::size_t count, bool bStream)
{
    if (bStream)
        Reverse<StreamPart>(pDst, pSrc, count);
    else
        Reverse<StorePart>(pDst, pSrc, count);
    _mm_sfence();
}

void UMDImgProcStream(BYTE* pDst, const BYTE* pSrc, std::size_t count)
{
    std::size_t done = WordsToLine(pDst, count);
    std::memcpy(pDst, pSrc, done * 4);
    for (; done + kLineWords <= count; done += kLineWords)
    {
        __m128i* pLine = reinterpret_cast<__m128i*>(pDst + done * 4);
        const BYTE* pFrom = pSrc + done * 4;
        _mm_stream_si128(pLine, Load(pFrom));
        _mm_stream_si128(pLine + 1, Load(pFrom + 16));
        _mm_stream_si128(pLine + 2, Load(pFrom + 32));
        _mm_stream_si128(pLine + 3, Load(pFrom + 48));
    }
    std::memcpy(pDst + done * 4, pSrc + done * 4, (count - done) * 4);
    _mm_sfence();
}
