"""Values of a channel: what they take, what they refuse, and what the file gives back."""
import base64
import unittest
from typing import Any, Iterator

import zortunedex as zt
from support import HomeTest, Unchanged, sample_sets
from zortunedex._streams import Streams
from zortunedex._generated import ENTRY_FIELDS, LAYOUTS
from zortunedex._layout import Field
from zortunedex._texts import text_limits
from zortunedex._words import WORDS

SETS = [*sample_sets(), (49, "AnalogAntenna")]


def extremes(field: Field) -> Iterator[Any]:
    """The least and the greatest value that comes back as it is, and one in between."""
    if field.form in WORDS:
        yield from WORDS[field.form].values()
    elif field.form in ("Text", "Base64"):
        limit = text_limits(field.width)[1]
        yield from ("<&\">' é", "é" * (limit // 2), "x" * limit)
    elif field.form == "Language":
        yield from (0, 0x123, 0xFFF)
    elif field.source in ("Favorite", "Lock"):
        yield from (0, 1)
    elif field.source in ("Frequency", "PhysicalChannel"):
        yield from (0, 2**31, 2**32 - 1)
    elif field.width in (0, 4):
        yield from (-2**31, -1, 2**31 - 1)
    else:
        yield from (0, 1, 256**field.width - 1)


def settable(signal: str) -> Iterator[Field]:
    layout = LAYOUTS[zt.Signal[signal]]
    counts = {table.count_offset for table in layout.lists}
    if layout.components:
        counts.add(layout.components.count_offset)
    for field in layout.fields():
        is_count = field.width == 4 and field.offset in counts
        if field.use == "Both" and field.source != "Index" and not is_count:
            yield field


class Values(HomeTest):
    def test_every_field_comes_back_at_its_extremes(self) -> None:
        for country, signal in SETS:
            with self.subTest(signal=signal), self.open(country, signal) as db:
                meant = []
                with db.edit() as e:
                    for field in settable(signal):
                        for value in extremes(field):
                            e.add(display_name="a name", **{field.name: value})
                            meant.append((field.name, value))
                    first = len(e) - len(meant)
                found = list(db.reload())[first:]
                self.assertEqual(meant, [(name, c[name]) for (name, _), c in zip(meant, found)])
                self.assertGreater(len(meant), 10)

    def test_every_stream_field_comes_back_at_its_extremes(self) -> None:
        for country, signal in SETS:
            layout = LAYOUTS[zt.Signal[signal]]
            with self.subTest(signal=signal), self.open(country, signal) as db:
                with db.edit() as e:
                    channel = e.add(display_name="streams")
                    meant = {}
                    for table in layout.lists:
                        if table.use != "Both":
                            continue
                        fields = ENTRY_FIELDS[table.entry_size]
                        meant[table.name] = [
                            {field.name: list(extremes(field))[place % 3] for field in fields}
                            for place in range(table.capacity)]
                    for name, entries in meant.items():
                        channel[name] = entries
                for name, entries in meant.items():
                    self.assertEqual([dict(entry) for entry in db.channels[channel.index][name]],
                                     entries)

    def test_components_are_a_sequence(self) -> None:
        with self.open(82, "TDMBMobile") as db:
            with db.edit() as e:
                components = e[1].streams("Components")
                components.clear()
                for place in range(8):
                    components.append(name=f"part {place}", type=place)
                with self.assertRaisesRegex(zt.InvalidValue, "room for 8 entries, not 9"):
                    components.append(name="more")
                with self.assertRaisesRegex(zt.InvalidValue, "more than 7 bytes"):
                    components[0]["name"] = "too long"
                del components[-1]
            self.assertEqual([dict(c) for c in db.channels[1]["Components"]],
                             [{"name": f"part {place}", "type": place} for place in range(7)])
            self.assertEqual(db.channels[1]["numOfComponents"], 7)

    def test_streams_are_a_sequence(self) -> None:
        with self.open() as db, db.edit() as e:
            streams = e[5].streams("AudioStream")
            self.assertIsInstance(streams, Streams)
            count = len(streams)
            added = streams.append(pid=8191, type=3)
            self.assertEqual(dict(added), {"type": 3, "pid": 8191, "lang": 0})
            self.assertEqual((len(streams), e[5]["numOfAudioStreams"]), (count + 1, count + 1))
            added["lang"] = 0x456
            self.assertEqual(streams[-1]["lang"], 0x456)
            self.assertEqual(e[5]["AudioStream"], list(streams))
            del streams[0]
            self.assertEqual((len(streams), streams[-1]["pid"]), (count, 8191))
            with self.assertRaises(IndexError):
                streams[count]
            with self.assertRaisesRegex(zt.UnknownField, "AudioStream: has no 'PID'"):
                streams[0]["PID"]

    def test_a_stream_that_is_refused_changes_nothing(self) -> None:
        with self.open() as db, db.edit() as e:
            before = e[5].copy()
            for streams in ([{"pid": 65536}], [{"pid": 1}, {"lang": 4096}], [{"name": 1}],
                            [{}] * 17):
                with self.assertRaises(zt.Error):
                    e[5]["AudioStream"] = streams
            self.assertEqual(e[5], before)

    def test_a_new_channel_has_nothing_set(self) -> None:
        with self.open() as db, db.edit() as e:
            channel = e.new()
            self.assertEqual((channel.index, channel["modulation"], channel["innerFECRate"]),
                             (0, "NotSet", "NotSet"))
            self.assertEqual({channel[name] for name in ("serviceID", "freq", "symbolRate")}, {0})
            self.assertEqual(len(e), 58)

    def test_service_type_follows_the_block(self) -> None:
        with self.open() as db, db.edit() as e:
            for number, service in ((1, zt.Service.DigitalTV), (2, zt.Service.DigitalRadio),
                                    (12, zt.Service.DataBroadcast), (99, zt.Service.Others)):
                e[1]["serviceType"] = number
                self.assertEqual(e[1].service_type, service)

    def test_a_favourite_keeps_its_mark(self) -> None:
        with self.open() as db, db.edit() as e:
            e[1].favorite_mark = 7
            e[1].favorite = True
            self.assertEqual(e[1].favorite_mark, 7)
            e[1].favorite = False
            self.assertEqual((e[1].favorite_mark, e[1]["favor"]), (0, 0))
            e[1].lock = 1
            self.assertIs(e[1].lock, True)

    def test_an_attribute_that_is_spelt_wrong_is_refused(self) -> None:
        with self.open() as db, db.edit() as e:
            for channel in (db.channels[1], e[1], e.new()):
                with self.assertRaisesRegex(AttributeError, "favourite"):
                    channel.favourite = True  # type: ignore[attr-defined]


class Refused(HomeTest):
    def refused(self, kind: type, message: str, name: str, value: Any, country: int = 49,
                signal: str = "DVBSatellite") -> None:
        with Unchanged(self), self.open(country, signal) as db, db.edit() as e:
            before = e[1].copy()
            with self.assertRaisesRegex(kind, message):
                if isinstance(getattr(zt.Channel, name, None), property):
                    setattr(e[1], name, value)
                else:
                    e[1][name] = value
            self.assertEqual(e[1], before)

    def test_texts_are_refused_where_they_enter(self) -> None:
        for value, message in (("\ud800", "half of a surrogate pair"), ("a\udfffb", "surrogate"),
                               ("a\0b", r"U\+0000"), ("\x01", r"U\+0001"), ("\uffff", r"U\+FFFF"),
                               ("x" * 260, "more than 259 bytes"), ("é" * 130, "more than 259"),
                               (b"bytes", "not bytes"), (None, "not NoneType")):
            self.refused(zt.InvalidValue, f"channel 1, nameDisplay: .*{message}", "display_name",
                         value)
        self.refused(zt.InvalidValue, "channel 1, networkName: .*255 bytes", "networkName",
                     "x" * 256)
        self.refused(zt.InvalidValue, "79 bytes", "name", "x" * 80, 81, "ISDBTerrestrialOneSeg")
        self.refused(zt.InvalidValue, "63 bytes", "VideoIP", "1" * 64, 358, "DVBHandheld")

    def test_numbers_are_refused_where_they_enter(self) -> None:
        for name, value, message in (
                ("serviceID", 2**32, "from -2147483648 to 4294967295"),
                ("serviceID", "1", "not '1'"), ("serviceID", 1.5, "not 1.5"),
                ("frequency", -1, "from 0 to 4294967295"), ("freq", 2**32, "freq.*4294967295"),
                ("offset", 2**31, "2147483647"), ("modulation", "QAM", "QPSK, .*not 'QAM'"),
                ("modulation", 20, "not 20"), ("polarisation", "H", "LinearH, ")):
            self.refused(zt.InvalidValue, message, name, value)
        self.refused(zt.InvalidValue, "from 0 to 65535", "CNI0", 65536, 49, "AnalogCable")

    def test_marks_are_refused_where_they_enter(self) -> None:
        for name in ("favorite", "lock"):
            for value in ("no", "", None, 0.0):
                self.refused(zt.InvalidValue, f"channel 1, {name}: takes True or False, not",
                             name, value)

    def test_what_the_file_does_not_keep_is_refused(self) -> None:
        self.refused(zt.InvalidValue, "length of its list", "numOfVideoStreams", 3)
        for name in ("Component_index", "VideoStream", "videoStream"):
            self.refused(zt.InvalidValue, "does not keep it for TDMBMobile", name,
                         [] if name == "VideoStream" else 1, 82, "TDMBMobile")
        self.refused(zt.UnknownField, "does not keep it for ATSCAntenna", "frequency", 1, 1,
                     "ATSCAntenna")

    def test_an_index_is_not_set(self) -> None:
        with Unchanged(self), self.open() as db, db.edit() as e:
            with self.assertRaisesRegex(zt.InvalidValue, r"changed by move\(\)"):
                e[1]["index"] = 3
            with self.assertRaises(AttributeError):
                e[1].index = 3  # type: ignore[misc]
            with self.assertRaisesRegex(zt.InvalidValue, "index: cannot be given"):
                e.add(index=3)

    def test_unknown_fields_are_named_with_those_that_there_are(self) -> None:
        with self.open() as db:
            with self.assertRaisesRegex(zt.UnknownField, "no 'serviceId'; .*serviceID, PcrPID"):
                db.channels[1]["serviceId"]
            with self.assertRaisesRegex(zt.UnknownField, "serviceID: is no list"):
                db.channels[1].streams("serviceID")
            with self.assertRaises(LookupError):
                db.channels[1]["Components"]

    def test_outside_the_code_page_is_refused(self) -> None:
        zt.set_code_page(1252)
        self.addCleanup(zt.set_code_page, 65001)
        self.refused(zt.InvalidValue, "outside the code page", "name", "日本")
        self.refused(zt.InvalidValue, "outside the code page", "display_name", "日本")
        with self.open() as db:
            with db.edit() as e:
                added = e.add(name="é" * 255, display_name="é" * 259)
            self.assertEqual(db.channels[added.index].name, "é" * 255)

    def test_bytes_outside_the_code_page_are_not_written_again(self) -> None:
        zt.set_code_page(932)
        self.addCleanup(zt.set_code_page, 65001)
        with Unchanged(self), self.open(81, "ISDBTerrestrialOneSeg") as db:
            with self.assertRaisesRegex(zt.InvalidValue, "no text of the code page"):
                with db.edit() as e:
                    e[1].favorite = not e[1].favorite

    def test_texts_of_a_code_page_are_written_in_it(self) -> None:
        zt.set_code_page(932)
        self.addCleanup(zt.set_code_page, 65001)
        self.file.unlink()
        with self.open(81, "ISDBTerrestrialOneSeg") as db:
            with db.edit() as e:
                e.add(name="日本", display_name="日本")
            self.assertEqual([c.name for c in db.reload()], ["日本"])
        self.assertIn(base64.b64encode("日本".encode("cp932")), self.file.read_bytes())

    def test_there_is_no_such_code_page(self) -> None:
        with self.assertRaisesRegex(zt.Error, "no code page 1") as caught:
            zt.set_code_page(1)
        self.assertEqual(caught.exception.result & 0xFFFFFFFF, 0x80070057)


if __name__ == "__main__":
    unittest.main()
