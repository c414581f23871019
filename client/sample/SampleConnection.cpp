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
    else if (length != 0 && !pConnection->StartWriter())
    {
        delete pConnection;
        return nullptr;
    }
    SampleCountersAdd(source, &TessloSampleCounters::Connections);
    return pConnection;
}

SampleConnection::~SampleConnection()
{
    for (Slot& slot : m_Slots)
        std::free(slot.m_pPixels);
}

void SampleConnection::Close()
{
    if (IsRecording())
    {
        AcquireSRWLockExclusive(&m_Lock);
        m_bClosing = true;
        ReleaseSRWLockExclusive(&m_Lock);
        WakeConditionVariable(&m_Changed);
        WaitForSingleObject(m_hWriter, INFINITE);
        CloseHandle(m_hWriter);
    }
    delete this;
}

void SampleConnection::Update(const TessloVirtualMonitorFrame& frame)
{
    const UINT64 number = SampleCountersAdd(m_Source, &TessloSampleCounters::Received);
    if (!IsRecording())
        return;
    Slot* pSlot = FreeSlot();
    if (pSlot == nullptr)
        SampleCountersAdd(m_Source, &TessloSampleCounters::Dropped);
    else if (const DWORD error = Fill(pSlot, frame, number); error != ERROR_SUCCESS)
        SampleCountersFail(m_Source, number, error);
    else
        Queue();
}

// The slot behind the queued ones is the driver's worker's until Queue hands it over: nobody else adds.
SampleConnection::Slot* SampleConnection::FreeSlot()
{
    AcquireSRWLockExclusive(&m_Lock);
    Slot* pSlot = m_Count < kQueueLength ? &m_Slots[(m_First + m_Count) % kQueueLength] : nullptr;
    ReleaseSRWLockExclusive(&m_Lock);
    return pSlot;
}

void SampleConnection::Queue()
{
    AcquireSRWLockExclusive(&m_Lock);
    ++m_Count;
    ReleaseSRWLockExclusive(&m_Lock);
    WakeConditionVariable(&m_Changed);
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

bool SampleConnection::StartWriter()
{
    m_hWriter = CreateThread(nullptr, 0, WriterThread, this, 0, nullptr);
    return m_hWriter != nullptr;
}

DWORD WINAPI SampleConnection::WriterThread(LPVOID pParameter)
{
    static_cast<SampleConnection*>(pParameter)->Write();
    return 0;
}

void SampleConnection::Write()
{
    while (Slot* pSlot = NextSlot())
    {
        WriteSlot(pSlot);
        Release();
    }
}

// Waits for a queued frame. Null when the connection closes and everything queued is written.
SampleConnection::Slot* SampleConnection::NextSlot()
{
    AcquireSRWLockExclusive(&m_Lock);
    while (m_Count == 0 && !m_bClosing)
        SleepConditionVariableSRW(&m_Changed, &m_Lock, INFINITE, 0);
    Slot* pSlot = m_Count != 0 ? &m_Slots[m_First] : nullptr;
    ReleaseSRWLockExclusive(&m_Lock);
    return pSlot;
}

void SampleConnection::Release()
{
    AcquireSRWLockExclusive(&m_Lock);
    m_First = (m_First + 1) % kQueueLength;
    --m_Count;
    ReleaseSRWLockExclusive(&m_Lock);
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
    ReportOnce(path, error);
    SampleCountersFail(m_Source, pSlot->m_Number, error);
}

void SampleConnection::ReportOnce(const wchar_t* pPath, DWORD error)
{
    if (m_bReported)
        return;
    m_bReported = true;
    wchar_t text[MAX_PATH + 256];
    _snwprintf(text, MAX_PATH + 256,
        L"TessloClientDllSample: cannot write %ls (error %lu); further failures of source %u are only counted\n", pPath,
        error, m_Source);
    OutputDebugStringW(text);
}
