// The trace facility: every part of the driver reports through it, and nothing else configures it.
//
// A call carries a level (a bit mask); it prints if the process-wide mask has one of its bits. Lines go to the
// debugger and, with UMDTRACE_LOGFILE in the mask, to the log file as well. Any thread may trace at any time.
#pragma once

#include <windows.h>

// Level bits. A call may combine several; it prints if any of them is set in the mask.
inline constexpr UINT UMDTRACE_ERROR = 0x1;          ///< failures
inline constexpr UINT UMDTRACE_DDI = 0x2;            ///< entry functions, "=> "
inline constexpr UINT UMDTRACE_ENTER = 0x4;          ///< device methods, ">>> "
inline constexpr UINT UMDTRACE_LEAVE = 0x8;          ///< device methods that succeeded, "<<< "
inline constexpr UINT UMDTRACE_CAPS = 0x10;          ///< capability queries
inline constexpr UINT UMDTRACE_RESOURCE = 0x20;      ///< resources, handles, locks
inline constexpr UINT UMDTRACE_FRAMEBUFFER = 0x40;   ///< frame-buffer threads
inline constexpr UINT UMDTRACE_GPU = 0x80;           ///< GPU thread
inline constexpr UINT UMDTRACE_VIDEO = 0x100;        ///< video processing
inline constexpr UINT UMDTRACE_DETAIL = 0x200;       ///< verbose detail
inline constexpr UINT UMDTRACE_LOGFILE = 0x800;      ///< in the mask only: printed lines go to the log file too
inline constexpr UINT UMDTRACE_ALWAYS = 0xFFFFFFFF;  ///< prints whenever the mask is not 0

/// The process's level mask: 0, all off, until process attach reads it from the registry.
extern UINT g_DebugLevelUMD;

/// Traces one message if its level is on. Off costs a load, an AND and a branch; arguments are not evaluated.
#define UMD_TRACE(level, ...)                        \
    do                                               \
    {                                                \
        if (g_DebugLevelUMD & (level)) [[unlikely]]  \
            UMDUtilDebugTrace((level), __VA_ARGS__); \
    } while (0)

/// Prints a message behind the prefix "UMD: [process:thread] ". Formats as the platform's wide printf does:
/// %s takes a wide string, %S a narrow one. Messages carry their own line feed.
void UMDUtilDebugTrace(UINT level, const wchar_t* pFormat, ...);

/// Traces a failure at UMDTRACE_ERROR and gives back the result, so that a check is one line.
[[nodiscard]] HRESULT UMDFail(HRESULT hResult, const wchar_t* pFormat, ...);

/// Told by DllMain, first thing, of every reason; at process attach it reads the mask and prints the banner.
void UMDUtilDebugTraceDllMainReason(DWORD reason);

/// Prints the name of an exception's code at UMDTRACE_ERROR. The filter of the entry guards.
/// @return EXCEPTION_EXECUTE_HANDLER, always.
LONG UMDUtilDebugTraceException(DWORD code);

/// Low 32 bits of an address or handle: what the trace shows of them.
inline UINT UMDLow32(const volatile void* pointer)
{
    return static_cast<UINT>(reinterpret_cast<UINT_PTR>(pointer));
}
