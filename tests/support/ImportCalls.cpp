#include "ImportCalls.h"

#include <cstring>
#include <stdexcept>

namespace tesslo::test
{

namespace
{

/// Counts on one thread, changes no register, and jumps: who called finds its own frame on top.
// clang-format off: an instruction is a row
constexpr BYTE kStub[] = {
    0x50,                                            // push rax
    0x65, 0x8B, 0x04, 0x25, 0x48, 0x00, 0x00, 0x00,  // mov eax, gs:[0x48]: the thread's number
    0x3D, 0, 0, 0, 0,                                // cmp eax, the counted thread's
    0x75, 0x0D,                                      // jne: past the next two
    0x48, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0,              // mov rax, address of the count
    0x48, 0xFF, 0x00,                                // inc qword [rax]
    0x58,                                            // pop rax
    0xFF, 0x25, 0x00, 0x00, 0x00, 0x00,              // jmp [rip]: to the address that follows
    0, 0, 0, 0, 0, 0, 0, 0,
};
// clang-format on
constexpr size_t kThreadOffset = 10;
constexpr size_t kCountOffset = 18;
constexpr size_t kFunctionOffset = sizeof(kStub) - sizeof(void*);
constexpr size_t kStubSize = 48;
static_assert(sizeof(kStub) <= kStubSize);

void Store(void** ppSlot, void* pFunction)
{
    DWORD protection = 0;
    VirtualProtect(ppSlot, sizeof(*ppSlot), PAGE_READWRITE, &protection);
    InterlockedExchangePointer(ppSlot, pFunction);
    VirtualProtect(ppSlot, sizeof(*ppSlot), protection, &protection);
}

}  // namespace

ImportCalls::ImportCalls(HMODULE hModule)
{
    InternalFind(reinterpret_cast<BYTE*>(hModule));
    m_pStubs = static_cast<BYTE*>(
        VirtualAlloc(nullptr, m_Imports.size() * kStubSize, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
    if (!m_pStubs)
        throw std::runtime_error("no memory for stubs");
    for (size_t i = 0; i < m_Imports.size(); i++)
    {
        InternalWriteStub(m_pStubs + i * kStubSize, m_Imports[i]);
        Store(m_Imports[i].m_ppSlot, m_pStubs + i * kStubSize);
    }
}

ImportCalls::~ImportCalls()
{
    for (const Import& import : m_Imports)
        Store(import.m_ppSlot, import.m_pFunction);
    VirtualFree(m_pStubs, 0, MEM_RELEASE);
}

std::map<std::string, UINT64> ImportCalls::Made() const
{
    std::map<std::string, UINT64> made;
    for (const Import& import : m_Imports)
        if (import.m_Calls != 0)
            made[import.m_Name] = import.m_Calls;
    return made;
}

void ImportCalls::Forget()
{
    for (Import& import : m_Imports)
        import.m_Calls = 0;
}

void ImportCalls::InternalFind(BYTE* pBase)
{
    const auto* pHeaders =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(pBase + reinterpret_cast<const IMAGE_DOS_HEADER*>(pBase)->e_lfanew);
    const DWORD offset = pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    auto* pLibrary = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(pBase + offset);
    for (; pLibrary->Name != 0; pLibrary++)
    {
        const auto* pName = reinterpret_cast<const IMAGE_THUNK_DATA*>(pBase + pLibrary->OriginalFirstThunk);
        auto* ppSlot = reinterpret_cast<void**>(pBase + pLibrary->FirstThunk);
        for (; pName->u1.AddressOfData != 0; pName++, ppSlot++)
        {
            const auto* pImport = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(pBase + pName->u1.AddressOfData);
            m_Imports.push_back({reinterpret_cast<const char*>(pImport->Name), ppSlot, *ppSlot, 0});
        }
    }
}

void ImportCalls::InternalWriteStub(BYTE* pStub, Import& import) const
{
    const DWORD thread = GetCurrentThreadId();
    const UINT64* pCalls = &import.m_Calls;
    std::memcpy(pStub, kStub, sizeof(kStub));
    std::memcpy(pStub + kThreadOffset, &thread, sizeof(thread));
    std::memcpy(pStub + kCountOffset, &pCalls, sizeof(pCalls));
    std::memcpy(pStub + kFunctionOffset, &import.m_pFunction, sizeof(import.m_pFunction));
}

}  // namespace tesslo::test
