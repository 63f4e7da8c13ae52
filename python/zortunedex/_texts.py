"""Texts of station blocks and files: what they may hold, and the code page."""
from __future__ import annotations

import ctypes
import threading
from typing import Dict, NamedTuple, Optional, Tuple

from ._com import Interface, Station
from ._errors import InvalidValue
from ._generated import LAYOUTS, Service, Signal
from ._library import Library

ATTRIBUTE_LIMIT = 259
"""Bytes that a text attribute of the files may have."""

_LAYOUT = LAYOUTS[Signal.DVBSatellite]
_NAME = next(field.offset for field in _LAYOUT.channel if field.name == "name")
_LIMIT = 1024  # bytes that are converted at once; a satellite block has them behind its name
assert _NAME + _LIMIT < _LAYOUT.size


def up_to_zero(data: bytes) -> bytes:
    return data.split(b"\0", 1)[0]


def check_text(text: object, where: str) -> str:
    """A str that is a text: no lone surrogates, no zero."""
    if not isinstance(text, str):
        raise InvalidValue(f"takes a text, not {type(text).__name__}", where)
    if any("\ud800" <= character <= "\udfff" for character in text):
        raise InvalidValue("is no text: it holds half of a surrogate pair", where)
    if "\0" in text:
        raise InvalidValue("holds U+0000, which ends a text", where)
    return text


def check_xml(text: str, where: str) -> None:
    """Refuses what XML cannot hold."""
    for character in text:
        if (character < " " and character not in "\t\n\r") or character in "\ufffe\uffff":
            raise InvalidValue(f"holds U+{ord(character):04X}, which the file cannot keep", where)


class Derived(NamedTuple):
    """What a record reads from its block."""

    service: Optional[Service]
    scrambled: bool
    mhp: bool


class Texts:
    """Converts the narrow texts of station blocks. The library alone knows the code page: a record
    of its own, which no list holds, is the pad on which texts are set and read back."""

    def __init__(self, library: Library, satellite: Interface, own: Interface) -> None:
        """Takes two records over: of DVB-S, and of the signal type of the channels."""
        self._library = library
        self._pad = satellite
        self._own = own
        self._lock = threading.Lock()
        self._cache: Dict[bytes, str] = {}
        every = bytes(range(1, 0x80))
        plain = every.decode("ascii")
        self.keeps_ascii = self._ask_text(every) == plain and self._ask_bytes(plain) == every

    @staticmethod
    def _put(record: Interface, block: bytes) -> None:
        data = ctypes.create_string_buffer(block, len(block))
        station = Station(cbInformation=len(block), pbInformation=ctypes.addressof(data))
        record.require("SetStationInfo", ctypes.addressof(station),
                       what="a text cannot be converted")

    def _put_name(self, narrow: bytes) -> None:
        self._put(self._pad, (b"\0" * _NAME + narrow).ljust(_LAYOUT.size, b"\0"))

    def _name(self) -> str:
        address = ctypes.c_void_p()
        self._pad.require("GetChannelName", ctypes.addressof(address),
                          what="a text cannot be converted")
        return self._library.take_text(address.value)

    def _ask_text(self, narrow: bytes) -> str:
        with self._lock:
            self._put_name(narrow[:_LIMIT])
            return self._name()

    def _ask_bytes(self, text: str) -> Optional[bytes]:
        """Up to _LIMIT bytes; None where the code page lacks a character."""
        with self._lock, self._library.text(text) as wide:
            self._put_name(b"")
            self._pad.require("SetChannelName", wide, what="a text cannot be converted")
            station = Station()
            self._pad.require("GetStationInfo", ctypes.addressof(station),
                              what="a text cannot be converted")
            try:
                block = ctypes.string_at(station.pbInformation, station.cbInformation)
            finally:
                self._library.free_memory(station.pbInformation)
            narrow = up_to_zero(block[_NAME:_NAME + _LIMIT])
            return None if len(narrow) < _LIMIT and self._name() != text else narrow

    def decode(self, narrow: bytes) -> str:
        """The text of bytes in the code page."""
        if self.keeps_ascii and narrow.isascii():
            return narrow.decode("ascii")
        if narrow not in self._cache:
            self._cache[narrow] = self._ask_text(narrow)
        return self._cache[narrow]

    def encode(self, text: str) -> Optional[bytes]:
        """The bytes of a text in the code page; None where it lacks a character. Texts beyond the
        room of any field come cut."""
        if not text or (self.keeps_ascii and text.isascii()):
            return text.encode("ascii")
        return self._ask_bytes(text)

    def require(self, text: object, limit: int, where: str, xml: bool = True) -> bytes:
        """The bytes of a text that comes back whole from its file."""
        checked = check_text(text, where)
        if xml:
            check_xml(checked, where)
        narrow = self.encode(checked)
        if narrow is None:
            raise InvalidValue("holds characters outside the code page", where)
        if len(narrow) > limit:
            raise InvalidValue(f"has more than {limit} bytes in the code page", where)
        return narrow

    def require_narrow(self, narrow: bytes, limit: int, where: str, xml: bool = True) -> None:
        """Refuses bytes that would not come back from their file."""
        text = self.decode(narrow)
        again = self.encode(text)
        if again is None or ("\ufffd" in text and again != narrow):
            raise InvalidValue("is no text of the code page; choose the right one", where)
        self.require(text, limit, where, xml)

    def derived(self, block: bytes) -> Derived:
        """What a record of the signal type reads from a block."""
        with self._lock:
            self._put(self._own, block)
            service = ctypes.c_int32(Service.Unknown)
            answered = self._own.call("GetServiceType", ctypes.addressof(service)) >= 0
            scrambled = self._own.number("IsScrambled")
            mhp = self._own.number("GetMhp")
        known = answered and service.value != Service.Unknown
        return Derived(Service(service.value) if known else None, scrambled != 0, mhp != 0)


def text_limits(width: int) -> Tuple[int, int]:
    """Room of a text field, and the most bytes that come back whole from the file."""
    limit = ATTRIBUTE_LIMIT if width == 0 else min(width - 1, ATTRIBUTE_LIMIT)
    return width, limit
