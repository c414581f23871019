// A client library whose exports do what the test says. Built in variants that lack one export each.
#include "TestClientDeed.h"
#include "TestClientTable.h"

/// Where the library is loaded; by the linker.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace
{

TestClientTable s_Table;
TestClientDeed s_Deeds[TEST_CLIENT_EXPORTS];
volatile UINT_PTR s_Nowhere = 8;

/// Does the deed of an export, and gives its answer back if that can still be.
BOOLEAN Answer(TestClientExport of, BOOLEAN answer)
{
    const TestClientDeed deed = s_Deeds[of];
    switch (deed.m_Kind)
    {
    case TEST_CLIENT_FAULT:
        return *reinterpret_cast<volatile BOOLEAN*>(s_Nowhere);
    case TEST_CLIENT_RAISE:
        RaiseException(deed.m_Code, 0, 0, nullptr);
        break;
    case TEST_CLIENT_HANG:
        WaitForSingleObject(deed.m_hEvent, INFINITE);
        break;
    case TEST_CLIENT_END_THREAD:
        ExitThread(0);
    case TEST_CLIENT_FREE:
        FreeLibrary(reinterpret_cast<HMODULE>(&__ImageBase));
        break;
    case TEST_CLIENT_FREE_AND_END:
        FreeLibraryAndExitThread(reinterpret_cast<HMODULE>(&__ImageBase), 0);
    default:
        break;
    }
    return answer;
}

}  // namespace

extern "C" {

__declspec(dllexport) void TestClientSetTable(const TestClientTable* pTable)
{
    s_Table = pTable ? *pTable : TestClientTable{};
    if (!pTable)
        ZeroMemory(s_Deeds, sizeof(s_Deeds));
}

__declspec(dllexport) void TestClientSetDeed(TestClientExport of, const TestClientDeed* pDeed)
{
    s_Deeds[of] = *pDeed;
}

#ifndef TESSLO_TEST_CLIENT_WITHOUT_PLUG
__declspec(dllexport) BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId)
{
    return Answer(
        TEST_CLIENT_PLUG, s_Table.m_pPlug ? s_Table.m_pPlug(s_Table.m_pContext, ppConnection, VidPnSourceId) : TRUE);
}
#endif

#ifndef TESSLO_TEST_CLIENT_WITHOUT_UPDATE
__declspec(dllexport) BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    return Answer(
        TEST_CLIENT_UPDATE, s_Table.m_pUpdate ? s_Table.m_pUpdate(s_Table.m_pContext, ppConnection, pFrame) : TRUE);
}
#endif

#ifndef TESSLO_TEST_CLIENT_WITHOUT_UNPLUG
__declspec(dllexport) BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT VidPnSourceId)
{
    return Answer(TEST_CLIENT_UNPLUG,
        s_Table.m_pUnplug ? s_Table.m_pUnplug(s_Table.m_pContext, ppConnection, VidPnSourceId) : TRUE);
}
#endif

#ifndef TESSLO_TEST_CLIENT_WITHOUT_RESERVED1
__declspec(dllexport) BOOLEAN TessloVirtualMonitorReserved1(HWND hWnd, IDirect3DDevice9Ex** ppDevice)
{
    return Answer(
        TEST_CLIENT_RESERVED1, s_Table.m_pReserved1 ? s_Table.m_pReserved1(s_Table.m_pContext, hWnd, ppDevice) : FALSE);
}
#endif

#ifndef TESSLO_TEST_CLIENT_WITHOUT_RESERVED2
__declspec(dllexport) BOOLEAN TessloVirtualMonitorReserved2(IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface)
{
    return Answer(TEST_CLIENT_RESERVED2,
        s_Table.m_pReserved2 ? s_Table.m_pReserved2(s_Table.m_pContext, pDevice, pSurface) : TRUE);
}
#endif
}
