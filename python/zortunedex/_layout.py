"""What the tables of the station blocks are made of."""
from __future__ import annotations

from enum import IntEnum
from typing import Iterator, NamedTuple, Optional, Tuple


class Named(IntEnum):
    """Numbers that are shown by their names."""

    def __str__(self) -> str:
        return self.name

    def __format__(self, form: str) -> str:
        return format(self.name, form)


class Field(NamedTuple):
    """One attribute: where it stands in the block, and how it becomes text in the file."""

    name: str
    offset: int
    width: int
    """In bytes; 0 where nothing stands in the block."""
    form: str
    source: str
    """``Block``, or the value of the record that it is."""
    use: str
    """``Both``, ``ReadOnly`` or ``WriteOnly``."""


class StreamTable(NamedTuple):
    """A counted array of entries in the block."""

    name: str
    count_offset: int
    offset: int
    capacity: int
    entry_size: int
    use: str


class ComponentTable(NamedTuple):
    """The components of a T-DMB service: names and types in two arrays."""

    count_offset: int
    name_offset: int
    name_width: int
    type_offset: int
    capacity: int


class Layout(NamedTuple):
    """Everything about one kind of block."""

    size: int
    channel: Tuple[Field, ...]
    streams: Tuple[Field, ...]
    lists: Tuple[StreamTable, ...]
    components: Optional[ComponentTable]
    satellite: Tuple[Field, ...]

    def fields(self) -> Iterator[Field]:
        """All rows, in the order of the file."""
        yield from self.channel
        yield from self.streams
        yield from self.satellite
