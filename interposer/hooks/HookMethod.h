// Hooks in the method tables of the platform's objects. A hook is a function that is put into a slot of a table in
// place of the platform's method; what was there is called through HookMethod.
#pragma once

#include <windows.h>

#include <cstring>
#include <span>
#include <type_traits>

/// One slot: what goes into it, and where the platform's own function is kept.
struct HookRow
{
    size_t m_Slot;
    void* m_pHook;
    void** m_ppPlatform;
};

/// Puts the rows into the table of the object, once: the table belongs to all objects of its kind.
void HookInstall(void* pObject, std::span<const HookRow> rows);

/// How deep this thread is inside hooked methods. What the platform, or the driver, calls of itself while a program's
/// call runs is not the program's.
class HookDepth
{
public:
    HookDepth() { ++s_Depth; }
    ~HookDepth() { --s_Depth; }
    HookDepth(const HookDepth&) = delete;
    HookDepth& operator=(const HookDepth&) = delete;

    bool IsOuter() const { return s_Depth == 1; }

private:
    static thread_local int s_Depth;
};

/// A method of an interface, as its table holds it.
template <auto kMethod>
struct HookMethod;

template <typename Interface, typename Result, typename... Arguments,
    Result (STDMETHODCALLTYPE Interface::*kMethod)(Arguments...)>
struct HookMethod<kMethod>
{
    using Function = Result(STDMETHODCALLTYPE*)(Interface*, Arguments...);

    /// The platform's own function; known once a table with the method was hooked.
    static inline void* s_pPlatform;

    static Result Platform(Interface* pThis, Arguments... arguments)
    {
        return reinterpret_cast<Function>(s_pPlatform)(pThis, arguments...);
    }

    /// What most hooks do: the platform first, then, when it succeeded and the call is not one within another, the
    /// work with the same arguments.
    template <auto kWork>
    static HookRow RowBehind()
    {
        return RowAround<[](auto...) {}, kWork>();
    }
    /// What is carried before the platform's call, when it is not one within another; and behind it as above.
    template <auto kBefore, auto kBehind = [](auto...) {}>
    static HookRow RowAround()
    {
        return Row([](Interface* pThis, Arguments... arguments) -> Result {
            const HookDepth depth;
            if (depth.IsOuter())
                kBefore(pThis, arguments...);
            if constexpr (std::is_void_v<Result>)
            {
                Platform(pThis, arguments...);
                if (depth.IsOuter())
                    kBehind(pThis, arguments...);
            }
            else
            {
                const Result result = Platform(pThis, arguments...);
                if (depth.IsOuter() && SUCCEEDED(result))
                    kBehind(pThis, arguments...);
                return result;
            }
        });
    }
    static HookRow Row(Function pHook) { return {Slot(), reinterpret_cast<void*>(pHook), &s_pPlatform}; }

private:
    /// A pointer to a virtual method holds the offset of its slot, plus 1.
    static size_t Slot()
    {
        const auto pMethod = kMethod;
        size_t offset = 0;
        std::memcpy(&offset, &pMethod, sizeof(offset));
        return (offset - 1) / sizeof(void*);
    }
};
