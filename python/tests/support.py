"""What the tests share: the sample's directory, and the two programs that they are held against."""
from __future__ import annotations

import json
import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path
from typing import Any, List, Tuple
from xml.etree import ElementTree

import zortunedex as zt

ROOT = Path(__file__).resolve().parents[2]
SAMPLES = ROOT / "samples" / "home"
TOOL = os.environ.get("TUNEDEX_TOOL", "tunedex")
TABLE = '<?xml version="1.0" encoding="utf-8"?><CHANNELTABLE>{}</CHANNELTABLE>'


def sample_sets() -> List[Tuple[int, str]]:
    """Country and signal type of every set of the sample."""
    root = ElementTree.parse(SAMPLES / "ChanInfo.xml").getroot()
    return [(int(country.attrib["countrycode"]),
             zt.Signal(int(found.attrib["inputSignalType"])).name)
            for country in root for found in country]


def tool(directory: Path, *words: str, country: int = 49, signal: str = "DVBSatellite") -> Any:
    """The JSON that tunedex prints."""
    line = [TOOL, "--dir", str(directory), "--country", str(country), "--signal", signal, "--json"]
    return json.loads(subprocess.run([*line, *words], check=True, capture_output=True).stdout)


def knows_merge() -> bool:
    ended = subprocess.run([TOOL, "channels", "--help"], capture_output=True, check=True)
    return b"\n  merge " in ended.stdout


class HomeTest(unittest.TestCase):
    """Has a copy of the sample."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()
        self.home = self.folder / "höme"
        shutil.copytree(SAMPLES, self.home)
        self.file = self.home / "ChanInfo.xml"

    def open(self, country: int = 49, signal: str = "DVBSatellite", **more: Any) -> zt.Database:
        return zt.open(self.home, country, signal, **more)

    def files(self) -> Any:
        """All files but the history's lock."""
        return {path.relative_to(self.home): path.read_bytes()
                for path in sorted(self.home.rglob("*"))
                if path.is_file() and path.name != "lock"}

    def write_table(self, text: str) -> None:
        self.file.write_text(TABLE.format(text), encoding="utf-8")


class Unchanged:
    """Fails when the files are not as they were at the end of the ``with``."""

    def __init__(self, test: HomeTest) -> None:
        self._test = test

    def __enter__(self) -> None:
        self._before = self._test.files()

    def __exit__(self, kind: Any, error: Any, trace: Any) -> None:
        if kind is None:
            self._test.assertEqual(self._before, self._test.files())
