#include "host/runtime/HostSession.h"

HostSession::HostSession(const HostDriverSettings& settings)
    : m_Driver(settings), m_Watch(m_Driver.Module(), m_Driver.ClientLibrary(), m_Delivery),
      m_Recording(m_Driver.ClientLibrary()), m_pAdapter(std::make_unique<HostAdapter>(m_Driver, m_Kernel)),
      m_pDevice(std::make_unique<HostDevice>(*m_pAdapter))
{
}

HostSession::~HostSession()
{
    Close();
}

HostFlipTime HostSession::Present(const HostResource& primary)
{
    m_Delivery.Presenting(primary.Description().m_VidPnSourceId);
    return m_pDevice->Flip(primary);
}

void HostSession::Close()
{
    m_pDevice.reset();
    m_pAdapter.reset();
}
