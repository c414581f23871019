/*
 * The smallest client library: writes what each virtual monitor shows to a file of raw frames, one file a size. Watch
 * one, also while it grows:
 *     ffplay -f rawvideo -pixel_format bgr0 -video_size 1280x720 source0-1280x720.raw
 * The files lie in the folder that the environment variable TESSLO_RAW_DIR names, else in the program's current one.
 * Their disk sets the pace: while it writes a frame, newer ones of that source replace each other.
 */
#include "../../include/tesslo/client.h"

#include <stdio.h>
#include <stdlib.h>

typedef struct Connection
{
    FILE* pFile; /* null before the first frame, and while no file can be made */
    UINT Width;
    UINT Height;
} Connection;

static void Begin(Connection* pConnection, const TessloVirtualMonitorFrame* pFrame)
{
    const char* pFolder = getenv("TESSLO_RAW_DIR");
    char path[FILENAME_MAX];
    if (pConnection->pFile)
        fclose(pConnection->pFile);
    snprintf(path, sizeof(path), "%s/source%u-%ux%u.raw", pFolder ? pFolder : ".", pFrame->VidPnSourceId, pFrame->Width,
        pFrame->Height);
    pConnection->pFile = fopen(path, "wb");
    pConnection->Width = pFrame->Width;
    pConnection->Height = pFrame->Height;
}

BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId)
{
    (void)VidPnSourceId;
    *ppConnection = calloc(1, sizeof(Connection));
    return *ppConnection != NULL;
}

BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    Connection* pConnection = *ppConnection;
    const char* pRow = pFrame->pBits;
    if (pFrame->Width != pConnection->Width || pFrame->Height != pConnection->Height)
        Begin(pConnection, pFrame);
    for (UINT y = 0; pConnection->pFile && y < pFrame->Height; ++y, pRow += pFrame->Pitch)
        fwrite(pRow, 4, pFrame->Width, pConnection->pFile); /* a full disk loses frames, never the program */
    return TRUE;
}

BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT VidPnSourceId)
{
    Connection* pConnection = *ppConnection;
    (void)VidPnSourceId;
    if (pConnection->pFile)
        fclose(pConnection->pFile);
    free(pConnection);
    return TRUE;
}
