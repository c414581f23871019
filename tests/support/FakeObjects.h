// The record of a fake device together with the objects that live on it.
#pragma once

#include "FakeRecorder.h"

#include <unknwn.h>

#include <string>
#include <vector>

namespace tesslo::test
{

/// What a test asks of any fake object.
class FakeObject
{
public:
    explicit FakeObject(const std::string& name) : m_Name(name) {}
    virtual ~FakeObject() = default;
    FakeObject(const FakeObject&) = delete;
    FakeObject& operator=(const FakeObject&) = delete;

    /// "surface#1"; "" for the device. Levels of textures: "texture#1[level]", "cube#1[face][level]".
    const std::string& Name() const { return m_Name; }
    virtual ULONG ReferenceCount() const = 0;
    /// On pages of its own: a call of an object that is gone, as a wrong handle may lead to, faults.
    static void* operator new(size_t bytes);
    static void operator delete(void* pObject);
    /// Whether it exists as part of another object or of the test, and is not counted as living.
    virtual bool IsPart() const { return false; }

private:
    std::string m_Name;
};

class FakeObjects : public FakeRecorder
{
public:
    /// Names of the objects that still have references, in order of creation: "texture#1".
    std::vector<std::string> LiveObjects() const;

    /// References of the same objects, by name. Other threads may end some of them meanwhile.
    std::map<std::string, ULONG> References() const;

    /// The living object of this name; throws std::runtime_error when there is none or it is of another class.
    template <typename Object>
    Object& Find(const std::string& name) const
    {
        auto* pObject = dynamic_cast<Object*>(InternalFind(name));
        if (!pObject)
            InternalThrowUnknown(name);
        return *pObject;
    }

    /// Counts the names of each kind from 1 again. Only while no object lives.
    void RestartNames();

    /// For the fakes: the next name of a kind, counted from 1.
    std::string NextName(const std::string& kind);
    /// For the fakes: @param pInterface the address that calls name the object by.
    void Add(FakeObject* pObject, const IUnknown* pInterface);
    void Remove(FakeObject* pObject, const IUnknown* pInterface);

protected:
    /// Deletes what a test has leaked.
    void DeleteLeaks();

private:
    FakeObject* InternalFind(const std::string& name) const;
    [[noreturn]] static void InternalThrowUnknown(const std::string& name);

    std::vector<FakeObject*> m_Objects;
    std::map<std::string, unsigned> m_Counts;  ///< names given out, by kind
};

}  // namespace tesslo::test
