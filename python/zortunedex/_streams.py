"""The streams and components of a channel."""
from __future__ import annotations

import struct
from typing import TYPE_CHECKING, Iterable, Iterator, Mapping, Tuple, Union

from ._errors import InvalidValue, UnknownField
from ._generated import ENTRY_FIELDS
from ._layout import ComponentTable, Field, StreamTable
from ._values import Value, fetch, read_value, write_value

if TYPE_CHECKING:
    from ._channel import Channel

COMPONENTS = "Components"


class Entry(Mapping[str, Value]):
    """One stream or component: its values by name. A view of its channel while it is there."""

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
        if not isinstance(other, (Streams, list, tuple)):
            return NotImplemented
        return [dict(entry) for entry in self] == [dict(entry) for entry in other]

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
