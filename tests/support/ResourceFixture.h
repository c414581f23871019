// Resources of the driver on the fake device: made by the entries as the runtime makes them, and checked for what they
// leave behind.
#pragma once

#include "DeviceFixture.h"

#include "device/entries/UMDDdiEntries.h"
#include "resources/UMDRscBase.h"

#include <functional>
#include <string>
#include <vector>

namespace tesslo::test
{

/// The arguments of a create-resource call, with the memory that they point at.
class CreateRequest
{
public:
    /// @param flags  resource flag bits, kFlag...
    /// @param levels sub-resources, each half as wide and high as the one before; a cube's come six times over.
    CreateRequest(UINT flags, D3DDDI_POOL pool, D3DDDIFORMAT format, UINT width, UINT height, UINT levels = 1);
    CreateRequest(const CreateRequest&) = delete;
    CreateRequest& operator=(const CreateRequest&) = delete;

    /// Gives each sub-resource memory of its own, numbered bytes, with padding behind each row.
    CreateRequest& WithMemory(UINT bytesPerPixel, UINT padding);
    std::vector<BYTE>& Memory(UINT index) { return m_Memory.at(index); }

    D3DDDIARG_CREATERESOURCE m_Arg{};
    std::vector<D3DDDI_SURFACEINFO> m_Surfaces;

private:
    std::vector<std::vector<BYTE>> m_Memory;
};

// Resource flag bits.
inline constexpr UINT kFlagRenderTarget = 0x1;
inline constexpr UINT kFlagZBuffer = 0x2;
inline constexpr UINT kFlagDynamic = 0x4;
inline constexpr UINT kFlagWriteOnly = 0x40;
inline constexpr UINT kFlagSharedResource = 0x800;
inline constexpr UINT kFlagPrimary = 0x8000;
inline constexpr UINT kFlagTexture = 0x10000;
inline constexpr UINT kFlagCubeMap = 0x20000;
inline constexpr UINT kFlagVertexBuffer = 0x80000;
inline constexpr UINT kFlagIndexBuffer = 0x100000;
inline constexpr UINT kFlagDecodeRenderTarget = 0x200000;
inline constexpr UINT kFlagVideoProcessRenderTarget = 0x800000;

/// One failing delegated call or callback: what comes of it, and the error lines.
struct FailureRow
{
    std::string m_Call;                 ///< as in a script of the fakes: "CreateTexture", "surface.LockRect"
    unsigned m_Nth;                     ///< which call of that name in the operation, counted from 1
    HRESULT m_Expected;                 ///< of the operation
    std::vector<std::string> m_Errors;  ///< trace lines of the error level
};

class ResourceFixture : public DeviceFixture
{
protected:
    /// The code that failing calls answer; no code of the driver's own.
    static constexpr HRESULT kRefused = D3DERR_NOTAVAILABLE;

    /// Destroys what Create made, and expects that nothing lives on, neither on the device nor in the kernel.
    void TearDown() override;

    /// Calls the create entry and expects success.
    /// @return the resource as its class, destroyed in the end.
    template <typename Resource>
    Resource* Create(CreateRequest& request)
    {
        auto* pResource = dynamic_cast<Resource*>(CreateAny(request));
        EXPECT_NE(pResource, nullptr);
        return pResource;
    }
    UMDRscBase* CreateAny(CreateRequest& request);
    /// Destroys a resource by its entry.
    void Destroy(UMDRscBase* pResource);
    /// Gives back what Create made so far.
    void DestroyAll();

    /// All calls since the last ForgetCalls.
    std::vector<std::string> DeviceLines() const { return m_Fake.Lines(); }
    std::vector<std::string> KernelLines() const { return m_Kernel.Lines(); }
    /// Trace lines of this thread that the error level prints while the operation runs.
    std::vector<std::string> ErrorsOf(const std::function<void()>& operation);

    /// Runs the operation once for each row with that call failing, after preparing anew each time.
    /// Expects exactly the row's result and error lines, nothing left behind, and a row for each call that the
    /// operation makes when it succeeds.
    void ExpectFailures(const std::vector<FailureRow>& rows, const std::function<void()>& prepare,
        const std::function<HRESULT()>& operation);

private:
    FakeRecorder& InternalRecorderOf(const std::string& call);

    std::vector<UMDRscBase*> m_Resources;
};

/// "surface#2.LockRect(out, null, 0)" becomes "surface.LockRect", as scripts name it.
std::string ScriptNameOf(const std::string& line);

}  // namespace tesslo::test
