// One connection of the library, from Plug to Unplug.
#pragma once

#include "tools/client_check/CheckClient.h"
#include "tools/client_check/CheckFrame.h"
#include "tools/client_check/CheckSlot.h"

class CheckConnection
{
public:
    /// Plugs. Throws CheckFailure, as the others do.
    CheckConnection(const CheckClient& client, UINT source, CheckSlot::Where where = CheckSlot::Where::Usual);
    CheckConnection(const CheckConnection&) = delete;
    CheckConnection& operator=(const CheckConnection&) = delete;

    /// @return milliseconds that it took.
    double Send(const CheckFrame& frame) const { return m_Client.Update(m_Slot.Get(), frame.Record()); }
    /// Unplugs.
    void Close();

private:
    const CheckClient& m_Client;
    const UINT m_Source;
    CheckSlot m_Slot;
};
