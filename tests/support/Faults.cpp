#include "Faults.h"

namespace tesslo::test
{

namespace
{

volatile UINT_PTR s_Address = 8;
volatile int s_Dividend = 42;
volatile int s_Zero = 0;
volatile int s_Sink;

}  // namespace

void RaiseAccessViolation()
{
    s_Sink = *reinterpret_cast<volatile int*>(s_Address);
}

void RaiseDivisionByZero()
{
    s_Sink = s_Dividend / s_Zero;
}

void RaiseCode(DWORD code)
{
    RaiseException(code, 0, 0, nullptr);
}

}  // namespace tesslo::test
