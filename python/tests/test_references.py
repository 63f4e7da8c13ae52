"""Every reference is given back once, and every text and block freed once."""
import collections
import gc
import unittest
from typing import Any, Counter, Dict
from unittest import mock

import zortunedex as zt
from support import HomeTest
from zortunedex import _library
from zortunedex._com import Interface
from zortunedex._session import Session


def everything(test: HomeTest) -> None:
    """Goes through all that holds an object of the library, also where it fails."""
    with test.open() as db:
        with db.edit() as e:
            e[5].favorite = not e[5].favorite
            e.add(display_name="日本", name="日本")
            e.move(3, 1)
        with test.assertRaises(ZeroDivisionError), db.edit() as e:
            raise ZeroDivisionError
        with db.edit_dishes() as dishes:
            dishes[3].append(zt.DishSatellite("Astra-1L-19.2E", "Ku-Band", 1, 2, 3))
        test.assertEqual((len(db.satellites), len(db.lnbs)), (16, 10))
    with test.open(81, "ISDBTerrestrialOneSeg") as db:
        db.add_customer_list("日本")
        db.delete_customer_list(0)
        db.select_preset(2, 5)
    with test.assertRaises(zt.Error):
        test.open(country=-1)
    (test.home / "SatelliteInfo.xml").unlink()
    with test.open() as db, test.assertRaises(zt.Error):
        db.satellites


class References(HomeTest):
    def test_all_are_given_back(self) -> None:
        alive: Dict[int, str] = {}
        made: Counter[str] = collections.Counter()
        begin, release = Interface.__init__, Interface.release

        def begun(self: Interface, kind: str, address: Any) -> None:
            begin(self, kind, address)
            alive[id(self)] = kind
            made[kind] += 1

        def released(self: Interface) -> None:
            release(self)
            alive.pop(id(self), None)

        with mock.patch.object(Interface, "__init__", begun), mock.patch.object(
                Interface, "release", released):
            everything(self)
            gc.collect()
        self.assertEqual(collections.Counter(alive.values()), collections.Counter())
        self.assertTrue(_library.load().unused())
        self.assertEqual(set(made), {
            "IClassFactory", "IZorTunedex", "IChannelInfo", "IChannelInfoMgr", "ISatelliteInfo",
            "ISatelliteInfoMgr", "ITransponderInfo", "ITransponderInfoMgr", "ILNBInfo",
            "ILNBInfoMgr", "IDishSatInfo", "IDishSatInfoMgr"})

    def test_the_last_release_ends_an_object(self) -> None:
        """What the library counts is what is held here."""
        library = _library.load()
        database = library.create()
        self.assertFalse(library.unused())
        add_reference, give_back = (database._function(slot, "p") for slot in (1, 2))
        self.assertEqual(add_reference(database.address), 2)
        self.assertEqual(give_back(database.address), 1)
        database.release()
        self.assertTrue(library.unused())
        database.release()  # nothing is released twice
        with self.assertRaisesRegex(RuntimeError, "was released"):
            database.call("Close")

    def test_a_session_is_over_at_the_end_of_its_with(self) -> None:
        with Session(_library.load(), self.home, 49, zt.Signal.DVBSatellite) as session:
            channels = session.channel_list()
            self.assertEqual(channels.number("GetChannelCount", 2**32 - 1), 58)
        self.assertEqual((channels.address, session.database.address), (None, None))
        self.assertTrue(_library.load().unused())

    def test_what_is_forgotten_is_given_back(self) -> None:
        library = _library.load()
        database = library.create()
        self.assertFalse(library.unused())
        del database
        gc.collect()
        self.assertTrue(library.unused())

    def test_all_texts_and_blocks_are_freed(self) -> None:
        library = _library.load()
        counts: Counter[str] = collections.Counter()

        def counted(name: str, function: Any) -> Any:
            def call(*arguments: Any) -> Any:
                result = function(*arguments)
                if arguments[0] is not None:
                    counts[name] += 1
                return result
            return call

        with mock.patch.object(library, "_alloc", counted("made", library._alloc)), \
                mock.patch.object(library, "take_text", counted("taken", library.take_text)), \
                mock.patch.object(library, "free_text", counted("freed", library.free_text)), \
                mock.patch.object(library, "free_memory", counted("blocks", library.free_memory)):
            everything(self)
        self.assertEqual(counts["made"] + counts["taken"], counts["freed"])
        self.assertGreater(counts["blocks"], 58)

    def test_a_database_that_cannot_be_opened_is_released(self) -> None:
        with self.assertRaisesRegex(zt.Error, "missing: the directory cannot be opened") as caught:
            with Session(_library.load(), self.home / "missing", 49, zt.Signal.DVBSatellite):
                self.fail("opened")
        self.assertEqual(caught.exception.result & 0xFFFFFFFF, 0x80070057)
        self.assertTrue(_library.load().unused())


if __name__ == "__main__":
    unittest.main()
