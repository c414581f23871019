#include "RandomWorld.h"

#include "StressRun.h"

#include <algorithm>
#include <limits>

namespace tesslo::test
{

RandomWorld::RandomWorld(StressRun& run, StressDriver& driver, bool hostile)
    : m_Run(run), m_Driver(driver), m_bHostile(hostile)
{
}

UINT RandomWorld::Below(UINT limit)
{
    return static_cast<UINT>(m_Run.Below(limit));
}

UINT RandomWorld::Number()
{
    constexpr UINT kEdges[] = {0, 1, 2, 255, 256, 0x7FFF, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE,
        std::numeric_limits<UINT>::max()};
    switch (Below(8))
    {
    case 0:
        return kEdges[Below(std::size(kEdges))];
    case 1:
        return static_cast<UINT>(m_Run.Random()());
    default:
        return Below(20);
    }
}

RECT RandomWorld::InternalRect(bool mayBeHuge)
{
    const auto edge = [&] {
        return static_cast<LONG>(Chance(80) || !mayBeHuge ? Below(66) : Number()) - (Chance(10) ? 8 : 0);
    };
    RECT rect{edge(), edge(), edge(), edge()};
    if (!Chance(80))
        return rect;
    if (rect.left > rect.right)
        std::swap(rect.left, rect.right);
    if (rect.top > rect.bottom)
        std::swap(rect.top, rect.bottom);
    return rect;
}

D3DDDIFORMAT RandomWorld::Format()
{
    if (Chance(40))
        return Chance(50) ? D3DDDIFMT_A8R8G8B8 : D3DDDIFMT_X8R8G8B8;
    return kPixelFormats[Below(static_cast<UINT>(kPixelFormats.size()))];
}

BYTE* RandomWorld::Bytes(size_t count)
{
    if (count == 0)
        return nullptr;
    BYTE* pBytes = m_Call.emplace_back(count).Get();
    for (size_t i = 0; i < count; ++i)
        pBytes[i] = static_cast<BYTE>(i * 7);
    return pBytes;
}

void* RandomWorld::Garbage()
{
    constexpr UINT_PTR kAddresses[] = {
        0, 1, 8, 0xFFFF, 0x7FFFFFFF0000, 0xDEADBEEFDEADBEEF, 0xFFFFFFFFFFFFFFF8, 0x0000800000000000};
    if (Chance(20))
        return Bytes(8);  // too short for most
    return reinterpret_cast<void*>(kAddresses[Below(std::size(kAddresses))]);
}

void RandomWorld::EndCall()
{
    m_Call.clear();
}

HANDLE RandomWorld::InternalHandle(std::initializer_list<RandomKind> kinds)
{
    if (Lies())
        return InternalForeign();
    std::vector<HANDLE> fitting;
    for (const Thing& thing : m_Living)
        if (std::ranges::find(kinds, thing.m_Kind) != kinds.end())
            fitting.push_back(thing.m_Handle);
    return fitting.empty() ? nullptr : fitting[Below(static_cast<UINT>(fitting.size()))];
}

HANDLE RandomWorld::InternalForeign()
{
    const UINT kind = Below(3);
    if (kind == 0 && !m_Dead.empty())
        return m_Dead[Below(static_cast<UINT>(m_Dead.size()))];
    if (kind == 1 && !m_Living.empty())
        return std::next(m_Living.begin(), Below(static_cast<UINT>(m_Living.size())))->m_Handle;
    return Garbage();
}

HANDLE RandomWorld::Image()
{
    return Handle(RandomKind::Texture, RandomKind::Cube, RandomKind::Surface, RandomKind::Target);
}

bool RandomWorld::IsTexture(HANDLE handle) const
{
    const auto found = std::ranges::find(m_Living, handle, &Thing::m_Handle);
    return found != m_Living.end() && (found->m_Kind == RandomKind::Texture || found->m_Kind == RandomKind::Cube);
}

void RandomWorld::Add(RandomKind kind, HANDLE handle, std::list<FencedBytes> memory)
{
    if (handle)
        m_Living.push_back({kind, handle, std::move(memory)});
}

void RandomWorld::Remove(HANDLE handle)
{
    const auto found = std::ranges::find(m_Living, handle, &Thing::m_Handle);
    if (found == m_Living.end())
        return;
    m_Dead.push_back(handle);
    m_Living.erase(found);
}

void RandomWorld::RemoveAll()
{
    while (!m_Living.empty())
    {
        InternalDestroy(m_Living.front());
        m_Living.pop_front();
    }
}

void RandomWorld::InternalDestroy(const Thing& thing)
{
    const D3DDDI_DEVICEFUNCS& f = Functions();
    switch (thing.m_Kind)
    {
    case RandomKind::VertexShader:
        f.pfnDeleteVertexShaderFunc(Device(), thing.m_Handle);
        break;
    case RandomKind::PixelShader:
        f.pfnDeletePixelShader(Device(), thing.m_Handle);
        break;
    case RandomKind::Declaration:
        f.pfnDeleteVertexShaderDecl(Device(), thing.m_Handle);
        break;
    case RandomKind::Video:
        f.pfnDestroyVideoProcessDevice(Device(), thing.m_Handle);
        break;
    default:
        f.pfnDestroyResource(Device(), thing.m_Handle);
        break;
    }
}

void RandomWorld::SetUserVertices(FencedBytes vertices)
{
    m_UserVertices.push_back(std::move(vertices));
}

}  // namespace tesslo::test
