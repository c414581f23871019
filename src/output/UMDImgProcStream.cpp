#include "output/UMDImgProcWalks.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace
{
constexpr std::size_t kLineBytes = 64;
constexpr std::size_t kLineWords = kLineBytes / 4;
constexpr std::size_t kPageBytes = 4096;
constexpr std::size_t kPageWords = kPageBytes / 4;
constexpr std::size_t kPages = 4;
/// How far ahead is fetched: a line that is far when it is read holds up those that leave.
constexpr std::size_t kAhead = 4 * kLineBytes;

__m128i Load(const BYTE* p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

/// Asks for a line that is read soon. It may lie outside of the image.
void Prefetch(const BYTE* p)
{
    _mm_prefetch(reinterpret_cast<const char*>(p), _MM_HINT_T0);
}

__m128i LoadReversed(const BYTE* p)
{
    return _mm_shuffle_epi32(Load(p), _MM_SHUFFLE(0, 1, 2, 3));
}

void StorePart(__m128i* pTo, __m128i part)
{
    _mm_store_si128(pTo, part);
}

void StreamPart(__m128i* pTo, __m128i part)
{
    _mm_stream_si128(pTo, part);
}

// Reads forwards and writes backwards: the hardware fetches ahead of rising reads better than of falling ones, and
// writes wait for nothing in either direction.
template <void (*Write)(__m128i*, __m128i)>
void Reverse(BYTE* pDst, const BYTE* pSrc, std::size_t count)
{
    BYTE* pEnd = pDst + count * 4;
    const auto moveWord = [=](std::size_t from) { std::memcpy(pEnd - (from + 1) * 4, pSrc + from * 4, 4); };
    const std::size_t head = std::min(reinterpret_cast<std::uintptr_t>(pEnd) % kLineBytes / 4, count);
    std::size_t from = 0;
    while (from < head)
        moveWord(from++);
    for (; from + kLineWords <= count; from += kLineWords)
    {
        __m128i* pLine = reinterpret_cast<__m128i*>(pEnd - (from + kLineWords) * 4);
        const BYTE* pFrom = pSrc + from * 4;
        Prefetch(pFrom + kAhead);
        const __m128i parts[] = {
            LoadReversed(pFrom), LoadReversed(pFrom + 16), LoadReversed(pFrom + 32), LoadReversed(pFrom + 48)};
        Write(pLine, parts[3]);
        Write(pLine + 1, parts[2]);
        Write(pLine + 2, parts[1]);
        Write(pLine + 3, parts[0]);
    }
    while (from < count)
        moveWord(from++);
}
void StreamLine(BYTE* pDst, const BYTE* pSrc)
{
    Prefetch(pSrc + kAhead);
    const __m128i parts[] = {Load(pSrc), Load(pSrc + 16), Load(pSrc + 32), Load(pSrc + 48)};
    __m128i* pLine = reinterpret_cast<__m128i*>(pDst);
    StreamPart(pLine, parts[0]);
    StreamPart(pLine + 1, parts[1]);
    StreamPart(pLine + 2, parts[2]);
    StreamPart(pLine + 3, parts[3]);
}

/// Some pages side by side: the memory has more to do at a time than one row of lines gives it.
void StreamPages(BYTE* pDst, const BYTE* pSrc)
{
    for (std::size_t line = 0; line < kPageBytes; line += kLineBytes)
    {
        for (std::size_t page = 0; page < kPages * kPageBytes; page += kPageBytes)
            StreamLine(pDst + page + line, pSrc + page + line);
    }
}
}  // namespace

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
    // Words before the first whole line.
    std::size_t done = std::min((0 - reinterpret_cast<std::uintptr_t>(pDst)) % kLineBytes / 4, count);
    std::memcpy(pDst, pSrc, done * 4);
    for (; done + kPages * kPageWords <= count; done += kPages * kPageWords)
        StreamPages(pDst + done * 4, pSrc + done * 4);
    for (; done + kLineWords <= count; done += kLineWords)
        StreamLine(pDst + done * 4, pSrc + done * 4);
    std::memcpy(pDst + done * 4, pSrc + done * 4, (count - done) * 4);
    _mm_sfence();
}
