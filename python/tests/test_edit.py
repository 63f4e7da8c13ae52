"""Changing a list: saved, read back and compared, or nothing."""
import errno
import os
import stat
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path
from typing import Any, List
from unittest import mock

import zortunedex as zt
from support import TOOL, HomeTest, Unchanged, tool
from zortunedex import _edit, _files

SCRIPT = """
import sys, zortunedex as zt
for number in range(int(sys.argv[2])):
    with zt.open(sys.argv[1], 49, "DVBSatellite") as db, db.edit() as e:
        e.add(display_name=sys.argv[3] + str(number))
"""


class Editing(HomeTest):
    def names(self, db: zt.Database) -> List[str]:
        self.assertEqual(list(db.channels), list(db.reload()))
        listed = tool(self.home, "channels", "list")
        self.assertEqual([(c["index"], c["displayName"]) for c in listed],
                         [(c.index, c.display_name) for c in db.channels])
        return [c.display_name for c in db.channels]

    def test_a_favourite_is_saved(self) -> None:
        with self.open() as db:
            before = db.channels[5].favorite
            with db.edit() as e:
                e[5].favorite = not before
            self.assertEqual(db.channels[5].favorite, not before)
            shown, = tool(self.home, "channels", "show", "5")
            self.assertEqual(shown["favorite"], int(not before))

    def test_adding_moving_and_removing_number_the_list(self) -> None:
        with self.open() as db:
            names = self.names(db)
            with db.edit() as e:
                self.assertEqual(e.add(e[1], display_name="copy").index, 59)
                e.add(display_name="new", serviceID=7)
            self.assertEqual(self.names(db), [*names, "copy", "new"])
            self.assertEqual(db.channels[60]["serviceID"], 7)
            with db.edit() as e:
                e.remove(1, 3, 60)
            expected = [*names[1:2], *names[3:], "copy"]
            self.assertEqual(self.names(db), expected)
            self.assertEqual([c.index for c in db.channels], list(range(1, 58)))
            with db.edit() as e:
                e.move(7, 1)
                e.move(2, 57)
            expected.insert(0, expected.pop(6))
            expected.append(expected.pop(1))
            self.assertEqual(self.names(db), expected)
            with db.edit() as e:
                e.sort(key=lambda c: c.display_name)
            self.assertEqual(self.names(db), sorted(expected))

    def test_moving_is_what_the_tool_does(self) -> None:
        copy = self.folder / "copy"
        copy.mkdir()
        (copy / "ChanInfo.xml").write_bytes(self.file.read_bytes())
        line = [TOOL, "--dir", str(copy), "--country", "49", "--signal", "DVBSatellite"]
        for index, to in ((7, 1), (1, 7), (3, 4), (58, 57), (2, 58)):
            subprocess.run([*line, "channels", "move", str(index), str(to)], check=True,
                           capture_output=True)
            with self.open() as db:
                with db.edit() as e:
                    e.move(index, to)
                self.assertEqual([c["displayName"] for c in tool(copy, "channels", "list")],
                                 self.names(db))

    def test_all_channels_can_go(self) -> None:
        with self.open() as db:
            with db.edit() as e:
                e.remove(*(c.index for c in e))
            self.assertEqual(self.names(db), [])
            with db.edit() as e:
                e.add(display_name="first")
            self.assertEqual(self.names(db), ["first"])

    def test_a_directory_without_the_file_gets_one(self) -> None:
        self.file.unlink()
        with self.open(358, "DVBHandheld") as db:
            with db.edit() as e:
                e.add(display_name="one", VideoIP="::1")
            self.assertEqual([c["VideoIP"] for c in db.reload()], ["::1"])

    def test_a_display_name_that_is_empty_is_filled(self) -> None:
        with self.open(1, "ATSCAntenna") as db:
            with db.edit() as e:
                added = e.add(name="KABC", majorChannel=7, minorChannel=2)
            self.assertEqual(db.channels[added.index].display_name, "7.2 KABC")

    def test_other_lists_and_unknown_attributes_stay(self) -> None:
        text = self.file.read_text(encoding="utf-8")
        self.file.write_text(text.replace("<Channel ", '<Channel mine="yes" '), encoding="utf-8")
        count = text.count("<Channel ")
        with self.open() as db:
            with db.edit() as e:
                e[5].favorite = not e[5].favorite
                e.add(display_name="another")
        text = self.file.read_text(encoding="utf-8")
        self.assertEqual((text.count('mine="yes"'), text.count("<Channel ")), (count, count + 1))
        with self.open() as db, db.edit() as e:
            e.move(1, 2)
        text = self.file.read_text(encoding="utf-8")
        self.assertEqual(text.count('mine="yes"'), count - 58)  # new indexes, new elements

    def test_nothing_changed_is_nothing_written(self) -> None:
        with Unchanged(self), self.open() as db:
            with mock.patch.object(_files, "replace") as replaced, db.edit() as e:
                e[5].favorite = e[5].favorite
            replaced.assert_not_called()

    def test_an_exception_saves_nothing(self) -> None:
        with Unchanged(self), self.open() as db:
            with self.assertRaises(KeyError), db.edit() as e:
                e.remove(1)
                raise KeyError("mine")
            self.assertEqual(len(db.channels), 58)
            with self.assertRaisesRegex(zt.Error, "inside of its 'with'"):
                e.add(display_name="late")

    def test_an_edit_begins_once(self) -> None:
        with self.open() as db:
            edit = db.edit()
            with self.assertRaisesRegex(zt.Error, "inside of its 'with'"):
                edit.remove(1)
            with edit, self.assertRaisesRegex(zt.Error, "is being changed already"):
                edit.__enter__()

    def test_what_is_not_there_changes_nothing(self) -> None:
        with Unchanged(self), self.open() as db, db.edit() as e:
            for work in (lambda: e.remove(1, 59), lambda: e.move(59, 1), lambda: e.move(1, 0),
                         lambda: e[59]):
                with self.assertRaisesRegex(zt.NotFound, "no channel with index"):
                    work()
            self.assertEqual(len(e), 58)

    def test_a_channel_of_another_type_is_not_added(self) -> None:
        with self.open(1, "ATSCCable") as other, self.open() as db, db.edit() as e:
            with self.assertRaisesRegex(zt.InvalidValue, "of ATSCCable, the list of DVBSatellite"):
                e.add(other.channels[1])

    def test_channels_with_one_index_are_not_saved_over_each_other(self) -> None:
        self.write_table('<Country countrycode="49"><ChannelSet inputSignalType="5">'
                         '<Channel name="a" nameDisplay="A" index="3"/>'
                         '<Channel name="b" nameDisplay="B" index="3"/>'
                         '</ChannelSet></Country>')
        with self.open(signal="FMRadio") as db:
            with Unchanged(self), self.assertRaisesRegex(zt.Error, "sort the list first"):
                with db.edit() as e:
                    list(e)[0].favorite = True
            with Unchanged(self), self.assertRaisesRegex(zt.Error, "two channels have index 3"):
                with db.edit() as e:
                    e.remove(3)
            with db.edit() as e:
                e.sort(key=lambda c: c.name, reverse=True)
            self.assertEqual([(c.index, c.name) for c in db.reload()], [(1, "b"), (2, "a")])


