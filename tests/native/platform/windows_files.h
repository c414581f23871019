// Files, errors and the environment, as far as the sample client library uses them.
#pragma once

inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
inline constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr DWORD ERROR_INVALID_DATA = 13;
inline constexpr DWORD ERROR_DISK_FULL = 112;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;

/// Of the last call on this thread that failed.
DWORD GetLastError();

/// Creates a file to write, whatever is asked for. Backslashes part folders.
HANDLE CreateFileW(const wchar_t* pPath, DWORD access, DWORD sharing, void* pSecurity, DWORD creation, DWORD attributes,
    HANDLE hTemplate);
BOOL WriteFile(HANDLE hFile, const void* pBytes, DWORD size, DWORD* pWritten, void* pOverlapped);
BOOL DeleteFileW(const wchar_t* pPath);

/// Closes a file, or gives up a thread.
BOOL CloseHandle(HANDLE hObject);

/// @return characters of the value, 0 without one; with too little room what it needs.
DWORD GetEnvironmentVariableW(const wchar_t* pName, wchar_t* pValue, DWORD room);
