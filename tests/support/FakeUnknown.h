// The base of every fake COM object: reference counting, its name, its entry in the record of calls.
#pragma once

#include "FailNthAllocation.h"
#include "FakeArguments.h"
#include "FakeObjects.h"

#include <string>
#include <type_traits>

namespace tesslo::test
{

template <typename Interface>
class FakeUnknown : public Interface, public FakeObject
{
public:
    /// @param name "" for the main object of the record, else "kind#number".
    FakeUnknown(FakeObjects& objects, const std::string& name) : FakeObject(name), m_Objects(objects), m_References(1)
    {
        m_Objects.Add(this, static_cast<IUnknown*>(this));
    }

    ~FakeUnknown() override { m_Objects.Remove(this, static_cast<IUnknown*>(this)); }

    ULONG ReferenceCount() const override { return m_References; }

    /// Gives the object itself for its own interface and for IUnknown, E_NOINTERFACE for every other.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** ppObject) override
    {
        if (iid != __uuidof(Interface) && iid != __uuidof(IUnknown))
        {
            *ppObject = nullptr;
            return E_NOINTERFACE;
        }
        this->AddRef();
        *ppObject = static_cast<Interface*>(this);
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return InterlockedIncrement(&m_References); }

    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG references = InterlockedDecrement(&m_References);
        if (references == 0)
            LastRelease();
        return references;
    }

protected:
    /// Called when the last reference is gone. Objects of a test's own stay.
    virtual void LastRelease() { delete this; }

    /// Records a call. @return its scripted result, 0 without one; pointers come out as null.
    template <typename Result, typename... Arguments>
    Result Record(const char* pMethod, const Arguments&... arguments)
    {
        FailNthAllocation::Pause pause;
        const LONG result = m_Objects.RecordCall(Name(), pMethod, FormatArguments(m_Objects, arguments...));
        if constexpr (std::is_pointer_v<Result>)
            return nullptr;
        else
            return static_cast<Result>(result);
    }

    FakeObjects& m_Objects;

private:
    volatile LONG m_References;
};

}  // namespace tesslo::test

#define TESSLO_RECORDED(...) __VA_OPT__(, ) __VA_ARGS__

/// Turns a row of methods/*.inc into a method that records itself.
#define TESSLO_RECORDING_METHOD(result, name, parameters, recorded)           \
    result STDMETHODCALLTYPE name parameters override                         \
    {                                                                         \
        return this->template Record<result>(#name TESSLO_RECORDED recorded); \
    }
