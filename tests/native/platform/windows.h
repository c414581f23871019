/*
 * Stands in for the platform's own header, so that the driver's portable units build natively: the types, constants and
 * functions that those use and no more. What a unit needs beyond this folder is a reason to ask whether it is portable.
 *
 * Integers have the platform's sizes: long is wider here, so that none of them is one. wchar_t is wider too and stays
 * so, because the C library's functions count on it; no record holds one.
 */
#ifndef TESSLO_NATIVE_WINDOWS_H
#define TESSLO_NATIVE_WINDOWS_H

#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

typedef int BOOL;
typedef int INT;
typedef int32_t LONG;
typedef int16_t SHORT;
typedef uint8_t BYTE;
typedef uint8_t BOOLEAN;
typedef uint8_t UCHAR;
typedef uint16_t USHORT;
typedef uint16_t WORD;
typedef uint32_t DWORD;
typedef uint32_t UINT;
typedef uint32_t ULONG;
typedef long long LONGLONG;
typedef unsigned long long UINT64;
typedef unsigned long long ULONGLONG;
typedef uintptr_t UINT_PTR;
typedef uintptr_t ULONG_PTR;
typedef float FLOAT;
typedef LONG HRESULT;
typedef void* HANDLE;
typedef void* HINSTANCE;
typedef void* HMODULE;
typedef void* HWND;
typedef void* LPVOID;

#define TRUE 1
#define FALSE 0
#define S_OK ((HRESULT)0)
#define E_FAIL ((HRESULT)0x80004005)
#define INFINITE 0xFFFFFFFFu
#define MAX_PATH 260
#define INVALID_HANDLE_VALUE ((HANDLE)(intptr_t)-1)
#define DLL_PROCESS_DETACH 0
#define ARRAYSIZE(array) (sizeof(array) / sizeof((array)[0]))

/* One calling convention and one image. */
#define APIENTRY
#define CALLBACK
#define WINAPI
#define __declspec(attribute) __attribute__((attribute))

typedef struct GUID
{
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
} GUID;

typedef struct RECT
{
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
} RECT;

typedef struct POINT
{
    LONG x;
    LONG y;
} POINT;

typedef struct SIZE
{
    LONG cx;
    LONG cy;
} SIZE;

typedef struct PALETTEENTRY
{
    BYTE peRed;
    BYTE peGreen;
    BYTE peBlue;
    BYTE peFlags;
} PALETTEENTRY;

#ifdef __cplusplus
#include "windows_debug.h"
#include "windows_files.h"
#include "windows_memory.h"
#include "windows_threads.h"
#endif

#endif
