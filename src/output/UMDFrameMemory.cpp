#include "output/UMDFrameMemory.h"

#include <cstdlib>
#include <new>

UMDFrameMemory* UMDFrameMemory::Create(std::size_t bytes)
{
    auto* pMemory = new (std::nothrow) UMDFrameMemory;
    if (!pMemory)
        return nullptr;
    pMemory->m_References = 1;
    pMemory->m_Readers = 0;
    pMemory->m_pBits = static_cast<BYTE*>(std::malloc(bytes));
    if (!pMemory->m_pBits)
    {
        delete pMemory;
        return nullptr;
    }
    return pMemory;
}

void UMDFrameMemory::AddRef()
{
    InterlockedIncrement(&m_References);
}

void UMDFrameMemory::Release()
{
    if (InterlockedDecrement(&m_References) == 0)
    {
        std::free(m_pBits);
        delete this;
    }
}

void UMDFrameMemory::BeginRead()
{
    InterlockedIncrement(&m_Readers);
}

void UMDFrameMemory::EndRead()
{
    InterlockedDecrement(&m_Readers);
}

bool UMDFrameMemory::IsToBeRead()
{
    return InterlockedCompareExchange(&m_Readers, 0, 0) != 0;
}
