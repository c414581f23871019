// The whole of it in one object: driver, kernel-mode half, adapter and device, taken down in the right order.
#pragma once

#include "host/kernel/HostKernel.h"
#include "host/runtime/HostAdapter.h"
#include "host/runtime/HostClientWatch.h"
#include "host/runtime/HostDelivery.h"
#include "host/runtime/HostDevice.h"
#include "host/runtime/HostDriver.h"
#include "host/runtime/HostRecording.h"

#include <memory>
#include <vector>

class HostSession
{
public:
    /// Loads the driver and creates its device. Throws HostError.
    explicit HostSession(const HostDriverSettings& settings);
    ~HostSession();

    HostDriver& Driver() { return m_Driver; }
    HostKernel& Kernel() { return m_Kernel; }
    HostAdapter& Adapter() { return *m_pAdapter; }
    HostDevice& Device() { return *m_pDevice; }
    HostDelivery& Delivery() { return m_Delivery; }
    const HostRecording& Recording() const { return m_Recording; }

    /// Flips, and lets the delivery know.
    HostFlipTime Present(const HostResource& primary);
    /// Destroys the device and closes the adapter; the driver stays loaded. What was made with the device goes before.
    void Close();

private:
    HostDriver m_Driver;
    HostDelivery m_Delivery;
    HostClientWatch m_Watch;
    HostRecording m_Recording;
    HostKernel m_Kernel;
    std::unique_ptr<HostAdapter> m_pAdapter;
    std::unique_ptr<HostDevice> m_pDevice;
};
