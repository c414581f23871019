#include "TestClient.h"

#include "FailNthAllocation.h"

#include "client/test/TestClientTable.h"

#include <d3d9.h>

#include <stdexcept>

namespace tesslo::test
{

namespace
{

constexpr DWORD kGenerousWait = 30000;  ///< milliseconds

std::string SlotText(void** ppConnection)
{
    return std::to_string(reinterpret_cast<UINT_PTR>(*ppConnection));
}

}  // namespace

TestClient::TestClient(const std::string& variant)
    : m_DllName(L"TessloTestClient" +
                (variant.empty() ? L"" : L"Without" + std::wstring(variant.begin(), variant.end())) + L".dll")
{
    m_hModule = LoadLibraryW(m_DllName.c_str());
    if (!m_hModule)
        throw std::runtime_error("no test client library without " + variant);
    m_hEventCalled = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const TestClientTable table{
        this, InternalPlug, InternalUpdate, InternalUnplug, InternalReserved1, InternalReserved2};
    auto pSetTable = reinterpret_cast<TestClientSetTableFunction>(
        reinterpret_cast<void*>(GetProcAddress(m_hModule, TEST_CLIENT_SET_TABLE)));
    pSetTable(&table);
}

TestClient::~TestClient()
{
    auto pSetTable = reinterpret_cast<TestClientSetTableFunction>(
        reinterpret_cast<void*>(GetProcAddress(m_hModule, TEST_CLIENT_SET_TABLE)));
    pSetTable(nullptr);
    FreeLibrary(m_hModule);
    CloseHandle(m_hEventCalled);
}

std::vector<TestClient::Frame> TestClient::Frames() const
{
    std::lock_guard lock(m_Mutex);
    return m_Frames;
}

bool TestClient::WaitForFrames(size_t count) const
{
    return InternalWait([&] { return Frames().size() >= count; });
}

bool TestClient::WaitForCalls(const std::string& method, size_t count) const
{
    return InternalWait([&] { return Calls(method) >= count; });
}

bool TestClient::InternalWait(const std::function<bool()>& condition) const
{
    while (!condition())
        if (WaitForSingleObject(m_hEventCalled, kGenerousWait) != WAIT_OBJECT_0)
            return condition();
    return true;
}

bool TestClient::InternalCall(const char* pExport, const std::string& arguments)
{
    const bool succeeded = SUCCEEDED(RecordCall("", pExport, arguments));
    SetEvent(m_hEventCalled);
    return succeeded;
}

BOOLEAN TestClient::InternalPlug(void* pContext, void** ppConnection, UINT VidPnSourceId)
{
    auto& client = *static_cast<TestClient*>(pContext);
    if (!client.InternalCall("Plug", SlotText(ppConnection) + ", " + std::to_string(VidPnSourceId)))
        return FALSE;
    *ppConnection = client.m_pConnection;
    return TRUE;
}

BOOLEAN TestClient::InternalUpdate(void* pContext, void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    auto& client = *static_cast<TestClient*>(pContext);
    {
        const auto* pBits = static_cast<const BYTE*>(pFrame->pBits);
        Frame frame{*pFrame, {pBits, pBits + size_t{pFrame->Pitch} * pFrame->Height}, GetCurrentThreadId()};
        frame.m_Record.pBits = nullptr;
        std::lock_guard lock(client.m_Mutex);
        client.m_Frames.push_back(std::move(frame));
    }
    return client.InternalCall("Update", SlotText(ppConnection) + ", " + std::to_string(pFrame->VidPnSourceId) + ", " +
                                             std::to_string(pFrame->Width) + "x" + std::to_string(pFrame->Height));
}

BOOLEAN TestClient::InternalUnplug(void* pContext, void** ppConnection, UINT VidPnSourceId)
{
    auto& client = *static_cast<TestClient*>(pContext);
    return client.InternalCall("Unplug", SlotText(ppConnection) + ", " + std::to_string(VidPnSourceId));
}

BOOLEAN TestClient::InternalReserved1(void* pContext, HWND, IDirect3DDevice9Ex** ppDevice)
{
    auto& client = *static_cast<TestClient*>(pContext);
    if (!client.InternalCall("Reserved1", "") || !client.m_pDevice)
        return FALSE;
    client.m_pDevice->AddRef();
    *ppDevice = client.m_pDevice;
    return TRUE;
}

BOOLEAN TestClient::InternalReserved2(void* pContext, IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface)
{
    auto& client = *static_cast<TestClient*>(pContext);
    return client.InternalCall(
        "Reserved2", client.PointerText(pDevice, "device") + ", " + client.PointerText(pSurface, "surface"));
}

}  // namespace tesslo::test
