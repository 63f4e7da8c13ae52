"""Presets of one-segment reception, and the customer's own lists."""
from __future__ import annotations

import ctypes
from dataclasses import dataclass
from pathlib import Path
from typing import TYPE_CHECKING, Iterator, List, Optional, Sequence, Tuple

from ._channel import Channel, same_channels
from ._edit import ascending
from ._errors import Error, InvalidValue, NotFound, Unreadable
from ._files import CHANNELS, PRESETS, Change, read, why_unreadable
from ._generated import Signal
from ._library import Library
from ._session import Session, require_readable, scan
from ._texts import ATTRIBUTE_LIMIT, Texts, check_text

if TYPE_CHECKING:
    from ._database import Database

_ONE_SEG = Signal.ISDBTerrestrialOneSeg
_NAME_ROOM = 260
_HIGHEST = 0xFFFF  # a greater selection is read back as its low half


@dataclass(frozen=True)
class PresetList:
    """The channels of one sub-area, or one of the customer's lists."""

    number: int
    """From 0."""
    name: str
    channels: Tuple[Channel, ...]


@dataclass(frozen=True)
class PresetArea:
    """An area with its sub-areas."""

    number: int
    """From 0."""
    name: str
    lists: Tuple[PresetList, ...]
    """Its sub-areas."""
    _count: int = 0

    def __getitem__(self, number: int) -> PresetList:
        for found in self.lists:
            if found.number == number:
                return found
        raise NotFound(f"area {self.number} has no sub-area {number!r}")


class Presets:
    """The areas of PreSetChannelInfo.xml: ``presets[2][5]`` is sub-area 5 of area 2."""

    def __init__(self, areas: Sequence[PresetArea], count: int) -> None:
        self._areas = tuple(areas)
        self._count = count

    def __len__(self) -> int:
        return len(self._areas)

    def __iter__(self) -> Iterator[PresetArea]:
        return iter(self._areas)

    def __getitem__(self, number: int) -> PresetArea:
        for area in self._areas:
            if area.number == number:
                return area
        raise NotFound(f"there is no area {number!r}")

    @property
    def customer(self) -> PresetArea:
        """The area that holds the customer's own lists: the one with the highest number."""
        return self[self._count - 1]


def read_presets(library: Library, directory: Path, country: int) -> Presets:
    """Raises Error where there is no file, or it cannot be read or holds no presets."""
    path = directory / PRESETS
    with Session(library, directory, country, _ONE_SEG) as session:
        texts = session.texts()
        if session.database.call("LoadPresetOneSegChannelInfo") != 0:
            data = read(path)
            if data is None:
                raise Error("there is no such file", path)
            raise Unreadable(why_unreadable(data), path)
        count = session.database.number("GetAreaCount", what="holds no presets of country 81")
        areas = [area for number in range(count)
                 for area in _area(session, texts, number)]
    for area in areas:
        for presets in area.lists:
            for channel in presets.channels:
                channel._freeze()
    return Presets(areas, count)


def _name(session: Session, texts: Texts, method: str, *numbers: int) -> Optional[str]:
    """The name of an area or a sub-area; None where there is no such one."""
    room = ctypes.create_string_buffer(_NAME_ROOM)
    if session.database.call(method, *numbers, ctypes.addressof(room)) < 0:
        return None
    return texts.decode(room.value)


def _area(session: Session, texts: Texts, number: int) -> Iterator[PresetArea]:
    name = _name(session, texts, "GetAreaNameByIndex", number)
    if name is None:
        return
    count = session.database.number("GetSubAreaCount", number)
    lists: List[PresetList] = []
    for place in range(count):
        sub_area = _name(session, texts, "GetSubAreaNameByIndex", number, place)
        if sub_area is None:
            continue
        with session.database.ask("GetPresetChannelMgr", "IChannelInfoMgr", number,
                                  place) as channels:
            found = session.read_channels(channels, _ONE_SEG, texts)
        lists.append(PresetList(place, sub_area, tuple(found)))
    yield PresetArea(number, name, tuple(lists), count)


