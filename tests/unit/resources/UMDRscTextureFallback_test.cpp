// The copy of a texture blit between pools that have no way of their own: what reaches the destination, and that
// nothing else is touched. The source is the memory that the rectangle names, whatever the texture holds.
#include "ImageMemory.h"
#include "ResourceFixture.h"

#include "resources/UMDRscTexture.h"

#include <algorithm>
#include <climits>

using namespace tesslo::test;

namespace
{
constexpr UINT kEdge = 16;        // pixels of both sides
constexpr UINT kPitch = 64;       // bytes
constexpr LONG kSourceRow = 100;  // of the source's rectangles
constexpr BYTE kNothing = 0xC3;

/// A delegated surface whose memory ends, or begins, with its last or first byte.
class GuardedSurface : public FakeSurface
{
public:
    GuardedSurface(FakeObjects& objects, D3DFORMAT format, UINT bytes, GuardedBytes::Edge edge)
        : FakeSurface(objects, "guarded#1",
              {format, D3DRTYPE_SURFACE, 0, D3DPOOL_SYSTEMMEM, D3DMULTISAMPLE_NONE, 0, kEdge, kEdge}, 0),
          m_Size(bytes), m_Memory(bytes, edge)
    {
        std::fill_n(m_Memory.Get(), bytes, kNothing);
    }

    bool IsPart() const override { return true; }
    HRESULT STDMETHODCALLTYPE LockRect(D3DLOCKED_RECT* pLocked, const RECT*, DWORD) override
    {
        *pLocked = {kPitch, m_Memory.Get()};
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UnlockRect() override { return S_OK; }

    std::vector<BYTE> Bytes() const { return {m_Memory.Get(), m_Memory.Get() + m_Size}; }

protected:
    void LastRelease() override {}

private:
    UINT m_Size;
    GuardedBytes m_Memory;
};

/// The resource that a blit goes to, around that surface.
class GuardedTarget : public UMDRscRenderTargetCapable
{
public:
    GuardedTarget(UMDDdiDevice* pDevice, GuardedSurface& surface)
        : UMDRscRenderTargetCapable(pDevice, nullptr, UMDRESOURCETYPE_TEXTURE, FALSE), m_Surface(surface)
    {
    }

