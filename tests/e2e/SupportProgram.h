// A program that shows frames on one virtual monitor, through the host.
#pragma once

#include "FakeFactory.h"

#include "host/kernel/HostKernel.h"
#include "host/runtime/HostAdapter.h"
#include "host/runtime/HostClientWatch.h"
#include "host/runtime/HostDelivery.h"
#include "host/runtime/HostDevice.h"
#include "host/runtime/HostDriver.h"

#include <memory>
#include <optional>
#include <string>

namespace tesslo::test
{

class SupportProgram
{
public:
    static constexpr UINT kWidth = 96;
    static constexpr UINT kHeight = 64;

    /// Opens the driver's device.
    /// @param mask           what the registry holds for the trace.
    /// @param clientLibrary  what it holds for the client library, which need not be there; no value: nothing.
    /// @param pDelegated     what the driver draws on instead of the real thing; outlives the program.
    /// @param pAdapterDriver of the one adapter that the fake device is on.
    SupportProgram(DWORD mask, const std::optional<std::wstring>& clientLibrary, FakeDevice* pDelegated = nullptr,
        const char* pAdapterDriver = "card.dll");

    HostDriver& Driver() { return m_Driver; }
    HostDevice& Device() { return m_Device; }
    HostDelivery& Delivery() { return m_Delivery; }

    /// Makes the screen, in place of one that was there.
    void MakeScreen(UINT width = kWidth, UINT height = kHeight, D3DDDI_ROTATION rotation = D3DDDI_ROTATION_IDENTITY);
    void DestroyScreen() { m_pScreen.reset(); }
    HostResource& Screen() { return *m_pScreen; }

    /// Flips the screen. @return whether the driver did it.
    bool Flip();
    /// Flips it until the driver does so no more.
    void FlipUntilRefused();
    /// Flips once and waits until the frame is delivered.
    void Show();

    UINT64 Delivered() const { return m_Delivery.Counters(kSource).m_Delivered; }
    /// As the client library got it.
    HostImage LastFrame() const { return m_Delivery.LastFrame(kSource); }

private:
    static constexpr UINT kSource = 0;

    HostDriver m_Driver;
    std::unique_ptr<FakeFactory> m_pFactory;  ///< patches the driver: goes before it
    HostDelivery m_Delivery;
    HostClientWatch m_Watch;
    HostKernel m_Kernel;
    HostAdapter m_Adapter;
    HostDevice m_Device;
    std::unique_ptr<HostResource> m_pScreen;
};

}  // namespace tesslo::test
