"""The module of slots and tables is what the headers say."""
import ctypes
import os
import re
import subprocess
import sys
import tempfile
import unittest

from support import ROOT
from zortunedex import _generated
from zortunedex._com import Station


def without_comments(text: str) -> str:
    return re.sub(r"//[^\n]*", "", text)


class Generated(unittest.TestCase):
    def test_is_what_the_generator_makes(self) -> None:
        made = subprocess.run([sys.executable, str(ROOT / "scripts" / "generate-python"), "-"],
                              check=True, capture_output=True).stdout.decode("utf-8")
        committed = (ROOT / "python" / "zortunedex" / "_generated.py").read_text(encoding="utf-8")
        self.assertEqual(made, committed, "run scripts/generate-python")

    def test_the_generator_makes_no_files_of_options(self) -> None:
        script = str(ROOT / "scripts" / "generate-python")
        with tempfile.TemporaryDirectory() as folder:
            for words, status in ((["--help"], 0), (["--check"], 1), (["a", "b"], 1)):
                ended = subprocess.run([sys.executable, script, *words], cwd=folder, check=False,
                                       capture_output=True)
                self.assertEqual((ended.returncode, os.listdir(folder)), (status, []), words)

    def test_slots_are_those_of_the_type_library(self) -> None:
        text = without_comments((ROOT / "src" / "module" / "ZorTunedex.idl").read_text())
        found = {}
        for name, body in re.findall(r"interface (I\w+) : IUnknown \{(.*?)\n\s*\}", text, re.S):
            found[name] = [(method, len([parameter for parameter in re.sub(
                r"\[[^\]]*\]", "", parameters).split(",") if parameter.strip(" \nvoid")]))
                for method, parameters in re.findall(r"HRESULT (\w+)\((.*?)\);", body, re.S)]
        self.assertEqual(found, {name: [(method, len(kinds)) for method, kinds in methods]
                                 for name, methods in _generated.SLOTS.items()})

    def test_all_interfaces_and_blocks_are_there(self) -> None:
        self.assertEqual(len(_generated.SLOTS), 11)
        self.assertEqual(_generated.SLOTS["IZorTunedex"][0], ("Open", "pui"))
        self.assertEqual(len(_generated.LAYOUTS), 10)
        sizes = {signal.name: layout.size for signal, layout in _generated.LAYOUTS.items()}
        self.assertEqual(sizes["DVBSatellite"], 2784)
        self.assertEqual(sizes["TDMBMobile"], 4716)

    def test_the_station_has_the_size_of_the_header(self) -> None:
        self.assertEqual(ctypes.sizeof(Station), 40)
        self.assertEqual(Station.pbInformation.offset, 32)


if __name__ == "__main__":
    unittest.main()
