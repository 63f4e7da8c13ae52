"""What is asked of the command-line host: the line that it gets, and what is made of its answer."""
import json
import os
import shutil
import subprocess
import sys
import unittest
from typing import Any, List
from unittest import mock

import zortunedex as zt
from support import SAMPLES, TOOL, HomeTest, Unchanged, knows_merge
from zortunedex import _tool

# Answers what stands in its folder, and writes its line there.
STAND_IN = """#!{python}
import json, pathlib, sys
folder = pathlib.Path(__file__).parent
(folder / "line").write_text(json.dumps(sys.argv[1:]))
sys.stdout.write((folder / "answer").read_text(encoding="utf-8"))
sys.stderr.write("tunedex: what went wrong\\n")
sys.exit(int((folder / "status").read_text()))
"""

PLAN = {"tunedex": "merge", "version": 1, "summary": {"M100": 51, "M102": 1, "M201": 1},
        "changes": [{"code": "M102", "index": 5, "identity": "S19.2E-1-1107-17501",
                     "name": "ProSieben",
                     "fields": [{"field": "freq", "list": 12544750, "base": 12544750,
                                 "scan": 12663750, "result": 12663750}]},
                    {"code": "M201", "index": None, "identity": "S19.2E-1-1107-17502",
                     "name": "Neu", "fields": []}]}


class Check(HomeTest):
    def test_a_sample_without_findings(self) -> None:
        with Unchanged(self):
            self.assertEqual(zt.check(self.home), [])

    def test_findings_are_those_of_the_tool(self) -> None:
        text = self.file.read_bytes()
        self.file.write_bytes(text.replace(b"Das Erste", b"A & B", 1))
        with Unchanged(self):
            found = zt.check(self.home, level="note")
            line = [TOOL, "--dir", str(self.home), "--json", "check", "--level", "note"]
            listed = json.loads(subprocess.run(line, capture_output=True, check=False).stdout)
            self.assertEqual([vars(finding) for finding in found], listed["findings"])
            raw = [finding for finding in found if finding.code == "ZT020"]
            self.assertEqual([(f.file, f.severity, f.repair) for f in raw],
                             [("ChanInfo.xml", "error", "yes")])
            self.assertGreater(raw[0].line or 0, 1)
            self.assertNotIn("ZT020", [finding.code for finding in
                                       zt.check(self.home, file="UserSettings.xml")])

    def test_wrong_words_are_told(self) -> None:
        with self.assertRaisesRegex(zt.InvalidValue, "level: takes error, warning or note"):
            zt.check(self.home, level="all")
        with self.assertRaisesRegex(zt.Error, "missing: there is no such directory"):
            zt.check(self.home / "missing")


