// The driver's painter and a plain device's, to be measured side by side in one process.
#pragma once

#include "DifferentialDriverPainter.h"
#include "DifferentialPlainPainter.h"

#include <optional>

class BenchSides
{
public:
    BenchSides() : m_Plain(std::in_place) {}
    /// What was made with the painters goes before.
    ~BenchSides()
    {
        m_Plain.reset();
        // Wine lends each thread one GL context. The plain device's was this thread's last: until the driver's device
        // is used here once more, Mesa 22.3 never returns from the end of it on the driver's thread.
        const PainterHandle pTarget = m_Driver.CreateSurface(PainterSurface::Target, 16, 16, D3DFMT_X8R8G8B8);
        m_Driver.ColorFill(*pTarget, {0, 0, 16, 16}, 0);
        m_Driver.ReadBack(*pTarget);
    }
    BenchSides(const BenchSides&) = delete;
    BenchSides& operator=(const BenchSides&) = delete;

    DifferentialDriverPainter& Driver() { return m_Driver; }
    DifferentialPlainPainter& Plain() { return *m_Plain; }

private:
    DifferentialDriverPainter m_Driver;
    std::optional<DifferentialPlainPainter> m_Plain;
};
