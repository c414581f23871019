// What the driver draws for one device of the program: an adapter and a device of the driver's, brought to the state
// of the platform's device call by call.
#pragma once

#include "host/kernel/HostKernel.h"
#include "host/runtime/HostAdapter.h"
#include "host/runtime/HostDevice.h"
#include "interposer/carry/CarryDraws.h"
#include "interposer/carry/CarryOutput.h"
#include "interposer/carry/CarryState.h"
#include "interposer/carry/CarryThread.h"

#include <d3d9.h>

#include <functional>
#include <memory>
#include <unordered_map>

class CarryDevice
{
public:
    /// On the driver's thread. Throws HostError.
    CarryDevice();
    CarryDevice(const CarryDevice&) = delete;
    CarryDevice& operator=(const CarryDevice&) = delete;

    IDirect3DDevice9* Platform() const { return m_pPlatform; }
    CarryOutput& Output() { return m_Output; }
    CarryState& State() { return m_State; }
    CarryDraws& Draws() { return m_Draws; }

    /// Work with the driver's device, on the driver's thread: later, so that it holds a copy of all that it needs.
    template <typename Work>
    UINT64 Post(Work work)
    {
        return CarryThread::Get().Post([this, work = std::move(work)] { work(m_Driver); });
    }
    /// The same, waited for. Throws HostError.
    template <typename Work>
    void Do(const Work& work)
    {
        CarryThread::Get().Do([&] { work(m_Driver); });
    }
    /// A resource that the driver is given back on its thread. Throws HostError.
    std::shared_ptr<HostResource> Create(const HostResourceDescription& description);

    /// From now on it draws for that device, borrowed; not for two at once.
    void Begin(IDirect3DDevice9* pPlatform) { m_pPlatform = pPlatform; }
    /// Brings the driver to the platform's state, whatever has changed it.
    void Sync();
    /// The platform has made back buffers and depth buffer anew.
    void Reset()
    {
        m_Output.Attach();
        Sync();
    }
    /// While a state block is recorded, states are not set, and not carried.
    void Record(bool bRecording) { m_bRecording = bRecording; }
    bool IsRecording() const { return m_bRecording; }
    void Scene(bool bBegins);
    /// Gives up what was for one of the platform's objects.
    void Bury(CarryResource& resource);
    void Clear(DWORD count, const D3DRECT* pRects, DWORD flags, D3DCOLOR color, float z, DWORD stencil);

private:
    IDirect3DDevice9* m_pPlatform = nullptr;
    HostKernel m_Kernel;
    HostAdapter m_Adapter;
    HostDevice m_Driver;
    CarryOutput m_Output;
    CarryState m_State;
    CarryDraws m_Draws;
    bool m_bRecording = false;
    std::unordered_map<const char*, LONG64*> m_CallCounts;  ///< of the run, by an entry's name in one place of the code
};

/// From now on the device's calls are carried.
void CarryBegin(IDirect3DDevice9* pPlatform);
/// The device has gone.
void CarryEnd(IDirect3DDevice9* pPlatform);
/// Does the work if the device is a program's. One thread at a time; what fails is written down and goes no further.
void CarryFor(IDirect3DDevice9* pPlatform, const std::function<void(CarryDevice&)>& work);
/// The same for the device's other interface, or a child of it.
template <typename Child>
void CarryFor(Child* pChild, const std::function<void(CarryDevice&)>& work)
{
    if constexpr (std::is_base_of_v<IDirect3DDevice9, Child>)
        return CarryFor(static_cast<IDirect3DDevice9*>(pChild), work);
    else
    {
        IDirect3DDevice9* pPlatform = nullptr;
        if (FAILED(pChild->GetDevice(&pPlatform)))
            return;
        CarryFor(pPlatform, work);
        pPlatform->Release();
    }
}
