#include "SampleConnection.h"

#include "SampleCounters.h"
#include "SamplePicture.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>

SampleConnection* SampleConnection::Open(UINT source)
{
    SampleConnection* pConnection = new (std::nothrow) SampleConnection(source);
    if (pConnection == nullptr)
        return nullptr;
    const DWORD length = GetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, pConnection->m_Folder, MAX_PATH);
    if (length >= MAX_PATH)
        OutputDebugStringW(L"TessloClientDllSample: the folder's name is too long; frames are only counted\n");
    else if (length != 0)
    {
        const auto write = [](LPVOID pParameter) -> DWORD {
            auto* pThis = static_cast<SampleConnection*>(pParameter);
            for (Slot* pSlot = pThis->NextSlot(false); pSlot != nullptr; pSlot = pThis->NextSlot(true))
                pThis->WriteSlot(pSlot);
            return 0;
        };
        pConnection->m_hWriter = CreateThread(nullptr, 0, write, pConnection, 0, nullptr);
        if (pConnection->m_hWriter == nullptr)
        {
            delete pConnection;
            return nullptr;
        }
    }
    SampleCountersAdd(source, &TessloSampleCounters::Connections);
    return pConnection;
}

SampleConnection::~SampleConnection()
{
    for (Slot& slot : m_Slots)
        std::free(slot.m_pPixels);
}

template <typename Work>
void SampleConnection::Change(Work work)
{
    AcquireSRWLockExclusive(&m_Lock);
    work();
    ReleaseSRWLockExclusive(&m_Lock);
    WakeConditionVariable(&m_Changed);
}

void SampleConnection::Close()
{
    if (m_hWriter != nullptr)
    {
        Change([this] { m_bClosing = true; });
        WaitForSingleObject(m_hWriter, INFINITE);
        CloseHandle(m_hWriter);
    }
    wchar_t text[128];
    _snwprintf(text, 128, L"TessloClientDllSample: dropped %u frames of source %u, for which the writer was too slow\n",
        m_Dropped, m_Source);
    if (m_Dropped != 0)
        OutputDebugStringW(text);
    delete this;
}

// The slot behind the queued ones is the worker's until it is counted: nobody else adds.
void SampleConnection::Update(const TessloVirtualMonitorFrame& frame)
{
    const UINT64 number = SampleCountersAdd(m_Source, &TessloSampleCounters::Received);
    if (m_hWriter == nullptr)
        return;
    AcquireSRWLockExclusive(&m_Lock);
    Slot* pSlot = m_Count < TESSLO_SAMPLE_QUEUE ? &m_Slots[(m_First + m_Count) % TESSLO_SAMPLE_QUEUE] : nullptr;
    ReleaseSRWLockExclusive(&m_Lock);
    if (pSlot == nullptr)
    {
        ++m_Dropped;
        SampleCountersAdd(m_Source, &TessloSampleCounters::Dropped);
    }
    else if (const DWORD error = Fill(pSlot, frame, number); error != ERROR_SUCCESS)
        SampleCountersFail(m_Source, number, error);
    else
        Change([this] { ++m_Count; });
}

DWORD SampleConnection::Fill(Slot* pSlot, const TessloVirtualMonitorFrame& frame, UINT64 number)
{
    const size_t rowBytes = static_cast<size_t>(frame.Width) * 4;
    const size_t bytes = rowBytes * frame.Height;
    if (bytes == 0 || frame.Pitch < rowBytes)
        return ERROR_INVALID_DATA;
    if (pSlot->m_Capacity < bytes)
    {
        std::free(pSlot->m_pPixels);
        pSlot->m_pPixels = static_cast<BYTE*>(std::malloc(bytes));
        pSlot->m_Capacity = pSlot->m_pPixels != nullptr ? bytes : 0;
        if (pSlot->m_pPixels == nullptr)
            return ERROR_NOT_ENOUGH_MEMORY;
    }
    const BYTE* pSource = static_cast<const BYTE*>(frame.pBits);
    for (UINT y = 0; y < frame.Height; ++y)
        std::memcpy(pSlot->m_pPixels + y * rowBytes, pSource + static_cast<size_t>(y) * frame.Pitch, rowBytes);
    pSlot->m_Width = frame.Width;
    pSlot->m_Height = frame.Height;
    pSlot->m_Number = number;
    return ERROR_SUCCESS;
}

// Gives the slot back that was written, and waits for a queued frame. Null when the connection closes and everything
// queued is written.
SampleConnection::Slot* SampleConnection::NextSlot(bool bLastIsWritten)
{
    AcquireSRWLockExclusive(&m_Lock);
    m_First = (m_First + bLastIsWritten) % TESSLO_SAMPLE_QUEUE;
    m_Count -= bLastIsWritten;
    while (m_Count == 0 && !m_bClosing)
        SleepConditionVariableSRW(&m_Changed, &m_Lock, INFINITE, 0);
    Slot* pSlot = m_Count != 0 ? &m_Slots[m_First] : nullptr;
    ReleaseSRWLockExclusive(&m_Lock);
    return pSlot;
}

// Every frame is tried, also after a failure: a disk that was full may have room again.
void SampleConnection::WriteSlot(Slot* pSlot)
{
    wchar_t path[MAX_PATH + 64];
    _snwprintf(
        path, MAX_PATH + 64, L"%ls\\source%u-frame%06u.png", m_Folder, m_Source, static_cast<UINT>(pSlot->m_Number));
    const DWORD error = SamplePictureWrite(path, pSlot->m_pPixels, pSlot->m_Width, pSlot->m_Height);
    if (error == ERROR_SUCCESS)
    {
        SampleCountersAdd(m_Source, &TessloSampleCounters::Recorded);
        return;
    }
    wchar_t text[MAX_PATH + 256];
    _snwprintf(text, MAX_PATH + 256,
        L"TessloClientDllSample: cannot write %ls (error %lu); further failures of source %u are only counted\n", path,
        error, m_Source);
    if (!m_bReported)
        OutputDebugStringW(text);
    m_bReported = true;
    SampleCountersFail(m_Source, pSlot->m_Number, error);
}
