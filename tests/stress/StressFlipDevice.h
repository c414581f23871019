// A device with one primary that is flipped to one source: the smallest life that sends frames.
#pragma once

#include "StressDriver.h"

namespace tesslo::test
{

class StressFlipDevice
{
public:
    /// Opens the adapter and makes both. Throws std::runtime_error when one of them fails.
    explicit StressFlipDevice(StressDriver& driver, UINT source = 2);
    /// Closes the adapter, if it is open still.
    ~StressFlipDevice();
    StressFlipDevice(const StressFlipDevice&) = delete;
    StressFlipDevice& operator=(const StressFlipDevice&) = delete;

    HRESULT Flip();
    /// Destroys the primary and closes the adapter: ends the workers. @return what the closing answers.
    HRESULT Close();

private:
    StressDriver& m_Driver;
    CreateRequest m_Primary;
};

}  // namespace tesslo::test
