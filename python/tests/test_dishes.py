"""What the dishes receive: saved, read back and compared, or nothing."""
import unittest
from unittest import mock

import zortunedex as zt
from support import HomeTest, Unchanged, tool
from zortunedex import _satellites

ASTRA = zt.DishSatellite("Astra-1L-19.2E", "Ku-Band", 9750000, 10600000, 11700000)


class Dishes(HomeTest):
    def setUp(self) -> None:
        super().setUp()
        self.settings = self.home / "UserSettings.xml"

    def listed(self) -> object:
        return [(row["dish"], row["id"], row["band"], row["low"], row["high"], row["switch"])
                for row in tool(self.home, "dishes", "list")]

    def test_dishes_are_what_the_tool_lists(self) -> None:
        with self.open() as db:
            found = [(number, s.id, s.band, s.low, s.high, s.switch)
                     for number, dish in enumerate(db.dishes, 1) for s in dish]
        self.assertEqual(found, self.listed())
        self.assertEqual(len(found), 3)

    def test_changes_are_saved(self) -> None:
        with self.open(signal="FMRadio") as db:
            with db.edit_dishes() as dishes:
                del dishes[0][1]
                dishes[2].append(zt.DishSatellite("A & <B> \"'é", "C-Band", 0, 2**32 - 1, 2**31))
                dishes[3].append(ASTRA)
            self.assertEqual(db.dishes[0], (ASTRA,))
            self.assertEqual(db.dishes[2],
                             (zt.DishSatellite("A & <B> \"'é", "C-Band", 0, 2**32 - 1, 2**31),))
            self.assertEqual(len(self.listed()), 4)  # type: ignore[arg-type]
            with db.edit_dishes() as dishes:
                for dish in dishes:
                    dish.clear()
            self.assertEqual(db.dishes, ((),) * 4)

    def test_a_directory_without_the_file_gets_one(self) -> None:
        self.settings.unlink()
        with self.open() as db:
            with db.edit_dishes() as dishes:
                dishes[1].append(ASTRA)
            self.assertEqual(db.dishes, ((), (ASTRA,), (), ()))

    def test_what_the_file_would_not_give_back_is_refused(self) -> None:
        for values, message in ((("\ud800", "C-Band"), r"dish 1\[2\].id: .*surrogate"),
                                (("a", "x" * 260), "band: has more than 259 bytes"),
                                (("a\x01", "b"), r"U\+0001"), (("a", "b", -1), "low: .*from 0"),
                                (("a", "b", 0, 0, 2**32), "switch: .*4294967295")):
            with self.open() as db, Unchanged(self):
                with self.assertRaisesRegex(zt.InvalidValue, message), db.edit_dishes() as dishes:
                    dishes[0].append(zt.DishSatellite(*values))  # type: ignore[arg-type]
        with self.open() as db, Unchanged(self):
            with self.assertRaisesRegex(zt.InvalidValue, r"dish 1\[2\]: is there twice"):
                with db.edit_dishes() as dishes:
                    dishes[0].append(dishes[0][0])
            with self.assertRaisesRegex(zt.InvalidValue, "takes a DishSatellite, not 'Astra'"):
                with db.edit_dishes() as dishes:
                    dishes[0].append("Astra")  # type: ignore[arg-type]

    def test_an_exception_saves_nothing(self) -> None:
        with Unchanged(self), self.open() as db:
            with self.assertRaises(ZeroDivisionError), db.edit_dishes() as dishes:
                dishes[0].clear()
                raise ZeroDivisionError

    def test_a_dish_without_an_element(self) -> None:
        text = self.settings.read_text(encoding="utf-8")
        self.settings.write_text(text.replace("<DISH_4/>", ""), encoding="utf-8")
        with Unchanged(self), self.open() as db:
            with self.assertRaisesRegex(zt.Error, "no DISH_4 element"), db.edit_dishes() as dishes:
                dishes[3].append(ASTRA)

    def test_assignments_that_hold_more_are_not_lost(self) -> None:
        text = self.settings.read_text(encoding="utf-8")
        for old, new in (('LNB_Switch="0"/>', 'LNB_Switch="0"><mine/></SAT>'),
                         ('LNB_Switch="0"', 'LNB_Switch="0" mine="1"'),
                         ('LNB_Switch="0"', 'LNB_Switch="0 MHz"'),
                         ('id="Thaicom', 'id="' + "T" * 300)):
            self.settings.write_text(text.replace(old, new), encoding="utf-8")
            with Unchanged(self), self.open() as db:
                with self.assertRaisesRegex(zt.Error, "dish 2 that would not be kept"):
                    with db.edit_dishes() as dishes:
                        dishes[0].clear()

    def test_what_would_not_be_held_is_not_written(self) -> None:
        with Unchanged(self), self.open() as db:
            with mock.patch.object(_satellites, "_write_dishes", lambda *_: None):
                with self.assertRaisesRegex(zt.Error, "would not hold these assignments"):
                    with db.edit_dishes() as dishes:
                        dishes[0].clear()


if __name__ == "__main__":
    unittest.main()
