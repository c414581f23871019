#include "tools/client_check/CheckConnection.h"

CheckConnection::CheckConnection(const CheckClient& client, UINT source, CheckSlot::Where where)
    : m_Client(client), m_Source(source), m_Slot(where)
{
    m_Client.Plug(m_Slot.Get(), m_Source);
}

void CheckConnection::Close()
{
    m_Client.Unplug(m_Slot.Get(), m_Source);
    const bool bAlone = m_Slot.IsAlone();
    m_Slot.Retire();
    if (!bAlone)
        throw CheckFailure("the library has written before its connection's slot");
}
