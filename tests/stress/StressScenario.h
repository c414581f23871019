// One life of an adapter and its device that touches every kind of resource and every entry with work behind it.
#pragma once

#include "StressDriver.h"

#include <array>
#include <list>
#include <string>
#include <vector>

namespace tesslo::test
{

class StressRun;

/// The runtime's callbacks that the driver calls.
inline constexpr std::array kStressCallbacks{"pfnAllocateCb", "pfnDeallocateCb", "pfnSetDisplayModeCb", "pfnPresentCb",
    "pfnRenderCb", "pfnLockCb", "pfnUnlockCb", "pfnEscapeCb", "pfnCreateContextCb", "pfnDestroyContextCb"};

/// What one entry answered.
struct StressStep
{
    std::string m_Entry;  ///< with what it was about: "pfnCreateResource cube"
    HRESULT m_hResult;
    std::array<size_t, kStressCallbacks.size()> m_Callbacks{};  ///< calls of each from the first step to this one
};

/// Whether a step of an undisturbed life answers so. No success by design are a destroyed resource, and what some kinds
/// of resources cannot do.
bool StressIsOrdinary(const StressStep& step);

class StressScenario
{
public:
    explicit StressScenario(StressDriver& driver) : m_Driver(driver) {}

    /// Lives once, as a well-behaved runtime: what failed to be created is not used. Answers in order; a step is
    /// there whenever its entry was called.
    std::vector<StressStep> Run();

private:
    HRESULT InternalNote(const std::string& entry, HRESULT hr);
    HANDLE InternalCreate(const char* pWhat, UINT flags, D3DDDI_POOL pool, D3DDDIFORMAT format, UINT width, UINT height,
        UINT levels = 1, UINT source = 0);
    void InternalOpen();
    void InternalResources();
    void InternalOpenShared();
    void InternalState();
    void InternalShaders();
    void InternalDraws();
    void InternalBlits();
    void InternalLocks();
    void InternalVideo();
    void InternalPresents();
    void InternalAwaitFrame();
    void InternalClose();
    HRESULT InternalBlt(HANDLE hSource, HANDLE hDestination);

    StressDriver& m_Driver;
    std::vector<StressStep> m_Steps;
    std::list<CreateRequest> m_Requests;  ///< their memory is the resources'
    std::vector<HANDLE> m_Resources;
    size_t m_Frames = 0;  ///< presented
    HANDLE m_hSystemTexture = nullptr, m_hTexture = nullptr, m_hCube = nullptr, m_hSystemCube = nullptr;
    HANDLE m_hMemory = nullptr, m_hTarget = nullptr, m_hPrimary = nullptr, m_hDepth = nullptr;
    HANDLE m_hVertices = nullptr, m_hSystemVertices = nullptr, m_hIndices = nullptr, m_hVideoTarget = nullptr;
    HANDLE m_hVertexShader = nullptr, m_hPixelShader = nullptr, m_hDeclaration = nullptr;
};

/// One life that nothing disturbs, which succeeds in every step: a check that disturbs others begins with it.
std::vector<StressStep> StressUndisturbedLife(StressRun& run, StressDriver& driver);

}  // namespace tesslo::test
