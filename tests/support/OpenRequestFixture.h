// Tests of a texture that another process shares: what the runtime gives to open it.
#pragma once

#include "ResourceFixture.h"

#include "kernel/UMDAllocationPrivateData.h"

#include <span>

namespace tesslo::test
{
/// A record of the driver's own for a texture of 64 x 32 with two levels, its allocation and the runtime's record.
class OpenRequestFixture : public ResourceFixture
{
protected:
    OpenRequestFixture()
    {
        m_Record.Kind = 6;
        m_Record.Width = 64;
        m_Record.Height = 32;
        m_Record.Pool = 0;
        m_Record.Usage = 1;
        m_Record.Levels = 2;
        m_Record.TextureKind = 6;
        m_Allocation.pPrivateDriverData = &m_Record;
        m_Allocation.PrivateDriverDataSize = sizeof m_Record;
        m_Open.NumAllocations = 1;
        m_Open.pOpenAllocationInfo = &m_Allocation;
    }

    /// Runs check once for each change, each made to the request as it is now, which stands again behind the last.
    void ForEachChange(std::span<const std::function<void()>> changes, const std::function<void()>& check)
    {
        const auto record = m_Record;
        const auto allocation = m_Allocation;
        const auto open = m_Open;
        int row = 0;
        for (const auto& change : changes)
        {
            SCOPED_TRACE(row++);
            m_Record = record;
            m_Allocation = allocation;
            m_Open = open;
            change();
            check();
        }
        m_Record = record;
        m_Allocation = allocation;
        m_Open = open;
    }

    UMDAllocationPrivateData m_Record{};
    D3DDDI_OPENALLOCATIONINFO m_Allocation{};
    D3DDDIARG_OPENRESOURCE m_Open{};
};
}  // namespace tesslo::test
