// The built driver on a real Direct3D 9Ex device, for tests of what its resources hold and show.
#pragma once

#include "DriverDll.h"
#include "RegistryOverride.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

/// A device of the driver, and the resources that the test has made on it: they are given back in the end.
class DriverPixels : public testing::Test
{
protected:
    // Resource flag bits.
    static constexpr UINT kFlagRenderTarget = 0x1;
    static constexpr UINT kFlagTexture = 0x10000;

    void SetUp() override
    {
        {
            // Only while it loads: the real device needs the real registry.
            const tesslo::test::RegistryOverride registry;
            m_pDriver = std::make_unique<tesslo::test::DriverDll>();
        }
        ASSERT_EQ(m_pDriver->OpenAdapter(m_Kernel), S_OK);
        ASSERT_EQ(m_pDriver->CreateDevice(m_Kernel), S_OK);
    }

    void TearDown() override
    {
        for (HANDLE hResource : m_Resources)
            EXPECT_EQ(Functions().pfnDestroyResource(Device(), hResource), E_FAIL);
        EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
    }

    HANDLE Device() const { return m_pDriver->m_hDevice; }
    const D3DDDI_DEVICEFUNCS& Functions() const { return m_pDriver->m_DeviceFuncs; }

    HANDLE Create(UINT flags, D3DDDI_POOL pool, D3DDDIFORMAT format, std::vector<D3DDDI_SURFACEINFO> surfaces)
    {
        D3DDDIARG_CREATERESOURCE create = {};
        create.Format = format;
        create.Pool = pool;
        create.pSurfList = surfaces.data();
        create.SurfCount = static_cast<UINT>(surfaces.size());
        create.Flags.Value = flags;
        create.Rotation = D3DDDI_ROTATION_IDENTITY;
        EXPECT_EQ(Functions().pfnCreateResource(Device(), &create), S_OK);
        m_Resources.push_back(create.hResource);
        return create.hResource;
    }

    /// From a rectangle to the same one.
    HRESULT Blt(HANDLE hSource, HANDLE hDestination, const RECT& rect)
    {
        D3DDDIARG_BLT blt = {};
        blt.hSrcResource = hSource;
        blt.SrcRect = rect;
        blt.hDstResource = hDestination;
        blt.DstRect = rect;
        return Functions().pfnBlt(Device(), &blt);
    }

    /// From a rectangle to the same one.
    HRESULT TexBlt(HANDLE hSource, HANDLE hDestination, const RECT& rect)
    {
        D3DDDIARG_TEXBLT blt = {};
        blt.hSrcResource = hSource;
        blt.SrcRect = rect;
        blt.hDstResource = hDestination;
        blt.DstPoint = {rect.left, rect.top};
        return Functions().pfnTexBlt(Device(), &blt);
    }

    tesslo::test::FakeKernel m_Kernel;
    std::unique_ptr<tesslo::test::DriverDll> m_pDriver;

private:
    std::vector<HANDLE> m_Resources;
};
