// A client library, loaded as the driver loads it.
#pragma once

#include <tesslo/client.h>

namespace tesslo::test
{

class ClientDll
{
public:
    /// @throws std::runtime_error when the file, or one of the three exports, is missing.
    explicit ClientDll(const wchar_t* pFileName);
    ~ClientDll();
    ClientDll(const ClientDll&) = delete;
    ClientDll& operator=(const ClientDll&) = delete;

    HMODULE Module() const { return m_hModule; }

    TessloVirtualMonitorPlugFunction Plug;
    TessloVirtualMonitorUpdateFunction Update;
    TessloVirtualMonitorUnplugFunction Unplug;

private:
    template <typename Function>
    void InternalFind(const char* pName, Function* pFunction);

    HMODULE m_hModule;
};

}  // namespace tesslo::test
