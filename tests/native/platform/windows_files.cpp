#include <windows.h>

#include "Object.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace
{
thread_local DWORD s_LastError;

struct File : Object
{
    explicit File(FILE* pOpened) : pFile(pOpened) {}
    ~File() override { fclose(pFile); }

    FILE* pFile;
};

/// Of plain ASCII.
std::string NativePath(const wchar_t* pPath)
{
    std::string path;
    for (; *pPath; ++pPath)
        path += *pPath == L'\\' ? '/' : static_cast<char>(*pPath);
    return path;
}
}  // namespace

DWORD GetLastError()
{
    return s_LastError;
}

HANDLE CreateFileW(const wchar_t* pPath, DWORD, DWORD, void*, DWORD, DWORD, HANDLE)
{
    FILE* pFile = fopen(NativePath(pPath).c_str(), "wb");
    if (pFile != nullptr)
        return new File(pFile);
    s_LastError = ERROR_PATH_NOT_FOUND;
    return INVALID_HANDLE_VALUE;
}

BOOL WriteFile(HANDLE hFile, const void* pBytes, DWORD size, DWORD* pWritten, void*)
{
    // Behind the buffer a full disk would show too late.
    FILE* pFile = static_cast<File*>(static_cast<Object*>(hFile))->pFile;
    *pWritten = static_cast<DWORD>(fwrite(pBytes, 1, size, pFile));
    if (*pWritten == size && fflush(pFile) == 0)
        return TRUE;
    s_LastError = ERROR_DISK_FULL;
    return FALSE;
}

BOOL DeleteFileW(const wchar_t* pPath)
{
    return remove(NativePath(pPath).c_str()) == 0;
}

BOOL CloseHandle(HANDLE hObject)
{
    delete static_cast<Object*>(hObject);
    return TRUE;
}

DWORD GetEnvironmentVariableW(const wchar_t* pName, wchar_t* pValue, DWORD room)
{
    const char* pText = getenv(NativePath(pName).c_str());
    if (pText == nullptr)
        return 0;
    const std::wstring value(pText, pText + strlen(pText));
    if (value.size() >= room)
        return static_cast<DWORD>(value.size()) + 1;
    wcscpy(pValue, value.c_str());
    return static_cast<DWORD>(value.size());
}
