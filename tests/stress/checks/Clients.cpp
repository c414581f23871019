#include "Clients.h"

#include "ClientDeed.h"
#include "StressFlipDevice.h"
#include "StressRun.h"
#include "StressScenario.h"
#include "StressText.h"
#include "TemporaryFolder.h"
#include "Waiting.h"

#include <atomic>
#include <fstream>
#include <thread>

namespace tesslo::test
{

namespace
{

constexpr DWORD kCode = 0xE0005151;   ///< an exception of nobody's
constexpr DWORD kMoment = 30;         ///< milliseconds that a client library hangs
constexpr int kSpareReferences = 16;  ///< of a library that gives some back in a life
constexpr const char* kExports[TEST_CLIENT_EXPORTS] = {"Plug", "Update", "Unplug", "Reserved1", "Reserved2"};

using Steps = std::vector<StressStep>;

/// One client library. Its function tells whether it has done what it is there for.
struct Case
{
    std::string m_What;
    std::function<bool(StressRun& run, const Case& self)> m_Run;
};

/// What stands behind every life: nothing.
void ExpectNothingLeft(StressRun& run, const Case& c, StressDriver& driver)
{
    const uint64_t left = driver.Leftovers();
    run.SetReferences(left);
    run.Expect(left == 0, c.m_What + ": " + std::to_string(left) + " objects or references live on");
}

/// A whole life in which only flips may answer other than they do undisturbed.
void LiveAsEver(StressRun& run, const Case& c, StressDriver& driver)
{
    for (const StressStep& step : StressScenario(driver).Run())
        run.Expect(step.m_Entry == "pfnPresent flip" || StressIsOrdinary(step),
            c.m_What + ": " + step.m_Entry + " answers " + StressHex(step.m_hResult));
    ExpectNothingLeft(run, c, driver);
}

/// The registry names a file that is no client library, or one without an export.
bool RunNamed(StressRun& run, const Case& c, const std::wstring& name)
{
    StressDriver driver(0, name.c_str());
    LiveAsEver(run, c, driver);
    return driver.m_Client.Calls("Update") == 0;
}

bool RunRefusing(StressRun& run, const Case& c, TestClientExport of, unsigned nth)
{
    StressDriver driver;
    driver.m_Client.Fail(kExports[of], E_FAIL, nth);
    LiveAsEver(run, c, driver);
    return driver.m_Client.Calls(kExports[of]) >= std::max(nth, 1U);
}

/// Opens the way for a client library that hangs, a moment after it has begun to.
class Release
{
public:
    Release(TestClient& client, TestClientExport of)
        : m_hEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)), m_Thread([this, &client, of] {
              while (!m_bOver && client.Calls(kExports[of]) == 0)
                  Sleep(1);
              Sleep(kMoment);
              SetEvent(m_hEvent);
          })
    {
    }
    ~Release()
    {
        m_bOver = true;
        m_Thread.join();
        CloseHandle(m_hEvent);
    }
    Release(const Release&) = delete;
    Release& operator=(const Release&) = delete;
    HANDLE Event() const { return m_hEvent; }

private:
    HANDLE m_hEvent;
    std::atomic<bool> m_bOver = false;
    std::thread m_Thread;
};

bool RunHanging(StressRun& run, const Case& c, TestClientExport of)
{
    StressDriver driver;
    const Release release(driver.m_Client, of);
    SetDeed(driver.m_Client, of, {TEST_CLIENT_HANG, 0, release.Event()});
    LiveAsEver(run, c, driver);
    return driver.m_Client.Calls(kExports[of]) > 0;
}

/// The export is called on a thread of the driver's, which its deed may end.
bool RunDeed(StressRun& run, const Case& c, TestClientExport of, TestClientDeedKind kind)
{
    StressDriver driver;
    SetDeed(driver.m_Client, of, {kind, kCode, nullptr});
    if (kind == TEST_CLIENT_END_THREAD && of == TEST_CLIENT_RESERVED1)
    {
        // Ends the thread that would have made the device: nothing can be created.
        StressScenario(driver).Run();
        ExpectNothingLeft(run, c, driver);
    }
    else
        LiveAsEver(run, c, driver);
    return driver.m_Client.Calls(kExports[of]) > 0;
}

/// The export is called on the presenting thread, and ends it.
bool RunEndingPresenter(StressRun& run, const Case& c)
{
    StressDriver driver;
    StressFlipDevice output(driver);
    SetDeed(driver.m_Client, TEST_CLIENT_RESERVED2, {TEST_CLIENT_END_THREAD, 0, nullptr});
    const HANDLE hPresenter = CreateThread(
        nullptr, 0,
        [](void* pOutput) -> DWORD {
            static_cast<StressFlipDevice*>(pOutput)->Flip();
            return 1;
        },
        &output, 0, nullptr);
    WaitForSingleObject(hPresenter, INFINITE);
    DWORD code = 1;
    GetExitCodeThread(hPresenter, &code);
    CloseHandle(hPresenter);
    SetDeed(driver.m_Client, TEST_CLIENT_RESERVED2, {TEST_CLIENT_NOTHING, 0, nullptr});
    run.Expect(output.Flip() == S_OK, c.m_What + ": another thread cannot present");
    run.Expect(driver.m_Client.WaitForUpdates(1), c.m_What + ": no frame comes");
    run.Expect(output.Close() == S_OK, c.m_What + ": the adapter does not close");
    ExpectNothingLeft(run, c, driver);
    return code == 0;
}

