#include "output/UMDFrameMemory.h"

#include <cstdlib>
#include <new>

UMDFrameMemory* UMDFrameMemory::Create(std::size_t bytes)
{
    auto* pMemory = new (std::nothrow) UMDFrameMemory;
    if (!pMemory)
        return nullptr;
    pMemory->m_References = 1;
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
    m_Readers.fetch_add(1, std::memory_order_relaxed);
}

void UMDFrameMemory::EndRead()
{
    m_Readers.fetch_sub(1, std::memory_order_release);
}

bool UMDFrameMemory::IsToBeRead() const
{
    return m_Readers.load(std::memory_order_acquire) != 0;
}
