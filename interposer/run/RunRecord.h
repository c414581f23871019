// What one run of a program is told and what comes of it: a record in memory that the program's process shares with
// the one that has started it. It outlives a program that crashes or is ended, without a word from it.
#pragma once

#include <windows.h>

/// Environment variable with the name of the shared memory. Without it a run is told nothing and keeps its results.
#define TESSLO_RUN_RECORD L"TESSLO_RUN_RECORD"

enum class RunMode : UINT
{
    Compare,  ///< every frame and every read of pixels is compared with the driver's picture
    Answer,   ///< as Compare, and the program reads the driver's pixels
    Carry,    ///< drawn through the driver, compared with nothing
    Off,      ///< frames are counted
};

/// How often something happened. The first free one of a table has no name.
struct RunCount
{
    char m_Name[88];
    LONG64 m_Count;
};

struct RunRecord
{
    static constexpr size_t kPath = 260;

    // What the run is told.
    RunMode m_Mode;
    UINT m_SourceId;            ///< that frames are flipped to
    UINT64 m_FrameLimit;        ///< frames after which the program is ended; 0: never
    UINT m_bPoint;              ///< both sides sample textures by point
    wchar_t m_Driver[kPath];    ///< the driver's file; empty: TessloWddmUmode.dll
    wchar_t m_Client[kPath];    ///< the client library that gets the frames; empty: the driver's default
    wchar_t m_Pictures[kPath];  ///< folder for pairs of frames that differ; empty: none are kept

    // What comes of it. Each number is written by one thread at a time.
    LONG64 m_Devices;  ///< that the program created and the driver draws for
    LONG64 m_Frames;   ///< that the program presented
    LONG64 m_Equal;
    LONG64 m_Different;
    LONG64 m_FirstDifferent;      ///< number of the first one, from 1
    LONG64 m_WorstPixels;         ///< most pixels that differ in a frame
    LONG64 m_WorstOf;             ///< pixels of that frame
    LONG64 m_GreatestDifference;  ///< of a channel, 1 to 255
    LONG64 m_Reads;               ///< of pixels by the program
    LONG64 m_DifferentReads;
    UINT m_bFrameLimitReached;
    RunCount m_Calls[64];     ///< of the driver, by entry
    RunCount m_Limits[48];    ///< of the driver, that the program touched
    RunCount m_Failures[32];  ///< what could not be carried, in the words of the failure
};
