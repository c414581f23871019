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
    UINT m_Frames = 0;
    std::wstring m_Output;  ///< empty: count only
    bool m_bEveryFrame = false;
};

/// Asked for with --help: the text to print, no failure.
class HostHelp : public HostError
{
public:
    using HostError::HostError;
};

/// Throws HostError with one line for bad input, HostHelp with the whole text for --help.
HostOptions HostParseOptions(std::vector<std::string> arguments);
