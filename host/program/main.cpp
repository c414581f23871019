#include "host/program/HostProgram.h"
#include "host/runtime/HostText.h"

#include <cstdio>

int wmain(int count, wchar_t** pArguments)
{
    try
    {
        std::vector<std::string> arguments;
        for (int i = 1; i < count; ++i)
            arguments.push_back(HostUtf8(pArguments[i]));
        HostRunProgram(HostParseOptions(std::move(arguments)));
        return 0;
    }
    catch (const HostHelp& help)
    {
        std::fputs(help.what(), stdout);
        return 0;
    }
    catch (const std::exception& error)
    {
        std::fprintf(stderr, "tesslo_host: %s\n", error.what());
        return 1;
    }
}
