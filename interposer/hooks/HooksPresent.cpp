#include "interposer/hooks/HooksPresent.h"

#include "interposer/run/RunLedger.h"

void HooksPresenting(IDirect3DDevice9* pDevice, const std::function<void(CarryDevice&)>& present)
{
    if (RunOf().m_Mode != RunMode::Off && pDevice->TestCooperativeLevel() == D3D_OK)
        CarryFor(pDevice, present);
}

void HooksPresented()
{
    RunRecord& run = RunOf();
    const auto frames = static_cast<UINT64>(InterlockedIncrement64(&run.m_Frames));
    if (run.m_FrameLimit == 0 || frames < run.m_FrameLimit)
        return;
    run.m_bFrameLimitReached = 1;
    if (run.m_Mode != RunMode::Off)
        CarryThread::Get().Finish();
    // Not ExitProcess: the program's own clean-up has not been asked, and might wait for this thread.
    TerminateProcess(GetCurrentProcess(), 0);
}
