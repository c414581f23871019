// A draw of more primitives than a driver takes at once is made of several.
#pragma once

#include <d3d9.h>

#include <functional>
#include <vector>

/// Most primitives of one draw, as the driver's capabilities have it.
inline constexpr UINT kCarryMostPrimitives = 0xFFFF;

/// Calls for each part. Fans come in parts as strips do, but their first vertex belongs to each of them.
/// @param part called with the vertices, or indices, that lie before the part, and its primitives.
void CarryParts(D3DPRIMITIVETYPE type, UINT count, const std::function<void(UINT skipped, UINT count)>& part);

/// A copy of the vertices, or indices, of a part.
/// @param pFirst of the draw. @param size bytes of each.
std::vector<BYTE> CarryPartOf(D3DPRIMITIVETYPE type, const void* pFirst, UINT size, UINT skipped, UINT count);
