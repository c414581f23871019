// A client library whose exports do what the test says. Built in variants that lack one export each.
#include "TestClientTable.h"

namespace
{

TestClientTable s_Table;

}  // namespace

extern "C" {

__declspec(dllexport) void TestClientSetTable(const TestClientTable* pTable)
{
    s_Table = pTable ? *pTable : TestClientTable{};
}

#ifndef TESSLO_TEST_CLIENT_WITHOUT_PLUG
__declspec(dllexport) BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId)
{
    return s_Table.m_pPlug ? s_Table.m_pPlug(s_Table.m_pContext, ppConnection, VidPnSourceId) : TRUE;
}
#endif

#ifndef TESSLO_TEST_CLIENT_WITHOUT_UPDATE
__declspec(dllexport) BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    return s_Table.m_pUpdate ? s_Table.m_pUpdate(s_Table.m_pContext, ppConnection, pFrame) : TRUE;
}
#endif

#ifndef TESSLO_TEST_CLIENT_WITHOUT_UNPLUG
__declspec(dllexport) BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT VidPnSourceId)
{
    return s_Table.m_pUnplug ? s_Table.m_pUnplug(s_Table.m_pContext, ppConnection, VidPnSourceId) : TRUE;
}
#endif

#ifndef TESSLO_TEST_CLIENT_WITHOUT_RESERVED1
__declspec(dllexport) BOOLEAN TessloVirtualMonitorReserved1(HWND hWnd, IDirect3DDevice9Ex** ppDevice)
{
    return s_Table.m_pReserved1 ? s_Table.m_pReserved1(s_Table.m_pContext, hWnd, ppDevice) : FALSE;
}
#endif

#ifndef TESSLO_TEST_CLIENT_WITHOUT_RESERVED2
__declspec(dllexport) BOOLEAN TessloVirtualMonitorReserved2(IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface)
{
    return s_Table.m_pReserved2 ? s_Table.m_pReserved2(s_Table.m_pContext, pDevice, pSurface) : TRUE;
}
#endif
}
