// How the host reports what went wrong: one line that a user can act on.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

class HostError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Throws "<what> failed: 0x8..." if the result is a failure.
void HostCheck(HRESULT hResult, const char* pWhat);

/// "disk full", or the system's text for the code with its number.
std::string HostSystemText(DWORD error);

/// Throws "<what>: <the system's text for the code>".
[[noreturn]] void HostThrowSystemError(const std::string& what, DWORD error);
