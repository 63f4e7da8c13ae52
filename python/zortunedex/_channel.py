"""Channels by value."""
from __future__ import annotations

import dataclasses
import struct
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, Dict, List, Mapping, Optional, Tuple, Union

from ._errors import Error, InvalidValue, UnknownField
from ._generated import LAYOUTS, Service, Signal
from ._layout import ComponentTable, Field, Layout, StreamTable
from ._streams import COMPONENTS, Streams
from ._texts import check_text, text_limits, up_to_zero
from ._values import read_value, write_value
from ._words import WORDS, as_read, truth, whole_number

if TYPE_CHECKING:
    from ._texts import Derived, Texts

Place = Union[Field, StreamTable, ComponentTable]

_COMPONENT_NAME_LIMIT = 7

_I32 = (-2**31, 2**31 - 1)
_U32 = (0, 2**32 - 1)

# Values of the record that fields stand for: the attribute, and its range.
_RECORD: Mapping[str, Tuple[str, Tuple[int, int]]] = {
    "PhysicalChannel": ("number", _U32),
    "Frequency": ("frequency", _U32),
    "OffsetFrequency": ("offset", _I32),
    "TransportStream": ("tsid", _I32),
    "Favorite": ("favorite", _U32),
    "Lock": ("lock", (0, 1)),
}


@dataclass(frozen=True)
class Record:
    """The values of a channel beside its block."""

    index: int = 0
    number: int = 0
    frequency: int = 0
    offset: int = 0
    tsid: int = 0
    favorite: int = 0
    lock: int = 0
    display_name: str = ""

    def having(self, **values: Any) -> "Record":
        """The same with other values."""
        return dataclasses.replace(self, **values)


def _fields_of(layout: Layout) -> Dict[str, Place]:
    """By name; of two spellings of one place the first."""
    fields: Dict[str, Place] = {}
    taken = set()
    for field in layout.fields():
        if field.width and field.offset in taken:
            continue
        fields.setdefault(field.name, field)
        if field.width:
            taken.add(field.offset)
    for table in layout.lists:
        fields.setdefault(table.name, table)
    if layout.components:
        fields[COMPONENTS] = layout.components
    return fields


_FIELDS: Mapping[Signal, Mapping[str, Place]] = {
    signal: _fields_of(layout) for signal, layout in LAYOUTS.items()}


