// The driver's painter and a plain device's, to be measured side by side in one process.
#pragma once

#include "tools/painters/DifferentialDriverPainter.h"
#include "tools/painters/DifferentialPlainPainter.h"

/// Lives until the process ends, which must end without clean-up (TerminateProcess): Wine 8 lends each thread one GL
/// context, and to end one of two devices that a thread has used in turn was seen to hang in Mesa 22.3 or to crash.
class BenchSides
{
public:
    static BenchSides& Make() { return *new BenchSides; }
    BenchSides(const BenchSides&) = delete;
    BenchSides& operator=(const BenchSides&) = delete;

    DifferentialDriverPainter& Driver() { return m_Driver; }
    DifferentialPlainPainter& Plain() { return m_Plain; }

private:
    BenchSides() = default;
    ~BenchSides() = default;

    DifferentialDriverPainter m_Driver;
    DifferentialPlainPainter m_Plain;
};
