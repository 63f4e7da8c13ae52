"""Objects of the library: methods by slot, references counted."""
from __future__ import annotations

import ctypes
import functools
import sys
import uuid
from types import TracebackType
from typing import Any, Callable, Dict, Optional, Tuple, Type, Union

from ._errors import require
from ._generated import SLOTS, STATION

_KINDS: Dict[str, Any] = {"i": ctypes.c_int32, "u": ctypes.c_uint32, "p": ctypes.c_void_p}
_FIRST_SLOT = 3  # behind the three of IUnknown
_RELEASE = 2


class Guid(ctypes.Structure):
    _fields_ = [("bytes", ctypes.c_ubyte * 16)]

    @classmethod
    @functools.lru_cache(maxsize=None)
    def of(cls, value: Union[str, uuid.UUID]) -> "Guid":
        return cls.from_buffer_copy(uuid.UUID(str(value)).bytes_le)


class Station(ctypes.Structure):
    """``_StationTuneInfo``, laid out as a compiler does."""

    _fields_ = [(name, _KINDS[kind]) for name, kind in STATION]


@functools.lru_cache(maxsize=None)
def prototype(kinds: str) -> Any:
    """A function of such arguments that answers a result code. There is one calling convention for
    64-bit programs."""
    return ctypes.CFUNCTYPE(ctypes.c_int32, *(_KINDS[kind] for kind in kinds))


def _slots() -> Dict[str, Dict[str, Tuple[int, str]]]:
    slots = {interface: {method: (_FIRST_SLOT + place, "p" + kinds)
                         for place, (method, kinds) in enumerate(methods)}
             for interface, methods in SLOTS.items()}
    slots["IClassFactory"] = {"CreateInstance": (_FIRST_SLOT, "pppp")}
    return slots


_SLOTS = _slots()


class Interface:
    """One reference to an object, released once: by ``release`` or at the end of a ``with``, at the
    latest when nobody holds this any more."""

    def __init__(self, kind: str, address: Optional[int]) -> None:
        if not address:
            raise MemoryError(f"no {kind} was handed out")
        self.kind = kind
        self.address: Optional[int] = address

    def _function(self, slot: int, kinds: str) -> Callable[..., int]:
        if self.address is None:
            raise RuntimeError(f"{self.kind} was released")
        table = ctypes.c_void_p.from_address(self.address).value or 0
        entry = ctypes.c_void_p.from_address(table + slot * ctypes.sizeof(ctypes.c_void_p)).value
        function: Callable[..., int] = prototype(kinds)(entry or 0)
        return function

    def call(self, method: str, *arguments: Any) -> int:
        """The result code of a method."""
        slot, kinds = _SLOTS[self.kind][method]
        return self._function(slot, kinds)(self.address, *arguments)

    def require(self, method: str, *arguments: Any, what: str = "") -> int:
        """The same; a failing result raises Error."""
        return require(self.call(method, *arguments), what or f"{method} failed")

    def ask(self, method: str, kind: str, *arguments: Any, what: str = "") -> "Interface":
        """Another object, which the method hands out through its last argument."""
        made = ctypes.c_void_p()
        self.require(method, *arguments, ctypes.addressof(made), what=what)
        return Interface(kind, made.value)

    def number(self, method: str, *arguments: Any, signed: bool = True, first: bool = False,
               what: str = "") -> int:
        """A number of 32 bits, which the method writes through its last argument, or its first."""
        value = ctypes.c_int32() if signed else ctypes.c_uint32()
        out = (ctypes.addressof(value),)
        self.require(method, *(out + arguments if first else arguments + out), what=what)
        return int(value.value)

    def release(self) -> None:
        """Gives the reference back. A second time nothing happens."""
        if self.address is None:
            return
        function = self._function(_RELEASE, "p")
        address, self.address = self.address, None
        function(address)

    def __enter__(self) -> "Interface":
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self.release()

    def __del__(self, is_ending: Callable[[], bool] = sys.is_finalizing) -> None:
        if getattr(self, "address", None) is not None and not is_ending():
            self.release()
