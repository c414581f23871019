"""The driver against a header of the platform kit's manner: every source compiles, and a record of another layout is
refused. Only what the compiler has to say is asked for; the preset kit builds the whole."""

import json
import pathlib
import re
import shlex
import subprocess
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
# What most sources include: read once for all of them.
COMMON = '#include "ddi/ddi.h"\n#include <algorithm>\n#include <atomic>\n#include <memory>\n#include <utility>\n'


class Kit(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.build = pathlib.Path(folder.name)
        configure = ("cmake", "--preset", "kit", "-B", self.build, "-DTESSLO_BUILD_TESTS=OFF")
        subprocess.run(configure, cwd=ROOT, check=True, capture_output=True)
        rows = json.loads((self.build / "compile_commands.json").read_text(encoding="utf-8"))
        commands = {row["file"]: row["command"] for row in rows if re.match(rf"{ROOT}/src/.*\.cpp$", row["file"])}
        self.sources = list(commands)
        command = commands[f"{ROOT}/src/adapter/UMDAdapter.cpp"]
        # How the driver's sources are compiled, without what it is written to.
        self.compiler = [*shlex.split(command.split(" -o ")[0]), "-fsyntax-only"]

    def complaints(self, *arguments):
        return subprocess.run([*self.compiler, *arguments], cwd=self.build, capture_output=True, text=True).stderr

    def test_every_source_of_the_driver_compiles(self):
        self.assertGreater(len(self.sources), 50)
        common = self.build / "common.h"
        common.write_text(COMMON, encoding="utf-8")
        read = [*self.compiler[:-1], "-x", "c++-header", common, "-o", "common.pch"]
        subprocess.run(read, cwd=self.build, check=True)
        with ThreadPoolExecutor(2) as pool:
            said = pool.map(lambda source: self.complaints("-include-pch", "common.pch", source), self.sources)
            self.assertEqual("".join(said), "")

    def test_proofs_are_all_that_the_headers_have(self):
        made = (self.build / "kit/ddi/ddi_proofs.h").read_text(encoding="utf-8")
        own = "".join(path.read_text(encoding="utf-8") for path in ROOT.glob("src/ddi/ddi_[cefr]*.h"))
        proof = r"^(?:UMD_LAYOUT|UMD_OFFSET|static_assert)\(.*?\);"
        self.assertCountEqual(re.findall(proof, made, re.M | re.S), re.findall(proof, own, re.M | re.S))

    def test_a_record_of_another_layout_is_refused(self):
        header = self.build / "stand-in/d3dumddi.h"
        text = header.read_text(encoding="utf-8")
        probe = self.build / "probe.cpp"
        probe.write_text('#include "ddi/ddi.h"\n', encoding="utf-8")
        self.assertEqual(self.complaints(probe), "")
        changes = (("HANDLE hChannel;", "UINT64 Before; HANDLE hChannel;", "D3DDDIARG_AUTHENTICATEDCHANNELKEYEXCHANGE"),
                   ("UINT ColorKey;", "UINT64 ColorKey;", "D3DDDIARG_BLT::Flags"),
                   ("PFND3DDDI_GETCAPS pfnGetCaps;", "", "D3DDDI_ADAPTERFUNCS"))
        for old, new, record in changes:
            with self.subTest(record=record):
                self.assertIn(old, text)
                header.write_text(text.replace(old, new, 1), encoding="utf-8")
                self.assertRegex(self.complaints(probe), rf"(static assertion failed|no member named).*{record}")


if __name__ == "__main__":
    unittest.main()
