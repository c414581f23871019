// Objects of shaders and declarations: what is the same of both classes.
#pragma once

#include "ResourceFixture.h"
#include "TraceLevels.h"

namespace tesslo::test
{

class ShaderFixture : public ResourceFixture
{
protected:
    static constexpr UINT kCode[] = {0xFFFF0200, 0x0000FFFF};  ///< calls print it as "code"
    static constexpr float kFloats[] = {1, 2, 3, 4, 5, 6, 7, 8};

    ShaderFixture() { m_Fake.NameMemory(kCode, sizeof kCode, "code"); }

    /// What an object refuses that is a resource to the runtime alone.
    void ExpectNothingToCreateOrLock(UMDRscBase& shader)
    {
        void* pData = nullptr;
        UINT pitch = 0;
        EXPECT_EQ(shader.Lock(0, 0, 0, &pData, &pitch, 0), E_NOTIMPL);
        EXPECT_EQ(shader.Unlock(), E_NOTIMPL);
        EXPECT_EQ(shader.Create(), E_FAIL);
        EXPECT_EQ(DeviceLines(), Lines{});
    }

    /// A delegated object that lives from its creation to its deletion. @param calls of both and of the set between.
    void ExpectLife(const std::function<HRESULT()>& create, const std::function<HRESULT()>& set,
        const std::function<void()>& erase, const char* pDelegated, const Lines& calls)
    {
        EXPECT_EQ(create(), S_OK);
        EXPECT_EQ(set(), S_OK);
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{pDelegated});
        erase();
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
        EXPECT_EQ(DeviceLines(), calls);
    }
};

}  // namespace tesslo::test
