#include "FakeArguments.h"

#include <cstdio>

namespace tesslo::test
{

std::string FormatFloat(double value)
{
    char text[32];
    snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string FormatRecord(const RECT& rect)
{
    char text[64];
    snprintf(text, sizeof text, "%ld,%ld,%ld,%ld", rect.left, rect.top, rect.right, rect.bottom);
    return text;
}

std::string FormatRecord(const D3DRECT& rect)
{
    return FormatRecord(RECT{rect.x1, rect.y1, rect.x2, rect.y2});
}

std::string FormatRecord(const POINT& point)
{
    char text[32];
    snprintf(text, sizeof text, "%ld,%ld", point.x, point.y);
    return text;
}

std::string FormatRecord(const D3DVIEWPORT9& viewport)
{
    char text[128];
    snprintf(text, sizeof text, "[%lu %lu %lu %lu %g %g]", viewport.X, viewport.Y, viewport.Width, viewport.Height,
        static_cast<double>(viewport.MinZ), static_cast<double>(viewport.MaxZ));
    return text;
}

std::string FormatRecord(const D3DMATRIX& matrix)
{
    std::string text = "[";
    for (const auto& row : matrix.m)
        for (float value : row)
            text += (text.size() == 1 ? "" : " ") + FormatFloat(value);
    return text + "]";
}

std::string FormatRecord(const D3DPRESENT_PARAMETERS& p)
{
    char text[256];
    snprintf(text, sizeof text,
        "[%ux%u format:%d count:%u samples:%d,%lu swap:%d window:%s windowed:%d depth:%d,%d "
        "flags:%lu refresh:%u interval:%u]",
        p.BackBufferWidth, p.BackBufferHeight, p.BackBufferFormat, p.BackBufferCount, p.MultiSampleType,
        p.MultiSampleQuality, p.SwapEffect, p.hDeviceWindow ? "set" : "null", p.Windowed, p.EnableAutoDepthStencil,
        p.AutoDepthStencilFormat, p.Flags, p.FullScreen_RefreshRateInHz, p.PresentationInterval);
    return text;
}

std::string FormatRecord(const D3DVERTEXELEMENT9& element)
{
    char text[64];
    snprintf(text, sizeof text, "%u,%u,%u,%u,%u,%u", element.Stream, element.Offset, element.Type, element.Method,
        element.Usage, element.UsageIndex);
    return text;
}

std::string FormatElements(const D3DVERTEXELEMENT9* pElements)
{
    constexpr WORD kEndStream = 0xFF;
    std::string text = "[";
    for (; pElements->Stream != kEndStream; pElements++)
        text += (text.size() == 1 ? "" : " ") + FormatRecord(*pElements);
    return text + "]";
}

std::string FormatGuid(const GUID& guid)
{
    char text[64];
    snprintf(text, sizeof text, "{%08lX-%04X-%04X}", guid.Data1, guid.Data2, guid.Data3);
    return text;
}

}  // namespace tesslo::test
