// A byte buffer with a lifetime of its own: the rotated image of a frame, shared by the ring and by the worker that is
// sending it, so that neither a change of size nor a closing device takes it away under the client library. It also
// tells whether the copy beside it in the ring is still to be read.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstddef>

class UMDFrameMemory
{
public:
    /// Allocates a buffer, not cleared, with one reference. @return null when memory is short.
    static UMDFrameMemory* Create(std::size_t bytes);

    /// Any thread.
    void AddRef();
    /// Frees the buffer with the last reference. Any thread.
    void Release();

    /// The copy beside the buffer is about to be published. Presenting thread.
    void BeginRead();
    /// It has been read, or nobody will read it any more. Any thread.
    void EndRead();
    /// Whether somebody may read it, or is at it. Presenting thread.
    bool IsToBeRead() const;

    BYTE* Bits() { return m_pBits; }

private:
    UMDFrameMemory() = default;
    ~UMDFrameMemory() = default;

    LONG m_References;
    std::atomic<int> m_Readers = 0;  ///< frames whose copy is still to be read
    BYTE* m_pBits;
};
