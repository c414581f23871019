#include "resources/UMDRscZBuffer.h"

#include "resources/UMDSurfaceList.h"
#include "util/UMDUtilDebugTrace.h"

UMDRscZBuffer::UMDRscZBuffer(
    UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate, BOOL openResource)
    : UMDRscBase(pDevice, hResourceOS, UMDRESOURCETYPE_ZBUFFER), m_Width(0), m_Height(0), m_Format(D3DDDIFMT_UNKNOWN),
      m_MultisampleType(D3DMULTISAMPLE_NONE), m_MultisampleQuality(0), m_SurfCount(0)
{
    if (openResource)
        return;
    const D3DDDI_SURFACEINFO surface = UMDFirstSurface(pCreate);
    m_Width = surface.Width;
    m_Height = surface.Height;
    m_Format = pCreate->Format;
    m_MultisampleType = static_cast<D3DMULTISAMPLE_TYPE>(pCreate->MultisampleType);
    m_MultisampleQuality = pCreate->MultisampleQuality;
    m_SurfCount = UMDSurfaceCount(pCreate);
}

UMDRscZBuffer::~UMDRscZBuffer() = default;

HRESULT UMDRscZBuffer::Create()
{
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDRscZBuffer::Create failed! m_pDeviceDelegated = NULL\n");
    if (!m_SurfCount)
        return UMDFail(E_FAIL, L"UMDRscZBuffer::Create failed! m_SurfCount = %d\n", m_SurfCount);
    const HRESULT hr = m_pDeviceDelegated->CreateDepthStencilSurface(m_Width, m_Height,
        static_cast<D3DFORMAT>(m_Format), m_MultisampleType, m_MultisampleQuality, FALSE, m_pSurface.Put(), nullptr);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDRscZBuffer::Create CreateDepthStencilSurface failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscZBuffer::Create Width=%d Height=%d Format=%d Surface:0x%x this:0x%x\n", m_Width,
        m_Height, m_Format, UMDLow32(m_pSurface.Get()), UMDLow32(this));
    return S_OK;
}

void UMDRscZBuffer::Destroy()
{
    UMD_TRACE(UMDTRACE_DETAIL, L"UMDRscZBuffer::Destroy m_pSurface:0x%x\n", UMDLow32(m_pSurface.Get()));
    m_pSurface.Reset();
}
