"""The examples of the documents, typed one behind the other."""
import contextlib
import io
import os
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path
from typing import Any, Dict, List, Tuple

import zortunedex as zt
from support import ROOT, SAMPLES, TOOL, HomeTest, knows_merge

# A file's name where one is given, the code, and what it prints.
EXAMPLE = re.compile(
    r"(?:<!-- file: (\S+) -->\n)?```python\n(.*?)```\n(?:```text\n(.*?)```\n)?", re.S)


def examples(document: Path) -> List[Tuple[str, str, str]]:
    return EXAMPLE.findall(document.read_text(encoding="utf-8"))


class Documents(HomeTest):
    def setUp(self) -> None:
        super().setUp()
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(self.folder)
        shutil.copytree(SAMPLES, "home")
        shutil.copytree(SAMPLES, "samples/home")

    def type_in(self, document: Path) -> int:
        """Types the examples that are no files; answers how many."""
        names: Dict[str, Any] = {}
        typed = [(code, printed) for name, code, printed in examples(document) if not name]
        for code, printed in typed:
            said = io.StringIO()
            with contextlib.redirect_stdout(said):
                exec(compile(code, document.name, "exec"), names)
            if printed:
                self.assertEqual(said.getvalue(), printed, code)
        return len(typed)

    def test_the_guide(self) -> None:
        self.assertGreater(self.type_in(ROOT / "docs" / "python.md"), 9)

    def test_the_packages_own_page(self) -> None:
        self.assertEqual(self.type_in(ROOT / "python" / "README.md"), 1)

    @unittest.skipUnless(knows_merge(), "this tunedex has no channels merge")
    def test_the_plan_of_a_merge(self) -> None:
        text = (ROOT / "docs" / "python.md").read_text(encoding="utf-8")
        code, = re.findall(r"```py\n(.*?)```\n", text, re.S)
        subprocess.run([TOOL, "--dir", "home", "--country", "49", "--signal", "DVBSatellite",
                        "channels", "export", "--format", "json", "-o", "scan.json"], check=True,
                       capture_output=True)
        said = io.StringIO()
        with contextlib.redirect_stdout(said):
            exec(code, {"zt": zt})
        self.assertEqual(said.getvalue().count("M100"), 58)

    def test_five_channels(self) -> None:
        code, = [code for name, code, _ in examples(ROOT / "docs" / "python.md")
                 if name == "five_channels.py"]
        self.assertLessEqual(len(code.splitlines()), 30)
        Path("five_channels.py").write_text(code, encoding="utf-8")

        def run(directory: str) -> "subprocess.CompletedProcess[str]":
            return subprocess.run([sys.executable, "five_channels.py", directory],
                                  capture_output=True, text=True, check=False)

        names = ["One", "Two", "Three", "Four", "Five"]
        self.assertEqual(run("home").stdout.splitlines(),
                         [f"{name} is channel {index}" for index, name in enumerate(names, 59)]
                         + ["saved, read back and compared"])
        before = Path("home/ChanInfo.xml").read_bytes()
        self.assertEqual(run("home").stdout.splitlines()[:-1],
                         [f"{name} is there as channel {index}"
                          for index, name in enumerate(names, 59)])
        self.assertEqual(Path("home/ChanInfo.xml").read_bytes(), before)
        failed = run("missing")
        self.assertEqual((failed.returncode, failed.stdout, failed.stderr),
                         (1, "", "nothing was changed: missing: there is no such directory\n"))
        Path("home/ChanInfo.xml").write_text("<a>")
        failed = run("home")
        self.assertEqual(failed.returncode, 1)
        self.assertIn("ChanInfo.xml: cannot be read: line 1", failed.stderr)


if __name__ == "__main__":
    unittest.main()
