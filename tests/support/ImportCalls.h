// Counts what a loaded module calls of other modules: each function that it imports by name, on one thread.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace tesslo::test
{

class ImportCalls
{
public:
    /// The constructing thread's calls count; those of others pass. Throws std::runtime_error without memory.
    explicit ImportCalls(HMODULE hModule);
    /// The module must still be loaded, and its other threads have ended.
    ~ImportCalls();
    ImportCalls(const ImportCalls&) = delete;
    ImportCalls& operator=(const ImportCalls&) = delete;

    /// Functions called since the last Forget, and how often.
    std::map<std::string, UINT64> Made() const;
    void Forget();

private:
    struct Import
    {
        std::string m_Name;
        void** m_ppSlot;  ///< in the module's table
        void* m_pFunction;
        UINT64 m_Calls;
    };

    void InternalFind(BYTE* pBase);
    void InternalWriteStub(BYTE* pStub, Import& import) const;

    std::vector<Import> m_Imports;
    BYTE* m_pStubs = nullptr;  ///< one an import, which counts and jumps on
};

}  // namespace tesslo::test
