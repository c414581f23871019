#include "FakeObjects.h"

#include "FailNthAllocation.h"
#include "Fences.h"

#include <algorithm>
#include <stdexcept>

namespace tesslo::test
{

void* FakeObject::operator new(size_t bytes)
{
    FailNthAllocation::Pause pause;
    return TakeFenced(bytes, __STDCPP_DEFAULT_NEW_ALIGNMENT__, FencedFor::Objects);
}

void FakeObject::operator delete(void* pObject)
{
    FailNthAllocation::Pause pause;
    GiveFenced(pObject);
}

std::vector<std::string> FakeObjects::LiveObjects() const
{
    std::lock_guard lock(m_Mutex);
    std::vector<std::string> names;
    for (const FakeObject* pObject : m_Objects)
        if (!pObject->IsPart())
            names.push_back(pObject->Name());
    return names;
}

std::map<std::string, ULONG> FakeObjects::References() const
{
    std::lock_guard lock(m_Mutex);
    std::map<std::string, ULONG> references;
    for (const FakeObject* pObject : m_Objects)
        if (!pObject->IsPart())
            references[pObject->Name()] = pObject->ReferenceCount();
    return references;
}

void FakeObjects::RestartNames()
{
    std::lock_guard lock(m_Mutex);
    m_Counts.clear();
}

std::string FakeObjects::NextName(const std::string& kind)
{
    FailNthAllocation::Pause pause;
    std::lock_guard lock(m_Mutex);
    return kind + "#" + std::to_string(++m_Counts[kind]);
}

void FakeObjects::Add(FakeObject* pObject, const IUnknown* pInterface)
{
    FailNthAllocation::Pause pause;
    std::lock_guard lock(m_Mutex);
    m_Objects.push_back(pObject);
    m_Names[pInterface] = {1, pObject->Name().empty() ? "device" : pObject->Name()};
}

void FakeObjects::Remove(FakeObject* pObject, const IUnknown* pInterface)
{
    std::lock_guard lock(m_Mutex);
    std::erase(m_Objects, pObject);
    m_Names.erase(pInterface);
}

void FakeObjects::DeleteLeaks()
{
    for (;;)
    {
        FakeObject* pLeaked = nullptr;
        {
            std::lock_guard lock(m_Mutex);
            auto leaked = std::ranges::find_if(m_Objects, [](FakeObject* pObject) { return !pObject->IsPart(); });
            if (leaked == m_Objects.end())
                return;
            pLeaked = *leaked;
        }
        delete pLeaked;
    }
}

FakeObject* FakeObjects::InternalFind(const std::string& name) const
{
    std::lock_guard lock(m_Mutex);
    auto found = std::ranges::find_if(m_Objects, [&](FakeObject* pObject) { return pObject->Name() == name; });
    return found == m_Objects.end() ? nullptr : *found;
}

void FakeObjects::InternalThrowUnknown(const std::string& name)
{
    throw std::runtime_error("no fake object of that class is named " + name);
}

}  // namespace tesslo::test
