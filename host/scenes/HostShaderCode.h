// The shaders of the turning scene as byte code, what their constants are, and the layout of the vertices (HostVertex).
#pragma once

#include "ddi/ddi.h"

// Vertex shader constants.
inline constexpr UINT kHostRegisterPlace = 0;  // c0..c3: position to the screen
inline constexpr UINT kHostRegisterTurn = 4;   // c4..c6: normal to the world
/// c7: to the lamp. c8: x = 0, y = the lamp's share, z = the share of all round.
inline constexpr UINT kHostRegisterLamp = 7;

// Byte code of shader model 2.0, one line an instruction, the assembly behind it.
inline constexpr UINT kHostVertexShader[] = {
    0xFFFE0200,                                                  // vs_2_0
    0x0200001F, 0x80000000, 0x900F0000,                          // dcl_position v0
    0x0200001F, 0x80000003, 0x900F0001,                          // dcl_normal v1
    0x0200001F, 0x80000005, 0x900F0002,                          // dcl_texcoord v2
    0x03000014, 0xC00F0000, 0x90E40000, 0xA0E40000,              // m4x4 oPos, v0, c0
    0x03000017, 0x80070000, 0x90E40001, 0xA0E40004,              // m3x3 r0.xyz, v1, c4
    0x03000008, 0x80010000, 0x80E40000, 0xA0E40007,              // dp3 r0.x, r0, c7
    0x0300000B, 0x80010000, 0x80000000, 0xA0000008,              // max r0.x, r0.x, c8.x
    0x04000004, 0x80010000, 0x80000000, 0xA0550008, 0xA0AA0008,  // mad r0.x, r0.x, c8.y, c8.z
    0x02000001, 0xD00F0000, 0x80000000,                          // mov oD0, r0.x
    0x02000001, 0xE0030000, 0x90E40002,                          // mov oT0.xy, v2
    0x0000FFFF,                                                  // end
};

inline constexpr UINT kHostPixelShader[] = {
    0xFFFF0200,                                      // ps_2_0
    0x0200001F, 0x80000000, 0xB0030000,              // dcl t0.xy
    0x0200001F, 0x80000000, 0x900F0000,              // dcl v0
    0x0200001F, 0x90000000, 0xA00F0800,              // dcl_2d s0
    0x03000042, 0x800F0000, 0xB0E40000, 0xA0E40800,  // texld r0, t0, s0
    0x03000005, 0x800F0000, 0x80E40000, 0x90E40000,  // mul r0, r0, v0
    0x03000005, 0x800F0000, 0x80E40000, 0xA0E40000,  // mul r0, r0, c0
    0x02000001, 0x800F0800, 0x80E40000,              // mov oC0, r0
    0x0000FFFF,                                      // end
};

inline constexpr D3DDDIVERTEXELEMENT kHostElements[] = {
    {0, 0, D3DDECLTYPE_FLOAT3, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_POSITION, 0},
    {0, 12, D3DDECLTYPE_FLOAT3, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_NORMAL, 0},
    {0, 24, D3DDECLTYPE_FLOAT2, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_TEXCOORD, 0},
};

/// Registers 7 and 8 of the lamp: behind the viewer, above and to the left.
inline constexpr float kHostLamp[8] = {-0.4f, 0.6f, -0.69f, 0, 0, 0.8f, 0.2f, 0};
/// The same registers for light from everywhere: textures keep their colours.
inline constexpr float kHostFullLight[8] = {0, 0, 0, 0, 0, 0, 1, 0};
