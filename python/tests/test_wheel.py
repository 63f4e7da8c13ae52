"""The wheel is built with Python alone: what pip asks for needs no other package."""
import base64
import hashlib
import os
import subprocess
import sys
import tarfile
import tempfile
import unittest
import zipfile
from pathlib import Path
from typing import Any
from unittest import mock

import zortunedex as zt
from support import ROOT

PYTHON = ROOT / "python"
INFO = f"zortunedex-{zt.__version__}.dist-info"


def build(hook: str, folder: str) -> Path:
    """What a hook of the backend makes, as pip calls it: in the folder of the sources."""
    program = f"import sys, wheel_backend; print(wheel_backend.{hook}(sys.argv[1]))"
    made = subprocess.run([sys.executable, "-c", program, folder], check=True, cwd=PYTHON,
                          stdout=subprocess.PIPE,
                          env={**os.environ, "PYTHONPATH": str(PYTHON / "backend")}).stdout
    return Path(folder) / made.decode().strip()


class Wheel(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def test_nothing_has_to_be_fetched_for_it(self) -> None:
        self.assertIn("\nrequires = []\n", (PYTHON / "pyproject.toml").read_text())

    def test_it_has_all_modules_and_a_record_of_them(self) -> None:
        wheel = build("build_wheel", self.folder)
        self.assertEqual(wheel.name, f"zortunedex-{zt.__version__}-py3-none-any.whl")
        with zipfile.ZipFile(wheel) as archive:
            files = {name: archive.read(name) for name in archive.namelist()}
        modules = {f"zortunedex/{path.name}" for path in (PYTHON / "zortunedex").iterdir()
                   if path.is_file()}
        self.assertEqual(set(files), modules | {f"{INFO}/METADATA", f"{INFO}/WHEEL",
                                                f"{INFO}/RECORD"})
        record = dict(line.split(",", 1)
                      for line in files.pop(f"{INFO}/RECORD").decode().splitlines())
        self.assertEqual(record.pop(f"{INFO}/RECORD"), ",")
        self.assertEqual(record, {name: self.noted(data) for name, data in files.items()})
        metadata = files[f"{INFO}/METADATA"].decode()
        self.assertIn(f"\nName: zortunedex\nVersion: {zt.__version__}\nSummary: Channel ", metadata)
        self.assertIn("\nRequires-Python: >=3.9\n", metadata)
        self.assertIn("\nClassifier: Typing :: Typed\n", metadata)

    def noted(self, data: bytes) -> str:
        digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).decode().rstrip("=")
        return f"sha256={digest},{len(data)}"

    def test_it_is_imported_from_where_it_stands(self) -> None:
        wheel = build("build_wheel", self.folder)
        said = self.imported(str(wheel))
        self.assertEqual(said, f"{zt.__version__} {wheel}/zortunedex/__init__.py")

    def imported(self, path: str) -> str:
        program = "import zortunedex as zt; print(zt.__version__, zt.__file__)"
        return subprocess.run([sys.executable, "-c", program], check=True, cwd=self.folder,
                              stdout=subprocess.PIPE,
                              env={**os.environ, "PYTHONPATH": path}).stdout.decode().strip()

    def test_the_same_sources_make_the_same_wheel(self) -> None:
        made: Any = []
        with mock.patch.dict(os.environ, {"SOURCE_DATE_EPOCH": "1700000000"}):
            for _ in range(2):
                made.append(build("build_wheel", self.folder).read_bytes())
        self.assertEqual(*made)

    def test_one_for_development_leads_to_the_sources(self) -> None:
        with zipfile.ZipFile(build("build_editable", self.folder)) as archive:
            self.assertEqual(archive.read("zortunedex.pth").decode(), f"{PYTHON}\n")

    def test_the_sources_build_it_again(self) -> None:
        with tarfile.open(build("build_sdist", self.folder)) as archive:
            names = {name.split("/", 1)[1] for name in archive.getnames()}
        self.assertLessEqual({"PKG-INFO", "pyproject.toml", "README.md", "zortunedex/py.typed",
                              "backend/wheel_backend.py", "zortunedex/__init__.py"}, names)


if __name__ == "__main__":
    unittest.main()
