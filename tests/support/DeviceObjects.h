// Resources on a started device, created and destroyed through the entries as the runtime does.
#pragma once

#include "DeviceFixture.h"

#include "device/entries/UMDDdiEntries.h"
#include "resources/UMDRscBase.h"

#include <functional>
#include <string>
#include <vector>

class DeviceObjects : public tesslo::test::DeviceFixture
{
protected:
    using Lines = std::vector<std::string>;

    void TearDown() override
    {
        for (HANDLE hResource : m_Resources)
            UMDDdiDestroyResource(DeviceHandle(), hResource);
        DeviceFixture::TearDown();
    }

    /// @param pMemory the runtime's memory of the first sub-resource.
    HANDLE CreateResource(D3DDDI_RESOURCEFLAGS flags, D3DDDI_POOL pool = D3DDDIPOOL_VIDEOMEMORY,
        const void* pMemory = nullptr, UINT width = 16, UINT height = 8, UINT count = 1)
    {
        std::vector<D3DDDI_SURFACEINFO> surfaces(count);
        for (D3DDDI_SURFACEINFO& surface : surfaces)
            surface = {width, height, 1, pMemory, pMemory ? width * 4 : 0, 0};
        D3DDDIARG_CREATERESOURCE arg{};
        arg.Format = static_cast<D3DDDIFORMAT>(flags.IndexBuffer ? UINT{D3DFMT_INDEX16}
                                               : flags.ZBuffer   ? UINT{D3DFMT_D24S8}
                                                                 : UINT{D3DFMT_A8R8G8B8});
        arg.Pool = pool;
        arg.pSurfList = surfaces.data();
        arg.SurfCount = count;
        arg.MipLevels = 1;
        arg.hResource = this;
        arg.Flags = flags;
        EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &arg), S_OK);
        m_Resources.push_back(arg.hResource);
        ForgetCalls();
        return arg.hResource;
    }

    HANDLE CreateTarget() { return CreateResource({.RenderTarget = 1}); }
    HANDLE CreateTexture() { return CreateResource({.Texture = 1}); }
    HANDLE CreateCube() { return CreateResource({.CubeMap = 1}, D3DDDIPOOL_VIDEOMEMORY, nullptr, 8, 8, 6); }
    HANDLE CreateDepth() { return CreateResource({.ZBuffer = 1}); }
    HANDLE CreateIndices() { return CreateResource({.IndexBuffer = 1}, D3DDDIPOOL_VIDEOMEMORY, nullptr, 64, 1); }
    HANDLE CreateVertices() { return CreateResource({.VertexBuffer = 1}, D3DDDIPOOL_VIDEOMEMORY, nullptr, 64, 1); }
    /// A vertex buffer of 64 bytes in the test's memory.
    HANDLE CreateSystemVertices()
    {
        m_Fake.NameMemory(m_Memory, sizeof(m_Memory), "memory");
        return CreateResource({.VertexBuffer = 1}, D3DDDIPOOL_SYSTEMMEM, m_Memory, 64, 1);
    }
    void DestroyResource(HANDLE hResource)
    {
        DestroyResourceTraced(hResource);
        ForgetCalls();
    }
    /// The same; its lines stay.
    void DestroyResourceTraced(HANDLE hResource)
    {
        std::erase(m_Resources, hResource);
        UMDDdiDestroyResource(DeviceHandle(), hResource);
    }

    /// The delegated calls since they were forgotten last.
    Lines Calls() const { return m_Fake.Lines(); }
    /// The trace since then, this thread's.
    Lines Trace() const { return m_Trace.LinesOfThisThread(); }

    BYTE m_Memory[64] = {1, 2, 3};

private:
    std::vector<HANDLE> m_Resources;
};
