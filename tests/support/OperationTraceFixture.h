// The trace of the device's methods, each line with its level: after success, after a refusal by the delegated device,
// and where a method declines by itself.
#pragma once

#include "ResourceFixture.h"
#include "TraceLevels.h"

namespace tesslo::test
{

class OperationTraceFixture : public ResourceFixture
{
protected:
    /// A method and the one delegated call that it makes.
    struct Operation
    {
        const char* m_pMethod;         ///< of the device
        const char* m_pDelegatedCall;  ///< null when nothing of its can fail
        const char* m_pError;          ///< its line when that call answers kRefused
        std::function<HRESULT()> m_Call;
        HRESULT m_Refused = kRefused;  ///< what it answers then
    };

    /// A call that the device declines, or takes for nothing to do, without asking the delegated device.
    struct Declined
    {
        HRESULT m_Result;
        std::function<HRESULT()> m_Call;
        Lines m_Trace;  ///< each line behind its level
    };

    /// The lines of the device's methods: what the resources below them trace is not theirs.
    Lines DeviceTrace(const std::function<void()>& operation)
    {
        return Containing(LevelledTrace(operation), "UMDDdiDevice::");
    }

    void ExpectEntersAndLeaves(const std::vector<Operation>& operations)
    {
        for (const Operation& operation : operations)
        {
            const std::string name = std::string("UMDDdiDevice::") + operation.m_pMethod + "\n";
            EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(operation.m_Call(), S_OK) << operation.m_pMethod; }),
                (Lines{"0x4 >>> " + name, "0x8 <<< " + name}));
        }
    }

    void ExpectEntersAndTellsTheError(const std::vector<Operation>& operations)
    {
        for (const Operation& operation : operations)
        {
            operation.m_Call();  // a stream that is bound stays bound
            m_Fake.Fail(operation.m_pDelegatedCall, kRefused);
            EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(operation.m_Call(), operation.m_Refused) << operation.m_pMethod; }),
                (Lines{std::string("0x4 >>> UMDDdiDevice::") + operation.m_pMethod + "\n",
                    std::string("0x1 ") + operation.m_pError}));
            m_Fake.ClearScripts();
        }
    }

    void ExpectDeclined(const std::vector<Declined>& rows)
    {
        ForgetCalls();
        for (const Declined& row : rows)
            EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(row.m_Call(), row.m_Result) << row.m_Trace[0]; }), row.m_Trace);
        EXPECT_EQ(DeviceLines(), Lines{});
    }
};

}  // namespace tesslo::test
