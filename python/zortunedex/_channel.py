"""Channels by value."""
from __future__ import annotations

import dataclasses
import struct
from dataclasses import dataclass
from typing import (TYPE_CHECKING, Any, Dict, Iterable, Iterator, List, Mapping, Optional,
                    Tuple, Union)

from ._errors import Error, InvalidValue, UnknownField
from ._generated import ENTRY_FIELDS, LAYOUTS, Service, Signal
from ._layout import ComponentTable, Field, Layout, StreamTable
from ._texts import check_text, text_limits, up_to_zero
from ._words import WORDS, as_read, value_of, whole_number, word_of

if TYPE_CHECKING:
    from ._texts import Derived, Texts

Value = Union[int, str]
Place = Union[Field, StreamTable, ComponentTable]

COMPONENTS = "Components"
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


def fetch(block: Union[bytes, bytearray], offset: int, width: int) -> int:
    return int.from_bytes(block[offset:offset + width], "little")


def _language(data: Union[bytes, bytearray], offset: int) -> int:
    return data[offset] | data[offset + 1] << 4 | data[offset + 2] << 8


def read_value(block: Union[bytes, bytearray], start: int, field: Field, texts: "Texts") -> Value:
    """The value of a field in a block or an entry that begins at ``start``."""
    place = start + field.offset
    if field.form in ("Text", "Base64"):
        return texts.decode(up_to_zero(bytes(block[place:place + field.width])))
    if field.form == "Language":
        return _language(block, place)
    value = fetch(block, place, field.width)
    if field.width == 4 and value >= 2**31:
        value -= 2**32
    return word_of(field.form, value) if field.form in WORDS else value


def write_value(block: bytearray, start: int, field: Field, value: object, texts: "Texts",
                where: str) -> None:
    """Puts a value there; InvalidValue, and nothing is put, where it does not belong there."""
    place = start + field.offset
    if field.form in ("Text", "Base64"):
        width, limit = text_limits(field.width)
        narrow = texts.require(value, limit, where, field.form == "Text")
        block[place:place + width] = narrow.ljust(width, b"\0")
    elif field.form == "Language":
        language = whole_number(value, 0, 0xFFF, where)
        block[place:place + 3] = bytes(language >> shift & 0xF for shift in (0, 4, 8))
    elif field.form in WORDS:
        block[place:place + 4] = struct.pack("<i", value_of(field.form, value, where))
    else:
        low, high = (-2**31, 2**32 - 1) if field.width == 4 else (0, 256**field.width - 1)
        number = whole_number(value, low, high, where) % 256**field.width
        block[place:place + field.width] = number.to_bytes(field.width, "little")


class Entry(Mapping[str, Value]):
    """One stream or component: its values by name. A view of its channel, as long as it is there."""

    def __init__(self, entries: "Streams", place: int) -> None:
        self._entries = entries
        self._place = place

    def __getitem__(self, name: str) -> Value:
        return self._entries._get(self._place, name)

    def __setitem__(self, name: str, value: Value) -> None:
        self._entries._set(self._place, name, value)

    def __iter__(self) -> Iterator[str]:
        return iter(self._entries.names)

    def __len__(self) -> int:
        return len(self._entries.names)

    def __repr__(self) -> str:
        return repr(dict(self))


