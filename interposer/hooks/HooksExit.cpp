// The end of the process.
#include "interposer/carry/CarryThread.h"
#include "interposer/hooks/Hooks.h"

#include <cstring>

namespace
{

/// mov rax, address; jmp rax
constexpr BYTE kJump[] = {0x48, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xE0};

using ExitFunction = void(NTAPI*)(LONG);

/// Where every exit leads. Behind it no other thread lives: a detach is too late to wait for one.
void* g_pExit;
BYTE g_Code[sizeof(kJump)];  // its own first instructions

void Write(const void* pCode)
{
    DWORD protection = 0;
    VirtualProtect(g_pExit, sizeof(kJump), PAGE_EXECUTE_READWRITE, &protection);
    std::memcpy(g_pExit, pCode, sizeof(kJump));
    VirtualProtect(g_pExit, sizeof(kJump), protection, &protection);
    FlushInstructionCache(GetCurrentProcess(), g_pExit, sizeof(kJump));
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
    BYTE jump[sizeof(kJump)];
    std::memcpy(jump, kJump, sizeof(jump));
    const ExitFunction pHook = OnExit;
    std::memcpy(jump + 2, &pHook, sizeof(pHook));
    Write(jump);
    return true;
}

}  // namespace

void HooksExit()
{
    [[maybe_unused]] static const bool bInstalled = Install();
}
