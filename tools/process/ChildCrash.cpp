#include "tools/process/ChildCrash.h"

#include <cinttypes>
#include <cwchar>

namespace
{

constexpr int kCallsMax = 24;

FILE* g_pStream;
void (*g_pExplain)(FILE* pStream, const EXCEPTION_RECORD& record);

void PrintCall(DWORD64 address)
{
    HMODULE hModule = nullptr;
    wchar_t path[MAX_PATH] = L"?";
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<const wchar_t*>(address), &hModule))
        GetModuleFileNameW(hModule, path, MAX_PATH);
    const wchar_t* pName = wcsrchr(path, L'\\');
    std::fprintf(g_pStream, " %ls+0x%" PRIX64, pName ? pName + 1 : path, address - reinterpret_cast<DWORD64>(hModule));
}

void TakeReturnAddress(CONTEXT* pContext)
{
    pContext->Rip = *reinterpret_cast<const DWORD64*>(pContext->Rsp);
    pContext->Rsp += sizeof(DWORD64);
}

LONG WINAPI Report(EXCEPTION_POINTERS* pPointers)
{
    std::fprintf(g_pStream, "%s0x%08lX", kChildCrash, pPointers->ExceptionRecord->ExceptionCode);
    if (g_pExplain)
        g_pExplain(g_pStream, *pPointers->ExceptionRecord);
    std::fprintf(g_pStream, " in");
    CONTEXT context = *pPointers->ContextRecord;
    // A call through null has left its return address on top, as a leaf has.
    if (!context.Rip)
        TakeReturnAddress(&context);
    for (int i = 0; i < kCallsMax && context.Rip; ++i)
    {
        PrintCall(context.Rip);
        DWORD64 base = 0;
        void* pHandlerData = nullptr;
        DWORD64 frame = 0;
        if (PRUNTIME_FUNCTION pFunction = RtlLookupFunctionEntry(context.Rip, &base, nullptr))
            RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, pFunction, &context, &pHandlerData, &frame, nullptr);
        else
            TakeReturnAddress(&context);
    }
    std::fprintf(g_pStream, "\n");
    std::fflush(g_pStream);
    // Here and now: neither a debugger nor a dialog shall be begun for it.
    TerminateProcess(GetCurrentProcess(), pPointers->ExceptionRecord->ExceptionCode);
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void ChildReportCrashes(FILE* pStream, void (*pExplain)(FILE*, const EXCEPTION_RECORD&))
{
    g_pStream = pStream;
    g_pExplain = pExplain;
    SetUnhandledExceptionFilter(Report);
}
