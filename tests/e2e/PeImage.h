// A PE image as a file: what the linker put into its headers.
#pragma once

#include "Lines.h"

#include <windows.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace tesslo::test
{

class PeImage
{
public:
    /// Throws std::runtime_error when the file cannot be read or is no 64-bit PE image.
    explicit PeImage(const std::filesystem::path& file);

    const IMAGE_NT_HEADERS64& Headers() const { return *m_pHeaders; }
    /// Names of the exports, in the order of the table.
    Lines Exports() const;
    /// File names of the imported libraries, in lower case.
    std::set<std::string> ImportedLibraries() const;
    /// The name of the PDB file as the debug directory has it; "" for none.
    std::string PdbName() const;

private:
    /// A place of the file by its address in memory; throws std::runtime_error for one outside all sections.
    template <typename Record>
    const Record* InternalAt(DWORD address) const
    {
        return reinterpret_cast<const Record*>(InternalLocate(address));
    }
    const BYTE* InternalLocate(DWORD address) const;
    const IMAGE_DATA_DIRECTORY& InternalDirectory(unsigned index) const;

    std::vector<BYTE> m_Bytes;
    const IMAGE_NT_HEADERS64* m_pHeaders;
};

}  // namespace tesslo::test
