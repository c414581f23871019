#include "BenchDriver.h"

#include "BenchNullDevice.h"
#include "BenchTimer.h"
#include "client/test/TestClientTable.h"
#include "host/runtime/HostError.h"
#include "host/runtime/HostSession.h"

#include <string>

namespace
{
constexpr wchar_t kClient[] = L"TessloTestClient.dll";
constexpr wchar_t kDriver[] = L"TessloWddmUmode.dll";
constexpr wchar_t kTracedSuffix[] = L".traced.dll";
constexpr DWORD kEntryLevel = 0x2;

/// Makes the client library of the tests give a null device to each driver that asks.
class NullDeviceClient
{
public:
    NullDeviceClient() : m_hModule(LoadLibraryW(kClient))
    {
        if (m_hModule == nullptr)
            HostThrowSystemError("cannot load the client library of the tests", GetLastError());
        const TestClientTable table = {this, nullptr, nullptr, nullptr, GiveDevice, nullptr};
        SetTable(&table);
    }
    ~NullDeviceClient()
    {
        SetTable(nullptr);
        FreeLibrary(m_hModule);
    }
    NullDeviceClient(const NullDeviceClient&) = delete;
    NullDeviceClient& operator=(const NullDeviceClient&) = delete;

    IDirect3DDevice9Ex* Device() { return m_Device.Get(); }

private:
    static BOOLEAN GiveDevice(void* pContext, HWND, IDirect3DDevice9Ex** ppDevice)
    {
        *ppDevice = static_cast<NullDeviceClient*>(pContext)->Device();
        return TRUE;
    }

    void SetTable(const TestClientTable* pTable)
    {
        reinterpret_cast<TestClientSetTableFunction>(
            reinterpret_cast<void*>(GetProcAddress(m_hModule, TEST_CLIENT_SET_TABLE)))(pTable);
    }

    HMODULE m_hModule;
    BenchNullDevice m_Device;
};

HostDriverSettings Settings(const std::wstring& path, DWORD traceMask)
{
    HostDriverSettings settings;
    settings.m_Path = path;
    settings.m_ClientLibrary = kClient;
    settings.m_TraceMask = traceMask;
    return settings;
}

/// What one entry adds to the method that it ends in.
void Added(BenchReport& report, const std::string& name, const BenchWork& ours, const BenchWork& other)
{
    if (!report.Wants(name))
        return;
    const std::vector<double> times = BenchCompare({ours, other}, 51, 20000);
    report.AddDifference(name, times[0], "null device", times[1], 5);
}

void Calls(BenchReport& report, HostDevice& device, IDirect3DDevice9Ex* pNull)
{
    const D3DDDI_DEVICEFUNCS entries = device.Functions();
    const HANDLE hDevice = device.Handle();
    const D3DDDIARG_RENDERSTATE state = {static_cast<D3DDDIRENDERSTATETYPE>(D3DRS_TEXTUREFACTOR), 1};
    Added(report, "added to SetRenderState", {[&] { entries.pfnSetRenderState(hDevice, &state); }},
        {[&] { pNull->SetRenderState(D3DRS_TEXTUREFACTOR, 1); }});
    const D3DDDIARG_TEXTURESTAGESTATE stage = {0, static_cast<D3DDDITEXTURESTAGESTATETYPE>(D3DTSS_COLOROP), 1};
    Added(report, "added to SetTextureStageState", {[&] { entries.pfnSetTextureStageState(hDevice, &stage); }},
        {[&] { pNull->SetTextureStageState(0, D3DTSS_COLOROP, 1); }});
    const D3DDDIARG_SETPIXELSHADERCONST constant = {0, 1};
    const float values[4] = {};
    Added(report, "added to SetPixelShaderConst", {[&] { entries.pfnSetPixelShaderConst(hDevice, &constant, values); }},
        {[&] { pNull->SetPixelShaderConstantF(0, values, 1); }});
    Added(report, "added to SetTexture", {[&] { entries.pfnSetTexture(hDevice, 0, nullptr); }},
        {[&] { pNull->SetTexture(0, nullptr); }});
}

/// A copy of the driver's file beside it, which is another module to the loader.
class DriverCopy
{
public:
    explicit DriverCopy(HMODULE hDriver)
    {
        wchar_t path[MAX_PATH];
        GetModuleFileNameW(hDriver, path, ARRAYSIZE(path));
        m_Path = std::wstring(path) + kTracedSuffix;
        if (!CopyFileW(path, m_Path.c_str(), FALSE))
            HostThrowSystemError("cannot copy the driver", GetLastError());
    }
    ~DriverCopy() { DeleteFileW(m_Path.c_str()); }
    DriverCopy(const DriverCopy&) = delete;
    DriverCopy& operator=(const DriverCopy&) = delete;

