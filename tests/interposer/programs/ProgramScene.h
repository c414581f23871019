// The scenes that the program of these tests can draw.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

struct ProgramScene
{
    std::string m_Name;
    std::function<void()> m_Draw;  ///< throws HostError
};

/// The scenes of the differential tests, by groups, drawn on a device of the platform's and shown in its
/// window.
std::map<std::string, std::vector<ProgramScene>> ProgramDifferentialScenes();
// Others, which use Direct3D 9 as programs do.
std::vector<ProgramScene> ProgramDeviceScenes();
std::vector<ProgramScene> ProgramFrameScenes();
std::vector<ProgramScene> ProgramLimitScenes();
std::vector<ProgramScene> ProgramLongDrawScenes();
std::vector<ProgramScene> ProgramPixelScenes();
std::vector<ProgramScene> ProgramTextureScenes();
/// Asked for one by one: some end the process.
std::vector<ProgramScene> ProgramRudeScenes();
