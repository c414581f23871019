#include "ClientDll.h"

#include <stdexcept>
#include <string>

namespace tesslo::test
{

ClientDll::ClientDll(const wchar_t* pFileName) : m_hModule(LoadLibraryW(pFileName))
{
    if (!m_hModule)
        throw std::runtime_error("a client library is missing");
    InternalFind(TESSLO_CLIENT_PLUG, &Plug);
    InternalFind(TESSLO_CLIENT_UPDATE, &Update);
    InternalFind(TESSLO_CLIENT_UNPLUG, &Unplug);
}

ClientDll::~ClientDll()
{
    FreeLibrary(m_hModule);
}

template <typename Function>
void ClientDll::InternalFind(const char* pName, Function* pFunction)
{
    *pFunction = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(m_hModule, pName)));
    if (!*pFunction)
        throw std::runtime_error(std::string("a client library has no ") + pName);
}

}  // namespace tesslo::test
