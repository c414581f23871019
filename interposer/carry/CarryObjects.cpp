#include "interposer/carry/CarryObjects.h"

#include <atomic>
#include <map>
#include <mutex>

namespace
{

// {6E6C5A0D-30C5-4E5C-9B7E-6C3B0A6E2F41}
constexpr GUID kPrivateData = {0x6E6C5A0D, 0x30C5, 0x4E5C, {0x9B, 0x7E, 0x6C, 0x3B, 0x0A, 0x6E, 0x2F, 0x41}};

struct Objects
{
    /// Held for no call: records die under locks of the platform's.
    std::mutex m_Mutex;
    std::map<const void*, CarryPlace> m_Places;
    std::vector<std::shared_ptr<CarryResource>> m_Dead;
};

Objects& All()
{
    static Objects& objects = *new Objects;
    return objects;
}

/// What hangs in the private data. The object holds its only reference.
class Record : public IUnknown
{
public:
    Record(std::vector<const void*> objects, std::shared_ptr<CarryResource> pResource)
        : m_Objects(std::move(objects)), m_pResource(std::move(pResource))
    {
        std::lock_guard lock(All().m_Mutex);
        All().m_Places[m_Objects[0]] = {m_pResource, 0};
        for (UINT level = 0; level + 1 < m_Objects.size(); ++level)
            All().m_Places[m_Objects[level + 1]] = {m_pResource, level};
    }
    virtual ~Record()
    {
        std::lock_guard lock(All().m_Mutex);
        for (const void* pObject : m_Objects)
            if (const auto found = All().m_Places.find(pObject);
                found != All().m_Places.end() && found->second.m_pResource == m_pResource)
                All().m_Places.erase(found);
        All().m_Dead.push_back(std::move(m_pResource));
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_References; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_References;
        if (left == 0)
            delete this;
        return left;
    }

private:
    std::vector<const void*> m_Objects;  ///< the object itself, then its levels
    std::shared_ptr<CarryResource> m_pResource;
    std::atomic<ULONG> m_References = 1;
};

}  // namespace

void CarryHang(IDirect3DResource9* pObject, std::shared_ptr<CarryResource> pResource,
    const std::vector<IDirect3DSurface9*>& surfaces)
{
    pObject->FreePrivateData(kPrivateData);
    std::vector<const void*> objects = {pObject};
    objects.insert(objects.end(), surfaces.begin(), surfaces.end());
    auto* pRecord = new Record(std::move(objects), std::move(pResource));
    pObject->SetPrivateData(kPrivateData, pRecord, sizeof(IUnknown*), D3DSPD_IUNKNOWN);
    pRecord->Release();
}

CarryPlace CarryFind(const void* pObject)
{
    std::lock_guard lock(All().m_Mutex);
    const auto found = All().m_Places.find(pObject);
    return found != All().m_Places.end() ? found->second : CarryPlace{};
}

std::vector<std::shared_ptr<CarryResource>> CarryTakeDead()
{
    std::lock_guard lock(All().m_Mutex);
    return std::exchange(All().m_Dead, {});
}
