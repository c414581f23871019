// One source's connection, from Plug to Unplug: numbers its frames and, if a folder is named, records them there.
//
// Update, on the driver's worker, copies a frame into the queue; the writer, a thread of the connection's own, makes a
// picture of it and writes that. The queue is short and of fixed length: when the writer is behind, frames are dropped.
#pragma once

#include <tesslo/client.h>

#include <atomic>

constexpr wchar_t kSampleFolder[] = L"TESSLO_RECORD_DIR";  ///< environment variable that names the folder
constexpr UINT kSampleSources = 16;                        ///< all that the platform has
constexpr UINT kSampleQueue = 8;                           ///< frames of a connection that wait to be written

/// What is counted: connections, and what becomes of their frames.
enum SampleEvent
{
    kSampleConnected,
    kSampleReceived,
    kSampleRecorded,
    kSampleDropped,
    kSampleFailed,
    kSampleEvents
};

/// Told of each, on the thread where it happens; null while nobody asks. Set before the first connection.
inline void (*g_pSampleWatch)(UINT source, SampleEvent event, UINT64 number, DWORD error);

class SampleConnection
{
public:
    /// Null if memory or a thread is not to be had.
    static SampleConnection* Open(UINT source);
    /// Takes one frame. Costs the copy of its pixels.
    void Update(const TessloVirtualMonitorFrame& frame);
    /// Writes what is queued, ends the writer, says what was lost and frees the object.
    void Close();

private:
    /// One frame of the queue. Its memory is kept for the next frame.
    struct Slot
    {
        UINT64 m_Number;  ///< of the frame; the first of a source is 0
        UINT m_Width, m_Height;
        BYTE* m_pPixels;  ///< packed rows, 4 bytes a pixel
    };

    explicit SampleConnection(UINT source) : m_Source(source) {}
    void Count(SampleEvent event, UINT64 number, DWORD error = ERROR_SUCCESS);
    static DWORD Copy(const TessloVirtualMonitorFrame& frame, Slot* pSlot);
    static DWORD WINAPI WriteQueue(LPVOID pConnection);
    void Write(const Slot& slot);

    const UINT m_Source;
    wchar_t m_Folder[MAX_PATH] = {};
    std::atomic<UINT> m_Counts[kSampleEvents] = {};
    bool m_bReported = false;  ///< writer's own: a failure was told

    HANDLE m_hWriter = nullptr;       ///< null while nothing is recorded
    HANDLE m_hQueued = nullptr;       ///< counts the queued frames; one more than there are ends the writer
    std::atomic<UINT> m_Queued = 0;   ///< worker's to change: frames; the next is for the slot of this number
    std::atomic<UINT> m_Written = 0;  ///< writer's to change: of those; the next is in the slot of this number
    Slot m_Slots[kSampleQueue] = {};
};