class Channel:
    """One channel: what its record holds as attributes, what the file holds of it as items.

    ``c["serviceID"]`` is the attribute of that name in the file: a number, a text, a word (the
    four tuning parameters of a satellite channel), or :class:`Streams`. ``fields()`` names them.
    Channels of ``db.channels`` cannot be changed; those of ``db.edit()`` and ``new()`` can.
    """

    # An attribute that is spelt wrong is an error, and not one more attribute.
    __slots__ = ("_signal", "_layout", "_texts", "_record", "_block", "_frozen", "_derived")

    def __init__(self, signal: Signal, texts: "Texts", record: Record = Record(),
                 block: Optional[bytes] = None) -> None:
        self._signal = signal
        self._layout = LAYOUTS[signal]
        self._texts = texts
        self._record = record
        self._block = bytearray(self._layout.size if block is None else block)
        self._frozen = False
        self._derived: Optional[Tuple[bytes, "Derived"]] = None
        if block is None:
            for field in self._layout.satellite:
                if field.form in WORDS:
                    struct.pack_into("<i", self._block, field.offset, -1)

    @property
    def signal(self) -> Signal:
        """The signal type of its list."""
        return self._signal

    @property
    def index(self) -> int:
        """Its index in the list, from 1. Changed by ``move``, ``remove`` and ``sort`` of a list."""
        return self._record.index

    @property
    def name(self) -> str:
        """The name that is broadcast. Its room is told by the field ``name``."""
        return str(self["name"])

    @name.setter
    def name(self, name: str) -> None:
        self["name"] = name

    @property
    def display_name(self) -> str:
        """The name that is shown: up to 259 bytes in the code page. Where it is empty the library
        shows the broadcast name."""
        return self._record.display_name

    @display_name.setter
    def display_name(self, name: str) -> None:
        self["nameDisplay"] = name

    @property
    def number(self) -> int:
        """The physical (RF) channel."""
        return self._record.number

    @number.setter
    def number(self, number: int) -> None:
        self._set_record("PhysicalChannel", number)

    @property
    def frequency(self) -> int:
        """In the unit of the directory's host: kHz in the files that ``tunedex`` makes."""
        return self._record.frequency

    @frequency.setter
    def frequency(self, frequency: int) -> None:
        self._set_record("Frequency", frequency)

    @property
    def offset(self) -> int:
        """Offset frequency, in the unit of ``frequency``."""
        return self._record.offset

    @offset.setter
    def offset(self, offset: int) -> None:
        self._set_record("OffsetFrequency", offset)

    @property
    def tsid(self) -> int:
        """Transport stream identifier."""
        return self._record.tsid

    @tsid.setter
    def tsid(self, tsid: int) -> None:
        self._set_record("TransportStream", tsid)

    @property
    def favorite(self) -> bool:
        """Whether it is a favourite."""
        return self._record.favorite != 0

    @favorite.setter
    def favorite(self, favorite: bool) -> None:
        wanted = truth(favorite, self._where("favorite"))
        if wanted != self.favorite:
            self._set_record("Favorite", int(wanted))

    @property
    def favorite_mark(self) -> int:
        """The mark of a favourite: 0 for none, any other number for one."""
        return self._record.favorite

    @favorite_mark.setter
    def favorite_mark(self, mark: int) -> None:
        self._set_record("Favorite", mark)

    @property
    def lock(self) -> bool:
        """Whether it is locked."""
        return self._record.lock != 0

    @lock.setter
    def lock(self, lock: bool) -> None:
        self._set_record("Lock", int(truth(lock, self._where("lock"))))

    @property
    def service_type(self) -> Optional[Service]:
        """The kind of service, as its block tells; None where it does not."""
        return self._ask().service

    @property
    def scrambled(self) -> bool:
        """Whether the block says so (DVB-S and DVB-T)."""
        return self._ask().scrambled

    @property
    def mhp(self) -> bool:
        """Whether the block counts DSM-CC and MHP streams (DVB-S and DVB-T)."""
        return self._ask().mhp

    def fields(self) -> Tuple[str, ...]:
        """The names of the items, in the order of the file."""
        return tuple(_FIELDS[self._signal])

    def streams(self, name: str) -> Streams:
        """The streams of a kind, or the components: ``c.streams("AudioStream")``."""
        found = self[name]
        if not isinstance(found, Streams):
            raise UnknownField("is no list", self._where(name))
        return found

    def copy(self) -> "Channel":
        """The same channel by a value of its own, which can be changed."""
        return Channel(self._signal, self._texts, self._record, bytes(self._block))

    def __getitem__(self, name: str) -> Any:
        place = self._find(name)
        if isinstance(place, (StreamTable, ComponentTable)):
            return Streams(self, place)
        if place.source == "Index":
            return self._record.index
        if place.source == "DisplayName":
            return self._record.display_name
        if place.source in _RECORD:
            return getattr(self._record, _RECORD[place.source][0])
        return read_value(self._block, 0, place, self._texts)

    def __setitem__(self, name: str, value: Any) -> None:
        place = self._find(name)
        where = self._where(name)
        if isinstance(place, (StreamTable, ComponentTable)):
            return Streams(self, place).replace(value)
        self._begin(name, place.use)
        if place.source == "Index":
            raise InvalidValue("an index is changed by move()", where)
        if place.source == "DisplayName":
            text = check_text(value, where)
            self._texts.require(text, text_limits(place.width)[1], where, place.form == "Text")
            self._record = self._record.having(display_name=text)
            return None
        if place.source in _RECORD:
            return self._set_record(place.source, value)
        if self._is_count(place):
            raise InvalidValue("is the length of its list and follows it", where)
        return write_value(self._block, 0, place, value, self._texts, where)

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Channel) and self._state() == other._state()

    __hash__ = None  # type: ignore[assignment]

    def __repr__(self) -> str:
        return f"<Channel {self.index} {self.display_name!r} of {self._signal.name}>"

    def _state(self) -> Tuple[Signal, Record, bytes]:
        return self._signal, self._record, bytes(self._block)

    def _freeze(self) -> "Channel":
        self._frozen = True
        return self

    def _begin(self, name: str, use: str) -> None:
        """Whether that can be changed."""
        if self._frozen:
            raise Error("is changed in 'with db.edit() as e:', through e", self._where(name))
        if use != "Both":
            raise InvalidValue(f"the file does not keep it for {self._signal.name}",
                               self._where(name))

    def _where(self, name: str) -> str:
        return f"channel {self.index}, {name}" if self.index else name

    def _ask(self) -> "Derived":
        block = bytes(self._block)
        if self._derived is None or self._derived[0] != block:
            self._derived = block, self._texts.derived(block)
        return self._derived[1]

    def _find(self, name: str) -> Place:
        found = _FIELDS[self._signal].get(name)
        if found is None:
            raise UnknownField(f"channels of {self._signal.name} have no {name!r}; they have "
                               + ", ".join(_FIELDS[self._signal]))
        return found

    def _set_record(self, source: str, value: object) -> None:
        name, (low, high) = _RECORD[source]
        field = next((field for field in self._layout.fields() if field.source == source), None)
        if field is None:
            raise UnknownField(f"the file does not keep it for {self._signal.name}",
                               self._where(name))
        self._begin(name, field.use)
        number = whole_number(value, low, high, self._where(name))
        self._record = self._record.having(**{name: number})
        if field.width:
            write_value(self._block, 0, field, number, self._texts, self._where(name))

    def _is_count(self, field: Field) -> bool:
        components = self._layout.components
        counts = {table.count_offset for table in self._layout.lists}
        if components:
            counts.add(components.count_offset)
        return field.width == 4 and field.offset in counts

    def _stored(self) -> "Channel":
        """What comes back from the file, but for a display name that is empty."""
        stored = self.copy()
        block = stored._block
        kept = {(field.offset, field.width) for field in self._layout.fields()
                if field.use == "Both"}
        for field in self._layout.fields():
            if field.form in WORDS:
                value = struct.unpack_from("<i", block, field.offset)[0]
                struct.pack_into("<i", block, field.offset, as_read(field.form, value))
            elif field.width and (field.offset, field.width) not in kept:
                block[field.offset:field.offset + field.width] = bytes(field.width)
        for table in self._layout.lists:
            if table.use != "Both":
                block[table.offset:table.offset + table.capacity * table.entry_size] = bytes(
                    table.capacity * table.entry_size)
        return stored

    def _check_storable(self) -> None:
        """Refuses texts that would not come back from the file."""
        for field in self._layout.fields():
            if field.form not in ("Text", "Base64"):
                continue
            width, limit = text_limits(field.width)
            where, xml = self._where(field.name), field.form == "Text"
            if field.source == "DisplayName":
                self._texts.require(self.display_name, limit, where, xml)
            elif width:
                narrow = up_to_zero(bytes(self._block[field.offset:field.offset + width]))
                self._texts.require_narrow(narrow, limit, where, xml)
        if self._layout.components:
            table = self._layout.components
            for place in range(len(Streams(self, table))):
                start = table.name_offset + place * table.name_width
                narrow = up_to_zero(bytes(self._block[start:start + table.name_width]))
                self._texts.require_narrow(narrow, _COMPONENT_NAME_LIMIT,
                                           self._where(f"{COMPONENTS}[{place}].name"))


def set_values(channel: Channel, values: Mapping[str, Any]) -> None:
    """Sets attributes and items by name."""
    for name, value in values.items():
        if isinstance(getattr(Channel, name, None), property):
            if name in ("signal", "index", "service_type", "scrambled", "mhp"):
                raise InvalidValue("cannot be given", name)
            setattr(channel, name, value)
        else:
            channel[name] = value


def same_channels(meant: List[Channel], found: List[Channel]) -> Optional[str]:
    """The first thing that is not what was meant after saving; None where nothing is."""
    if len(meant) != len(found):
        return f"{len(found)} channels instead of {len(meant)}"
    for wanted, channel in zip(meant, found):
        if wanted == channel:
            continue
        stored = wanted._stored()
        if not wanted.display_name:
            # The library fills it from the station.
            stored._record = stored._record.having(display_name=channel.display_name)
        if stored != channel:
            return f"channel {wanted.index}"
    return None
