// The arguments of a create-resource call whose every sub-resource has memory of exactly its pixels.
#pragma once

#include "ExactImage.h"
#include "ResourceFixture.h"

#include <deque>

namespace tesslo::test
{

class ExactRequest : public CreateRequest
{
public:
    /// @param padding bytes behind each row but the last.
    ExactRequest(UINT flags, D3DDDI_POOL pool, D3DDDIFORMAT format, UINT width, UINT height, UINT levels, UINT padding)
        : CreateRequest(flags, pool, format, width, height, levels)
    {
        for (D3DDDI_SURFACEINFO& surface : m_Surfaces)
            surface =
                m_Images.emplace_back(format, surface.Width, surface.Height, padding, m_Images.size() * 7 + 1).Info();
    }

    ExactImage& Image(UINT index) { return m_Images.at(index); }

private:
    std::deque<ExactImage> m_Images;
};

}  // namespace tesslo::test
