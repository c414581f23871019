// Stands in for the platform's header: of the interfaces only how references are counted.
#pragma once

#include <d3d9types.h>
#include <windows.h>

struct IUnknown
{
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};

struct IDirect3DSurface9 : IUnknown
{
protected:
    ~IDirect3DSurface9() = default;
};
