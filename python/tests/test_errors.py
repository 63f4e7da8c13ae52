"""What is missing or broken is said by name, and never taken for something empty."""
import os
import subprocess
import sys
import unittest
from pathlib import Path
from unittest import mock

import zortunedex as zt
from support import SAMPLES, HomeTest, Unchanged
from zortunedex import _library


class Opening(HomeTest):
    def test_a_directory_that_is_missing_or_none(self) -> None:
        for directory, message in ((self.home / "missing", "missing: there is no such directory"),
                                   (self.file, "ChanInfo.xml: is no directory"),
                                   ("", "directory: is empty")):
            with self.assertRaisesRegex(zt.Error, message):
                zt.open(directory, 49, "DVBSatellite")
        for directory, message in ((b"bytes", "not bytes"), ("\ud800", "half of a surrogate pair"),
                                   (7, "not int")):
            with self.assertRaisesRegex(zt.Error, f"directory: .*{message}"):
                zt.open(directory, 49, "DVBSatellite")  # type: ignore[arg-type]

    def test_a_signal_type_that_is_unknown_or_not_stored(self) -> None:
        for signal, message in (("DVBSatelite", "no signal type 'DVBSatelite'; there are Analog"),
                                (63, "no signal type 63"), ("", "no signal type ''"),
                                ("DVBCable", "cannot hold channels of DVBCable")):
            with self.assertRaisesRegex(zt.InvalidValue, message):
                self.open(signal=signal)
        with self.assertRaises(ValueError):
            self.open(signal="Unknown")

    def test_a_country_that_is_no_number(self) -> None:
        for country in (-1, 2**32, "49", None):
            with self.assertRaisesRegex(zt.InvalidValue, "country: takes a number from 0"):
                self.open(country)  # type: ignore[arg-type]

    def test_a_time_to_wait_that_is_none(self) -> None:
        for wait in (-1, float("nan"), "10", None):
            with self.assertRaisesRegex(zt.InvalidValue, "wait: takes seconds, 0 or more"):
                self.open(wait=wait)
        self.assertEqual(58, len(self.open(wait=0).channels))

    def test_what_errors_are_beside(self) -> None:
        self.assertTrue(issubclass(zt.InvalidValue, ValueError))
        self.assertTrue(issubclass(zt.UnknownField, LookupError))
        self.assertTrue(issubclass(zt.NotFound, LookupError))

    def test_what_an_error_tells(self) -> None:
        with self.assertRaises(zt.Error) as caught:
            zt.open(self.home / "missing", 49, "DVBSatellite")
        error = caught.exception
        self.assertEqual((error.what, error.where),
                         ("there is no such directory", str(self.home / "missing")))
        self.assertEqual(error.result & 0xFFFFFFFF, 0x80004005)


class Unreadable(HomeTest):
    def test_a_channel_file_is_never_taken_for_an_empty_one(self) -> None:
        whole = self.file.read_bytes()
        for text, message in (
                (whole.replace(b"Das Erste", b"A & B", 1),
                 r"line \d+, column \d+: not well-formed"),
                (whole[:5000], r"line \d+"), (b"", "it is empty"), (b"no xml", "line 1, column 1"),
                (b"<!DOCTYPE a><CHANNELTABLE/>", "the library refuses it"),
                (b"<a>" * 300 + b"</a>" * 300, "the library refuses it")):
            self.file.write_bytes(text)
            with self.subTest(text=text[:30]), Unchanged(self):
                with self.assertRaisesRegex(zt.Unreadable,
                                            f"{self.home}/ChanInfo.xml: cannot be read: {message}"):
                    self.open()

    def test_a_file_that_breaks_later_is_not_written_over(self) -> None:
        with self.open() as db:
            self.file.write_bytes(b"<a>")
            with Unchanged(self):
                with self.assertRaisesRegex(zt.Unreadable, f"^{self.home}/ChanInfo.xml: cannot"):
                    with db.edit() as e:
                        e.add(display_name="lost")
                with self.assertRaises(zt.Unreadable):
                    db.reload()

    def test_a_file_that_is_none(self) -> None:
        self.file.unlink()
        self.file.mkdir()
        with self.assertRaisesRegex(zt.Unreadable, "ChanInfo.xml: .*no regular file"):
            self.open()
        self.file.rmdir()
        os.mkfifo(self.file)
        with self.assertRaisesRegex(zt.Unreadable, "ChanInfo.xml: .*no regular file"):
            self.open()

    def test_a_file_without_the_right_to_read_it(self) -> None:
        denied = PermissionError(13, "Permission denied")
        with mock.patch.object(Path, "read_bytes", side_effect=denied):
            with self.assertRaisesRegex(zt.Unreadable, "cannot be read: Permission denied"):
                self.open(1, "AnalogAntenna")  # of which there are no channels

    def test_a_file_without_that_list_is_read(self) -> None:
        with Unchanged(self), self.open(1, "AnalogAntenna") as db:
            self.assertEqual(list(db.channels), [])

    def test_settings_and_presets(self) -> None:
        for name in ("UserSettings.xml", "PreSetChannelInfo.xml"):
            (self.home / name).write_bytes(b"<a")
        with Unchanged(self), self.open(81, "ISDBTerrestrialOneSeg") as db:
            with self.assertRaisesRegex(zt.Unreadable, "UserSettings.xml: cannot be read: line 1"):
                db.dishes
            with self.assertRaisesRegex(zt.Unreadable, "UserSettings.xml: cannot be read: line 1"):
                with db.edit_dishes() as dishes:
                    dishes[0].clear()
            with self.assertRaisesRegex(zt.Unreadable, "PreSetChannelInfo.xml: cannot be read"):
                db.presets
            with self.assertRaisesRegex(zt.Unreadable, f"^{self.home}/PreSet.*: cannot be read"):
                db.add_customer_list("mine")
        (self.home / "PreSetChannelInfo.xml").unlink()
        with self.open(81, "ISDBTerrestrialOneSeg") as db:
            with self.assertRaisesRegex(zt.Error, "PreSetChannelInfo.xml: there is no such file"):
                db.presets


