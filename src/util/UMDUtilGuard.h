// Calls what may fault, so that the fault ends the call and not the process.
//
// For code that is not ours and runs on our threads: a client library, another maker's Direct3D. What the call had
// begun stays half done; locks that it took stay taken.
#pragma once

#include <windows.h>

#include <type_traits>

/// What a guard does about an exception: traces its name, and makes the stack fit for one more overflow.
void UMDUtilGuardCaught(DWORD code);

/// The work of a guard. Never inlined: a fault in the __try block's own frame would not be caught by every compiler.
template <typename Work>
__declspec(noinline) void UMDUtilGuardWork(const Work& work)
{
    work();
}

// The C++ library takes this name for a macro of its own.
#pragma push_macro("__try")
#undef __try

/// Does the work. Never inlined: a __try beside objects that have destructors would destroy them twice.
/// @param work a callable without arguments; owns nothing that a fault would leak.
/// @return false when a structured exception has ended it, whose name is traced.
template <typename Work>
[[nodiscard]] __declspec(noinline) bool UMDUtilGuard(const Work& work)
{
    static_assert(std::is_trivially_destructible_v<Work>, "a fault would destroy it twice");
    DWORD code = 0;
    __try
    {
        UMDUtilGuardWork(work);
        return true;
    }
    __except (code = GetExceptionCode(), EXCEPTION_EXECUTE_HANDLER)
    {
        // Not in the filter, which runs on what an overflow has left of the stack.
        UMDUtilGuardCaught(code);
        return false;
    }
}

#pragma pop_macro("__try")
