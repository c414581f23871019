#include "PeImage.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tesslo::test
{

namespace
{

/// The record behind a debug directory entry of the kind "code view".
struct CodeViewRecord
{
    DWORD m_Signature;  ///< "RSDS"
    GUID m_Guid;
    DWORD m_Age;
    char m_Name[1];
};

}  // namespace

PeImage::PeImage(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    m_Bytes.assign(std::istreambuf_iterator<char>(stream), {});
    if (m_Bytes.size() < sizeof(IMAGE_DOS_HEADER))
        throw std::runtime_error("cannot read " + file.string());
    const auto* pDos = reinterpret_cast<const IMAGE_DOS_HEADER*>(m_Bytes.data());
    m_pHeaders = reinterpret_cast<const IMAGE_NT_HEADERS64*>(m_Bytes.data() + pDos->e_lfanew);
    if (m_pHeaders->Signature != IMAGE_NT_SIGNATURE ||
        m_pHeaders->OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC)
        throw std::runtime_error("no 64-bit image: " + file.string());
}

const BYTE* PeImage::InternalLocate(DWORD address) const
{
    const IMAGE_SECTION_HEADER* pSection = IMAGE_FIRST_SECTION(m_pHeaders);
    for (WORD i = 0; i < m_pHeaders->FileHeader.NumberOfSections; i++, pSection++)
        if (address >= pSection->VirtualAddress && address < pSection->VirtualAddress + pSection->SizeOfRawData)
            return &m_Bytes.at(address - pSection->VirtualAddress + pSection->PointerToRawData);
    throw std::runtime_error("an address outside all sections");
}

const IMAGE_DATA_DIRECTORY& PeImage::InternalDirectory(unsigned index) const
{
    return m_pHeaders->OptionalHeader.DataDirectory[index];
}

Lines PeImage::Exports() const
{
    Lines names;
    const IMAGE_DATA_DIRECTORY& directory = InternalDirectory(IMAGE_DIRECTORY_ENTRY_EXPORT);
    if (directory.Size == 0)
        return names;
    const auto* pExports = InternalAt<IMAGE_EXPORT_DIRECTORY>(directory.VirtualAddress);
    const auto* pNames = InternalAt<DWORD>(pExports->AddressOfNames);
    for (DWORD i = 0; i < pExports->NumberOfNames; i++)
        names.emplace_back(InternalAt<char>(pNames[i]));
    return names;
}

std::set<std::string> PeImage::ImportedLibraries() const
{
    std::set<std::string> names;
    const auto* pLibrary =
        InternalAt<IMAGE_IMPORT_DESCRIPTOR>(InternalDirectory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
    for (; pLibrary->Name != 0; pLibrary++)
    {
        std::string name = InternalAt<char>(pLibrary->Name);
        std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(tolower(c)); });
        names.insert(name);
    }
    return names;
}

std::string PeImage::PdbName() const
{
    const IMAGE_DATA_DIRECTORY& directory = InternalDirectory(IMAGE_DIRECTORY_ENTRY_DEBUG);
    for (DWORD offset = 0; offset < directory.Size; offset += sizeof(IMAGE_DEBUG_DIRECTORY))
    {
        const auto* pEntry = InternalAt<IMAGE_DEBUG_DIRECTORY>(directory.VirtualAddress + offset);
        if (pEntry->Type == IMAGE_DEBUG_TYPE_CODEVIEW)
            return InternalAt<CodeViewRecord>(pEntry->AddressOfRawData)->m_Name;
    }
    return "";
}

}  // namespace tesslo::test
