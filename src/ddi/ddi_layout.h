// Proof that a record of the driver interface has the layout that the runtime uses.
#pragma once

#include <cstddef>

/// Size and alignment of a record, bytes.
#define UMD_LAYOUT(record, size, alignment) \
    static_assert(sizeof(record) == (size) && alignof(record) == (alignment), #record)

/// Offset of a member, bytes.
#define UMD_OFFSET(record, member, offset) static_assert(offsetof(record, member) == (offset), #record "::" #member)

// The published records nest unnamed structures in unions, which all compilers accept as an extension.
#if defined(__clang__)
// clang-format off: one directive a line
#define UMD_DDI_RECORDS_BEGIN                                         \
    _Pragma("clang diagnostic push")                                  \
    _Pragma("clang diagnostic ignored \"-Wgnu-anonymous-struct\"") \
    _Pragma("clang diagnostic ignored \"-Wnested-anon-types\"")
// clang-format on
#define UMD_DDI_RECORDS_END _Pragma("clang diagnostic pop")
#elif defined(__GNUC__)
#define UMD_DDI_RECORDS_BEGIN _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wpedantic\"")
#define UMD_DDI_RECORDS_END _Pragma("GCC diagnostic pop")
#else
#define UMD_DDI_RECORDS_BEGIN __pragma(warning(push)) __pragma(warning(disable : 4201))
#define UMD_DDI_RECORDS_END __pragma(warning(pop))
#endif
