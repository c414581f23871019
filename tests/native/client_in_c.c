#include "client_in_c.h"

#include <stdlib.h>

_Static_assert(sizeof(TessloVirtualMonitorFrame) == 32, "wire record");
_Static_assert(sizeof(TessloSampleCounters) == 40, "five counters");

static BOOLEAN Plug(void** ppConnection, UINT VidPnSourceId)
{
    ClientInCConnection* pConnection = calloc(1, sizeof(*pConnection));
    if (pConnection != NULL)
        pConnection->Source = VidPnSourceId;
    *ppConnection = pConnection;
    return pConnection != NULL;
}

static BOOLEAN Update(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    ClientInCConnection* pConnection = *ppConnection;
    const BYTE* pRow = pFrame->pBits;
    if (pFrame->VidPnSourceId != pConnection->Source)
        return FALSE;
    for (UINT y = 0; y < pFrame->Height; ++y, pRow += pFrame->Pitch)
    {
        for (UINT i = 0; i < pFrame->Width * 4; ++i)
            pConnection->Sum += pRow[i];
    }
    ++pConnection->Frames;
    return TRUE;
}

static BOOLEAN Unplug(void** ppConnection, UINT VidPnSourceId)
{
    ClientInCConnection* pConnection = *ppConnection;
    const BOOLEAN bMine = pConnection->Source == VidPnSourceId;
    free(pConnection);
    *ppConnection = NULL;
    return bMine;
}

const ClientInC g_ClientInC = {Plug, Update, Unplug};

size_t ClientInCOffsetOfBits(void)
{
    return offsetof(TessloVirtualMonitorFrame, pBits);
}

size_t ClientInCOffsetOfFailed(void)
{
    return offsetof(TessloSampleCounters, Failed);
}