class Library(HomeTest):
    def run_python(self, text: str, **variables: str) -> str:
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("TUNEDEX_LIBRARY", "LD_LIBRARY_PATH")}
        environment.update(variables)
        ended = subprocess.run([sys.executable, "-c", "import zortunedex as zt\n" + text],
                               env=environment, capture_output=True, check=False)
        return (ended.stdout + ended.stderr).decode("utf-8")

    def test_a_library_that_is_named_and_not_there(self) -> None:
        with self.assertRaisesRegex(zt.LibraryNotFound, "missing.so: there is no such library"):
            self.open(library=self.folder / "missing.so")
        text = f"zt.open({str(self.home)!r}, 49, 64)"
        self.assertIn("LibraryNotFound: /missing.so: there is no such library",
                      self.run_python(text, TUNEDEX_LIBRARY="/missing.so"))

    def test_a_library_that_is_none(self) -> None:
        with self.assertRaisesRegex(zt.LibraryNotFound, "ChanInfo.xml: cannot be loaded: "):
            self.open(library=self.file)

    def test_the_order_of_the_places(self) -> None:
        here = os.getcwd()
        with mock.patch.dict(os.environ, {"TUNEDEX_LIBRARY": "variable"}):
            self.assertEqual(_library._place("named"), (f"{here}/named", True))
            self.assertEqual(_library._place(None), (f"{here}/variable", True))
            os.environ["TUNEDEX_LIBRARY"] = ""
            self.assertEqual(_library._place(None), (_library.FILE_NAME, False))
            beside = self.folder / _library.FILE_NAME
            beside.write_bytes(b"")
            with mock.patch.object(_library, "__file__", str(self.folder / "_library.py")):
                self.assertEqual(_library._place(None), (str(beside), False))

    def test_no_library_at_all(self) -> None:
        # A name that no system has.
        text = ("import zortunedex._library as library\nlibrary.FILE_NAME = 'libNoSuch.so.1'\n"
                f"zt.open({str(SAMPLES)!r}, 49, 64)")
        self.assertRegex(self.run_python(text), r"LibraryNotFound: libNoSuch\.so\.1 is not "
                         r"installed .*; install the package zortunedex, or name the library with "
                         "TUNEDEX_LIBRARY")

    def test_the_end_of_the_process_is_quiet(self) -> None:
        library = os.environ.get("TUNEDEX_LIBRARY", "")
        text = ("import builtins\n"
                f"builtins.kept = zt.open({str(SAMPLES)!r}, 49, 64)\nkept = kept.channels\n")
        self.assertEqual(self.run_python(text, TUNEDEX_LIBRARY=library), "")

    def test_a_library_that_is_named_by_an_argument_is_taken(self) -> None:
        named = os.environ.get("TUNEDEX_LIBRARY")
        if not named:
            self.skipTest("the library is the system's")
        text = f"print(len(zt.open({str(SAMPLES)!r}, 49, 64, library={named!r}).channels))"
        self.assertEqual(self.run_python(text), "58\n")


if __name__ == "__main__":
    unittest.main()
