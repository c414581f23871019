// The built driver DLL as a file.
#include "PeImage.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{

constexpr wchar_t kDriver[] = L"TessloWddmUmode.dll";

/// The version resource's fixed part.
VS_FIXEDFILEINFO ReadVersion()
{
    HMODULE hModule = LoadLibraryExW(kDriver, nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    HRSRC hResource = FindResourceW(hModule, MAKEINTRESOURCEW(VS_VERSION_INFO), MAKEINTRESOURCEW(16));
    if (!hResource)
        return {};
    const auto* pBytes = static_cast<const BYTE*>(LockResource(LoadResource(hModule, hResource)));
    // Behind three words and the key "VS_VERSION_INFO", aligned to four bytes.
    constexpr size_t kFixedOffset = 40;
    VS_FIXEDFILEINFO version;
    memcpy(&version, pBytes + kFixedOffset, sizeof version);
    FreeLibrary(hModule);
    return version;
}

}  // namespace

TEST(DriverBinary, Exports_All_AreOpenAdapterAlone)
{
    EXPECT_EQ(PeImage(kDriver).Exports(), Lines{"OpenAdapter"});
}

TEST(DriverBinary, Imports_All_AreLibrariesOfThePlatform)
{
    EXPECT_EQ(PeImage(kDriver).ImportedLibraries(), (std::set<std::string>{"advapi32.dll", "d3d9.dll", "dxva2.dll",
                                                        "kernel32.dll", "msvcrt.dll", "shell32.dll", "user32.dll"}));
}

TEST(DriverBinary, Flags_OfTheImage_ArePositionFreeWithoutExecutableData)
{
    const PeImage image(kDriver);
    const IMAGE_NT_HEADERS64& headers = image.Headers();
    EXPECT_EQ(headers.FileHeader.Machine, IMAGE_FILE_MACHINE_AMD64);
    constexpr WORD kFlags = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE | IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA |
                            IMAGE_DLLCHARACTERISTICS_NX_COMPAT;
    EXPECT_EQ(headers.OptionalHeader.DllCharacteristics & kFlags, kFlags);
    EXPECT_EQ(headers.FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED, 0);
}

TEST(DriverBinary, Addresses_BesideAnyShippedClientLibrary_DoNotOverlap)
{
    const PeImage driver(kDriver);
    const IMAGE_OPTIONAL_HEADER64& own = driver.Headers().OptionalHeader;
    EXPECT_GT(own.ImageBase, UINT64{1} << 32);  // below, the platform has less room to place it at random
    for (const wchar_t* pName :
        {L"TessloClientDllSample.dll", L"TessloClientDllMinimal.dll", L"TessloClientDllBrowser.dll"})
    {
        SCOPED_TRACE(pName);
        const PeImage client(pName);
        const IMAGE_OPTIONAL_HEADER64& other = client.Headers().OptionalHeader;
        EXPECT_TRUE(
            own.ImageBase + own.SizeOfImage <= other.ImageBase || other.ImageBase + other.SizeOfImage <= own.ImageBase);
    }
}

TEST(DriverBinary, PdbName_InTheImage_HasNoPath)
{
    EXPECT_EQ(PeImage(kDriver).PdbName(), "TessloWddmUmode.pdb");
}

TEST(DriverBinary, Version_Resource_IsADisplayDriversOfThisVersion)
{
    const VS_FIXEDFILEINFO version = ReadVersion();
    EXPECT_EQ(version.dwSignature, 0xFEEF04BD);
    EXPECT_EQ(version.dwFileVersionMS, MAKELONG(14, 8));
    EXPECT_EQ(version.dwFileVersionLS, MAKELONG(TESSLO_VERSION_DDDD, TESSLO_VERSION_CC));
    EXPECT_EQ(version.dwProductVersionMS, version.dwFileVersionMS);
    EXPECT_EQ(version.dwProductVersionLS, version.dwFileVersionLS);
    EXPECT_EQ(version.dwFileOS, static_cast<DWORD>(VOS_NT_WINDOWS32));
    EXPECT_EQ(version.dwFileType, static_cast<DWORD>(VFT_DRV));
    EXPECT_EQ(version.dwFileSubtype, static_cast<DWORD>(VFT2_DRV_DISPLAY));
}
