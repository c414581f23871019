#include "ImportPatch.h"

namespace tesslo::test
{

namespace
{

UINT_PTR s_FailingValue;
DWORD s_FailingError;

/// Stands in for any function: the caller removes the arguments in this calling convention.
UINT_PTR FailingFunction()
{
    SetLastError(s_FailingError);
    return s_FailingValue;
}

}  // namespace

FailingImport::FailingImport(
    HMODULE hModule, const std::string& dll, const std::string& function, UINT_PTR value, DWORD error)
    : m_Patch((s_FailingValue = value, s_FailingError = error, hModule), dll, function, FailingFunction)
{
}

}  // namespace tesslo::test
