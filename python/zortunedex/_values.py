"""The values of a station block one by one."""
from __future__ import annotations

import struct
from typing import TYPE_CHECKING, Union

from ._layout import Field
from ._texts import text_limits, up_to_zero
from ._words import WORDS, value_of, whole_number, word_of

if TYPE_CHECKING:
    from ._texts import Texts

Value = Union[int, str]


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
