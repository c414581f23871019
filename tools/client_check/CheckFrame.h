// One frame as the driver delivers it: the record and its pixels, each on pages of its own.
#pragma once

#include "tools/client_check/CheckPages.h"

#include <tesslo/client.h>

/// What lies around the pixels.
enum class CheckLayout
{
    Plain,     ///< packed rows and some room behind them, which may be read
    Guarded,   ///< packed rows; a page without access follows the last pixel
    Gapped,    ///< a page without access behind each row
    ReadOnly,  ///< packed rows without access for writing
};

class CheckFrame
{
public:
    /// A picture of this size. Throws CheckFailure.
    CheckFrame(UINT source, UINT width, UINT height, CheckLayout layout = CheckLayout::Plain);
    CheckFrame(const CheckFrame&) = delete;
    CheckFrame& operator=(const CheckFrame&) = delete;

    const TessloVirtualMonitorFrame& Record() const { return *m_pRecord; }

    /// Overwrites pixels and record, and takes their memory away.
    void TakeAway();

private:
    static UINT PitchOf(UINT width, CheckLayout layout);

    void Open(CheckLayout layout);
    BYTE* FirstPixel(CheckLayout layout) const;
    void Fill(UINT (*pPixelAt)(UINT x, UINT y));

    const size_t m_DataPages;
    CheckPages m_Pages;  ///< one for the record, one without access, those of the pixels, one behind them
    TessloVirtualMonitorFrame* m_pRecord = nullptr;
};
