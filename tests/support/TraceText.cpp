#include "TraceText.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>

namespace tesslo::test
{

std::string Low(const void* pointer)
{
    return Text("0x%x", static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(pointer)));
}

std::string Text(const char* pFormat, ...)
{
    char text[512];
    va_list arguments;
    va_start(arguments, pFormat);
    vsnprintf(text, sizeof text, pFormat, arguments);
    va_end(arguments);
    return text;
}

}  // namespace tesslo::test
