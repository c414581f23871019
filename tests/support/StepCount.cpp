#include "StepCount.h"

namespace tesslo::test
{

namespace
{

constexpr DWORD kTrapFlag = 0x100;

DWORD64 s_Begin;  ///< of the module's image
DWORD64 s_End;
DWORD s_ThreadId;
volatile bool s_bStepping;
volatile bool s_bInside;  ///< the step before was in the module
volatile unsigned s_Count;

bool IsInModule(DWORD64 address)
{
    return address >= s_Begin && address < s_End;
}

}  // namespace

/// Where the module's callees return to, and where it goes on from there.
extern "C" void StepCountResume();
extern "C" DWORD64 s_StepCountReturn;
DWORD64 s_StepCountReturn;

// Steps again, from the instruction behind the call.
__asm__(".globl StepCountResume\n"
        "StepCountResume:\n"
        "    pushq s_StepCountReturn(%rip)\n"
        "    pushfq\n"
        "    orq $0x100, (%rsp)\n"
        "    popfq\n"
        "    ret\n");

namespace
{

// What the module calls runs at full speed: thousands of the fakes' steps would take seconds.
bool LeavesForCallee(CONTEXT* pContext)
{
    auto* pReturn = reinterpret_cast<DWORD64*>(pContext->Rsp);
    if (!s_bInside || !IsInModule(*pReturn))
        return false;
    s_StepCountReturn = *pReturn;
    *pReturn = reinterpret_cast<DWORD64>(StepCountResume);
    return true;
}

LONG CALLBACK OnStep(EXCEPTION_POINTERS* pPointers)
{
    if (pPointers->ExceptionRecord->ExceptionCode != EXCEPTION_SINGLE_STEP || GetCurrentThreadId() != s_ThreadId)
        return EXCEPTION_CONTINUE_SEARCH;
    CONTEXT* pContext = pPointers->ContextRecord;
    const bool bInside = IsInModule(pContext->Rip);
    if (bInside)
        s_Count = s_Count + 1;
    // Each step takes the flag away.
    if (s_bStepping && (bInside || !LeavesForCallee(pContext)))
        pContext->EFlags |= kTrapFlag;
    else
        pContext->EFlags &= ~kTrapFlag;
    s_bInside = bInside;
    return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

unsigned StepCount(HMODULE hModule, const std::function<void()>& call)
{
    const auto* pBase = reinterpret_cast<const BYTE*>(hModule);
    const auto* pHeaders =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(pBase + reinterpret_cast<const IMAGE_DOS_HEADER*>(pBase)->e_lfanew);
    s_Begin = reinterpret_cast<DWORD64>(pBase);
    s_End = s_Begin + pHeaders->OptionalHeader.SizeOfImage;
    s_ThreadId = GetCurrentThreadId();
    s_Count = 0;
    s_bInside = false;
    void* pHandler = AddVectoredExceptionHandler(1, OnStep);
    s_bStepping = true;
    __asm__ volatile("pushfq\n orq $0x100, (%%rsp)\n popfq" ::: "memory", "cc");
    call();
    s_bStepping = false;
    RemoveVectoredExceptionHandler(pHandler);
    return s_Count;
}

}  // namespace tesslo::test
