// The one owner of COM references in the driver: it holds one reference and releases it.
#pragma once

/// Owns one reference of a COM interface. Never shares it silently: no copy, no operator&, no conversion.
template <typename Interface>
class UMDComPtr
{
public:
    UMDComPtr() = default;
    ~UMDComPtr() { Reset(); }

    UMDComPtr(const UMDComPtr&) = delete;
    UMDComPtr& operator=(const UMDComPtr&) = delete;

    UMDComPtr(UMDComPtr&& other) noexcept : m_pInterface(other.Detach()) {}
    UMDComPtr& operator=(UMDComPtr&& other) noexcept
    {
        if (this != &other)
        {
            Reset();
            m_pInterface = other.Detach();
        }
        return *this;
    }

    /// The interface, borrowed: valid while this owner holds it.
    Interface* Get() const { return m_pInterface; }
    Interface* operator->() const { return m_pInterface; }
    explicit operator bool() const { return m_pInterface != nullptr; }

    /// Releases what is held and gives the address where a creating call stores a new reference.
    Interface** Put()
    {
        Reset();
        return &m_pInterface;
    }

    /// Takes a reference of its own on an interface that somebody else holds.
    void Share(Interface* pInterface)
    {
        if (pInterface)
            pInterface->AddRef();
        Reset();
        m_pInterface = pInterface;
    }

    /// Releases the reference, if any. The pointer is null before the release, which may run foreign code.
    void Reset()
    {
        if (Interface* pInterface = Detach())
            pInterface->Release();
    }

    /// Gives the reference away without releasing it.
    Interface* Detach()
    {
        Interface* pInterface = m_pInterface;
        m_pInterface = nullptr;
        return pInterface;
    }

private:
    Interface* m_pInterface = nullptr;
};
