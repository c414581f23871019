// Blits from one resource to another, which a test makes anew for each way.
#pragma once

#include "ResourceFixture.h"

#include "resources/UMDRscRenderTargetCapable.h"

#include <memory>

namespace tesslo::test
{

/// What differs between the two, beside flags and pools.
struct BltPair
{
    UINT m_DstEdge = 16;  ///< width and height; the source's are 16
    D3DDDIFORMAT m_DstFormat = D3DDDIFMT_A8R8G8B8;
    UINT m_SrcLevels = 1;
    UINT m_DstLevels = 1;
};

template <typename Source>
class BltFixture : public ResourceFixture
{
protected:
    void Prepare(
        UINT srcFlags, D3DDDI_POOL srcPool, UINT dstFlags, D3DDDI_POOL dstPool, const BltPair& pair = BltPair{})
    {
        m_Fake.RestartNames();
        m_pSrcRequest =
            std::make_unique<CreateRequest>(srcFlags, srcPool, D3DDDIFMT_A8R8G8B8, 16, 16, pair.m_SrcLevels);
        m_pSrcRequest->WithMemory(4, 4);
        m_pDstRequest = std::make_unique<CreateRequest>(
            dstFlags, dstPool, pair.m_DstFormat, pair.m_DstEdge, pair.m_DstEdge, pair.m_DstLevels);
        m_pDstRequest->WithMemory(4, 4);
        m_pSrc = Create<Source>(*m_pSrcRequest);
        m_pDst = Create<UMDRscRenderTargetCapable>(*m_pDstRequest);
        ForgetCalls();
    }

    std::unique_ptr<CreateRequest> m_pSrcRequest, m_pDstRequest;
    Source* m_pSrc = nullptr;
    UMDRscRenderTargetCapable* m_pDst = nullptr;
};

}  // namespace tesslo::test
