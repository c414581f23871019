// Patches imports of the driver whenever it is loaded: from before its entry point runs until it is unmapped.
#pragma once

#include "ImportPatch.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tesslo::test
{

class StressLoad
{
public:
    using Patches = std::vector<std::unique_ptr<ImportPatch>>;

    /// @param patch called in the loader, for the driver's module.
    explicit StressLoad(std::function<Patches(HMODULE hModule)> patch);
    ~StressLoad();
    StressLoad(const StressLoad&) = delete;
    StressLoad& operator=(const StressLoad&) = delete;

    /// Why it could not be patched; "" when it was.
    const std::string& Failure() const { return m_Failure; }

private:
    static void CALLBACK InternalNotify(ULONG reason, const void* pData, void* pContext);

    std::function<Patches(HMODULE)> m_Patch;
    std::string m_Failure;
    Patches m_Patches;          ///< while the driver is loaded
    void* m_pCookie = nullptr;  ///< of the loader's notification
};

}  // namespace tesslo::test
