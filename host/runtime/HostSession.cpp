#include "host/runtime/HostSession.h"

HostSession::HostSession(const HostDriverSettings& settings)
    : m_Driver(settings), m_Delivery(m_Driver.ClientLibrary()),
      m_pAdapter(std::make_unique<HostAdapter>(m_Driver, m_Kernel)),
      m_pDevice(std::make_unique<HostDevice>(*m_pAdapter))
{
}

HostSession::~HostSession()
{
    Close();
}

void HostSession::Close()
{
    m_pDevice.reset();
    m_pAdapter.reset();
}
