// What the runtime gives to open a texture that another process shares.
#pragma once

#include "ddi/ddi.h"
#include "kernel/UMDAllocationPrivateData.h"

namespace tesslo::test
{

/// The runtime's record, the one allocation that it names, and the driver's own record in that, all zero.
class OpenRequest
{
public:
    OpenRequest(const OpenRequest&) = delete;
    OpenRequest& operator=(const OpenRequest&) = delete;

    UMDAllocationPrivateData m_Record{};
    D3DDDI_OPENALLOCATIONINFO m_Allocation{0, &m_Record, sizeof m_Record};
    D3DDDIARG_OPENRESOURCE m_Open{};

protected:
    OpenRequest()
    {
        m_Open.NumAllocations = 1;
        m_Open.pOpenAllocationInfo = &m_Allocation;
    }
};

}  // namespace tesslo::test
