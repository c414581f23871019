#include "TestClient.h"

#include "TraceText.h"
#include "Waiting.h"

#include "client/test/TestClientTable.h"

#include <d3d9.h>

#include <stdexcept>

namespace tesslo::test
{

namespace
{

void SetTable(HMODULE hModule, const TestClientTable* pTable)
{
    const auto pSetTable = reinterpret_cast<TestClientSetTableFunction>(
        reinterpret_cast<void*>(GetProcAddress(hModule, TEST_CLIENT_SET_TABLE)));
    pSetTable(pTable);
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
    SetTable(m_hModule, &table);
}

TestClient::~TestClient()
{
    SetTable(m_hModule, nullptr);
    FreeLibrary(m_hModule);
    CloseHandle(m_hEventCalled);
}

std::vector<TestClient::Call> TestClient::History() const
{
    std::lock_guard lock(m_Mutex);
    return m_History;
}

std::vector<TestClient::Call> TestClient::Updates() const
{
    std::vector<Call> calls = History();
    std::erase_if(calls, [](const Call& call) { return call.m_Name != "Update"; });
    return calls;
}

std::vector<std::string> TestClient::Names() const
{
    std::vector<std::string> names;
    for (const Call& call : History())
        names.push_back(call.m_Name);
    return names;
}

void TestClient::Forget()
{
    ClearLines();
    std::lock_guard lock(m_Mutex);
    m_History.clear();
}

bool TestClient::WaitForCalls(size_t count) const
{
    return InternalWait([&] { return History().size() >= count; });
}

bool TestClient::WaitForUpdates(size_t count) const
{
    return InternalWait([&] { return Updates().size() >= count; });
}

bool TestClient::InternalWait(const std::function<bool()>& condition) const
{
    while (!condition())
        if (WaitForSingleObject(m_hEventCalled, kLong) != WAIT_OBJECT_0)
            return condition();
    return true;
}

bool TestClient::InternalBegin(const Call& call, const std::string& moreArguments)
{
    const std::string slot = std::to_string(reinterpret_cast<UINT_PTR>(call.m_pSlotValue));
    const std::string source = std::to_string(call.m_VidPnSourceId);
    return SUCCEEDED(RecordCall("", call.m_Name.c_str(), slot + ", " + source + moreArguments));
}

void TestClient::InternalEnd(Call&& call)
{
    {
        std::lock_guard lock(m_Mutex);
        m_History.push_back(std::move(call));
    }
    SetEvent(m_hEventCalled);
}

BOOLEAN TestClient::InternalPlug(void* pContext, void** ppConnection, UINT VidPnSourceId)
{
    auto& client = *static_cast<TestClient*>(pContext);
    Call call{"Plug", ppConnection, *ppConnection, VidPnSourceId, GetCurrentThreadId(), {}, {}};
    const bool accepted = client.InternalBegin(call);
    if (accepted)
        *ppConnection = client.m_pConnection;
    client.InternalEnd(std::move(call));
    return accepted;
}

BOOLEAN TestClient::InternalUpdate(void* pContext, void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    auto& client = *static_cast<TestClient*>(pContext);
    if (client.m_OnFrame)
        client.m_OnFrame(*pFrame);
    Call call{"Update", ppConnection, *ppConnection, pFrame->VidPnSourceId, GetCurrentThreadId(), *pFrame, {}};
    const bool accepted =
        client.InternalBegin(call, ", " + std::to_string(pFrame->Width) + "x" + std::to_string(pFrame->Height));
    const auto* pPixels = static_cast<const UINT*>(pFrame->pBits);
    call.m_Pixels.assign(pPixels, pPixels + size_t{pFrame->Width} * pFrame->Height);
    client.InternalEnd(std::move(call));
    return accepted;
}

BOOLEAN TestClient::InternalUnplug(void* pContext, void** ppConnection, UINT VidPnSourceId)
{
    auto& client = *static_cast<TestClient*>(pContext);
    Call call{"Unplug", ppConnection, *ppConnection, VidPnSourceId, GetCurrentThreadId(), {}, {}};
    const bool accepted = client.InternalBegin(call);
    client.InternalEnd(std::move(call));
    return accepted;
}

BOOLEAN TestClient::InternalReserved1(void* pContext, HWND hWnd, IDirect3DDevice9Ex** ppDevice)
{
    auto& client = *static_cast<TestClient*>(pContext);
    const LONG result = client.RecordCall("", "Reserved1", Low(hWnd));
    if (result == S_FALSE)
        return TRUE;
    *ppDevice = client.m_pDevice;
    if (FAILED(result) || !client.m_pDevice)
        return FALSE;
    client.m_pDevice->AddRef();
    return TRUE;
}

BOOLEAN TestClient::InternalReserved2(void* pContext, IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface)
{
    auto& client = *static_cast<TestClient*>(pContext);
    const std::string arguments =
        client.PointerText(pDevice, "device") + ", " + client.PointerText(pSurface, "surface");
    return SUCCEEDED(client.RecordCall("", "Reserved2", arguments));
}

}  // namespace tesslo::test
