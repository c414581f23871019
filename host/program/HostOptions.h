// The program's command line.
#pragma once

#include "host/runtime/HostDriver.h"
#include "host/runtime/HostError.h"

#include <string>
#include <vector>

enum class HostSceneKind
{
    Turning,  ///< HostTurningScene
    Fill,     ///< HostFillScene
    Video,    ///< HostVideoScene
    Card,     ///< HostCardScene
};

/// The word that --scene has for it.
const char* HostSceneName(HostSceneKind kind);

constexpr UINT kHostSizeMin = 64;  ///< pixels; below it the scenes have nothing to show
constexpr UINT kHostSizeMax = 8192;

struct HostSource
{
    UINT m_Width = 0;
    UINT m_Height = 0;
    UINT m_Degrees = 0;  ///< 0, 90, 180 or 270
    HostSceneKind m_Scene = HostSceneKind::Turning;
};

struct HostOptions
{
    HostDriverSettings m_Driver;
    std::vector<HostSource> m_Sources;
    UINT m_Frames = 0;           ///< for each source; 0: until the program is stopped
    UINT m_FramesPerSecond = 0;  ///< 0: as fast as it goes
    UINT m_ChangeEvery = 0;      ///< frames from one change of a source's rotation and mode to the next; 0: none
    std::wstring m_Output;       ///< empty: count only
    bool m_bEveryFrame = false;
    std::wstring m_Report;  ///< where a report about this machine goes, and nothing is shown; empty: none

    /// Whether the sample client library shall write pictures. Those of a run without end would fill the disk.
    bool Records() const { return !m_Output.empty() && m_Frames != 0; }
};

/// Asked for with --help: the text to print, no failure.
class HostHelp : public HostError
{
public:
    using HostError::HostError;
};

/// Throws HostError with one line for bad input, HostHelp with the whole text for --help.
HostOptions HostParseOptions(std::vector<std::string> arguments);
