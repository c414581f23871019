#include "tools/client_check/CheckFrame.h"

#include <cstring>

namespace
{

constexpr size_t kRecordPage = 0;
constexpr size_t kFirstDataPage = 2;

const char* Meaning(CheckLayout layout)
{
    switch (layout)
    {
    case CheckLayout::Gapped:
        return "what lies between two rows of a frame";
    case CheckLayout::ReadOnly:
        return "the pixels of a frame, which are not its own,";
    default:
        return "what lies around the rows of a frame";
    }
}

/// Tiles of many colours: as easy to compress as what a screen shows, and no easier.
UINT TilePixel(UINT x, UINT y)
{
    return ((x / 16 * 2654435761U) ^ (y / 16 * 40503U)) | 0xFF000000;
}

}  // namespace

UINT CheckFrame::PitchOf(UINT width, CheckLayout layout)
{
    const UINT bytes = width * 4;
    return layout == CheckLayout::Gapped ? static_cast<UINT>((CheckPagesOf(bytes) + 1) * kCheckPage) : bytes;
}

CheckFrame::CheckFrame(UINT source, UINT width, UINT height, CheckLayout layout)
    : m_DataPages(CheckPagesOf(size_t{PitchOf(width, layout)} * height)), m_Pages(kFirstDataPage + m_DataPages + 1)
{
    m_Pages.Open(kRecordPage, 1);
    m_pRecord = reinterpret_cast<TessloVirtualMonitorFrame*>(m_Pages.At(kRecordPage + 1)) - 1;
    *m_pRecord = {0, source, width, height, PitchOf(width, layout), 0, nullptr};
    m_pRecord->pBits = FirstPixel(layout);
    Open(layout);
    Fill(TilePixel);
    if (layout == CheckLayout::ReadOnly)
        m_Pages.SetReadOnly(kFirstDataPage, m_DataPages);
    m_Pages.Name(Meaning(layout));
}

void CheckFrame::Open(CheckLayout layout)
{
    if (layout != CheckLayout::Gapped)
    {
        m_Pages.Open(kFirstDataPage, m_DataPages + (layout == CheckLayout::Plain ? 1 : 0));
        return;
    }
    const size_t pitch = m_pRecord->Pitch / kCheckPage;
    for (size_t y = 0; y < m_pRecord->Height; ++y)
        m_Pages.Open(kFirstDataPage + y * pitch, pitch - 1);
}

// Where something lies behind the pixels that must not be touched, they end where it begins.
BYTE* CheckFrame::FirstPixel(CheckLayout layout) const
{
    const size_t rowBytes = size_t{m_pRecord->Width} * 4;
    switch (layout)
    {
    case CheckLayout::Guarded:
        return m_Pages.At(kFirstDataPage + m_DataPages) - rowBytes * m_pRecord->Height;
    case CheckLayout::Gapped:
        return m_Pages.At(kFirstDataPage + CheckPagesOf(rowBytes)) - rowBytes;
    default:
        return m_Pages.At(kFirstDataPage);
    }
}

void CheckFrame::Fill(UINT (*pPixelAt)(UINT x, UINT y))
{
    auto* pRow = static_cast<BYTE*>(const_cast<void*>(m_pRecord->pBits));
    for (UINT y = 0; y < m_pRecord->Height; ++y, pRow += m_pRecord->Pitch)
        for (UINT x = 0; x < m_pRecord->Width; ++x)
        {
            const UINT value = pPixelAt(x, y);
            std::memcpy(pRow + size_t{x} * 4, &value, 4);
        }
}

void CheckFrame::TakeAway()
{
    Fill([](UINT, UINT) { return 0xDEADBEEFU; });
    std::memset(m_pRecord, 0xDD, sizeof(*m_pRecord));
    m_Pages.Close();
    m_Pages.Name("a frame whose Update has returned");
}
