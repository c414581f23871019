// Pixels into the kernel-mode allocation, which holds exactly what its private record says, and out to a caller.
#include "ExactImage.h"
#include "ImageMemory.h"
#include "PixelBytes.h"
#include "ResourceFixture.h"

#include "kernel/UMDAllocationPrivateData.h"
#include "resources/UMDRscSurface.h"
#include "resources/UMDRscTexture.h"
#include "util/UMDComPtr.h"

#include <algorithm>

using namespace tesslo::test;

namespace
{
constexpr BYTE kUntouched = 0xC3;
const HANDLE kContext = reinterpret_cast<HANDLE>(0x7000);

constexpr D3DDDIFORMAT kTargets[] = {D3DDDIFMT_X1R5G5B5, D3DDDIFMT_A1R5G5B5, D3DDDIFMT_A4R4G4B4, D3DDDIFMT_R5G6B5,
    D3DDDIFMT_X8R8G8B8, D3DDDIFMT_A8R8G8B8, D3DDDIFMT_G16R16, D3DDDIFMT_A2R10G10B10, D3DDDIFMT_A2B10G10R10,
    D3DDDIFMT_A16B16G16R16F, D3DDDIFMT_A16B16G16R16, D3DDDIFMT_R16F, D3DDDIFMT_G16R16F, D3DDDIFMT_R32F,
    D3DDDIFMT_G32R32F, D3DDDIFMT_A32B32G32R32F};

class CopyFrom : public ResourceFixture
{
protected:
    /// The newest allocation, marked.
    std::vector<BYTE>& Memory()
    {
        std::vector<BYTE>& memory =
            m_Kernel.FindAllocation(static_cast<D3DKMT_HANDLE>(m_Kernel.Calls("pfnAllocateCb"))).m_Memory;
        std::ranges::fill(memory, kUntouched);
        return memory;
    }

    /// The allocation by its private record: rows as close as the format lets them.
    ImageShape Recorded()
    {
        UMDAllocationPrivateData record = {};
        const std::vector<BYTE>& data =
            m_Kernel.FindAllocation(static_cast<D3DKMT_HANDLE>(m_Kernel.Calls("pfnAllocateCb"))).m_PrivateData;
        EXPECT_EQ(data.size(), sizeof(record));
        std::memcpy(&record, data.data(), sizeof(record));
        const auto format = static_cast<D3DDDIFORMAT>(record.Format);
        return {format, record.Width, record.Height, TightPitch(format, record.Width)};
    }
};
}  // namespace

TEST_F(CopyFrom, EveryTargetFormat_RowsLandAtTheFormatsOwnPitchAndNotBeyondTheRecord)
{
    struct Source
    {
        UINT Width, Height, Padding;
    };
    constexpr UINT kWidth = 13, kHeight = 7;
    for (D3DDDIFORMAT format : kTargets)
        for (UINT kind : {kFlagRenderTarget, kFlagRenderTarget | kFlagTexture | kFlagSharedResource})
            for (const Source& source : {Source{13, 7, 0}, {13, 7, 6}, {20, 9, 0}, {20, 9, 8}, {9, 5, 0}, {9, 5, 4}})
            {
                SCOPED_TRACE(FormatName(format) + " from width " + std::to_string(source.Width) + " padding " +
                             std::to_string(source.Padding));
                CreateRequest request(kind, D3DDDIPOOL_LOCALVIDMEM, format, kWidth, kHeight);
                auto* pTarget = Create<UMDRscRenderTargetCapable>(request);
                const ExactImage image(format, source.Width, source.Height, source.Padding, 3);
                std::vector<BYTE>& memory = Memory();
                ImageShape shape = Recorded();
                shape.Width = std::min(shape.Width, source.Width);
                shape.Height = std::min(shape.Height, source.Height);
                const std::vector<BYTE> expected = WithPixels(memory, shape, image.Bits(), image.Shape, nullptr);
                // What the driver counts of these formats.
                EXPECT_EQ(pTarget->CopyFrom(image.Bits(), source.Width, source.Height, 4, image.Shape.Pitch), S_OK);
                EXPECT_TRUE(memory == expected);
                DestroyAll();
            }
}