/// The library gives references of itself back that are not its own; others hold it.
bool RunFreeing(StressRun& run, const Case& c, TestClientExport of)
{
    StressDriver driver;
    for (int i = 0; i < kSpareReferences; ++i)
        LoadLibraryW(driver.m_Client.DllName().c_str());
    SetDeed(driver.m_Client, of, {TEST_CLIENT_FREE, 0, nullptr});
    LiveAsEver(run, c, driver);
    const auto calls = static_cast<int>(driver.m_Client.Calls(kExports[of]));
    for (int i = calls; i < kSpareReferences; ++i)
        FreeLibrary(driver.m_Client.Module());
    return calls > 0;
}

/// Where the loader finds the tests' client library: beside the program, whatever folder it was started from.
std::filesystem::path TestClientPath()
{
    const HMODULE hClient = LoadLibraryW(StressDriver::kTestClient);
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(hClient, path, MAX_PATH);
    FreeLibrary(hClient);
    return path;
}

/// The library gives back the driver's reference, which is the last, and ends the thread that it was called on.
bool RunUnloading(StressRun& run, const Case& c, TestClientExport of)
{
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.Path() / L"TessloTestClientThatLeaves.dll";
    std::filesystem::copy_file(TestClientPath(), path);
    bool gone = false;
    {
        const HMODULE hClient = LoadLibraryW(path.c_str());
        SetDeed(hClient, of, {TEST_CLIENT_FREE_AND_END, 0, nullptr});
        StressDriver driver(0, path.c_str());
        FreeLibrary(hClient);
        StressScenario(driver).Run();
        ExpectNothingLeft(run, c, driver);
        gone = !GetModuleHandleW(path.c_str());
    }
    return gone;
}

// Calls back into the driver, as no client library should.
void Reenter(StressDriver& driver, StressFlipDevice& output, bool flips)
{
    const D3DDDI_DEVICEFUNCS& f = driver.Functions();
    const HANDLE h = driver.Device();
    const D3DDDIARG_RENDERSTATE state{D3DDDIRS_ZENABLE, 1};
    f.pfnSetRenderState(h, &state);
    const D3DDDIARG_CLEAR clear{1, 0, 1.0F, 0};
    f.pfnClear(h, &clear, 0, nullptr);
    const D3DDDIARG_DRAWPRIMITIVE2 draw{D3DPT_TRIANGLELIST, 0, 1};
    f.pfnDrawPrimitive2(h, &draw);
    CreateRequest request(kFlagTexture, kVideo, D3DDDIFMT_A8R8G8B8, 4, 4);
    if (SUCCEEDED(f.pfnCreateResource(h, &request.m_Arg)))
        f.pfnDestroyResource(h, request.m_Arg.hResource);
    f.pfnFlush(h);
    if (flips)
        output.Flip();
}

bool RunReentering(StressRun& run, const Case& c, TestClientExport of)
{
    StressDriver driver;
    StressFlipDevice output(driver);
    std::atomic<int> depth = 0, entered = 0;
    driver.m_Client.On(kExports[of], [&] {
        // A frame that is sent for a flip of this very call would send the next one.
        if (++depth == 1)
            Reenter(driver, output, of == TEST_CLIENT_UPDATE && ++entered == 1);
        --depth;
    });
    run.Expect(output.Flip() == S_OK, c.m_What + ": the first flip fails");
    // The flip from within the first frame sends a second one, which is not waited for elsewhere.
    run.Expect(driver.m_Client.WaitForUpdates(of == TEST_CLIENT_UPDATE ? 2 : 1), c.m_What + ": no frame comes");
    run.Expect(output.Flip() == S_OK, c.m_What + ": the next flip fails");
    run.Expect(driver.m_Client.WaitForUpdates(of == TEST_CLIENT_UPDATE ? 3 : 2), c.m_What + ": no frame comes");
    run.Expect(output.Close() == S_OK, c.m_What + ": the adapter does not close");
    ExpectNothingLeft(run, c, driver);
    return driver.m_Client.Calls(kExports[of]) > 0;
}

