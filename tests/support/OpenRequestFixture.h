// Tests of a texture that another process shares: what the runtime gives to open it.
#pragma once

#include "OpenRequest.h"
#include "ResourceFixture.h"

#include <span>

namespace tesslo::test
{
/// The record is of a texture of 64 x 32 with two levels.
class OpenRequestFixture : public ResourceFixture, protected OpenRequest
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
};
}  // namespace tesslo::test