class OddFiles(HomeTest):
    """What a file holds beside what the library writes."""

    def sample(self, old: str, new: str, country: int, signal: str) -> zt.Database:
        text = self.file.read_text(encoding="utf-8")
        self.assertIn(old, text)
        self.file.write_text(text.replace(old, new), encoding="utf-8")
        return self.open(country, signal)

    def test_words_that_are_not_known_become_not_set(self) -> None:
        with self.sample('modulation="QPSK"', 'modulation="8PSK"', 49, "DVBSatellite") as db:
            self.assertEqual({c["modulation"] for c in db.channels}, {"NotSet"})
            with db.edit() as e:
                e[5].favorite = not e[5].favorite
            self.assertEqual({c["modulation"] for c in db.reload()}, {"NotSet"})

    def test_streams_that_are_read_and_not_written(self) -> None:
        with self.sample("Component_index=", 'audioStream="1" Component_index=', 82,
                         "TDMBMobile") as db:
            self.assertEqual(db.channels[1]["audioStream"], 1)
            with db.edit() as e:
                e.move(1, 2)
            self.assertEqual([c["audioStream"] for c in db.reload()], [0] * len(db.channels))

    def test_no_index_is_left(self) -> None:
        with self.sample('index="58"', 'index="4294967293"', 49, "DVBSatellite") as db:
            with db.edit() as e:
                with self.assertRaisesRegex(zt.Error, "no index is left; sort the list first"):
                    e.add(display_name="beyond")
                e.sort(key=lambda c: c.index)
                e.add(display_name="beyond")
            self.assertEqual([c.index for c in db.reload()], list(range(1, 60)))

    def test_a_count_above_the_room(self) -> None:
        with self.sample('numOfAudioStreams="1"', 'numOfAudioStreams="99"', 49,
                         "DVBSatellite") as db:
            with db.edit() as e:
                e[5].favorite = not e[5].favorite
                self.assertEqual(max(len(c.streams("AudioStream")) for c in e), 16)