    const std::wstring& Path() const { return m_Path; }

private:
    std::wstring m_Path;
};

/// A second driver with each entry traced, no debugger listening: the mask is read once, at the load.
void Tracing(BenchReport& report, HostSession& session)
{
    const std::string name = "SetTexture traced (mask 0x2)";
    if (!report.Wants(name))
        return;
    const DriverCopy copy(session.Driver().Module());
    HostSession traced(Settings(copy.Path(), kEntryLevel));
    const auto call = [](HostDevice& device) {
        return BenchWork{[&device] { device.Functions().pfnSetTexture(device.Handle(), 0, nullptr); }};
    };
    const std::vector<double> times = BenchCompare({call(traced.Device()), call(session.Device())}, 31, 50);
    report.AddFigure(name, times[0], "mask 0", times[1]);
}

/// Bytes of private memory that are backed by pages.
size_t PrivateBytes()
{
    size_t bytes = 0;
    MEMORY_BASIC_INFORMATION info = {};
    for (const BYTE* p = nullptr; VirtualQuery(p, &info, sizeof(info)) == sizeof(info); p += info.RegionSize)
    {
        if (info.State == MEM_COMMIT && info.Type == MEM_PRIVATE)
            bytes += info.RegionSize;
        p = static_cast<const BYTE*>(info.BaseAddress);
    }
    return bytes;
}

/// What a device that never presented holds, beside as many threads that do nothing: the rest is objects and events.
void IdleMemory(BenchReport& report, HostSession& session)
{
    const std::string name = "memory of an idle device";
    if (!report.Wants(name))
        return;
    constexpr UINT kThreads = 7;
    // The first device of a process also pays for what the platform sets up once.
    size_t before = PrivateBytes();
    HostAdapter adapter(session.Driver(), session.Kernel());
    const HostDevice second(adapter);
    const size_t ours = PrivateBytes() - before;

    HANDLE threads[kThreads];
    before = PrivateBytes();
    for (HANDLE& hThread : threads)
        hThread = CreateThread(nullptr, 0, [](void*) -> DWORD { return 0; }, nullptr, CREATE_SUSPENDED, nullptr);
    const size_t others = PrivateBytes() - before;
    for (HANDLE hThread : threads)
        ResumeThread(hThread);
    WaitForMultipleObjects(kThreads, threads, TRUE, INFINITE);
    for (HANDLE hThread : threads)
        CloseHandle(hThread);
    report.AddMemory(name, ours, "7 bare threads", others);
}
}  // namespace

void BenchOverhead(BenchReport& report)
{
    if (!report.WantsAny({"added to SetRenderState", "added to SetTextureStageState", "added to SetPixelShaderConst",
            "added to SetTexture", "SetTexture traced (mask 0x2)", "memory of an idle device"}))
        return;
    NullDeviceClient client;
    HostSession session(Settings(kDriver, 0));
    Calls(report, session.Device(), client.Device());
    Tracing(report, session);
    IdleMemory(report, session);
}
