// Makes an export of a test client library harm the thread that calls it.
#pragma once

#include "TestClient.h"

#include "client/test/TestClientDeed.h"

namespace tesslo::test
{

/// Sets what an export does in each call from now on, behind what it records.
inline void SetDeed(HMODULE hClient, TestClientExport of, const TestClientDeed& deed)
{
    reinterpret_cast<TestClientSetDeedFunction>(reinterpret_cast<void*>(GetProcAddress(hClient, TEST_CLIENT_SET_DEED)))(
        of, &deed);
}
inline void SetDeed(const TestClient& client, TestClientExport of, const TestClientDeed& deed)
{
    SetDeed(client.Module(), of, deed);
}

}  // namespace tesslo::test
