"""The INF: whole in itself, and in step with the names that the driver's source uses. Runs with TESSLO_INF, the path of
the INF as it is built."""

import os
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
# Sections that setup itself looks for, beside those that others name.
KNOWN = {"Version", "Manufacturer", "SourceDisksNames", "SourceDisksFiles", "DestinationDirs", "Strings"}


def source(path):
    return (ROOT / path).read_text(encoding="utf-8")


def literal(path, name):
    """The text of a constant of the source."""
    text = re.search(rf'\b{name}\[\] = L?"(.*)";', source(path))[1]
    return text.replace("\\\\", "\\")


class Inf(unittest.TestCase):
    def setUp(self):
        self.sections = {}
        rows = None
        for line in pathlib.Path(os.environ["TESSLO_INF"]).read_text(encoding="ascii").splitlines():
            line = re.sub(r';(?=([^"]*"[^"]*")*[^"]*$).*', "", line).strip()
            if line.startswith("["):
                rows = self.sections.setdefault(line[1:-1], [])
            elif line:
                rows.append(line)
        self.strings = dict(self.pair(row) for row in self.sections["Strings"])

    @staticmethod
    def pair(row):
        name, _, value = row.partition("=")
        return name.strip(), value.strip().strip('"')

    def values(self, section):
        return dict(self.pair(row) for row in self.sections[section])

    def fields(self, row):
        """The columns of a row, its strings put in."""
        text = re.sub(r"%([A-Za-z]+)%", lambda found: self.strings[found[1]], row)
        return [field.strip().strip('"') for field in text.split(",")]

    def registry(self, section):
        """What a section of the registry writes: (root, key, name): (flags, value)."""
        rows = (self.fields(row) for row in self.sections[section])
        return {tuple(row[:3]): (int(row[3], 16), row[4]) for row in rows}

    def names(self, section, key):
        return [name.strip() for name in self.values(section)[key].split(",")]

    def files(self):
        """What is copied, with the folder's number."""
        folders = self.values("DestinationDirs")
        for section in self.names("Tesslo.Install", "CopyFiles"):
            for row in self.sections[section]:
                yield row.split(",")[0], int(folders[section]), row.split(",")[3]

    def test_every_section_is_there_and_named_by_another(self):
        named = set(KNOWN)
        models, *systems = self.fields(self.sections["Manufacturer"][0].split("=")[1])
        named.update(f"{models}.{system}" for system in systems)
        for system in systems:
            install = self.fields(self.sections[f"{models}.{system}"][0].split("=")[1])[0]
            named |= {install, f"{install}.Services"}
        named.update(self.names("Tesslo.Install", "CopyFiles"), self.names("Tesslo.Install", "AddReg"))
        service = self.values("Tesslo.Install.Services")["AddService"].split(",")[2]
        named |= {service, *self.names(service, "AddReg")}
        self.assertEqual(named, set(self.sections))

    def test_every_string_is_defined_and_used(self):
        used = {name for rows in self.sections.values() for row in rows for name in re.findall(r"%([A-Za-z]+)%", row)}
        self.assertEqual(used, set(self.strings))

    def test_version_is_for_displays_of_64_bits_and_names_a_catalogue(self):
        version = self.values("Version")
        self.assertEqual(version["Signature"], "$Windows NT$")
        self.assertEqual(version["Class"], "Display")
        self.assertEqual(version["ClassGuid"].lower(), "{4d36e968-e325-11ce-bfc1-08002be10318}")
        self.assertTrue(version["CatalogFile"].endswith(".cat"))
        self.assertTrue(all("NTamd64" in row for row in self.sections["Manufacturer"]))

    def test_driver_version_is_a_date_and_the_builds(self):
        date, version = self.values("Version")["DriverVer"].split(",")
        self.assertRegex(date, r"^(0[1-9]|1[0-2])/(0[1-9]|[12]\d|3[01])/\d{4}$")
        numbers = re.search(r"project\(\w+ VERSION ([\d.]+)", source("CMakeLists.txt"))[1]
        self.assertEqual([int(number) for number in version.split(".")], [int(part) for part in numbers.split(".")])

    def test_files_are_the_two_halves_at_their_places(self):
        library = re.search(r"LIBRARY (\S+)", source("src/TessloWddmUmode.def"))[1]
        service = literal("src/util/UMDUtilDebugTraceDllMain.cpp", "kServiceKey").split("\\")[-1]
        # System32 and its folder of drivers; a file in use is renamed.
        self.assertEqual(sorted(self.files()), [(f"{service}.sys", 12, "0x4000"), (library, 11, "0x4000")])
        self.assertEqual({self.pair(row)[0] for row in self.sections["SourceDisksFiles"]}, {f"{service}.sys", library})

    def test_runtime_loads_the_dll_that_is_copied(self):
        library = re.search(r"LIBRARY (\S+)", source("src/TessloWddmUmode.def"))[1]
        adapter = self.registry("Tesslo.Adapter")
        texts = 0x10000  # a list of texts
        self.assertEqual(adapter["HKR", "", "UserModeDriverName"], (texts, library))
        self.assertEqual(adapter["HKR", "", "InstalledDisplayDrivers"], (texts, library.removesuffix(".dll")))
        self.assertFalse([key for key in adapter if "Wow" in key[2]])

    def test_adapter_is_the_one_that_the_driver_knows_as_itself(self):
        model = self.sections["Tesslo.Models.NTamd64.6.1"][0].split("=")[0].strip().strip("%")
        self.assertEqual(self.strings[model], literal("src/gpu/UMDGpuD3D9.cpp", "kOwnDescription"))
        library = re.search(r"LIBRARY (\S+)", source("src/TessloWddmUmode.def"))[1]
        self.assertEqual(library, literal("src/gpu/UMDGpuD3D9.cpp", "kOwnDriver"))

    def test_service_is_the_one_whose_key_holds_the_trace_mask(self):
        key = literal("src/util/UMDUtilDebugTraceDllMain.cpp", "kServiceKey")
        name, _, section = self.values("Tesslo.Install.Services")["AddService"].split(",")
        self.assertEqual(rf"System\CurrentControlSet\Services\{name}", key)
        service = self.values(section)
        self.assertEqual(service["ServiceBinary"], rf"%12%\{name}.sys")
        self.assertEqual(service["ServiceType"], "1")
        value = re.search(r'kServiceKey, L"(\w+)"', source("src/util/UMDUtilDebugTraceDllMain.cpp"))[1]
        # A number, 0, that is not written over.
        self.assertEqual(self.registry(service["AddReg"]), {("HKR", "", value): (0x10003, "0")})

    def test_client_library_is_named_where_the_driver_reads_it(self):
        key = literal("src/output/UMDClientLibrary.cpp", "kKeyPath")
        value = literal("src/output/UMDClientLibrary.cpp", "kValueName")
        default = re.search(r'TESSLO_CLIENT_DEFAULT_DLL L"(.*)"', source("include/tesslo/client.h"))[1]
        self.assertEqual(self.registry("Tesslo.Client"), {("HKLM", key, value): (0x2, default)})

    def test_gaps_are_marked_at_everything_the_vendor_adds(self):
        lines = source("packaging/tesslo.inf.in").splitlines()
        gaps = [at for at, line in enumerate(lines) if "; GAP:" in line]
        marked = [next(row for row in lines[at:] if not row.startswith(";")) for at in gaps]
        self.assertEqual([re.split(r"[ ,=]", row)[0] for row in marked],
                         ["CatalogFile", "%Device%", "[Tesslo.Client]", "[Tesslo.Service]"])


if __name__ == "__main__":
    unittest.main()