class Failing(HomeTest):
    """Every save that fails leaves the file and nothing else."""

    def fails(self, message: str, kind: type = zt.Error) -> zt.Error:
        with Unchanged(self), self.open(wait=0.05) as db:
            before = list(db.channels)
            with self.assertRaisesRegex(kind, message) as caught, db.edit() as e:
                e[5].favorite = not e[5].favorite
            self.assertEqual(before, list(db.channels))
        return caught.exception

    def test_each_step_of_replacing(self) -> None:
        full = OSError(errno.ENOSPC, os.strerror(errno.ENOSPC))
        for step in ("open", "write", "fsync", "replace", "fchmod"):
            with mock.patch.object(_files.os, step, side_effect=full):
                with self.subTest(step=step), Unchanged(self):
                    with self.assertRaises(OSError):
                        _files.replace(self.file, b"new")

        def failing(path: Path, data: bytes) -> None:
            raise full

        with mock.patch.object(_files, "replace", failing):
            error = self.fails("ChanInfo.xml: could not be written: No space left on device; "
                               "the file is unchanged")
        self.assertEqual(error.where, str(self.file))

    def test_a_directory_that_cannot_be_written(self) -> None:
        with mock.patch.object(_files.os, "open", side_effect=PermissionError(13, "denied")):
            self.fails("cannot be locked: denied; nothing was changed")

    def test_a_copy_that_cannot_be_made(self) -> None:
        full = OSError(errno.ENOSPC, "No space left on device")
        with mock.patch.object(Path, "write_bytes", side_effect=full):
            self.fails("cannot be copied: No space left on device; nothing was changed")
        with self.open(wait=0) as db, db.edit() as e:  # the lock was given back
            e[5].favorite = not e[5].favorite

    def test_what_would_not_be_held_is_not_written(self) -> None:
        with mock.patch.object(_edit, "same_channels", return_value="channel 5"):
            self.fails(r"would not hold what was meant \(channel 5\); the file is unchanged")

    def test_a_library_that_saves_nothing(self) -> None:
        session = _edit.Session
        with mock.patch.object(session, "write_channel", lambda *_: None):
            self.fails("was not written|would not hold what was meant")

    def test_another_program_that_writes_meanwhile(self) -> None:
        with self.open() as db:
            with self.assertRaisesRegex(zt.Error, "another program has changed it meanwhile"):
                with db.edit() as e:
                    e[5].favorite = not e[5].favorite
                    self.file.write_bytes(self.file.read_bytes() + b"<!-- mine -->")
        self.assertTrue(self.file.read_bytes().endswith(b"<!-- mine -->"))

    def test_another_program_that_holds_the_lock(self) -> None:
        lock = _files.DirectoryLock(self.home, 0)
        try:
            self.fails(r"another program is changing it \(waited 0.05 s\)")
        finally:
            lock.release()

    def test_an_interrupted_change_of_the_tool(self) -> None:
        (self.home / "tunedex-history").mkdir()
        (self.home / "tunedex-history" / "PENDING").write_text("1")
        self.fails("a change of tunedex was interrupted")

    def test_the_mode_and_a_link_stay(self) -> None:
        elsewhere = self.folder / "elsewhere.xml"
        self.file.rename(elsewhere)
        elsewhere.chmod(0o640)
        self.file.symlink_to(elsewhere)
        with self.open() as db, db.edit() as e:
            e[5].favorite = not e[5].favorite
        self.assertTrue(self.file.is_symlink())
        self.assertEqual(stat.S_IMODE(elsewhere.stat().st_mode), 0o640)

    def test_nothing_stays_behind(self) -> None:
        with tempfile.TemporaryDirectory() as folder, mock.patch.object(
                _files.tempfile, "tempdir", folder):
            with self.open() as db:
                with db.edit() as e:
                    e[5].favorite = not e[5].favorite
                self.fails_in(db)
            self.assertEqual(os.listdir(folder), [])
        self.assertEqual(sorted(path.name for path in self.home.iterdir()),
                         ["ChanInfo.xml", "PreSetChannelInfo.xml", "SatelliteInfo.xml",
                          "UserSettings.xml", "tunedex-history"])

    def fails_in(self, db: zt.Database) -> None:
        with self.assertRaises(ZeroDivisionError), db.edit():
            raise ZeroDivisionError


