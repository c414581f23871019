// The driver, loaded once in the process, and what becomes of the frames that it is given. Never ended: the process
// ends with it.
#pragma once

#include "host/runtime/HostClientWatch.h"
#include "host/runtime/HostDelivery.h"
#include "host/runtime/HostDriver.h"

class CarryDriver
{
public:
    /// Loads the driver at the first call. Throws HostError, each time, if that fails.
    static CarryDriver& Get();

    HostDriver& Driver() { return m_Driver; }
    HostDelivery& Delivery() { return m_Delivery; }
    /// Whether code at that address is the driver's or its client library's.
    static bool IsOwnCode(const void* pCode);

private:
    CarryDriver();

    HostDriver m_Driver;
    HostDelivery m_Delivery;
    HostClientWatch m_Watch;
};
