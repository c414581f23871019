// How a fake surface lays out its rows.
#pragma once

#include <windows.h>

namespace tesslo::test
{

struct FakeRows
{
    FakeRows() = default;
    /// @param padding bytes behind each row.
    FakeRows(UINT padding) : m_Padding(padding) {}

    UINT m_Padding = 0;
    UINT m_Shortage = 0;     ///< bytes that the pitch is less than a row, as Direct3D's never is
    bool m_bFenced = false;  ///< the memory ends at a page without access
};

}  // namespace tesslo::test
