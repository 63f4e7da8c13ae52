"""What goes wrong, as exceptions."""
from __future__ import annotations

E_NOTIMPL = -0x7FFFBFFF
E_FAIL = -0x7FFFBFFB
E_INVALIDARG = -0x7FF8FFA9


class Error(Exception):
    """Something could not be done; nothing is half done.

    ``str()`` of it says where and what.
    """

    def __init__(self, what: str, where: object = "", result: int = E_FAIL) -> None:
        self.what = what
        """What went wrong."""
        self.where = str(where)
        """The file, directory, channel or field; empty where there is none."""
        self.result = result
        """The result code of the library, a negative number; ``E_FAIL`` where it gave none."""
        super().__init__(f"{self.where}: {what}" if self.where else what)


class InvalidValue(Error, ValueError):
    """A value that does not belong there: an unknown signal type, a text that is too long or
    outside the code page, a number beyond its field. Refused where it is given."""

    def __init__(self, what: str, where: object = "", result: int = E_INVALIDARG) -> None:
        super().__init__(what, where, result)


class UnknownField(Error, LookupError):
    """A field that channels of that signal type, or entries of that list, do not have."""

    def __init__(self, what: str, where: object = "", result: int = E_INVALIDARG) -> None:
        super().__init__(what, where, result)


class NotFound(Error, LookupError):
    """A channel, satellite, LNB type or preset list that is not there."""


class Unreadable(Error):
    """A file that is there and cannot be read. It is never taken for an empty one."""


class LibraryNotFound(Error):
    """The shared library, or the program ``tunedex``, is not there or cannot be used."""


def require(result: int, what: str, where: object = "") -> int:
    """Raises Error for a failing result; counts and ``S_FALSE`` pass."""
    if result < 0:
        raise Error(what, where, result)
    return result
