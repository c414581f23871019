// What an export of a test client library may do to the thread that calls it.
#pragma once

#include <windows.h>

enum TestClientExport : UINT
{
    TEST_CLIENT_PLUG,
    TEST_CLIENT_UPDATE,
    TEST_CLIENT_UNPLUG,
    TEST_CLIENT_RESERVED1,
    TEST_CLIENT_RESERVED2,
    TEST_CLIENT_EXPORTS,  ///< how many there are
};

enum TestClientDeedKind : UINT
{
    TEST_CLIENT_NOTHING,
    TEST_CLIENT_FAULT,         ///< reads an address that nothing is mapped at
    TEST_CLIENT_RAISE,         ///< raises an exception of its own
    TEST_CLIENT_HANG,          ///< waits for an event
    TEST_CLIENT_END_THREAD,    ///< never comes back
    TEST_CLIENT_FREE,          ///< gives back a reference of its library, which somebody else must hold as well
    TEST_CLIENT_FREE_AND_END,  ///< gives one back, be it the last, and never comes back
};

/// Done behind the export's function of the table, in each call, until another deed is set.
struct TestClientDeed
{
    TestClientDeedKind m_Kind;
    DWORD m_Code;     ///< of the exception that is raised
    HANDLE m_hEvent;  ///< that is waited for
};

/// The export that sets the deed of one of the others; a cleared table clears them all. Not to be called while the
/// driver may be in that one.
#define TEST_CLIENT_SET_DEED "TestClientSetDeed"
typedef void (*TestClientSetDeedFunction)(TestClientExport of, const TestClientDeed* pDeed);
