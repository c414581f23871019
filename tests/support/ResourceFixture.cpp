#include "ResourceFixture.h"

#include <algorithm>
#include <map>

namespace tesslo::test
{

CreateRequest::CreateRequest(UINT flags, D3DDDI_POOL pool, D3DDDIFORMAT format, UINT width, UINT height, UINT levels)
{
    constexpr UINT kCubeFaces = 6;
    const UINT faces = flags & kFlagCubeMap ? kCubeFaces : 1;
    for (UINT face = 0; face < faces; face++)
        for (UINT level = 0; level < levels; level++)
            m_Surfaces.push_back({std::max(width >> level, 1U), std::max(height >> level, 1U), 0, nullptr, 0, 0});
    m_Arg.Format = format;
    m_Arg.Pool = pool;
    m_Arg.pSurfList = m_Surfaces.data();
    m_Arg.SurfCount = static_cast<UINT>(m_Surfaces.size());
    m_Arg.MipLevels = levels;
    m_Arg.hResource = reinterpret_cast<HANDLE>(0x1234500000ABCDE0);
    m_Arg.Flags.Value = flags;
    m_Arg.Rotation = D3DDDI_ROTATION_IDENTITY;
}

CreateRequest& CreateRequest::WithMemory(UINT bytesPerPixel, UINT padding)
{
    m_Memory.clear();
    BYTE next = 1;
    for (D3DDDI_SURFACEINFO& surface : m_Surfaces)
    {
        surface.SysMemPitch = surface.Width * bytesPerPixel + padding;
        std::vector<BYTE>& bytes = m_Memory.emplace_back(size_t{surface.SysMemPitch} * surface.Height);
        for (BYTE& byte : bytes)
            byte = next = static_cast<BYTE>(next * 5 + 1);
    }
    for (size_t i = 0; i < m_Surfaces.size(); i++)
        m_Surfaces[i].pSysMem = m_Memory[i].data();
    return *this;
}

void ResourceFixture::TearDown()
{
    m_Fake.ClearScripts();
    m_Kernel.ClearScripts();
    DestroyAll();
    EXPECT_EQ(m_Fake.LiveObjects(), std::vector<std::string>{});
    EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
    DeviceFixture::TearDown();
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

std::vector<std::string> ResourceFixture::ErrorsOf(const std::function<void()>& operation)
{
    const TraceMask errorsOnly(UMDTRACE_ERROR);
    m_Trace.Clear();
    operation();
    return m_Trace.LinesOfThisThread();
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
    // Whatever it calls can fail: a row for each, in any order.
    prepare();
    ForgetCalls();
    EXPECT_EQ(operation(), S_OK);
    std::map<std::string, unsigned> counts;
    std::vector<std::string> calls;
    for (const auto& lines : {DeviceLines(), KernelLines()})
        for (const std::string& line : lines)
        {
            const std::string name = ScriptNameOf(line);
            calls.push_back(name + " " + std::to_string(++counts[name]));
        }
    std::vector<std::string> covered;
    for (const FailureRow& row : rows)
        covered.push_back(row.m_Call + " " + std::to_string(row.m_Nth));
    std::ranges::sort(calls);
    std::ranges::sort(covered);
    EXPECT_EQ(covered, calls);
    DestroyAll();

    for (const FailureRow& row : rows)
    {
        SCOPED_TRACE(row.m_Call + " " + std::to_string(row.m_Nth));
        prepare();
        InternalRecorderOf(row.m_Call).Fail(row.m_Call, kRefused, row.m_Nth);
        HRESULT hr = S_OK;
        EXPECT_EQ(ErrorsOf([&] { hr = operation(); }), row.m_Errors);
        EXPECT_EQ(hr, row.m_Expected);
        m_Fake.ClearScripts();
        m_Kernel.ClearScripts();
        DestroyAll();
        EXPECT_EQ(m_Fake.LiveObjects(), std::vector<std::string>{});
        EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
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
