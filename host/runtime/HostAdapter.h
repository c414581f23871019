// The runtime's side of one adapter: opened, asked, closed.
#pragma once

#include "host/kernel/HostKernel.h"
#include "host/runtime/HostError.h"

class HostDriver;

class HostAdapter
{
public:
    static constexpr UINT kInterface = 9;
    static constexpr UINT kVersion = 0x2003;  ///< Windows 7's runtime

    /// Opens the adapter. The kernel is borrowed and must outlive it.
    HostAdapter(const HostDriver& driver, HostKernel& kernel);
    /// Closes it: the driver ends the device's threads here.
    ~HostAdapter();
    HostAdapter(const HostAdapter&) = delete;
    HostAdapter& operator=(const HostAdapter&) = delete;

    HANDLE Handle() const { return m_hAdapter; }
    HostKernel& Kernel() const { return m_Kernel; }
    const D3DDDI_ADAPTERFUNCS& Functions() const { return m_Functions; }
    /// The interface version that the driver reported.
    UINT DriverVersion() const { return m_DriverVersion; }

    /// Asks for one capability record.
    template <typename Record>
    Record Caps(D3DDDICAPS_TYPE type) const
    {
        Record record{};
        D3DDDIARG_GETCAPS arg{};
        arg.Type = type;
        arg.pData = &record;
        arg.DataSize = sizeof(record);
        HostCheck(m_Functions.pfnGetCaps(m_hAdapter, &arg), "pfnGetCaps");
        return record;
    }

private:
    HostKernel& m_Kernel;
    HANDLE m_hAdapter = nullptr;
    UINT m_DriverVersion = 0;
    D3DDDI_ADAPTERFUNCS m_Functions{};
};