TEST_F(CopyFrom, BltPresent_EveryTargetFormat_TheAllocationHoldsTheTargetsPixels)
{
    for (D3DDDIFORMAT format : kTargets)
        for (UINT padding : {0U, 2U, 12U})
        {
            SCOPED_TRACE(FormatName(format) + " padding " + std::to_string(padding));
            m_Fake.RestartNames();
            m_Fake.SetPitchPadding(padding);
            CreateRequest request(kFlagRenderTarget | kFlagPrimary, D3DDDIPOOL_LOCALVIDMEM, format, 13, 7);
            auto* pTarget = Create<UMDRscSurface>(request);
            auto& surface = m_Fake.Find<FakeSurface>("surface#1");
            FakePixels& pixels = surface.Pixels();
            FillWithNoise(pixels.Bytes().data(), pixels.Bytes().size(), 9);
            m_Fake.SetRenderTarget(0, pTarget->GetSurface(0, 0));
            std::vector<BYTE>& memory = Memory();
            const std::vector<BYTE> expected =
                WithPixels(memory, Recorded(), pixels.Bytes().data(), pixels.Shape(), nullptr);
            EXPECT_EQ(pTarget->KernelModePresentCbBLT(kContext), S_OK);
            EXPECT_TRUE(memory == expected);
            m_Fake.SetRenderTarget(0, nullptr);
            surface.Release();  // the reference that each read-back leaves
            DestroyAll();
        }
}

TEST_F(CopyFrom, BltPresent_RenderTargetOfAnotherFormat_ReadsNothingBehindItsRows)
{
    FakeRows rows = 13;
    rows.m_bFenced = true;
    for (D3DDDIFORMAT format : kPixelFormats)
        for (D3DFORMAT current : {D3DFMT_X8R8G8B8, D3DFMT_R5G6B5, D3DFMT_L8, D3DFMT_DXT1})
        {
            SCOPED_TRACE(FormatName(format) + " while " + std::to_string(current) + " is the render target");
            m_Fake.RestartNames();
            CreateRequest request(kFlagRenderTarget | kFlagPrimary, D3DDDIPOOL_LOCALVIDMEM, format, 13, 7);
            auto* pTarget = Create<UMDRscSurface>(request);
            m_Fake.SetRows(rows);
            UMDComPtr<IDirect3DSurface9> pCurrent;
            m_Fake.CreateRenderTarget(13, 7, current, D3DMULTISAMPLE_NONE, 0, FALSE, pCurrent.Put(), nullptr);
            m_Fake.SetRenderTarget(0, pCurrent.Get());
            EXPECT_EQ(pTarget->KernelModePresentCbBLT(kContext), S_OK);
            m_Fake.SetRenderTarget(0, nullptr);
            pCurrent->Release();  // the reference that each read-back leaves
            pCurrent.Reset();
            m_Fake.SetRows({});
            DestroyAll();
        }
}

TEST_F(CopyFrom, CopyTo_EveryTargetFormat_StaysInsideTheCallersRows)
{
    for (D3DDDIFORMAT format : kTargets)
        for (UINT surfacePadding : {0U, 2U})
            for (UINT padding : {0U, 6U})
            {
                SCOPED_TRACE(FormatName(format) + " padding " + std::to_string(padding));
                m_Fake.RestartNames();
                m_Fake.SetPitchPadding(surfacePadding);
                CreateRequest request(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, format, 13, 7);
                auto* pTarget = Create<UMDRscSurface>(request);
                auto& surface = m_Fake.Find<FakeSurface>("surface#1");
                FakePixels& pixels = surface.Pixels();
                FillWithNoise(pixels.Bytes().data(), pixels.Bytes().size(), 9);
                m_Fake.SetRenderTarget(0, pTarget->GetSurface(0, 0));
                const ExactImage copy(format, 9, 5, padding, 3);
                const std::vector<BYTE> expected =
                    WithPixels(copy.Bytes(), copy.Shape, pixels.Bytes().data(), pixels.Shape(), nullptr);
                EXPECT_EQ(pTarget->CopyTo(copy.Bits(), 9, 5, 4, copy.Shape.Pitch), S_OK);
                EXPECT_TRUE(copy.Bytes() == expected);
                m_Fake.SetRenderTarget(0, nullptr);
                surface.Release();
                DestroyAll();
            }
}
