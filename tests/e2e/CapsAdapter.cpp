#include "CapsAdapter.h"

#include "TraceLines.h"
#include "TraceText.h"

#include <algorithm>
#include <cstring>

namespace tesslo::test
{

std::vector<UINT> CapsAnswer::Words(std::size_t count) const
{
    std::vector<UINT> words(count);
    std::memcpy(words.data(), Memory.data() + CapsAdapter::kGuardSize, count * sizeof(UINT));
    return words;
}

CapsAdapter::CapsAdapter(UINT mask)
    : m_Driver({L"TessloWddmUmode.dll", std::nullopt, mask}), m_Adapter(m_Driver, m_Kernel)
{
}

CapsAnswer CapsAdapter::Ask(UINT type, UINT size, void* pInfo)
{
    CapsAnswer answer = {E_UNEXPECTED, FreshMemory(), {}};
    D3DDDIARG_GETCAPS query = {};
    std::memcpy(&query.Type, &type, sizeof(type));
    query.pInfo = pInfo;
    query.pData = answer.Memory.data() + kGuardSize;
    query.DataSize = size;

    TraceLines trace;
    answer.Result = m_Adapter.Functions().pfnGetCaps(m_Adapter.Handle(), &query);
    answer.Trace = trace.Lines();
    return answer;
}

std::vector<BYTE> CapsAdapter::FreshMemory()
{
    return std::vector<BYTE>(kGuardSize + kBufferSize + kGuardSize, kFill);
}

std::string CapsAdapter::FirstDifference(const std::vector<BYTE>& actual, const std::vector<BYTE>& expected)
{
    const auto [a, e] = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    if (a == actual.end() && e == expected.end())
        return "";
    const std::string text = Text("byte %lld is 0x%02X, not 0x%02X",
        static_cast<long long>(a - actual.begin()) - static_cast<long long>(kGuardSize), *a, *e);
    return text;
}

}  // namespace tesslo::test
