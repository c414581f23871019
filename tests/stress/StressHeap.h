// The driver's heap, each block between pages without access: who writes behind one faults, and who touches one that
// was freed.
#pragma once

#include "StressLoad.h"

namespace tesslo::test
{

/// One at a time in a process, made before the driver is loaded and ended behind its unloading.
class StressHeap
{
public:
    const std::string& Failure() const { return m_Load.Failure(); }
    /// How many the driver has.
    size_t Blocks() const;
    /// Frees what the driver has left. Only while it is not loaded.
    void GiveBack();

private:
    static StressLoad::Patches InternalPatch(HMODULE hModule);

    StressLoad m_Load{InternalPatch};
};

}  // namespace tesslo::test
