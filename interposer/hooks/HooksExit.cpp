// The end of the process.
#include "interposer/carry/CarryThread.h"
#include "interposer/hooks/Hooks.h"

#include <cstring>

namespace
{

using ExitFunction = void(NTAPI*)(LONG);

#pragma pack(push, 1)
struct Jump
{
    BYTE m_Move[2] = {0x48, 0xB8};  // mov rax, target
    ExitFunction m_pTarget;
    BYTE m_Jump[2] = {0xFF, 0xE0};  // jmp rax
};
#pragma pack(pop)

/// Where every exit leads. Behind it no other thread lives: a detach is too late to wait for one.
void* g_pExit;
BYTE g_Code[sizeof(Jump)];  // its own first instructions

void Write(const void* pCode)
{
    DWORD protection = 0;
    VirtualProtect(g_pExit, sizeof(g_Code), PAGE_EXECUTE_READWRITE, &protection);
    std::memcpy(g_pExit, pCode, sizeof(g_Code));
    VirtualProtect(g_pExit, sizeof(g_Code), protection, &protection);
    FlushInstructionCache(GetCurrentProcess(), g_pExit, sizeof(g_Code));
}

void NTAPI OnExit(LONG status)
{
    CarryThread::Get().Finish();
    Write(g_Code);
    reinterpret_cast<ExitFunction>(g_pExit)(status);
}

bool Install()
{
    g_pExit = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlExitUserProcess"));
    if (g_pExit == nullptr)
        return false;
    std::memcpy(g_Code, g_pExit, sizeof(g_Code));
    const Jump jump{.m_pTarget = OnExit};
    Write(&jump);
    return true;
}

}  // namespace

void HooksExit()
{
    [[maybe_unused]] static const bool bInstalled = Install();
}
