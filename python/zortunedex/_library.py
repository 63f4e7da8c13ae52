"""The shared library: finding it, and the way to its objects."""
from __future__ import annotations

import ctypes
import os
import sys
import threading
from contextlib import contextmanager
from pathlib import Path
from typing import Any, Callable, Dict, Iterator, Optional, Tuple, Union

from ._com import Guid, Interface, prototype
from ._errors import Error, LibraryNotFound, require
from ._generated import CLSID_ZorTunedex, VERSION, IID_IZorTunedex

PathLike = Union[str, "os.PathLike[str]"]

WINDOWS = sys.platform == "win32"
FILE_NAME = "ZorTunedex.dll" if WINDOWS else "libZorTunedex.so." + VERSION.split(".")[0]

_RPC_E_CHANGED_MODE = -0x7FFEFEFA
_IID_ICLASSFACTORY = "00000001-0000-0000-c000-000000000046"


class Library:
    """The loaded library. It stays loaded until the process ends."""

    def __init__(self, path: str) -> None:
        if ctypes.sizeof(ctypes.c_void_p) != 8:
            raise LibraryNotFound("the library is for 64-bit Python", path)
        try:
            self.module = ctypes.CDLL(path)
        except OSError as error:
            raise LibraryNotFound(f"cannot be loaded: {error}", path) from error
        entry = getattr(self.module, "DllGetClassObject", None)
        if entry is None:
            raise LibraryNotFound("is another library", path)
        self.path = path
        self._get_class_object = prototype("ppp")(ctypes.cast(entry, ctypes.c_void_p).value or 0)
        self._ole = ctypes.CDLL("ole32") if WINDOWS else self.module
        texts = ctypes.CDLL("oleaut32") if WINDOWS else self.module
        self._alloc = self._function(texts, "SysAllocStringLen", ctypes.c_void_p,
                                     ctypes.c_char_p, ctypes.c_uint32)
        self.free_text = self._function(texts, "SysFreeString", None, ctypes.c_void_p)
        self._length = self._function(texts, "SysStringLen", ctypes.c_uint32, ctypes.c_void_p)
        self.free_memory = self._function(self._ole, "CoTaskMemFree", None, ctypes.c_void_p)

    @staticmethod
    def _function(module: ctypes.CDLL, name: str, result: Any,
                  *arguments: Any) -> Callable[..., Any]:
        function: Any = getattr(module, name)
        function.restype = result
        function.argtypes = arguments
        return function  # type: ignore[no-any-return]

    @contextmanager
    def ready(self) -> Iterator[None]:
        """Makes COM ready for this thread. On Linux there is nothing to make ready."""
        if not WINDOWS:
            yield
            return
        result: int = self._function(self._ole, "CoInitializeEx", ctypes.c_int32, ctypes.c_void_p,
                                     ctypes.c_uint32)(None, 0)
        if result != _RPC_E_CHANGED_MODE:
            require(result, "COM cannot be made ready")
        try:
            yield
        finally:
            if result >= 0:
                self._function(self._ole, "CoUninitialize", None)()

    def create(self) -> Interface:
        """A new database object."""
        factory = ctypes.c_void_p()
        require(self._get_class_object(ctypes.addressof(Guid.of(CLSID_ZorTunedex)),
                                       ctypes.addressof(Guid.of(_IID_ICLASSFACTORY)),
                                       ctypes.addressof(factory)),
                "the library has no such class", self.path)
        with Interface("IClassFactory", factory.value) as made:
            return made.ask("CreateInstance", "IZorTunedex", None,
                            ctypes.addressof(Guid.of(IID_IZorTunedex)),
                            what="the database object cannot be made")

    def unused(self) -> bool:
        """True when no database object is left."""
        entry = self._function(self.module, "DllCanUnloadNow", ctypes.c_int32)
        return bool(entry() == 0)

    @contextmanager
    def text(self, text: str) -> Iterator[int]:
        """A counted UTF-16 text of the library's memory, freed at the end."""
        units = text.encode("utf-16-le")
        address: Optional[int] = self._alloc(units, len(units) // 2)
        if not address:
            raise MemoryError("no memory for a text")
        try:
            yield address
        finally:
            self.free_text(address)

    def take_text(self, address: Optional[int]) -> str:
        """The text at an address that was handed out, and is freed here."""
        if not address:
            return ""
        try:
            units = ctypes.string_at(address, 2 * int(self._length(address)))
        finally:
            self.free_text(address)
        return units.decode("utf-16-le", "replace")

    def set_code_page(self, page: int) -> None:
        entry = getattr(self.module, "ZorTunedexSetCodePage", None)
        if entry is None:
            raise Error("narrow texts are in the code page of Windows here", self.path)
        call = self._function(self.module, "ZorTunedexSetCodePage", ctypes.c_int32, ctypes.c_uint32)
        require(call(page), f"there is no code page {page}", self.path)


_loaded: Dict[str, Library] = {}
_lock = threading.Lock()


def _place(named: Optional[PathLike]) -> Tuple[str, bool]:
    """Where the library is looked for, and whether somebody said so."""
    asked = os.fspath(named) if named is not None else os.environ.get("TUNEDEX_LIBRARY")
    if asked:
        return os.path.abspath(asked), True
    beside = Path(__file__).resolve().parent / FILE_NAME
    return str(beside) if beside.exists() else FILE_NAME, False


def load(named: Optional[PathLike] = None) -> Library:
    """The library that ``named`` says, else ``TUNEDEX_LIBRARY``, else that of this package's
    folder, else the system's."""
    place, is_asked = _place(named)
    if is_asked and not os.path.isfile(place):
        raise LibraryNotFound("there is no such library", place)
    with _lock:
        if place not in _loaded:
            try:
                _loaded[place] = Library(place)
            except LibraryNotFound as error:
                if place != FILE_NAME:
                    raise
                raise LibraryNotFound(
                    f"{FILE_NAME} is not installed ({error.what}); install the package zortunedex, "
                    "or name the library with TUNEDEX_LIBRARY") from error
        return _loaded[place]


def set_code_page(page: int, library: Optional[PathLike] = None) -> None:
    """Chooses the code page of the texts in station blocks, for the whole process; before
    :func:`open`. Linux: 932, 936, 949, 950, 1250 to 1258 or 65001 (UTF-8, the default). On Windows
    it is the system's and cannot be chosen."""
    load(library).set_code_page(page)
