// A Direct3D 9Ex device whose every method answers S_OK at once: what stands behind the driver's entries when only
// they are to be measured.
#pragma once

#include <d3d9.h>

#include <algorithm>
#include <iterator>

class BenchNullDevice
{
public:
    BenchNullDevice() { std::fill(std::begin(m_Methods), std::end(m_Methods), &Answer); }
    BenchNullDevice(const BenchNullDevice&) = delete;
    BenchNullDevice& operator=(const BenchNullDevice&) = delete;

    /// Not counted: valid as long as this object.
    IDirect3DDevice9Ex* Get() { return reinterpret_cast<IDirect3DDevice9Ex*>(this); }

private:
    /// On x64 the caller clears the stack, so that one function can stand for methods of any arguments.
    static HRESULT STDMETHODCALLTYPE Answer() { return S_OK; }

    using Method = HRESULT(STDMETHODCALLTYPE*)();
    static constexpr size_t kMethods = 134;  ///< of IDirect3DDevice9Ex

    Method* m_pMethods = m_Methods;  ///< first: this is where callers look for the table
    Method m_Methods[kMethods];
};
