#include "ResourceFixture.h"

#include <algorithm>
#include <map>

namespace tesslo::test
{

void ResourceFixture::TearDown()
{
    m_Fake.ClearScripts();
    m_Kernel.ClearScripts();
    for (UINT i = 0; i < FakeDevice::kRenderTargetCount; ++i)
        m_Fake.SetRenderTarget(i, nullptr);
    DestroyAll();
    ExpectNothingLeft();
    DeviceFixture::TearDown();
}

void ResourceFixture::ExpectNothingLeft()
{
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
    EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
}

UMDRscBase* ResourceFixture::CreateAny(CreateRequest& request)
{
    const HANDLE hResourceOS = request.m_Arg.hResource;
    EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &request.m_Arg), S_OK);
    UMDRscBase* pResource = ToResource(request.m_Arg.hResource);
    request.m_Arg.hResource = hResourceOS;
    m_Resources.push_back(pResource);
    return pResource;
}

UMDRscBase* ResourceFixture::OpenAny(D3DDDIARG_OPENRESOURCE& open)
{
    const HANDLE hResourceOS = open.hResource;
    EXPECT_EQ(UMDDdiOpenResource(DeviceHandle(), &open), S_OK);
    UMDRscBase* pResource = ToResource(open.hResource);
    open.hResource = hResourceOS;
    if (pResource)
        m_Resources.push_back(pResource);
    return pResource;
}

void ResourceFixture::ExpectRefused(CreateRequest& request, const Lines& errors)
{
    const HANDLE hResourceOS = request.m_Arg.hResource;
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(UMDDdiCreateResource(DeviceHandle(), &request.m_Arg), E_FAIL); }), errors);
    EXPECT_EQ(request.m_Arg.hResource, hResourceOS);
    ExpectNothingLeft();
}

HANDLE ResourceFixture::InternalCreateKept(UINT flags, D3DDDI_POOL pool, UINT width, UINT height)
{
    const D3DDDIFORMAT format = flags == kFlagIndexBuffer ? D3DDDIFMT_INDEX16
                                : flags == kFlagZBuffer   ? D3DDDIFMT_D24S8
                                                          : D3DDDIFMT_A8R8G8B8;
    CreateRequest& request = m_Kept.emplace_back(flags, pool, format, width, height);
    if (pool == kSystem)
        request.WithMemory(4, 0);
    const HANDLE hResource = ToHandle(CreateAny(request));
    ForgetCalls();
    return hResource;
}

HANDLE ResourceFixture::CreateSystemVertices()
{
    CreateRequest& request = m_Kept.emplace_back(kFlagVertexBuffer, kSystem, D3DDDIFMT_VERTEXDATA, sizeof m_Memory, 1);
    request.m_Surfaces[0].pSysMem = m_Memory;
    request.m_Surfaces[0].SysMemPitch = sizeof m_Memory;
    const HANDLE hResource = ToHandle(CreateAny(request));
    ForgetCalls();
    return hResource;
}

HANDLE ResourceFixture::CreatePrimary(UINT source, D3DDDIFORMAT format)
{
    CreateRequest& request = m_Kept.emplace_back(kFlagRenderTarget | kFlagPrimary, kVideo, format, 16, 8);
    request.m_Arg.VidPnSourceId = source;
    request.m_Arg.Rotation = D3DDDI_ROTATION_IDENTITY;
    const HANDLE hResource = ToHandle(CreateAny(request));
    ForgetCalls();
    return hResource;
}

void ResourceFixture::Destroy(UMDRscBase* pResource)
{
    EXPECT_EQ(UMDDdiDestroyResource(DeviceHandle(), ToHandle(pResource)), E_FAIL);
    std::erase(m_Resources, pResource);
}

void ResourceFixture::DestroyAll()
{
    while (!m_Resources.empty())
        Destroy(m_Resources.back());
}

void ResourceFixture::ReadBack(UMDRscRenderTargetCapable& target)
{
    IDirect3DSurface9* pSurface = nullptr;
    D3DLOCKED_RECT locked = {};
    D3DSURFACE_DESC desc = {};
    ASSERT_EQ(target.RenderTargetDataLock(&pSurface, &locked, &desc), S_OK);
    target.RenderTargetDataUnlock(&pSurface);
}

FakeRecorder& ResourceFixture::InternalRecorderOf(const std::string& call)
{
    if (call.starts_with("pfn"))
        return m_Kernel;
    return m_Fake;
}

void ResourceFixture::ExpectFailures(const std::vector<FailureRow>& rows, const std::function<void()>& prepare,
    const std::function<HRESULT()>& operation)
{
    prepare();
    ForgetCalls();
    EXPECT_EQ(operation(), S_OK);
    InternalExpectRowForEachCall(rows);
    DestroyAll();
    for (const FailureRow& row : rows)
    {
        SCOPED_TRACE(row.m_Call + " " + std::to_string(row.m_Nth));
        prepare();
        InternalExpectFailure(row, operation);
    }
}

// Whatever it calls can fail: a row for each, in any order.
void ResourceFixture::InternalExpectRowForEachCall(const std::vector<FailureRow>& rows)
{
    std::map<std::string, unsigned> counts;
    Lines calls, covered;
    for (const std::string& line : Joined(DeviceLines(), KernelLines()))
    {
        const std::string name = ScriptNameOf(line);
        calls.push_back(name + " " + std::to_string(++counts[name]));
    }
    for (const FailureRow& row : rows)
        covered.push_back(row.m_Call + " " + std::to_string(row.m_Nth));
    std::ranges::sort(calls);
    std::ranges::sort(covered);
    EXPECT_EQ(covered, calls);
}

void ResourceFixture::InternalExpectFailure(const FailureRow& row, const std::function<HRESULT()>& operation)
{
    InternalRecorderOf(row.m_Call).Fail(row.m_Call, kRefused, row.m_Nth);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(operation(), row.m_Expected); }), row.m_Errors);
    m_Fake.ClearScripts();
    m_Kernel.ClearScripts();
    DestroyAll();
    ExpectNothingLeft();
}

void ResourceFixture::ExpectRefusedCalls(const std::vector<RefusedRow>& rows)
{
    for (const RefusedRow& row : rows)
    {
        m_Fake.Fail(row.m_pCall, kRefused, 1);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(row.m_Operation(), kRefused) << row.m_pCall; }), Lines{row.m_pError});
    }
}

std::string ScriptNameOf(const std::string& line)
{
    const std::string call = line.substr(0, line.find('('));
    const size_t dot = call.find('.');
    if (dot == std::string::npos)
        return call;
    return call.substr(0, call.find_first_of("#[")) + call.substr(dot);
}

}  // namespace tesslo::test
