#include "Page.h"

#include <algorithm>

std::string WithTables(const std::string& page, const std::map<std::string, std::string>& tables, std::string& error)
{
    std::string result = page;
    for (const auto& [name, table] : tables)
    {
        const std::string mark = "<!-- table: " + name + " -->\n";
        const std::size_t start = result.find(mark);
        const std::size_t end = start == std::string::npos ? start : result.find("<!-- end -->", start);
        if (end == std::string::npos)
        {
            error = "the page has no place for the table \"" + name + "\"";
            return page;
        }
        result.replace(start + mark.size(), end - start - mark.size(), table);
    }
    return result;
}

unsigned FirstDifference(const std::string& one, const std::string& other)
{
    if (one == other)
        return 0;
    const auto [difference, unused] = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    return 1 + static_cast<unsigned>(std::count(one.begin(), difference, '\n'));
}
