#include "SampleConnection.h"

#include "SamplePicture.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>

/// Of a source's next frame; its connections go on from each other.
static std::atomic<UINT64> g_Numbers[kSampleSources];

// Memory comes from malloc: with its own operator, the C++ library sets a block aside at each load and never frees it.
SampleConnection* SampleConnection::Open(UINT source)
{
    void* pMemory = std::malloc(sizeof(SampleConnection));
    if (pMemory == nullptr)
        return nullptr;
    auto* pThis = new (pMemory) SampleConnection(source);
    const DWORD length = GetEnvironmentVariableW(kSampleFolder, pThis->m_Folder, MAX_PATH);
    const bool bRecords = length != 0 && length < MAX_PATH;
    if (length >= MAX_PATH)
        OutputDebugStringW(L"TessloClientDllSample: the folder's name is too long; frames are only counted\n");
    if (bRecords)
        pThis->m_hQueued = CreateSemaphoreW(nullptr, 0, kSampleQueue + 1, nullptr);
    if (pThis->m_hQueued != nullptr)
        pThis->m_hWriter = CreateThread(nullptr, 0, WriteQueue, pThis, 0, nullptr);
    if (bRecords && pThis->m_hWriter == nullptr)
    {
        pThis->Close();
        return nullptr;
    }
    pThis->Count(kSampleConnected, 0);
    return pThis;
}

void SampleConnection::Close()
{
    if (m_hWriter != nullptr)
    {
        ReleaseSemaphore(m_hQueued, 1, nullptr);
        WaitForSingleObject(m_hWriter, INFINITE);
        CloseHandle(m_hWriter);
    }
    if (m_hQueued != nullptr)
        CloseHandle(m_hQueued);
    const auto say = [this](const wchar_t* pText, UINT frames) {
        wchar_t text[128];
        _snwprintf(text, 128, pText, frames, m_Source);
        if (frames != 0)
            OutputDebugStringW(text);
    };
    say(L"TessloClientDllSample: dropped %u frames of source %u, for which the writer was too slow\n",
        m_Counts[kSampleDropped]);
    say(L"TessloClientDllSample: lost %u frames of source %u to failures\n", m_Counts[kSampleFailed]);
    for (const Slot& slot : m_Slots)
        std::free(slot.m_pPixels);
    std::free(this);
}

void SampleConnection::Count(SampleEvent event, UINT64 number, DWORD error)
{
    ++m_Counts[event];
    if (g_pSampleWatch != nullptr)
        g_pSampleWatch(m_Source, event, number, error);
}

void SampleConnection::Update(const TessloVirtualMonitorFrame& frame)
{
    const UINT64 number = g_Numbers[m_Source]++;
    Count(kSampleReceived, number);
    if (m_hWriter == nullptr)
        return;
    if (m_Queued - m_Written == kSampleQueue)
        return Count(kSampleDropped, number);
    Slot* pSlot = &m_Slots[m_Queued % kSampleQueue];
    pSlot->m_Number = number;
    if (const DWORD error = Copy(frame, pSlot); error != ERROR_SUCCESS)
        return Count(kSampleFailed, number, error);
    ++m_Queued;
    ReleaseSemaphore(m_hQueued, 1, nullptr);
}

DWORD SampleConnection::Copy(const TessloVirtualMonitorFrame& frame, Slot* pSlot)
{
    const size_t rowBytes = static_cast<size_t>(frame.Width) * 4;
    if (rowBytes * frame.Height == 0 || frame.Pitch < rowBytes)
        return ERROR_INVALID_DATA;
    auto* pPixels = static_cast<BYTE*>(std::realloc(pSlot->m_pPixels, rowBytes * frame.Height));
    if (pPixels == nullptr)
        return ERROR_NOT_ENOUGH_MEMORY;
    pSlot->m_pPixels = pPixels;
    pSlot->m_Width = frame.Width;
    pSlot->m_Height = frame.Height;
    const BYTE* pRow = static_cast<const BYTE*>(frame.pBits);
    for (UINT y = 0; y < frame.Height; ++y, pRow += frame.Pitch)
        std::memcpy(pPixels + y * rowBytes, pRow, rowBytes);
    return ERROR_SUCCESS;
}

DWORD WINAPI SampleConnection::WriteQueue(LPVOID pConnection)
{
    auto* pThis = static_cast<SampleConnection*>(pConnection);
    while (WaitForSingleObject(pThis->m_hQueued, INFINITE) == WAIT_OBJECT_0 && pThis->m_Written != pThis->m_Queued)
    {
        pThis->Write(pThis->m_Slots[pThis->m_Written % kSampleQueue]);
        ++pThis->m_Written;
    }
    return 0;
}

// Every frame is tried, also after a failure: a disk that was full may have room again.
void SampleConnection::Write(const Slot& slot)
{
    wchar_t path[MAX_PATH + 64], text[MAX_PATH + 256];
    const UINT number = static_cast<UINT>(slot.m_Number);
    _snwprintf(path, MAX_PATH + 64, L"%ls\\source%u-frame%06u.png", m_Folder, m_Source, number);
    const DWORD error = SamplePictureWrite(path, slot.m_pPixels, slot.m_Width, slot.m_Height);
    if (error == ERROR_SUCCESS)
        return Count(kSampleRecorded, slot.m_Number);
    _snwprintf(text, MAX_PATH + 256,
        L"TessloClientDllSample: cannot write %ls (error %lu); further failures of source %u are only counted\n", path,
        error, m_Source);
    if (!m_bReported)
        OutputDebugStringW(text);
    m_bReported = true;
    Count(kSampleFailed, slot.m_Number, error);
}
