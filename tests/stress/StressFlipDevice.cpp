#include "StressFlipDevice.h"

#include "StressText.h"

#include <stdexcept>

namespace tesslo::test
{

namespace
{

constexpr UINT kWidth = 16, kHeight = 8;

void Check(HRESULT hr, const char* pCall)
{
    if (FAILED(hr))
        throw std::runtime_error(std::string(pCall) + " answers " + StressHex(hr));
}

}  // namespace

StressFlipDevice::StressFlipDevice(StressDriver& driver, UINT source)
    : m_Driver(driver), m_Primary(kFlagRenderTarget | kFlagPrimary, kVideo, D3DDDIFMT_X8R8G8B8, kWidth, kHeight)
{
    m_Primary.m_Arg.VidPnSourceId = source;
    m_Primary.m_Arg.Rotation = D3DDDI_ROTATION_IDENTITY;
    Check(driver.m_Dll->OpenAdapter(driver.m_Kernel), "OpenAdapter");
    Check(driver.m_Dll->CreateDevice(driver.m_Kernel), "pfnCreateDevice");
    Check(driver.Functions().pfnCreateResource(driver.Device(), &m_Primary.m_Arg), "pfnCreateResource");
}

StressFlipDevice::~StressFlipDevice()
{
    if (m_Driver.m_Dll->m_hAdapter)
        Close();
}

HRESULT StressFlipDevice::Flip()
{
    D3DDDIARG_PRESENT present{};
    present.hSrcResource = m_Primary.m_Arg.hResource;
    present.Flags.Flip = 1;
    return m_Driver.Functions().pfnPresent(m_Driver.Device(), &present);
}

HRESULT StressFlipDevice::Close()
{
    m_Driver.Functions().pfnDestroyResource(m_Driver.Device(), m_Primary.m_Arg.hResource);
    m_Driver.Functions().pfnDestroyDevice(m_Driver.Device());
    return m_Driver.m_Dll->CloseAdapter();
}

}  // namespace tesslo::test
