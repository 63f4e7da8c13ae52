"""What is read, held against the command-line host."""
import unittest
from typing import Any, Dict

import zortunedex as zt
from support import SAMPLES, HomeTest, sample_sets, tool
from zortunedex._streams import Streams
from zortunedex._generated import LAYOUTS


def plain(value: Any) -> Any:
    return [dict(entry) for entry in value] if isinstance(value, Streams) else value


def block_of(channel: zt.Channel) -> Dict[str, Any]:
    """The values that stand in the block alone, arranged as the tool prints them."""
    layout = LAYOUTS[channel.signal]
    satellite = {field.name for field in layout.satellite}
    record = {field.name for field in layout.channel if field.source != "Block"}
    block = {name: plain(channel[name]) for name in channel.fields()
             if name not in satellite and name not in record}
    if satellite:
        block["SatelliteParams"] = {field.name: channel[field.name] for field in layout.satellite}
    return block


def as_json(channel: zt.Channel) -> Dict[str, Any]:
    service = channel.service_type
    return {"index": channel.index, "number": channel.number, "name": channel.name,
            "displayName": channel.display_name, "frequency": channel.frequency,
            "offset": channel.offset, "tsid": channel.tsid,
            "serviceType": None if service is None else service.name,
            "favorite": channel.favorite_mark, "lock": channel.lock,
            "scrambled": channel.scrambled, "mhp": channel.mhp, "block": block_of(channel)}


class Reading(HomeTest):
    def test_a_walk_is_what_the_tool_lists(self) -> None:
        sets = sample_sets()
        self.assertEqual(len(sets), 9)
        for country, signal in sets:
            with self.subTest(signal=signal), zt.open(SAMPLES, country, signal) as db:
                walked = [as_json(channel) for channel in db.channels]
                self.assertEqual(walked, tool(SAMPLES, "channels", "list", country=country,
                                              signal=signal))
                self.assertGreater(len(walked), 4)

    def test_a_list_is_addressed_by_index(self) -> None:
        with self.open() as db:
            self.assertEqual(db.channels[5].display_name, "ProSieben")
            self.assertIn(58, db.channels)
            self.assertNotIn(0, db.channels)
            with self.assertRaisesRegex(zt.NotFound, "no channel with index 59"):
                db.channels[59]

    def test_gaps_and_doubles_are_read_as_they_are(self) -> None:
        channels = "".join(f'<Channel name="{name}" nameDisplay="{name}" index="{index}"/>'
                           for name, index in (("a", 7), ("b", 3), ("c", 3), ("d", 0)))
        self.write_table('<Country countrycode="49"><ChannelSet inputSignalType="5">'
                         f'{channels}</ChannelSet></Country>')
        with self.open(signal="FMRadio") as db:
            listed = tool(self.home, "channels", "list", signal="FMRadio")
            self.assertEqual([(c.index, c.name) for c in db.channels],
                             [(c["index"], c["name"]) for c in listed])
            self.assertEqual([c.index for c in db.channels], [0, 3, 3, 7])

    def test_one_channel_and_none_are_lists(self) -> None:
        for count in (0, 1):
            self.write_table('<Country countrycode="49"><ChannelSet inputSignalType="5">'
                             + '<Channel name="a" nameDisplay="A" index="9"/>' * count
                             + '</ChannelSet></Country>')
            with self.open(signal="FMRadio") as db:
                self.assertEqual([(c.index, c.display_name) for c in db.channels],
                                 [(9, "A")] * count)

    def test_a_directory_without_the_file_has_no_channels(self) -> None:
        self.file.unlink()
        with self.open() as db:
            self.assertEqual(len(db.channels), 0)

    def test_values_outlive_the_database(self) -> None:
        with self.open() as db:
            channel = db.channels[5]
        self.assertEqual(channel["networkName"], channel.copy()["networkName"])
        self.assertEqual(channel.service_type, zt.Service.DigitalTV)
        with self.assertRaisesRegex(zt.Error, "was closed"):
            db.channels

    def test_reload_sees_what_others_wrote(self) -> None:
        with self.open() as db, self.open() as other:
            with other.edit() as e:
                e[5].favorite = not e[5].favorite
            self.assertNotEqual(db.channels[5], other.channels[5])
            self.assertEqual(db.reload()[5], other.channels[5])

    def test_channels_that_were_read_cannot_be_changed(self) -> None:
        with self.open() as db:
            for change in (lambda c: setattr(c, "favorite", not c.favorite),
                           lambda c: c.__setitem__("serviceID", 1),
                           lambda c: c.streams("AudioStream").clear(),
                           lambda c: c.streams("AudioStream")[0].__setitem__("pid", 1)):
                with self.assertRaisesRegex(zt.Error, r"db\.edit\(\)"):
                    change(db.channels[5])

    def test_names_of_signal_types(self) -> None:
        for signal in ("DVBSatellite", "dvbsatellite", "InputSignalDVBSatellite", 64,
                       zt.Signal.DVBSatellite):
            with zt.open(SAMPLES, 49, signal) as db:
                self.assertEqual((len(db.channels), str(db.signal)), (58, "DVBSatellite"))


