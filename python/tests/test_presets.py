"""Presets and the customer's lists, held against the command-line host."""
import subprocess
import unittest
from typing import Any
from unittest import mock

import zortunedex as zt
from support import SAMPLES, TOOL, HomeTest, Unchanged, tool
from test_reading import as_json
from zortunedex import _presets

SIGNAL = "ISDBTerrestrialOneSeg"


class Presets(HomeTest):
    def setUp(self) -> None:
        super().setUp()
        self.file = self.home / "PreSetChannelInfo.xml"

    def tool(self, *words: str) -> Any:
        return tool(self.home, *words, country=81, signal=SIGNAL)

    def database(self) -> zt.Database:
        return self.open(81, SIGNAL)

    def test_areas_are_what_the_tool_lists(self) -> None:
        with zt.open(SAMPLES, 81, SIGNAL) as db:
            presets = db.presets
        self.assertEqual([(a.number, a.name, len(a.lists), a is presets.customer) for a in presets],
                         [tuple(row.values()) for row in self.tool("presets", "areas")])
        self.assertEqual(len(presets), 9)
        for area in presets:
            rows = self.tool("presets", "subareas", str(area.number))
            self.assertEqual([(area.number, p.number, p.name, len(p.channels)) for p in area.lists],
                             [tuple(row.values()) for row in rows])
        self.assertEqual([as_json(channel) for channel in presets[2][5].channels],
                         self.tool("presets", "list", "2", "5"))

    def test_what_is_not_there_is_told(self) -> None:
        with Unchanged(self), self.database() as db:
            with self.assertRaisesRegex(zt.NotFound, "no area 9"):
                db.presets[9]
            with self.assertRaisesRegex(zt.NotFound, "area 2 has no sub-area 7"):
                db.presets[2][7]
            for area, sub_area in ((9, 0), (2, 7), (-1, 0), (2, -1)):
                with self.assertRaises(zt.NotFound):
                    db.select_preset(area, sub_area)
            for number in (1, -1, 70000):
                with self.assertRaises(zt.NotFound):
                    db.delete_customer_list(number)

    def test_presets_cannot_be_changed(self) -> None:
        with self.database() as db, self.assertRaisesRegex(zt.Error, "db.edit"):
            db.presets[2][5].channels[0].favorite = True

    def test_a_sub_area_becomes_the_list(self) -> None:
        with self.database() as db:
            with db.edit() as e:
                e.add(name="alone", display_name="alone")
            self.assertIsNone(db.current_preset)
            selected = db.select_preset(2, 5)
            wanted = db.presets[2][5]
            self.assertEqual(list(selected), list(wanted.channels))
            self.assertEqual(list(db.reload()), list(wanted.channels))
            found = db.current_preset
            self.assertIsNotNone(found)
            self.assertEqual((found[0].number, found[1].number), (2, 5))  # type: ignore[index]
            db.select_preset(0, 0)
            self.assertEqual(list(db.reload()), list(db.presets[0][0].channels))
        with self.open() as db:
            self.assertEqual(len(db.channels), 58)

    def test_the_customers_lists(self) -> None:
        with self.database() as db:
            first = db.presets.customer[0]
            added = db.add_customer_list("Meine <&> 日本")
            self.assertEqual((added.number, added.name), (1, "Meine <&> 日本"))
            self.assertEqual(list(added.channels), list(db.channels))
            with db.edit() as e:
                e.remove(1)
            self.assertEqual(len(db.presets.customer[1].channels), len(db.channels) + 1)
            db.add_customer_list("third")
            self.assertEqual([row["name"] for row in self.tool("presets", "subareas", "8")],
                             [first.name, "Meine <&> 日本", "third"])
            db.delete_customer_list(0)
            self.assertEqual([(p.number, p.name) for p in db.presets.customer.lists],
                             [(0, "Meine <&> 日本"), (1, "third")])
            db.delete_customer_list(1)
            db.delete_customer_list(0)
            self.assertEqual(db.presets.customer.lists, ())
            self.assertEqual(db.add_customer_list("again").number, 0)

    def test_a_selection_that_the_file_notes_moves_along(self) -> None:
        line = [TOOL, "--dir", str(self.home), "--country", "81", "--signal", SIGNAL]
        with self.database() as db:
            db.add_customer_list("second")
            subprocess.run([*line, "presets", "select", "8", "1", "--yes"], check=True,
                           capture_output=True)
            self.assertIn(b'SubArea="1"', self.file.read_bytes())
            db.delete_customer_list(0)
        self.assertIn(b'Area="8"', self.file.read_bytes())
        self.assertIn(b'SubArea="0"', self.file.read_bytes())

    def test_names_are_refused_where_they_enter(self) -> None:
        with Unchanged(self), self.database() as db:
            for name, message in (("", "name: is empty"), ("\ud800", "surrogate"),
                                  ("x" * 260, "more than 259 bytes"), ("\x02", r"U\+0002"),
                                  (None, "not NoneType")):
                with self.assertRaisesRegex(zt.InvalidValue, message):
                    db.add_customer_list(name)  # type: ignore[arg-type]

    def test_a_country_without_channels_has_nothing_to_store(self) -> None:
        with Unchanged(self), self.open(49, SIGNAL) as db:
            with self.assertRaisesRegex(zt.Error, "country 49 has no one-segment channels"):
                db.add_customer_list("mine")

    def test_another_signal_type_has_no_presets_to_select(self) -> None:
        with Unchanged(self), self.open() as db:
            for work in (lambda: db.add_customer_list("mine"), lambda: db.select_preset(2, 5),
                         lambda: db.delete_customer_list(0)):
                with self.assertRaisesRegex(zt.Error, "opened for DVBSatellite"):
                    work()
            self.assertEqual(len(db.presets), 9)

    def test_an_unreadable_list_is_not_replaced(self) -> None:
        with self.database() as db:
            (self.home / "ChanInfo.xml").write_bytes(b"<a>")
            with Unchanged(self), self.assertRaisesRegex(zt.Unreadable, "ChanInfo.xml"):
                db.select_preset(2, 5)

    def test_lists_that_are_numbered_otherwise_stay(self) -> None:
        text = self.file.read_text(encoding="utf-8")
        place = text.rindex('SubAreaIndex="0"')
        self.file.write_text(text[:place] + 'SubAreaIndex="5"' + text[place + 16:],
                             encoding="utf-8")
        with Unchanged(self), self.database() as db:
            with self.assertRaisesRegex(zt.Error, "does not number the customer's lists"):
                db.add_customer_list("mine")
            with self.assertRaisesRegex(zt.Error, "does not number the customer's lists"):
                db.delete_customer_list(0)

    def test_what_would_not_be_held_is_not_written(self) -> None:
        with Unchanged(self), self.database() as db:
            with mock.patch.object(_presets, "_same", return_value=False):
                with self.assertRaisesRegex(zt.Error, "would not hold what was meant"):
                    db.add_customer_list("mine")
            with mock.patch.object(_presets, "same_channels", return_value="channel 1"):
                with self.assertRaisesRegex(zt.Error, r"not hold the sub-area \(channel 1\)"):
                    db.select_preset(2, 5)


if __name__ == "__main__":
    unittest.main()
