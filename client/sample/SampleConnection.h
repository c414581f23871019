// One source's connection, from Plug to Unplug: counts frames and records them on a thread of its own.
//
// Update, on the driver's worker, copies a frame into the queue; the writer takes it out, makes a picture of it and
// writes that. The queue is short and of fixed length: when the writer is behind, frames are dropped and counted.
#pragma once

#include <tesslo/client.h>
#include <tesslo/sample_client.h>

class SampleConnection
{
public:
    /// Starts counting, and recording if a folder is named. Null if memory or a thread is not to be had.
    static SampleConnection* Open(UINT source);
    /// Takes one frame. Costs the copy of its pixels.
    void Update(const TessloVirtualMonitorFrame& frame);
    /// Writes what is queued, ends the writer and frees the object.
    void Close();

private:
    /// One frame of the queue. Its memory is kept for the next frame that fits.
    struct Slot
    {
        BYTE* m_pPixels;    ///< packed rows, 4 bytes a pixel
        size_t m_Capacity;  ///< bytes
        UINT m_Width;
        UINT m_Height;
        UINT64 m_Number;  ///< of the frame; the first of a source is 0
    };

    explicit SampleConnection(UINT source) : m_Source(source) {}
    ~SampleConnection();

    /// Works under the lock and wakes the writer.
    template <typename Work>
    void Change(Work work);
    /// @return ERROR_SUCCESS or why there is no copy.
    static DWORD Fill(Slot* pSlot, const TessloVirtualMonitorFrame& frame, UINT64 number);
    Slot* NextSlot(bool bLastIsWritten);
    void WriteSlot(Slot* pSlot);

    const UINT m_Source;
    wchar_t m_Folder[MAX_PATH] = {};
    HANDLE m_hWriter = nullptr;  ///< null while frames are only counted
    bool m_bReported = false;    ///< writer's own: a failure was told
    UINT m_Dropped = 0;          ///< worker's own: frames

    SRWLOCK m_Lock = SRWLOCK_INIT;  ///< guards the three below; a slot's content belongs to one thread at a time
    CONDITION_VARIABLE m_Changed = CONDITION_VARIABLE_INIT;
    UINT m_First = 0;  ///< slot that is written next
    UINT m_Count = 0;  ///< slots that are queued
    bool m_bClosing = false;
    Slot m_Slots[TESSLO_SAMPLE_QUEUE] = {};
};
