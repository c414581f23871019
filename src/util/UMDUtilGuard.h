// Calls what may fault, so that the fault ends the call and not the process.
//
// For code that is not ours and runs on our threads: a client library, another maker's Direct3D. What the call had
// begun stays half done; locks that it took stay taken.
#pragma once

#include <type_traits>

/// Calls a function under the guard. @return false when a structured exception has ended it, whose name is traced.
[[nodiscard]] bool UMDUtilGuardCall(void (*pFunction)(const void* pArgument), const void* pArgument);

/// The same for any callable without arguments that owns nothing that a fault would leak.
template <typename Work>
[[nodiscard]] bool UMDUtilGuard(const Work& work)
{
    static_assert(std::is_trivially_destructible_v<Work>, "a fault would leak what it owns");
    return UMDUtilGuardCall([](const void* pWork) { (*static_cast<const Work*>(pWork))(); }, &work);
}
