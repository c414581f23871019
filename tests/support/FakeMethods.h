// All methods of the Direct3D 9 interfaces, made from their rows: each records its call and answers the scripted
// result. The fakes override those that do something.
#pragma once

#include "FakeUnknown.h"

#include <d3d9.h>

namespace tesslo::test
{

class FakeDeviceMethods : public FakeUnknown<IDirect3DDevice9Ex>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DDevice9Ex.inc"
};

class FakeFactoryMethods : public FakeUnknown<IDirect3D9Ex>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3D9Ex.inc"
};

class FakeSurfaceMethods : public FakeUnknown<IDirect3DSurface9>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DResource9.inc"
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DSurface9.inc"
};

class FakeTextureMethods : public FakeUnknown<IDirect3DTexture9>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DResource9.inc"
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DTexture9.inc"
};

class FakeCubeTextureMethods : public FakeUnknown<IDirect3DCubeTexture9>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DResource9.inc"
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DCubeTexture9.inc"
};

class FakeVertexBufferMethods : public FakeUnknown<IDirect3DVertexBuffer9>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DResource9.inc"
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DVertexBuffer9.inc"
};

class FakeIndexBufferMethods : public FakeUnknown<IDirect3DIndexBuffer9>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DResource9.inc"
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DIndexBuffer9.inc"
};

class FakeVertexShader : public FakeUnknown<IDirect3DVertexShader9>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DVertexShader9.inc"
};

class FakePixelShader : public FakeUnknown<IDirect3DPixelShader9>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DPixelShader9.inc"
};

class FakeVertexDeclaration : public FakeUnknown<IDirect3DVertexDeclaration9>
{
public:
    using FakeUnknown::FakeUnknown;
#define TESSLO_METHOD TESSLO_RECORDING_METHOD
#include "methods/IDirect3DVertexDeclaration9.inc"
};

}  // namespace tesslo::test
