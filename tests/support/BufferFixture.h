// Vertex and index buffers: what is the same of both classes.
#pragma once

#include "ResourceFixture.h"
#include "TraceLevels.h"

namespace tesslo::test
{

/// @tparam Buffer the class under test.
template <typename Buffer>
class BufferFixture : public ResourceFixture
{
protected:
    /// @param pClass the class's name, as its errors begin.
    /// @param pFake  what the fake device calls its buffers.
    BufferFixture(const char* pClass, const char* pFake) : m_Class(pClass), m_FakeName(pFake) {}

    /// Locks and unlocks that the delegated buffer refuses.
    void ExpectLockAndUnlockPassCodesOn(CreateRequest& request)
    {
        Buffer* pBuffer = nullptr;
        void* pData = nullptr;
        const auto lock = [&] { return pBuffer->Lock(0, 0, 4, &pData, nullptr, 0); };
        ExpectFailures(
            {{m_FakeName + ".Lock", 1, kRefused, {m_Class + "::Lock Lock failed! 0x8876086a\n"}}},
            [&] { pBuffer = Create<Buffer>(request); }, lock);
        ExpectFailures(
            {{m_FakeName + ".Unlock", 1, kRefused, {m_Class + "::Unlock Unlock failed! 0x8876086a\n"}}},
            [&] {
                pBuffer = Create<Buffer>(request);
                lock();
            },
            [&] { return pBuffer->Unlock(); });
    }

    /// Locks and unlocks of a buffer that is destroyed. @param unlockErrors of the unlock.
    void ExpectDestroyedIsRefused(CreateRequest& request, const Lines& lockErrors, const Lines& unlockErrors)
    {
        auto* pBuffer = Create<Buffer>(request);
        void* pData = nullptr;
        pBuffer->Destroy();
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pBuffer->Lock(0, 0, 4, &pData, nullptr, 0), E_FAIL); }), lockErrors);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pBuffer->Unlock(), E_FAIL); }), unlockErrors);
    }

    /// The trace of a buffer that is created, locked, unlocked, put to use and destroyed, each line with its level.
    template <typename Use>
    Lines TraceOfLife(CreateRequest& request, D3DPOOL pool, Use use)
    {
        return LevelledTrace([&] {
            void* pData = nullptr;
            UINT pitch = 0;
            Buffer buffer(&Device(), request.m_Arg.hResource, &request.m_Arg, FALSE, D3DUSAGE_WRITEONLY, pool);
            buffer.Create();
            buffer.Lock(0, 0, 64, &pData, &pitch, 0);
            buffer.Unlock();
            use(buffer);
            buffer.Destroy();
        });
    }

private:
    const std::string m_Class;
    const std::string m_FakeName;
};

}  // namespace tesslo::test
