"""The words of signal types and of satellite parameters."""
from __future__ import annotations

import operator
from typing import Dict, Iterable, Mapping, Union

from ._errors import InvalidValue
from ._generated import LAYOUTS, Signal


def _numbered(first: int, *words: str) -> Dict[int, str]:
    return {-1: "NotSet", **dict(enumerate(words, first))}


# What comes back from the file as what was written, by the form of a field.
WORDS: Mapping[str, Mapping[int, str]] = {
    "Polarisation": _numbered(1, "LinearH", "LinearV", "CircularL", "CircularR"),
    "FecRate": _numbered(1, "1/2", "2/3", "3/4", "3/5", "4/5", "5/6", "5/11", "7/8"),
    "Modulation": _numbered(
        1, *(f"{states}QAM" for states in (16, 32, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320,
                                           384, 448, 512, 640, 768, 896, 1024)),
        "QPSK", "BPSK", "OQPSK", "8VSB", "16VSB", "ANALOG_AMPLITUDE"),
    "SpectralInversion": _numbered(1, "automatic", "normal", "inverted"),
}


def word_of(form: str, value: int) -> Union[str, int]:
    """The word of a value; the value where it has none."""
    return WORDS[form].get(-1 if value == 0 else value, value)


def value_of(form: str, word: object, where: str) -> int:
    """The value of a word in any letter case."""
    for value, known in WORDS[form].items():
        if isinstance(word, str) and word.lower() == known.lower():
            return value
    raise InvalidValue(f"takes {choices(WORDS[form].values())}, not {word!r}", where)


def as_read(form: str, value: int) -> int:
    """What comes back from the file for a value."""
    return -1 if value == 0 else value if value in WORDS[form] else 0


def choices(words: Iterable[str]) -> str:
    known = list(words)
    return ", ".join(known[:-1]) + " or " + known[-1]


def whole_number(value: object, low: int, high: int, where: str) -> int:
    try:
        number = operator.index(value)  # type: ignore[arg-type]
    except TypeError:
        number = high + 1
    if not low <= number <= high:
        raise InvalidValue(f"takes a number from {low} to {high}, not {value!r}", where)
    return number


def truth(value: object, where: str) -> bool:
    """True or False, or a number; a text such as "no" would be true."""
    if not isinstance(value, int):
        raise InvalidValue(f"takes True or False, not {value!r}", where)
    return bool(value)


def seconds(value: object, where: str) -> float:
    """A time to wait."""
    if not isinstance(value, (int, float)) or not value >= 0:
        raise InvalidValue(f"takes seconds, 0 or more, not {value!r}", where)
    return float(value)


def signal_of(signal: Union[str, int]) -> Signal:
    """A signal type whose channels the file holds, by its name or number."""
    name = signal.lower() if isinstance(signal, str) else ""
    name = name[len("inputsignal"):] if name.startswith("inputsignal") else name
    found = next((known for known in Signal if signal == known or name == known.name.lower()),
                 None)
    if found is None:
        raise InvalidValue(f"there is no signal type {signal!r}; there are "
                           + choices(known.name for known in LAYOUTS))
    if found not in LAYOUTS:
        raise InvalidValue(f"the file cannot hold channels of {found.name}")
    return found