    D3DPOOL GetPool() const override { return D3DPOOL_SYSTEMMEM; }
    IDirect3DSurface9* GetSurface(UINT, UINT) override { return &m_Surface; }
    HRESULT CopyFrom(const BYTE*, UINT, UINT, UINT, UINT) override { return E_NOTIMPL; }
    HRESULT CopyTo(BYTE*, UINT, UINT, UINT, UINT) override { return E_NOTIMPL; }

private:
    GuardedSurface& m_Surface;
};

class TextureFallback : public ResourceFixture
{
protected:
    void SetUp() override
    {
        ResourceFixture::SetUp();
        // Low enough for a rectangle to name.
        for (UINT_PTR address = 0x20000000; !m_pNamed && address < 0x70000000; address += 0x1000000)
            m_pNamed = static_cast<BYTE*>(
                VirtualAlloc(reinterpret_cast<void*>(address), kNamedBytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        ASSERT_NE(m_pNamed, nullptr);
        FillWithNoise(m_pNamed, kNamedBytes, 5);
    }

    void TearDown() override
    {
        VirtualFree(m_pNamed, 0, MEM_RELEASE);
        ResourceFixture::TearDown();
    }

    /// Blits from the middle of the named memory to a surface of these bytes.
    /// @return what the surface holds then.
    std::vector<BYTE> Blt(const RECT& dstRect, D3DFORMAT format, UINT bytes, GuardedBytes::Edge edge)
    {
        m_Fake.RestartNames();
        CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, kEdge, kEdge);
        auto* pSource = Create<UMDRscTexture>(request);
        const LONG_PTR named = reinterpret_cast<LONG_PTR>(m_pNamed) + kMiddle;
        const LONG left = static_cast<LONG>((named - kPitch - kSourceRow * LONG{kPitch}) / 4);
        const RECT srcRect = {left, kSourceRow, left + 1, kSourceRow + 1};
        GuardedSurface surface(m_Fake, format, bytes, edge);
        {
            GuardedTarget target(&Device(), surface);
            EXPECT_EQ(pSource->Blt(&srcRect, &target, &dstRect), E_FAIL);
        }
        DestroyAll();
        return surface.Bytes();
    }

    /// The pixel of the named memory that lands so far from the rectangle's left and top.
    const BYTE* Named(LONG x, LONG y) const { return m_pNamed + kMiddle + LONG_PTR{y} * kPitch + LONG_PTR{x} * 4; }

private:
    static constexpr LONG_PTR kMiddle = 0x10000;
    static constexpr SIZE_T kNamedBytes = 0x20000;
    BYTE* m_pNamed = nullptr;
};
}  // namespace

TEST_F(TextureFallback, RectangleBeyondTheDestination_OnlyItsPixelsInsideLand)
{
    const RECT rects[] = {{3, 4, 7, 7}, {0, 0, 16, 16}, {14, 4, 18, 7}, {-2, 4, 2, 7}, {3, 14, 7, 18}, {3, -2, 7, 2},
        {-20, -30, 40, 50}, {16, 0, 20, 4}, {0, 16, 4, 20}, {-4, 0, 0, 4}, {0, -4, 4, 0}, {5, 5, 5, 5}};
    for (GuardedBytes::Edge edge : {GuardedBytes::Edge::Front, GuardedBytes::Edge::Back})
        for (const RECT& rect : rects)
        {
            SCOPED_TRACE(std::to_string(rect.left) + "," + std::to_string(rect.top));
            const std::vector<BYTE> bytes = Blt(rect, D3DFMT_A8R8G8B8, kPitch * kEdge, edge);
            for (LONG y = 0; y < LONG{kEdge}; y++)
                for (LONG x = 0; x < LONG{kEdge}; x++)
                {
                    const bool inside = x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
                    const BYTE* pPixel = &bytes[static_cast<size_t>(y * LONG{kPitch} + x * 4)];
                    for (int i = 0; i < 4; i++)
                        ASSERT_EQ(pPixel[i], inside ? Named(x - rect.left, y - rect.top)[i] : kNothing)
                            << x << ' ' << y;
                }
        }
}

TEST_F(TextureFallback, DestinationOfBlocks_StaysInsideItsBlockRows)
{
    // Four rows of four blocks: a quarter of what 16 rows of pixels would be.
    constexpr UINT kBytes = kPitch * kEdge / 4;
    const std::vector<BYTE> bytes = Blt({0, 0, 16, 16}, D3DFMT_DXT5, kBytes, GuardedBytes::Edge::Back);
    for (LONG y = 0; y < 4; y++)
        for (LONG x = 0; x < LONG{kPitch}; x++)
            ASSERT_EQ(bytes[static_cast<size_t>(y * LONG{kPitch} + x)], Named(0, y)[x]) << x << ' ' << y;
}

TEST_F(TextureFallback, NothingInARow_ReturnsAtOnce)
{
    constexpr DWORD kShort = 2000;  // milliseconds; rows of nothing, one by one, take several times that
    const RECT rects[] = {{5, 0, 5, LONG_MAX}, {5, 10, 5, 9}, {8, 0, 5, LONG_MAX}, {0, 9, 16, 2}};
    for (const RECT& rect : rects)
    {
        const DWORD begin = GetTickCount();
        const std::vector<BYTE> bytes = Blt(rect, D3DFMT_A8R8G8B8, kPitch * kEdge, GuardedBytes::Edge::Back);
        EXPECT_LT(GetTickCount() - begin, kShort) << rect.left << ',' << rect.top;
        EXPECT_TRUE(std::ranges::all_of(bytes, [](BYTE byte) { return byte == kNothing; }));
    }
}
