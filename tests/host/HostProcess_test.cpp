// Starting a program, where Wine may lose a process before it begins.
#include "host/runtime/HostProcess.h"

#include "host/runtime/HostImportPatch.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace
{

/// What stands in for the platform's function does: its answers in their order, TRUE behind them.
struct Played
{
    std::vector<DWORD> m_Errors;
    std::vector<std::wstring> m_Lines;  ///< that it was called with
};
Played s_Played;

// Writes to the line, as the platform's own may.
BOOL WINAPI PlayedCreateProcess(LPCWSTR, LPWSTR pLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD,
    LPVOID, LPCWSTR, LPSTARTUPINFOW, LPPROCESS_INFORMATION)
{
    const size_t call = s_Played.m_Lines.size();
    s_Played.m_Lines.emplace_back(pLine);
    pLine[0] = L'#';
    if (call >= s_Played.m_Errors.size())
        return TRUE;
    SetLastError(s_Played.m_Errors[call]);
    return FALSE;
}

class HostProcessTest : public testing::Test
{
protected:
    bool Start(std::vector<DWORD> errors)
    {
        s_Played = {std::move(errors), {}};
        const HostImportPatch patch(nullptr, "kernel32.dll", "CreateProcessW", PlayedCreateProcess);
        PROCESS_INFORMATION process{};
        return HostStartProcess(nullptr, L"program.exe --option", false, nullptr, {}, &process);
    }
};

}  // namespace

TEST_F(HostProcessTest, Start_Begins_IsNotRepeated)
{
    EXPECT_TRUE(Start({}));
    EXPECT_EQ(s_Played.m_Lines, std::vector<std::wstring>{L"program.exe --option"});
}

TEST_F(HostProcessTest, Start_LostByWine_IsRepeatedWithTheWholeLine)
{
    EXPECT_TRUE(Start({ERROR_INTERNAL_ERROR}));
    EXPECT_EQ(s_Played.m_Lines, std::vector<std::wstring>(2, L"program.exe --option"));
}

TEST_F(HostProcessTest, Start_LostTwice_IsGivenUp)
{
    EXPECT_FALSE(Start({ERROR_INTERNAL_ERROR, ERROR_INTERNAL_ERROR}));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INTERNAL_ERROR));
    EXPECT_EQ(s_Played.m_Lines.size(), 2u);
}

TEST_F(HostProcessTest, Start_NoSuchProgram_IsToldAtOnce)
{
    EXPECT_FALSE(Start({ERROR_FILE_NOT_FOUND}));
    EXPECT_EQ(s_Played.m_Lines.size(), 1u);
}
