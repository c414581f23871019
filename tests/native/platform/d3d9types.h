// Stands in for the platform's header: what the driver interface's records take from it.
#pragma once

#include <windows.h>

using D3DCOLOR = DWORD;

struct D3DCOLORVALUE
{
    FLOAT r;
    FLOAT g;
    FLOAT b;
    FLOAT a;
};

struct D3DVECTOR
{
    FLOAT x;
    FLOAT y;
    FLOAT z;
};

struct D3DMATRIX
{
    FLOAT m[4][4];
};

// Their values are nobody's here.
enum D3DLIGHTTYPE : DWORD
{
};
enum D3DPRIMITIVETYPE : DWORD
{
};
enum D3DSTATEBLOCKTYPE : DWORD
{
};
enum D3DTRANSFORMSTATETYPE : DWORD
{
};

enum D3DFORMAT : DWORD
{
    D3DFMT_X8R8G8B8 = 22,
};

enum D3DPOOL : DWORD
{
    D3DPOOL_SYSTEMMEM = 2,
};
