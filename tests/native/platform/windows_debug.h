// Text for the debugger, which is raised as an exception that the tests take; the wide-character functions.
#pragma once

#include <stdarg.h>

inline constexpr UINT CP_ACP = 0;
inline constexpr LONG EXCEPTION_EXECUTE_HANDLER = 1;
inline constexpr LONG EXCEPTION_CONTINUE_SEARCH = 0;
inline constexpr LONG EXCEPTION_CONTINUE_EXECUTION = -1;

struct EXCEPTION_RECORD
{
    DWORD ExceptionCode;
    DWORD NumberParameters;
    ULONG_PTR ExceptionInformation[15];
};

struct EXCEPTION_POINTERS
{
    EXCEPTION_RECORD* ExceptionRecord;
};

using PVECTORED_EXCEPTION_HANDLER = LONG (*)(EXCEPTION_POINTERS*);

/// One handler at a time.
void* AddVectoredExceptionHandler(ULONG first, PVECTORED_EXCEPTION_HANDLER pHandler);
ULONG RemoveVectoredExceptionHandler(void* hHandler);

/// Raises the wide text, as a platform of today does.
void OutputDebugStringW(const wchar_t* pText);

/// Of plain ASCII, with its terminating null; the whole text or, without a buffer, its size.
int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* pText, int length, char* pBuffer, int size,
    const char* pDefault, BOOL* pUsedDefault);

/// Aborts where the platform's does: when the room is too small.
int wcscat_s(wchar_t* pText, size_t room, const wchar_t* pMore);

/// Formats as the platform does: %s takes a wide string and %S a narrow one, and an l before an integer means 32 bits.
int _vsnwprintf(wchar_t* pBuffer, size_t room, const wchar_t* pFormat, va_list arguments);
int _snwprintf(wchar_t* pBuffer, size_t room, const wchar_t* pFormat, ...);