class PresetChange:
    """One change of the customer's lists or of the channels, tried on a copy."""

    def __init__(self, database: "Database", change: Change) -> None:
        self._database = database
        self._change = change
        self._before = self._read()

    def _read(self) -> Presets:
        return read_presets(self._database._library, self._change.scratch, self._database.country)

    def _session(self) -> Session:
        database = self._database
        return Session(database._library, self._change.scratch, database.country, _ONE_SEG)

    def _customer(self) -> PresetArea:
        area = self._before.customer
        if len(area.lists) != area._count or area._count > _HIGHEST:
            raise Error("does not number the customer's lists 0, 1, 2, …",
                        self._database.directory / PRESETS)
        return area

    def add(self, name: str) -> PresetList:
        """Stores the channels of the file as a new list behind the others."""
        database, area = self._database, self._customer()
        channels, texts = scan(database._library, self._change.scratch, database.country, _ONE_SEG)
        if not channels:
            raise Error(f"country {database.country} has no one-segment channels to store",
                        database.directory / CHANNELS)
        if not ascending(channels):
            raise Error("the indexes of the channels do not ascend, and channels would become one; "
                        "sort the list first", database.directory / CHANNELS)
        if not check_text(name, "name"):
            raise InvalidValue("is empty", "name")
        narrow = texts.require(name, ATTRIBUTE_LIMIT, "name")
        with self._session() as session:
            text = ctypes.create_string_buffer(narrow)
            # A count comes back, and tells nothing.
            session.database.require("SaveCustomerChannelList", area._count,
                                     ctypes.addressof(text))
        meant = PresetList(area._count, name, tuple(channels))
        found = self._expect([*area.lists, meant])
        self._change.commit(PRESETS)
        return found

    def delete(self, number: int) -> None:
        """Deletes a list; the others move up."""
        area = self._customer()
        gone = area[number]
        with self._session() as session:
            self._move_selection(session, area, gone.number)
            if session.database.call("DeleteCustomerChannelList", gone.number) != 0:
                raise Error("was not written", self._database.directory / PRESETS)
        left = [known for known in area.lists if known is not gone]
        self._expect([PresetList(place, known.name, known.channels)
                      for place, known in enumerate(left)])
        self._change.commit(PRESETS)

    def _move_selection(self, session: Session, area: PresetArea, gone: int) -> None:
        """A list behind the deleted one that is noted as selected stays so."""
        selected = ctypes.c_int32(), ctypes.c_int32()
        session.database.require("GetArea", *map(ctypes.addressof, selected))
        if selected[0].value != area.number or selected[1].value <= gone:
            return
        # An object that is opened for another type takes a selection without touching a list.
        with self._database._library.text(str(self._change.scratch)) as path:
            session.database.require("Open", path, self._database.country, Signal.FMRadio)
        session.database.require("SetArea", area.number, selected[1].value - 1)

    def _expect(self, lists: Sequence[PresetList]) -> PresetList:
        """Holds the copy against what was meant; answers the last of the customer's lists."""
        path = self._database.directory / PRESETS
        found = self._read()
        meant = [area for area in self._before if area is not self._before.customer]
        rest = [area for area in found if area.number != found.customer.number]
        same = len(meant) == len(rest) and all(
            a.name == b.name and _same(a.lists, b.lists) for a, b in zip(meant, rest))
        if not same or not _same(lists, found.customer.lists):
            raise Error("would not hold what was meant; the file is unchanged", path)
        return found.customer.lists[-1] if lists else PresetList(0, "", ())

    def select(self, area: int, sub_area: int) -> List[Channel]:
        """Makes the channels of a sub-area those of ChanInfo.xml."""
        database = self._database
        wanted = self._before[area][sub_area]
        require_readable(database._library, self._change.scratch / CHANNELS)
        with self._session() as session:
            session.database.require("SetArea", area, sub_area)
        found, _ = scan(database._library, self._change.scratch, database.country, _ONE_SEG)
        different = same_channels(list(wanted.channels), found)
        if different:
            raise Error(f"would not hold the sub-area ({different}); the file is unchanged",
                        database.directory / CHANNELS)
        self._change.commit(CHANNELS)
        return found


def _same(meant: Sequence[PresetList], found: Sequence[PresetList]) -> bool:
    return len(meant) == len(found) and all(
        a.number == b.number and a.name == b.name
        and same_channels(list(a.channels), list(b.channels)) is None
        for a, b in zip(meant, found))