/// A file that is begun as a library of this kind is, and ends behind its headers. @return its bytes.
std::string LibraryHeaders(WORD machine, WORD magic)
{
    struct
    {
        IMAGE_DOS_HEADER m_Dos;
        IMAGE_NT_HEADERS32 m_Headers;
        BYTE m_Rest[512];
    } file{};
    file.m_Dos.e_magic = IMAGE_DOS_SIGNATURE;
    file.m_Dos.e_lfanew = sizeof(file.m_Dos);
    file.m_Headers.Signature = IMAGE_NT_SIGNATURE;
    file.m_Headers.FileHeader.Machine = machine;
    file.m_Headers.FileHeader.SizeOfOptionalHeader = sizeof(file.m_Headers.OptionalHeader);
    file.m_Headers.FileHeader.Characteristics = IMAGE_FILE_DLL | IMAGE_FILE_EXECUTABLE_IMAGE;
    file.m_Headers.OptionalHeader.Magic = magic;
    file.m_Headers.OptionalHeader.SectionAlignment = 4096;
    file.m_Headers.OptionalHeader.FileAlignment = 512;
    file.m_Headers.OptionalHeader.SizeOfImage = 8192;
    file.m_Headers.OptionalHeader.SizeOfHeaders = 512;
    return {reinterpret_cast<const char*>(&file), sizeof(file)};
}

bool RunFile(StressRun& run, const Case& c, const std::string& content)
{
    const TemporaryFolder folder;
    const std::filesystem::path path = folder.Path() / L"client.dll";
    std::ofstream(path, std::ios::binary) << content;
    return RunNamed(run, c, path.wstring());
}

bool RunFolder(StressRun& run, const Case& c)
{
    const TemporaryFolder folder;
    return RunNamed(run, c, folder.Path().wstring());
}

void AddFiles(std::vector<Case>& cases)
{
    const auto addFile = [&](const std::string& what, const std::string& content) {
        cases.push_back({what, [content](StressRun& run, const Case& c) { return RunFile(run, c, content); }});
    };
    addFile("a library of a 32-bit machine", LibraryHeaders(IMAGE_FILE_MACHINE_I386, IMAGE_NT_OPTIONAL_HDR32_MAGIC));
    addFile("a library of another machine", LibraryHeaders(IMAGE_FILE_MACHINE_ARM64, IMAGE_NT_OPTIONAL_HDR64_MAGIC));
    addFile("a library that ends early", LibraryHeaders(IMAGE_FILE_MACHINE_AMD64, IMAGE_NT_OPTIONAL_HDR64_MAGIC));
    addFile("a text file", "This is no library.\r\n");
    addFile("an empty file", "");
    cases.push_back({"a folder", RunFolder});
    const auto addName = [&](const std::string& what, const std::wstring& name) {
        cases.push_back({what, [name](StressRun& run, const Case& c) { return RunNamed(run, c, name); }});
    };
    addName("an empty name", L"");
    addName("an absent name", L"TessloNoSuchClient.dll");
    addName("an absent path", L"C:\\no such folder\\client.dll");
}

void AddExports(std::vector<Case>& cases, TestClientExport of)
{
    const std::string name = kExports[of];
    const auto add = [&](const std::string& what, auto run) {
        cases.push_back({name + " " + what, [of, run](StressRun& r, const Case& c) { return run(r, c, of); }});
    };
    cases.push_back({name + " is missing", [name](StressRun& run, const Case& c) {
                         RunNamed(
                             run, c, L"TessloTestClientWithout" + std::wstring(name.begin(), name.end()) + L".dll");
                         return true;
                     }});
    for (unsigned nth : {0U, 1U, 2U})
        if (nth < 2 || of == TEST_CLIENT_UPDATE)
            add("refuses" + (nth ? " at call " + std::to_string(nth) : ""),
                [nth](StressRun& r, const Case& c, TestClientExport e) { return RunRefusing(r, c, e, nth); });
    add("hangs for a moment", RunHanging);
    const std::pair<TestClientDeedKind, const char*> deeds[] = {
        {TEST_CLIENT_FAULT, "faults"}, {TEST_CLIENT_RAISE, "raises"}, {TEST_CLIENT_END_THREAD, "ends its thread"}};
    for (const auto& [kind, pWhat] : deeds)
        if (kind != TEST_CLIENT_END_THREAD || of != TEST_CLIENT_RESERVED2)
            add(pWhat, [kind](StressRun& r, const Case& c, TestClientExport e) { return RunDeed(r, c, e, kind); });
    add("gives references of its library back", RunFreeing);
    if (of != TEST_CLIENT_RESERVED2)
        add("unloads its library and ends its thread", RunUnloading);
    if (of != TEST_CLIENT_RESERVED1)
        add("calls back into the driver", RunReentering);
}

std::vector<Case> AllCases()
{
    std::vector<Case> cases;
    AddFiles(cases);
    for (UINT of = 0; of < TEST_CLIENT_EXPORTS; ++of)
        AddExports(cases, static_cast<TestClientExport>(of));
    cases.push_back({"Reserved2 ends the presenting thread", RunEndingPresenter});
    return cases;
}

}  // namespace

void StressClients(StressRun& run)
{
    const std::vector<Case> cases = AllCases();
    run.SetCases(cases.size(), StressRun::Share::All);
    while (run.Next())
    {
        const Case& c = cases[run.Number()];
        run.Expect(c.m_Run(run, c), c.m_What + ": that did not happen");
        StressDriver driver;
        StressUndisturbedLife(run, driver);
    }
}

}  // namespace tesslo::test