class Streams:
    """The streams of a kind, or the components, of one channel: a sequence of entries. Its length
    is the count in the block; there is room for ``capacity``."""

    def __init__(self, channel: "Channel", table: Union[StreamTable, ComponentTable]) -> None:
        self._channel = channel
        self._table = table
        self.capacity = table.capacity
        if isinstance(table, StreamTable):
            self.name = table.name
            self.names = tuple(field.name for field in ENTRY_FIELDS[table.entry_size])
        else:
            self.name = COMPONENTS
            self.names = ("name", "type")

    def __len__(self) -> int:
        return min(fetch(self._channel._block, self._table.count_offset, 4), self.capacity)

    def __getitem__(self, place: int) -> Entry:
        return Entry(self, self._at(place))

    def __iter__(self) -> Iterator[Entry]:
        return (Entry(self, place) for place in range(len(self)))

    def __eq__(self, other: object) -> bool:
        try:
            return [dict(entry) for entry in self] == [dict(entry) for entry in other]  # type: ignore
        except (TypeError, ValueError):
            return NotImplemented

    __hash__ = None  # type: ignore[assignment]

    def __repr__(self) -> str:
        return repr(list(self))

    def append(self, **values: Value) -> Entry:
        """Adds an entry behind the last one; values that are not named are 0."""
        self.replace([dict(entry) for entry in self] + [values])
        return self[-1]

    def __delitem__(self, place: int) -> None:
        entries = [dict(entry) for entry in self]
        del entries[self._at(place)]
        self.replace(entries)

    def clear(self) -> None:
        """Takes all entries out."""
        self.replace([])

    def replace(self, entries: Iterable[Mapping[str, Value]]) -> None:
        """Puts these entries in the place of all; nothing is changed where one does not fit."""
        channel = self._channel
        channel._begin(self.name, self._use())
        wanted = [dict(entry) for entry in entries]
        if len(wanted) > self.capacity:
            raise InvalidValue(f"has room for {self.capacity} entries, not {len(wanted)}",
                               channel._where(self.name))
        before = bytes(channel._block)
        try:
            self._empty()
            struct.pack_into("<I", channel._block, self._table.count_offset, len(wanted))
            for place, values in enumerate(wanted):
                for name, value in values.items():
                    self._set(place, name, value)
        except Exception:
            channel._block[:] = before
            raise

    def _use(self) -> str:
        return self._table.use if isinstance(self._table, StreamTable) else "Both"

    def _at(self, place: int) -> int:
        count = len(self)
        if not -count <= place < count:
            raise IndexError(f"{self.name} has {count} entries")
        return place % count

    def _empty(self) -> None:
        table, block = self._table, self._channel._block
        spans = [(table.offset, table.entry_size)] if isinstance(table, StreamTable) else [
            (table.name_offset, table.name_width), (table.type_offset, 4)]
        for offset, size in spans:
            block[offset:offset + size * self.capacity] = bytes(size * self.capacity)

    def _field(self, place: int, name: str) -> Tuple[int, Field]:
        """Where an entry begins, and the field of it."""
        self._at(place)
        table = self._table
        if isinstance(table, StreamTable):
            for field in ENTRY_FIELDS[table.entry_size]:
                if field.name == name:
                    return table.offset + place * table.entry_size, field
        elif name == "name":
            start = table.name_offset + place * table.name_width
            return start, Field(name, 0, table.name_width, "Text", "Block", "Both")
        elif name == "type":
            return table.type_offset + place * 4, Field(name, 0, 4, "Number", "Block", "Both")
        raise UnknownField(f"has no {name!r}; it has {', '.join(self.names)}",
                           self._channel._where(self.name))

    def _get(self, place: int, name: str) -> Value:
        start, field = self._field(place, name)
        return read_value(self._channel._block, start, field, self._channel._texts)

    def _set(self, place: int, name: str, value: object) -> None:
        channel = self._channel
        where = channel._where(f"{self.name}[{place}].{name}")
        channel._begin(self.name, self._use())
        start, field = self._field(place, name)
        write_value(channel._block, start, field, value, channel._texts, where)


class Channel:
    """One channel: what its record holds as attributes, what the file holds of it as items.

    ``c["serviceID"]`` is the attribute of that name in the file: a number, a text, a word (the
    four tuning parameters of a satellite channel), or :class:`Streams`. ``fields()`` names them.
    Channels of ``db.channels`` cannot be changed; those of ``db.edit()`` and ``new()`` can.
    """

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
        if bool(favorite) != self.favorite:
            self._set_record("Favorite", int(bool(favorite)))

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
        self._set_record("Lock", int(bool(lock)))

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
