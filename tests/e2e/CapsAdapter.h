// An adapter of the driver's DLL, asked as the runtime asks: with a buffer that has guards around it.
#pragma once

#include "Lines.h"

#include "host/kernel/HostKernel.h"
#include "host/runtime/HostAdapter.h"
#include "host/runtime/HostDriver.h"

#include <string>
#include <vector>

namespace tesslo::test
{

struct CapsAnswer
{
    HRESULT Result;
    std::vector<BYTE> Memory;  ///< guard, buffer, guard
    Lines Trace;               ///< traced by the query, without the prefix and the line feed

    /// The buffer's first words.
    std::vector<UINT> Words(std::size_t count) const;
};

class CapsAdapter
{
public:
    static constexpr std::size_t kGuardSize = 256;    ///< bytes, a multiple of every record's alignment
    static constexpr std::size_t kBufferSize = 4096;  ///< bytes
    static constexpr BYTE kFill = 0x5A;
    static constexpr UINT kFillWord = 0x5A5A5A5A;

    /// Loads the DLL with a trace mask and opens an adapter.
    explicit CapsAdapter(UINT mask);

    /// @param size  DataSize of the query; nothing to do with the size of the buffer.
    /// @param pInfo the query's input.
    CapsAnswer Ask(UINT type, UINT size, void* pInfo = nullptr);

    /// What a query finds in the caller's memory.
    static std::vector<BYTE> FreshMemory();
    /// Empty when equal; otherwise the first difference, told by its offset in the buffer.
    static std::string FirstDifference(const std::vector<BYTE>& actual, const std::vector<BYTE>& expected);

private:
    HostDriver m_Driver;
    HostKernel m_Kernel;
    HostAdapter m_Adapter;
};

}  // namespace tesslo::test
