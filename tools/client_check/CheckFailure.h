// Ends a check: what the library did that it must not do, or why the check cannot go on.
#pragma once

#include <stdexcept>

class CheckFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