class Catalogue(HomeTest):
    def test_satellites_and_transponders_are_what_the_tool_lists(self) -> None:
        with zt.open(SAMPLES, 49, "FMRadio") as db:
            satellites = db.satellites
        listed = tool(SAMPLES, "satellites", "list")
        self.assertEqual(
            [(s.id, s.name, s.longitude, s.azimuth, s.region.name, int(s.division),
              len(s.c_band), len(s.ku_band)) for s in satellites],
            [(s["id"], s["name"], s["longitude"], None if s["azimuth"] == -1 else s["azimuth"],
              s["region"], s["division"], s["cBand"], s["kuBand"]) for s in listed])
        self.assertEqual(len(satellites), 16)
        for satellite in satellites:
            rows = tool(SAMPLES, "transponders", "list", satellite.id)
            for band, found in (("C-Band", satellite.c_band), ("Ku-Band", satellite.ku_band)):
                self.assertEqual(
                    [(t.name, t.frequency, t.polarisation, t.symbol_rate, t.fec_rate,
                      t.modulation, t.spectral_inversion) for t in found],
                    [(t["name"], t["frequency"], t["polarisation"], t["symbolRate"],
                      t["innerFECRate"], t["modulation"], t["spectralInversion"])
                     for t in rows if t["band"] == band])

    def test_lnb_types_are_what_the_tool_lists(self) -> None:
        with zt.open(SAMPLES, 49, "DVBSatellite") as db:
            self.assertEqual([(lnb.type, lnb.low, lnb.high, lnb.switch) for lnb in db.lnbs],
                             [tuple(row.values()) for row in tool(SAMPLES, "lnbs", "list")])
            self.assertEqual(db.lnb("Universal").switch, 11700000)
            with self.assertRaisesRegex(zt.NotFound, "no LNB type 'universal'"):
                db.lnb("universal")

    def test_a_satellite_is_found_by_id_or_name(self) -> None:
        with zt.open(SAMPLES, 49, "DVBSatellite") as db:
            self.assertEqual(db.satellite("Astra-1L-19.2E"), db.satellite("Astra 1L 19.2E"))
            with self.assertRaisesRegex(zt.NotFound, "no satellite 'Astra'"):
                db.satellite("Astra")

    def test_a_catalogue_that_is_missing_or_unreadable_is_told(self) -> None:
        path = self.home / "SatelliteInfo.xml"
        for text, message in ((b"<a>&</a>", "line 1, column 5"), (b"", "it is empty"),
                              (b"<!DOCTYPE a><a/>", "the library refuses it")):
            path.write_bytes(text)
            with self.open() as db, self.assertRaisesRegex(
                    zt.Unreadable, f"SatelliteInfo.xml: .*{message}"):
                db.satellites
        path.unlink()
        with self.open() as db, self.assertRaisesRegex(zt.Error, "there is no such file"):
            db.lnbs


if __name__ == "__main__":
    unittest.main()
