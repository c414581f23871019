// A DLL, looked at without running it.
#include "TemporaryFolder.h"
#include "host/support/HostLibraryFile.h"

#include <gtest/gtest.h>

#include <softpub.h>
#include <tesslo/client.h>

using namespace tesslo::test;

TEST(HostLibraryFile, Driver_BesideTheProgram_IsDescribedAndNotLeftLoaded)
{
    {
        const HostLibraryFile file(L"TessloWddmUmode.dll");
        ASSERT_TRUE(file.IsFound());
        EXPECT_EQ(file.Error(), 0u);
        EXPECT_EQ(file.Place(), "beside this program");
        EXPECT_TRUE(file.Version().starts_with("8.14.")) << file.Version();
        EXPECT_EQ(file.Signature(), "not signed");
        EXPECT_TRUE(file.Exports("OpenAdapter"));
        EXPECT_FALSE(file.Exports(TESSLO_CLIENT_PLUG));
    }
    EXPECT_EQ(GetModuleHandleW(L"TessloWddmUmode.dll"), nullptr);
}

TEST(HostLibraryFile, ClientLibrary_WithoutAVersion_SaysSo)
{
    const HostLibraryFile file(L"TessloTestClientWithoutUpdate.dll");
    EXPECT_EQ(file.Version(), "without a version");
    EXPECT_TRUE(file.Exports(TESSLO_CLIENT_PLUG));
    EXPECT_FALSE(file.Exports(TESSLO_CLIENT_UPDATE));
}

TEST(HostLibraryFile, Place_OfAPathAndOfTheSystem_NamesNoFolder)
{
    const TemporaryFolder folder;
    const std::filesystem::path copy = folder.Path() / "copy.dll";
    ASSERT_TRUE(CopyFileW(L"TessloTestClient.dll", copy.c_str(), TRUE));
    EXPECT_EQ(HostLibraryFile(copy.wstring()).Place(), "in another folder");
    EXPECT_EQ(HostLibraryFile(L"dxva2.dll").Place(), "in the system folder");
}

TEST(HostLibraryFile, Name_OfNothing_IsNotFound)
{
    const HostLibraryFile file(L"nosuch.dll");
    EXPECT_FALSE(file.IsFound());
    EXPECT_EQ(file.Error(), DWORD{ERROR_MOD_NOT_FOUND});
}

TEST(HostLibraryFile, SignatureText_OfEachAnswer_SaysWhatItMeans)
{
    EXPECT_EQ(HostSignatureText(0), "signed, and trusted here");
    EXPECT_EQ(HostSignatureText(TRUST_E_NOSIGNATURE), "not signed");
    EXPECT_EQ(HostSignatureText(TRUST_E_BAD_DIGEST), "signed, and changed since");
    EXPECT_EQ(HostSignatureText(CERT_E_UNTRUSTEDROOT), "signed by somebody who is not trusted here");
    EXPECT_EQ(HostSignatureText(TRUST_E_EXPLICIT_DISTRUST), "signed by somebody who is distrusted here");
    EXPECT_EQ(HostSignatureText(CERT_E_EXPIRED), "signature not accepted: 0x800B0101");
}

TEST(HostLibraryFile, VersionText_OfFourParts_IsInTheirOrder)
{
    EXPECT_EQ(HostVersionText(0x0008'000E'0001'03E8), "8.14.1.1000");
    EXPECT_EQ(HostVersionText(static_cast<LONGLONG>(0xFFFF'0000'FFFF'0001)), "65535.0.65535.1");
}
