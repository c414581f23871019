// What random calls draw from: numbers that are small, large or odd, memory that ends at a fence, handles of every
// kind that live, have lived, or never were any.
#pragma once

#include "Fences.h"
#include "StressDriver.h"

#include <cstring>
#include <list>
#include <map>
#include <type_traits>
#include <vector>

namespace tesslo::test
{

class StressRun;

/// What a handle stands for.
enum class RandomKind
{
    Texture,
    Cube,
    Surface,
    Target,  ///< of presents
    Depth,
    Vertices,
    Indices,
    VertexShader,
    PixelShader,
    Declaration,
    Video,
};
inline constexpr RandomKind kRandomImages[] = {
    RandomKind::Texture, RandomKind::Cube, RandomKind::Surface, RandomKind::Target};

class RandomWorld
{
public:
    /// @param hostile whether calls may lie: wrong handles, addresses that are none, fields at random.
    RandomWorld(StressRun& run, StressDriver& driver, bool hostile);

    StressDriver& Driver() { return m_Driver; }
    const D3DDDI_DEVICEFUNCS& Functions() const { return m_Driver.Functions(); }
    HANDLE Device() const { return m_Driver.Device(); }

    bool Chance(unsigned percent) { return Below(100) < percent; }
    /// Whether this call lies, in a hostile run now and then.
    bool Lies() { return m_bHostile && Chance(kLies); }
    UINT Below(UINT limit);
    /// Mostly small, now and then at an edge of what 32 bits hold.
    UINT Number();
    /// Mostly within an image, now and then negative, empty, turned round or huge.
    RECT Rect() { return InternalRect(true); }
    /// The same, never huge.
    RECT NearRect() { return InternalRect(false); }
    D3DDDIFORMAT Format();

    /// Memory of the current call, filled with noise. @return null for none.
    BYTE* Bytes(size_t count);
    /// A record of the current call.
    template <typename Record>
    Record* Keep(const Record& record)
    {
        auto* pRecord = reinterpret_cast<Record*>(Bytes(sizeof(Record)));
        std::memcpy(static_cast<void*>(pRecord), &record, sizeof(Record));
        return pRecord;
    }
    /// An address that is a lie.
    void* Garbage();
    /// Gives the current call's memory back.
    void EndCall();

    /// A living handle of one of the kinds, null for none; in a lying call whatever.
    template <typename... Kinds>
    HANDLE Handle(Kinds... kinds)
    {
        return InternalHandle({kinds...});
    }
    HANDLE Image();
    bool IsTexture(HANDLE handle) const;

    /// Handles are told of as they come and go. @param memory stays the resource's.
    void Add(RandomKind kind, HANDLE handle, std::list<FencedBytes> memory = {});
    void Remove(HANDLE handle);
    size_t Count() const { return m_Living.size(); }
    /// Destroys all that lives, by its right entry.
    void RemoveAll();

    /// Vertices in user memory stay set behind the call that sets them.
    void SetUserVertices(FencedBytes vertices);

private:
    struct Thing
    {
        RandomKind m_Kind;
        HANDLE m_Handle;
        std::list<FencedBytes> m_Memory;
    };

    static constexpr unsigned kLies = 15;  ///< percent

    RECT InternalRect(bool mayBeHuge);
    HANDLE InternalHandle(std::initializer_list<RandomKind> kinds);
    HANDLE InternalForeign();
    void InternalDestroy(const Thing& thing);

    StressRun& m_Run;
    StressDriver& m_Driver;
    const bool m_bHostile;
    std::list<FencedBytes> m_Call;
    std::list<FencedBytes> m_UserVertices;
    std::list<Thing> m_Living;
    std::vector<HANDLE> m_Dead;
};

}  // namespace tesslo::test