class Together(HomeTest):
    def test_the_tool_waits_for_the_lock(self) -> None:
        line = [TOOL, "--dir", str(self.home), "--country", "49", "--signal", "DVBSatellite"]
        with self.open() as db, db.edit() as e:
            ended = subprocess.run([*line, "--wait", "0", "channels", "favor", "5"],
                                   capture_output=True, check=False)
            self.assertEqual(ended.returncode, 1)
            self.assertIn(b"another command is changing", ended.stderr)
            e[1].favorite = not e[1].favorite

    def test_the_tool_can_take_a_change_back(self) -> None:
        before = self.file.read_bytes()
        line = [TOOL, "--dir", str(self.home), "--country", "49", "--signal", "DVBSatellite"]
        subprocess.run([*line, "channels", "rename", "5", "Mine"], check=True, capture_output=True)
        with self.open() as db, db.edit() as e:
            e[5].display_name = "Again"
        subprocess.run([*line, "undo"], check=True, capture_output=True)
        with self.open() as db:
            self.assertEqual(db.channels[5].display_name, "Mine")
        self.assertNotEqual(self.file.read_bytes(), before)

    def test_programs_at_once_lose_no_change(self) -> None:
        programs = [subprocess.Popen([sys.executable, "-c", SCRIPT, str(self.home), "10", name])
                    for name in ("left", "right")]
        self.assertEqual([program.wait() for program in programs], [0, 0])
        with self.open() as db:
            added = {c.display_name for c in db.channels if c.index > 58}
        self.assertEqual(added, {name + str(number) for name in ("left", "right")
                                 for number in range(10)})

    def test_values_are_used_from_any_thread(self) -> None:
        with self.open() as db:
            channels = [channel.copy() for channel in db.channels]
        failures: List[Any] = []

        def work(number: int) -> None:
            for channel in channels[number::4]:
                for name in ("日本", "é" * number, "Ω"):
                    channel["networkName"] = name
                    if channel["networkName"] != name or channel.service_type is None:
                        failures.append(channel)

        threads = [threading.Thread(target=work, args=(number,)) for number in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(failures, [])

    def test_threads_at_once_lose_no_change(self) -> None:
        failures: List[Any] = []

        def work(name: str) -> None:
            try:
                for number in range(5):
                    with self.open() as db, db.edit() as e:
                        e.add(display_name=f"{name}{number}")
            except zt.Error as error:
                failures.append(error)

        threads = [threading.Thread(target=work, args=(name,)) for name in "abc"]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(failures, [])
        with self.open() as db:
            self.assertEqual(len(db.channels), 58 + 15)


if __name__ == "__main__":
    unittest.main()
