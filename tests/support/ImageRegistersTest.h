// Cases that run with each width of registers that this machine has.
#pragma once

#include "ImageRegisters.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <tuple>

inline UMDCpuIsa ImageIsaOf(UMDCpuIsa isa)
{
    return isa;
}

/// @param turn a rotation and the registers that it is done with.
inline UMDCpuIsa ImageIsaOf(const std::tuple<UINT, UMDCpuIsa>& turn)
{
    return std::get<UMDCpuIsa>(turn);
}

/// @tparam Parameter names the registers, alone or beside a rotation.
template <typename Parameter>
class ImageRegistersTest : public testing::TestWithParam<Parameter>
{
protected:
    void SetUp() override
    {
        if (!m_Registers.IsUsed())
            GTEST_SKIP() << "no such registers here";
    }

private:
    const ImageRegisters m_Registers{ImageIsaOf(testing::TestWithParam<Parameter>::GetParam())};
};

class ImageTurnTest : public ImageRegistersTest<std::tuple<UINT, UMDCpuIsa>>
{
protected:
    static UINT Rotation() { return std::get<UINT>(GetParam()); }
};
