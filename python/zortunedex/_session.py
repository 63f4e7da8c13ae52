"""A directory opened in the library for the time of one operation. Nothing of it outlives that."""
from __future__ import annotations

import ctypes
import tempfile
from contextlib import ExitStack
from pathlib import Path
from types import TracebackType
from typing import List, Optional, Tuple, Type

from ._channel import Channel, Record
from ._com import Interface, Station
from ._errors import Unreadable, require
from ._files import CHANNELS, SETTINGS, read, why_unreadable
from ._generated import Signal
from ._library import Library
from ._texts import Texts

_LAST = 0xFFFFFFFE  # the greatest index that a record tells
_ALL = 0xFFFFFFFF  # every kind of service


class Session:
    """An opened database object; closed and released at the end of a ``with``."""

    def __init__(self, library: Library, directory: Path, country: int, signal: Signal) -> None:
        self.library = library
        self.signal = signal
        self.directory = directory
        self._country = country
        self._stack = ExitStack()

    def __enter__(self) -> "Session":
        with ExitStack() as stack:
            stack.enter_context(self.library.ready())
            self.database = stack.enter_context(self.library.create())
            stack.callback(self.database.call, "Close")
            with self.library.text(str(self.directory)) as path:
                require(self.database.call("Open", path, self._country, self.signal),
                        "the directory cannot be opened", self.directory)
            self._stack = stack.pop_all()
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self._stack.close()

    def channel_list(self, signal: Optional[Signal] = None) -> Interface:
        """The list of a signal type; released with the session."""
        wanted = self.signal if signal is None else signal
        return self._stack.enter_context(self.database.ask(
            "GetChannelInfoMgr", "IChannelInfoMgr", wanted, what="there is no list of channels"))

    def member(self, method: str, kind: str) -> Interface:
        """A list of the database, whose getter answers a count; released with the session."""
        return self._stack.enter_context(self.database.ask(method, kind))

    def texts(self) -> Texts:
        """Outlives the session: its records are no list's."""
        pads = [self.channel_list(signal).ask("CreateChannelInfo", "IChannelInfo")
                for signal in (Signal.DVBSatellite, self.signal)]
        return Texts(self.library, *pads)

    def text_of(self, record: Interface, method: str) -> str:
        address = ctypes.c_void_p()
        record.require(method, ctypes.addressof(address))
        return self.library.take_text(address.value)

    def set_text(self, record: Interface, method: str, text: str) -> None:
        with self.library.text(text) as address:
            record.require(method, address)

    def read_channels(self, channels: Interface, signal: Signal, texts: Texts) -> List[Channel]:
        """All channels of a list, in its order and with their indexes. The list is numbered afresh
        by that: its database is not to be saved."""
        indexes = _stored_indexes(channels)
        found = []
        for place, index in enumerate(indexes, 1):
            with channels.ask("GetChannelInfoByIndex", "IChannelInfo", place,
                              what="a channel cannot be read") as record:
                values, block = self._read(record)
                found.append(Channel(signal, texts, values.having(index=index), block))
        return found

    def _read(self, record: Interface) -> Tuple[Record, bytes]:
        station = Station()
        record.require("GetStationInfo", ctypes.addressof(station))
        try:
            block = ctypes.string_at(station.pbInformation or 0, station.cbInformation) if (
                station.pbInformation) else b""
        finally:
            self.library.free_memory(station.pbInformation)
        values = Record(0, station.lPhysicalChannel % 2**32, station.dwFrequency,
                        station.lOffsetFreq, station.lTSID, record.number("GetFavor", signed=False),
                        record.number("GetLock"), self.text_of(record, "GetChannelDspName"))
        return values, block

    def write_channel(self, channel: Channel, record: Interface) -> None:
        """Stores everything but the index in a record."""
        values, block = channel._record, bytes(channel._block)
        data = ctypes.create_string_buffer(block, len(block))
        station = Station(
            InputSignal=channel.signal, lPhysicalChannel=values.number,
            dwFrequency=values.frequency, lOffsetFreq=values.offset, lTSID=values.tsid,
            cbInformation=len(block), pbInformation=ctypes.addressof(data))
        self.set_text(record, "SetChannelDspName", values.display_name)
        record.require("SetStationInfo", ctypes.addressof(station))
        record.require("SetFavor", values.favorite)
        record.require("SetLock", values.lock)

    def add_channel(self, channels: Interface, channel: Channel) -> None:
        with channels.ask("CreateChannelInfo", "IChannelInfo") as record:
            record.call("SetChannelIndex", channel.index)  # stores it and answers E_NOTIMPL
            self.write_channel(channel, record)
            channels.require("AddChannelInfo", record.address)


def _stored_indexes(channels: Interface) -> List[int]:
    """The indexes of a list in its order. One more channel at the end lets a single one be walked
    to; taking it out numbers the rest 1, 2, 3."""
    with channels.ask("CreateChannelInfo", "IChannelInfo") as last:
        last.call("SetChannelIndex", _LAST)  # stores it and answers E_NOTIMPL
        channels.require("AddChannelInfo", last.address)
        count = channels.number("GetChannelCount", _ALL, signed=False)
        indexes = [1] if count == 1 else [_next_index(channels, place) for place in range(count)]
        channels.require("RemoveChannelInfo", last.address)
    return indexes[:-1]


def _next_index(channels: Interface, place: int) -> int:
    found = ctypes.c_uint32()
    channels.require("FindNextChannel", place, ctypes.addressof(found), _ALL, 0, 0,
                     what="the channels cannot be walked")
    return found.value


def require_readable(library: Library, path: Path) -> None:
    """Raises Unreadable for a file, of the channels or of the settings, that is there and that the
    library does not read. It is asked: a file that it cannot read is put aside by a save, here that
    of a copy."""
    data = read(path)
    if data is None:
        return
    if data and not _is_put_aside(library, path.name, data):
        return
    raise Unreadable(why_unreadable(data), path)


def _is_put_aside(library: Library, name: str, data: bytes) -> bool:
    assert name in (CHANNELS, SETTINGS)
    with tempfile.TemporaryDirectory(prefix="tunedex-") as folder:
        copy = Path(folder)
        (copy / name).write_bytes(data)
        if name == CHANNELS:
            with Session(library, copy, 1, Signal.FMRadio) as session:
                session.channel_list().require("SetDirty", 1)
                session.database.require("SaveChannelToFile", what="a copy cannot be saved")
        else:
            with Session(library, copy, 1, Signal.DVBSatellite) as session:
                session.database.require("SaveUserSettingsToFile", what="a copy cannot be saved")
        return (copy / f"{name}.unreadable").exists()


def scan(library: Library, directory: Path, country: int,
         signal: Signal) -> Tuple[List[Channel], Texts]:
    """The channels of a directory. Raises Error for one that cannot be opened or read."""
    with Session(library, directory, country, signal) as session:
        texts = session.texts()
        channels = session.read_channels(session.channel_list(), signal, texts)
    if not channels:
        # Channels come from a file that can be read.
        require_readable(library, directory / CHANNELS)
    return channels, texts
