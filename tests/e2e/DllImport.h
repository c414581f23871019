// Replaces a function that a loaded module imports, for as long as the object lives.
#pragma once

#include <windows.h>

class DllImport
{
public:
    /// @param pName the import's name, whatever DLL it comes from. A module that does not import it is an error of
    ///              the test: Replaced() says so.
    template <typename Function>
    DllImport(HMODULE hModule, const char* pName, Function* pReplacement)
        : DllImport(hModule, pName, reinterpret_cast<void*>(pReplacement), 0)
    {
    }
    ~DllImport();

    DllImport(const DllImport&) = delete;
    DllImport& operator=(const DllImport&) = delete;

    bool Replaced() const { return m_pSlot != nullptr; }
    /// What the module imported.
    template <typename Function>
    Function* Original() const
    {
        return reinterpret_cast<Function*>(m_pOriginal);
    }

private:
    DllImport(HMODULE hModule, const char* pName, void* pReplacement, int);
    void Write(void* pFunction);

    void** m_pSlot = nullptr;
    void* m_pOriginal = nullptr;
};
