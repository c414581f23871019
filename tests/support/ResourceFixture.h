// Resources of the driver on the fake device: made by the entries as the runtime makes them, and checked for what they
// leave behind.
#pragma once

#include "CreateRequest.h"
#include "DeviceFixture.h"

#include "device/entries/UMDDdiEntries.h"
#include "resources/UMDRscRenderTargetCapable.h"

#include <functional>
#include <list>

namespace tesslo::test
{

/// One failing delegated call or callback: what comes of it, and the error lines.
struct FailureRow
{
    std::string m_Call;  ///< as in a script of the fakes: "CreateTexture", "surface.LockRect"
    unsigned m_Nth;      ///< which call of that name in the operation, counted from 1
    HRESULT m_Expected;  ///< of the operation
    Lines m_Errors;      ///< of the trace
};

/// An operation whose one delegated call is refused: it passes the code on.
struct RefusedRow
{
    const char* m_pCall;
    std::function<HRESULT()> m_Operation;
    const char* m_pError;  ///< the one error line
};

class ResourceFixture : public DeviceFixture
{
protected:
    ResourceFixture() { m_Fake.NameMemory(m_Memory, sizeof m_Memory, "memory"); }

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
    /// Calls the open entry and expects success. @return the resource, destroyed in the end; null when none was made.
    UMDRscBase* OpenAny(D3DDDIARG_OPENRESOURCE& open);
    /// Calls the create entry and expects that it fails, tells these errors and leaves nothing.
    void ExpectRefused(CreateRequest& request, const Lines& errors);

    // Handles of new resources, where any of its kind will do. Calls and trace are forgotten. Pictures are 16 by 8 of
    // four bytes, cubes have edges of 8, buffers 64 bytes.
    HANDLE CreateTarget() { return InternalCreateKept(kFlagRenderTarget, kVideo, 16, 8); }
    HANDLE CreateTexture() { return InternalCreateKept(kFlagTexture, kVideo, 16, 8); }
    HANDLE CreateSystemTexture() { return InternalCreateKept(kFlagTexture, kSystem, 16, 8); }
    HANDLE CreateCube() { return InternalCreateKept(kFlagCubeMap, kVideo, 8, 8); }
    HANDLE CreateDepth() { return InternalCreateKept(kFlagZBuffer, kVideo, 16, 8); }
    HANDLE CreateIndices() { return InternalCreateKept(kFlagIndexBuffer, kVideo, 64, 1); }
    HANDLE CreateVertices() { return InternalCreateKept(kFlagVertexBuffer, kVideo, 64, 1); }
    /// Over m_Memory.
    HANDLE CreateSystemVertices();
    /// Of a source of the virtual monitor.
    HANDLE CreatePrimary(UINT source, D3DDDIFORMAT format = D3DDDIFMT_X8R8G8B8);

    /// Reads a render target back once, as a blit present does.
    static void ReadBack(UMDRscRenderTargetCapable& target);

    /// Destroys a resource by its entry.
    void Destroy(UMDRscBase* pResource);
    void Destroy(HANDLE hResource) { Destroy(ToResource(hResource)); }
    /// Gives back what Create made so far.
    void DestroyAll();

    /// Runs the operation once for each row with that call failing, after preparing anew each time.
    /// Expects exactly the row's result and error lines, nothing left behind, and a row for each call that the
    /// operation makes when it succeeds.
    void ExpectFailures(const std::vector<FailureRow>& rows, const std::function<void()>& prepare,
        const std::function<HRESULT()>& operation);

    /// Runs each operation with its call answering kRefused.
    void ExpectRefusedCalls(const std::vector<RefusedRow>& rows);

    /// Nothing lives on the device nor in the kernel.
    void ExpectNothingLeft();

    /// Memory of the runtime's, for buffers and for draws from user memory; calls print it as "memory".
    BYTE m_Memory[64] = {1, 2, 3};

private:
    HANDLE InternalCreateKept(UINT flags, D3DDDI_POOL pool, UINT width, UINT height);
    void InternalExpectRowForEachCall(const std::vector<FailureRow>& rows);
    void InternalExpectFailure(const FailureRow& row, const std::function<HRESULT()>& operation);
    FakeRecorder& InternalRecorderOf(const std::string& call);

    std::vector<UMDRscBase*> m_Resources;
    std::list<CreateRequest> m_Kept;  ///< of the handles: their memory
};

/// "surface#2.LockRect(out, null, 0)" becomes "surface.LockRect", as scripts name it.
std::string ScriptNameOf(const std::string& line);

}  // namespace tesslo::test
