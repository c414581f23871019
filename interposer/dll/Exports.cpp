// The exports that lead to the platform as they are: everything but the two that create a factory.
#include "interposer/dll/Platform.h"

// A jump keeps registers and stack, so that no export's parameters need to be known.
#define FORWARD(name)                                       \
    extern "C" void* g_p##name;                             \
    void* g_p##name;                                        \
    extern "C" __attribute__((naked)) void Forward##name(); \
    extern "C" __attribute__((naked)) void Forward##name()  \
    {                                                       \
        asm("jmp *g_p" #name "(%rip)");                     \
    }
#define FORWARDS(row)                                                                                     \
    row(Direct3DShaderValidatorCreate9) row(PSGPError) row(PSGPSampleTexture) row(D3DPERF_BeginEvent)     \
        row(D3DPERF_EndEvent) row(D3DPERF_GetStatus) row(D3DPERF_QueryRepeatFrame) row(D3DPERF_SetMarker) \
            row(D3DPERF_SetOptions) row(D3DPERF_SetRegion) row(DebugSetLevel) row(DebugSetMute)

FORWARDS(FORWARD)

void ExportsBind()
{
#define BIND(name) g_p##name = PlatformExport(#name);
    FORWARDS(BIND)
}
