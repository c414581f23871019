// capabilities_doc check|update PAGE: compares the page's tables with the driver's answers, or writes them anew.

#include "Page.h"
#include "Tables.h"

#include <cstdio>
#include <fstream>
#include <iterator>

namespace
{
int Complain(const std::string& line)
{
    std::fprintf(stderr, "capabilities_doc: %s\n", line.c_str());
    return 1;
}
}  // namespace

int main(int count, char** pArguments)
{
    const std::string action = count == 3 ? pArguments[1] : "";
    if (action != "check" && action != "update")
        return Complain("usage: capabilities_doc check|update PAGE");
    const char* pPath = pArguments[2];

    std::ifstream input(pPath, std::ios::binary);
    if (!input)
        return Complain(std::string("cannot read ") + pPath);
    const std::string page{std::istreambuf_iterator<char>(input), {}};
    input.close();

    std::string error;
    const std::string current = WithTables(page,
        {
            {"record", RecordTable()},
            {"formats", FormatTable()},
            {"operations", OperationTable()},
            {"queries", QueryTable()},
            {"processor", ProcessorTable()},
            {"procamp", ProcAmpTable()},
        },
        error);
    if (!error.empty())
        return Complain(error);

    if (action == "check")
    {
        if (unsigned line = FirstDifference(page, current))
            return Complain(Text("%s differs from the driver's answers at line %u", pPath, line));
        return 0;
    }
    std::ofstream output(pPath, std::ios::binary);
    if (!(output << current) || !output.flush())
        return Complain(std::string("cannot write ") + pPath);
    return 0;
}
