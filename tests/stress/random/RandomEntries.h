// Calls of every entry, and of the adapter's functions, with random arguments.
#pragma once

#include <vector>

namespace tesslo::test
{

class RandomWorld;

struct RandomEntry
{
    const char* m_pName;
    unsigned m_Weight;  ///< how often it is called beside the others
    void (*m_pCall)(RandomWorld& world);
};

const std::vector<RandomEntry>& RandomEntries();

}  // namespace tesslo::test
