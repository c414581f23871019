// Pages by number, each with or without access, whose addresses have a meaning: who touches one is told what it was.
#pragma once

#include <windows.h>

#include <string>

inline constexpr size_t kCheckPage = 4096;

constexpr size_t CheckPagesOf(size_t bytes)
{
    return (bytes + kCheckPage - 1) / kCheckPage;
}

class CheckPages
{
public:
    /// Addresses of so many pages, none with access. Throws CheckFailure.
    explicit CheckPages(size_t pages);
    /// The addresses, too, are given back.
    ~CheckPages();
    CheckPages(const CheckPages&) = delete;
    CheckPages& operator=(const CheckPages&) = delete;

    BYTE* At(size_t page) const { return m_pBytes + page * kCheckPage; }
    /// Gives pages access, to zeros. Throws CheckFailure.
    void Open(size_t page, size_t pages);
    void SetReadOnly(size_t page, size_t pages);
    /// Takes all access and all memory away. The addresses stay.
    void Close();

    /// @param what touching the pages would mean; what was said of them before is forgotten.
    void Name(const std::string& what);

    /// What touching this address means; empty for addresses of no such pages. Any thread.
    static std::string MeaningOf(const void* pAddress);

private:
    const size_t m_Pages;
    BYTE* m_pBytes;
};
