#include "resources/UMDRscBase.h"

#include "device/UMDDdiDevice.h"
#include "util/UMDUtilDebugTrace.h"

UMDRscBase::UMDRscBase(UMDDdiDevice* pDevice, HANDLE hResourceOS, UMDRESOURCETYPE type)
    : m_pDevice(pDevice), m_pDeviceDelegated(pDevice->GetDevice()), m_hResourceOS(hResourceOS), m_Type(type)
{
    UMD_TRACE(UMDTRACE_RESOURCE, L"   hResource driver:0x%x (own) <==> hResource OS:0x%x (saved)\n", UMDLow32(this),
        UMDLow32(m_hResourceOS));
}

UMDRscBase::~UMDRscBase()
{
    UMD_TRACE(UMDTRACE_RESOURCE, L"   ~hResource driver:0x%x (own) <==> hResource OS:0x%x (saved)\n", UMDLow32(this),
        UMDLow32(m_hResourceOS));
}

HRESULT UMDRscBase::Lock(UINT, UINT, UINT, void**, UINT*, DWORD)
{
    return E_NOTIMPL;
}

HRESULT UMDRscBase::Unlock()
{
    return E_NOTIMPL;
}

D3DPOOL UMDRscBase::GetPool() const
{
    return D3DPOOL_DEFAULT;
}

D3DDDIFORMAT UMDRscBase::GetFormat() const
{
    return D3DDDIFMT_X8R8G8B8;
}

HRESULT UMDRscBase::Create()
{
    return E_FAIL;
}

void UMDRscBase::Destroy() {}

bool UMDRscBase::IsOffscreenPlain() const
{
    return false;
}
