#include "Tables.h"

#include "adapter/UMDAdapter.h"

#include <algorithm>
#include <array>
#include <vector>

namespace
{
constexpr UINT kBufferSize = 4096;
constexpr UINT kSizes[] = {512, 2048};

using Buffer = std::array<BYTE, kBufferSize>;

struct Answer
{
    HRESULT Result;
    UINT Written;  ///< bytes at the start of the buffer
    Buffer Data;
};

HRESULT Ask(UMDAdapter& adapter, UINT type, UINT size, Buffer& buffer)
{
    D3DDDIARG_GETCAPS query = {};
    query.Type = static_cast<D3DDDICAPS_TYPE>(type);
    query.pData = buffer.data();
    query.DataSize = size;
    return adapter.GetCaps(&query);
}

/// Asks into two buffers of different content: what the driver wrote is alike in both.
Answer AskTwice(UMDAdapter& adapter, UINT type, UINT size)
{
    alignas(8) Buffer one;
    alignas(8) Buffer other;
    one.fill(0x55);
    other.fill(0xAA);
    Answer answer = {Ask(adapter, type, size, one), 0, {}};
    Ask(adapter, type, size, other);
    for (UINT i = 0; i < kBufferSize; ++i)
    {
        if (one[i] == other[i])
            answer.Written = i + 1;
    }
    answer.Data = one;
    return answer;
}

bool IsZero(const Answer& answer)
{
    return std::all_of(answer.Data.begin(), answer.Data.begin() + answer.Written, [](BYTE byte) { return !byte; });
}

std::string WrittenText(const Answer& small, const Answer& large)
{
    if (!small.Written)
        return "nothing";
    if (small.Written == kSizes[0] && large.Written == kSizes[1])
        return "`DataSize` bytes";
    return Text("%u bytes", small.Written);
}

std::string ValueText(const Answer& answer)
{
    if (!answer.Written)
        return "";
    if (IsZero(answer))
        return "zero";
    UINT word;
    std::copy_n(answer.Data.begin(), sizeof(word), reinterpret_cast<BYTE*>(&word));
    return answer.Written == sizeof(word) ? Text("%u", word) : Text("%u, then zero", word);
}

std::string WordsText(const Answer& answer)
{
    std::vector<UINT> words(answer.Written / sizeof(UINT));
    std::copy_n(answer.Data.begin(), answer.Written, reinterpret_cast<BYTE*>(words.data()));
    std::string text;
    for (UINT word : words)
        text += (text.empty() ? "" : ", ") + Text("%u", word);
    return text;
}

std::string FirstGuidText(const Answer& answer)
{
    GUID guid;
    std::copy_n(answer.Data.begin(), sizeof(guid), reinterpret_cast<BYTE*>(&guid));
    return GuidText(guid);
}

constexpr struct
{
    UINT Type;
    const char* pName;
    const char* pAnswer;                              ///< null where the bytes written say it
    std::string (*pText)(const Answer&) = ValueText;  ///< says it
} kQueries[] = {
#define QUERY(name) {D3DDDICAPS_##name, #name, nullptr}
#define QUERY_WITH(name, answer) {D3DDDICAPS_##name, #name, answer}
    QUERY(DDRAW),
    QUERY(DDRAW_MODE_SPECIFIC),
    QUERY(GETFORMATCOUNT),
    QUERY_WITH(GETFORMATDATA, "the formats below"),
    QUERY_WITH(GETMULTISAMPLEQUALITYLEVELS, "the format as given, then zero"),
    QUERY(GETD3DQUERYCOUNT),
    {D3DDDICAPS_GETD3DQUERYDATA, "GETD3DQUERYDATA", nullptr, WordsText},
    QUERY(GETD3D3CAPS),
    QUERY(GETD3D5CAPS),
    QUERY(GETD3D6CAPS),
    QUERY(GETD3D7CAPS),
    QUERY(GETD3D8CAPS),
    QUERY_WITH(GETD3D9CAPS, "the record below"),
    QUERY(GETDECODEGUIDCOUNT),
    {D3DDDICAPS_GETDECODEGUIDS, "GETDECODEGUIDS", nullptr, FirstGuidText},
    QUERY(GETDECODERTFORMATCOUNT),
    QUERY(GETDECODERTFORMATS),
    QUERY(GETDECODECOMPRESSEDBUFFERINFOCOUNT),
    QUERY(GETDECODECOMPRESSEDBUFFERINFO),
    QUERY(GETDECODECONFIGURATIONCOUNT),
    QUERY(GETDECODECONFIGURATIONS),
    QUERY(GETVIDEOPROCESSORDEVICEGUIDCOUNT),
    QUERY_WITH(GETVIDEOPROCESSORDEVICEGUIDS, "the processor below"),
    QUERY(GETVIDEOPROCESSORRTFORMATCOUNT),
    QUERY_WITH(GETVIDEOPROCESSORRTFORMATS, "its render target formats"),
    QUERY(GETVIDEOPROCESSORRTSUBSTREAMFORMATCOUNT),
    QUERY_WITH(GETVIDEOPROCESSORRTSUBSTREAMFORMATS, "its substream formats"),
    QUERY_WITH(GETVIDEOPROCESSORCAPS, "its capabilities"),
    QUERY_WITH(GETPROCAMPRANGE, "the next of its control ranges"),
    QUERY(FILTERPROPERTYRANGE),
    QUERY(GETEXTENSIONGUIDCOUNT),
    QUERY(GETEXTENSIONGUIDS),
    QUERY(GETEXTENSIONCAPS),
    QUERY(GETGAMMARAMPCAPS),
    {D3DDDICAPS_GETGAMMARAMPCAPS + 1, "and every other", nullptr},
#undef QUERY
#undef QUERY_WITH
};
}  // namespace

std::string QueryTable()
{
    const D3DDDI_ADAPTERCALLBACKS callbacks = {};
    UMDAdapter adapter(nullptr, 0, &callbacks);
    std::string table = "| type | name | result | written | answer |\n|---|---|---|---|---|\n";
    for (const auto& query : kQueries)
    {
        const Answer small = AskTwice(adapter, query.Type, kSizes[0]);
        const Answer large = AskTwice(adapter, query.Type, kSizes[1]);
        table += Text("| %u | %s | %s | ", query.Type, query.pName, small.Result == S_OK ? "S_OK" : "E_NOTIMPL") +
                 WrittenText(small, large) + " | " + (query.pAnswer ? query.pAnswer : query.pText(small)) + " |\n";
    }
    return table;
}