class StandIn(HomeTest):
    """A program in the place of the tool."""

    def setUp(self) -> None:
        super().setUp()
        self.program = self.folder / "stand-in"
        self.program.write_text(STAND_IN.format(python=sys.executable))
        self.program.chmod(0o755)
        self.scan = self.folder / "scan.json"
        self.scan.write_text("{}")
        self.answer(PLAN)

    def answer(self, answer: Any, status: int = 0) -> None:
        text = answer if isinstance(answer, str) else json.dumps(answer)
        (self.folder / "answer").write_text(text, encoding="utf-8")
        (self.folder / "status").write_text(str(status))

    def plan(self, **more: Any) -> zt.MergePlan:
        return zt.merge_plan(self.home, self.scan, country=49, signal="dvbsatellite",
                             tool=self.program, **more)

    def line(self) -> List[str]:
        return list(json.loads((self.folder / "line").read_text()))

    def test_the_line_of_a_merge(self) -> None:
        self.plan()
        expected = ["--dir", str(self.home), "--country", "49", "--signal", "DVBSatellite",
                    "--json", "channels", "merge", str(self.scan), "--dry-run"]
        self.assertEqual(self.line(), expected)
        self.plan(format="vdr", new="none", gone_favorites=True, loose_names=False, base=None)
        self.assertEqual(self.line(), [*expected, "--format", "vdr", "--new", "none",
                                       "--gone-favorites"])

    def test_what_is_made_of_a_plan(self) -> None:
        for status in (0, 3):
            self.answer(PLAN, status)
            plan = self.plan()
            self.assertEqual(plan.summary, {"M100": 51, "M102": 1, "M201": 1})
            moved, new = plan.changes
            self.assertEqual((moved.code, moved.index, moved.name), ("M102", 5, "ProSieben"))
            self.assertEqual(moved.fields, (zt.FieldChange("freq", 12544750, 12544750, 12663750,
                                                           12663750),))
            self.assertEqual((new.index, new.fields), (None, ()))
        self.assertEqual((moved.became, moved.absent, moved.candidates), (5, 0, ()))

    def test_what_a_plan_says_of_some_channels_alone(self) -> None:
        row = {"index": 5, "identity": None, "name": "n", "fields": []}
        self.answer({**PLAN, "changes": [
            {"code": "M100", **row, "became": 4}, {"code": "M303", **row, "became": None},
            {"code": "M301", **row, "absent": 2},
            {"code": "M401", **row, "candidates": [{"identity": "A33-2.1", "name": "WXYZ"}]}]})
        renumbered, removed, gone, unclear = self.plan().changes
        self.assertEqual((renumbered.became, removed.became, gone.became), (4, None, 5))
        self.assertEqual((removed.absent, gone.absent), (0, 2))
        self.assertEqual(unclear.candidates, (zt.Candidate("A33-2.1", "WXYZ"),))

    def test_a_failure_is_told_in_the_words_of_the_tool(self) -> None:
        for status, result in ((1, 0x80004005), (2, 0x80070057)):
            self.answer("", status)
            with self.assertRaisesRegex(zt.Error, f"ended with {status}: .*went wrong") as caught:
                self.plan()
            self.assertEqual(caught.exception.result & 0xFFFFFFFF, result)

    def test_an_answer_that_is_none(self) -> None:
        for answer in ("", "[]", "{", {"tunedex": "check", "version": 1},
                       {"tunedex": "merge", "version": 2}):
            self.answer(answer)
            with self.assertRaisesRegex(zt.Error, "no merge document of version 1"):
                self.plan()

    def test_arguments_are_refused_before_the_tool_is_run(self) -> None:
        for more, message in (({"signal": "DVB"}, "no signal type 'DVB'"),
                              ({"country": -1}, "country: takes"),
                              ({"scan": self.folder / "none"}, "none: there is no such file"),
                              ({"scan": "\ud800"}, "scan: .*surrogate"),
                              ({"new": "\ud800"}, "--new: .*surrogate"),
                              ({"directory": self.scan}, "is no directory")):
            values: Any = {"directory": self.home, "scan": self.scan, "country": 49, "signal": 64,
                           "tool": self.program, **more}
            with self.assertRaisesRegex(zt.Error, message):
                zt.merge_plan(values.pop("directory"), values.pop("scan"), **values)
        self.assertFalse((self.folder / "line").exists())

    def test_where_the_tool_is_looked_for(self) -> None:
        with mock.patch.dict(os.environ, {"TUNEDEX_TOOL": str(self.program)}):
            self.assertEqual(_tool.find_tool(), str(self.program))
            os.environ["TUNEDEX_TOOL"] = str(self.folder / "none")
            with self.assertRaisesRegex(zt.LibraryNotFound, "none: there is no such program"):
                zt.check(self.home)
            del os.environ["TUNEDEX_TOOL"]
            os.environ["PATH"] = str(self.folder)
            with self.assertRaisesRegex(zt.LibraryNotFound, "not on the PATH"):
                zt.check(self.home)
            (self.folder / "tunedex").symlink_to(self.program)
            self.assertEqual(_tool.find_tool(), str(self.folder / "tunedex"))


@unittest.skipUnless(knows_merge(), "this tunedex has no channels merge")
class Merge(HomeTest):
    def test_a_list_merged_with_itself(self) -> None:
        scan = self.folder / "scan.json"
        subprocess.run([TOOL, "--dir", str(self.home), "--country", "49", "--signal",
                        "DVBSatellite", "channels", "export", "--format", "json", "-o", str(scan)],
                       check=True, capture_output=True)
        for source in (scan, SAMPLES):
            with Unchanged(self):
                plan = zt.merge_plan(self.home, source, country=49, signal="DVBSatellite")
            self.assertEqual(plan.summary.get("M100"), 58)
            self.assertEqual({change.code for change in plan.changes}, {"M100"})

    def test_a_scan_with_a_change_and_a_new_channel(self) -> None:
        scan = self.folder / "scan"
        shutil.copytree(SAMPLES, scan)
        with zt.open(scan, 49, "DVBSatellite") as db, db.edit() as e:
            e[5]["PcrPID"] = 4711
            e.add(e[5], name="New", display_name="New", serviceID=17999)
        with Unchanged(self):
            plan = zt.merge_plan(self.home, scan, country=49, signal="DVBSatellite", new="end")
        self.assertEqual((plan.summary["M100"], plan.summary["M201"]), (57, 1))
        changed, = [change for change in plan.changes if change.index == 5]
        self.assertEqual([(field.field, field.scan, field.result) for field in changed.fields],
                         [("PcrPID", 4711, 4711)])
        self.assertEqual((plan.changes[-1].code, plan.changes[-1].name), ("M201", "New"))


if __name__ == "__main__":
    unittest.main()
