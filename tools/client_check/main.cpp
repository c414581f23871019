// tesslo_client_check LIBRARY.dll: proves a client library without a driver. --help tells the rest.

#include "host/runtime/HostError.h"
#include "host/runtime/HostText.h"
#include "tools/client_check/CheckChild.h"
#include "tools/client_check/CheckReport.h"

#include <algorithm>
#include <cstdio>

namespace
{

constexpr int kFailed = 1;
constexpr int kNotAsked = 2;

bool IsWanted(const CheckRow& row, const CheckOptions& options)
{
    return options.m_Only.empty() || std::ranges::find(options.m_Only, row.m_pName) != options.m_Only.end();
}

CheckResult NotRun(const CheckRow& row)
{
    CheckResult result;
    result.m_Name = row.m_pName;
    result.m_What = row.m_pWhat;
    result.m_bRun = false;
    return result;
}

/// A library without its exports has nothing that the others could call.
std::vector<CheckResult> RunAll(const CheckOptions& options)
{
    std::vector<CheckResult> results;
    for (const CheckRow& row : CheckTable())
    {
        if (!IsWanted(row, options))
            continue;
        const bool bCallable = results.empty() || results.front().m_Name != "exports" || results.front().HasPassed();
        results.push_back(bCallable ? CheckStartChild(row, options) : NotRun(row));
        CheckPrint(results.back(), options);
    }
    return results;
}

int Run(std::vector<std::string> arguments)
{
    const CheckOptions options = CheckParseOptions(std::move(arguments));
    if (const CheckRow* pRow = CheckFindRow(options.m_Child))
        CheckRunChild(*pRow, options);
    const std::vector<CheckResult> results = RunAll(options);
    if (!options.m_Json.empty())
        CheckWriteJson(results, options);
    return CheckPrintSum(results) ? 0 : kFailed;
}

}  // namespace

int wmain(int count, wchar_t** pArguments)
{
    try
    {
        std::vector<std::string> arguments;
        for (int i = 1; i < count; ++i)
            arguments.push_back(HostUtf8(pArguments[i]));
        return Run(std::move(arguments));
    }
    catch (const CheckHelp& help)
    {
        std::fputs(help.what(), stdout);
        return 0;
    }
    catch (const std::exception& error)
    {
        std::fprintf(stderr, "tesslo_client_check: %s\n", error.what());
        return kNotAsked;
    }
}
