#include "host/program/HostProgram.h"
#include "host/runtime/HostText.h"
#include "host/support/HostSupportReport.h"

#include <cstdio>
#include <sstream>

namespace
{

constexpr int kFailed = 1;
constexpr int kWrongOption = 2;

int Fail(const std::exception& error, int code)
{
    std::istringstream lines(error.what());
    for (std::string line; std::getline(lines, line);)
        std::fprintf(stderr, "tesslo_host: %s\n", line.c_str());
    return code;
}

void WriteReport(const HostOptions& options)
{
    HostWriteSupportReport(options.m_Report, options.m_Driver.m_Path);
    std::printf("The report is in %s. Read it before you send it.\n", HostUtf8(options.m_Report).c_str());
}

// Options are read before anything is touched: a script can tell a wrong one from a failure.
int Run(std::vector<std::string> arguments)
{
    HostOptions options;
    try
    {
        options = HostParseOptions(std::move(arguments));
    }
    catch (const HostHelp& help)
    {
        std::fputs(help.what(), stdout);
        return 0;
    }
    catch (const HostError& error)
    {
        return Fail(error, kWrongOption);
    }
    if (options.m_Report.empty())
        HostRunProgram(options);
    else
        WriteReport(options);
    return 0;
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
    catch (const std::exception& error)
    {
        return Fail(error, kFailed);
    }
}
