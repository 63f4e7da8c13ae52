"""The files of a data directory: read whole, and replaced whole or not at all."""
from __future__ import annotations

import os
import secrets
import stat
import sys
import tempfile
import time
from contextlib import ExitStack
from pathlib import Path
from types import TracebackType
from typing import Dict, Optional, Type
from xml.parsers import expat

from ._errors import Error, Unreadable
from ._texts import check_text

if sys.platform == "win32":
    import msvcrt
else:
    import fcntl

CHANNELS = "ChanInfo.xml"
SETTINGS = "UserSettings.xml"
CATALOGUE = "SatelliteInfo.xml"
PRESETS = "PreSetChannelInfo.xml"
_ALL = (CHANNELS, SETTINGS, CATALOGUE, PRESETS)

_HISTORY = "tunedex-history"


def data_directory(directory: object) -> Path:
    """An existing directory; Error that names what is wrong with it."""
    try:
        path = os.fspath(directory)  # type: ignore[call-overload]
    except TypeError:
        raise Error(f"takes a path, not {type(directory).__name__}", "directory") from None
    if not check_text(path, "directory"):
        raise Error("is empty", "directory")
    found = Path(path)
    try:
        if stat.S_ISDIR(found.stat().st_mode):
            return found
    except FileNotFoundError:
        raise Error("there is no such directory", found) from None
    except OSError as error:
        raise Error(f"cannot be opened: {error.strerror}", found) from error
    raise Error("is no directory", found)


def read(path: Path) -> Optional[bytes]:
    """The bytes of a file; None where nothing stands there."""
    try:
        if not stat.S_ISREG(path.stat().st_mode):
            raise Unreadable("cannot be read: it is no regular file", path)
        return path.read_bytes()
    except FileNotFoundError:
        return None
    except OSError as error:
        raise Unreadable(f"cannot be read: {error.strerror}", path) from error


def why_unreadable(data: bytes) -> str:
    """Why bytes are no document, with line and column where a parser finds them."""
    if not data:
        return "cannot be read: it is empty"
    parser = expat.ParserCreate()
    try:
        parser.Parse(data, True)
    except expat.ExpatError as error:
        reason = expat.ErrorString(error.code)
        return f"cannot be read: line {error.lineno}, column {error.offset + 1}: {reason}"
    return "cannot be read: the library refuses it"


def replace(path: Path, data: bytes) -> None:
    """Replaces a file as a whole or not at all; a symbolic link is followed, the mode is kept. Only
    the very last step, making the change of the directory durable, can fail behind it."""
    target = Path(os.path.realpath(path))
    before: Optional[os.stat_result] = None
    try:
        before = target.stat()
    except FileNotFoundError:
        pass
    temporary = target.parent / f".tunedex-{secrets.token_hex(8)}"
    flags = os.O_WRONLY | os.O_CREAT | os.O_EXCL | getattr(os, "O_BINARY", 0)
    handle = os.open(temporary, flags, 0o666)
    try:
        try:
            _write(handle, data, before)
            if sys.platform != "win32":
                os.replace(temporary, target)  # with its lock, which tells that it is not abandoned
        finally:
            os.close(handle)
        if sys.platform == "win32":
            os.replace(temporary, target)
    except BaseException:
        temporary.unlink(missing_ok=True)
        raise
    _sync_directory(target.parent)


def _write(handle: int, data: bytes, before: Optional[os.stat_result]) -> None:
    take_lock(handle)
    if sys.platform != "win32" and before is not None:
        try:
            os.fchown(handle, before.st_uid, before.st_gid)
        except OSError:
            pass  # only the owner may, and then it is right already
        os.fchmod(handle, stat.S_IMODE(before.st_mode))
    rest = memoryview(data)
    while rest:
        rest = rest[os.write(handle, rest):]
    os.fsync(handle)


def _sync_directory(directory: Path) -> None:
    if sys.platform == "win32":
        return
    handle = os.open(directory, os.O_RDONLY)
    try:
        os.fsync(handle)
    finally:
        os.close(handle)


def take_lock(handle: int) -> bool:
    """Takes the lock of an open file when nobody else has it. File systems without locks give it to
    everybody."""
    try:
        if sys.platform == "win32":
            msvcrt.locking(handle, msvcrt.LK_NBLCK, 1)
        else:
            fcntl.flock(handle, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except (BlockingIOError, PermissionError):
        return False
    except OSError:
        pass
    return True


class DirectoryLock:
    """The lock that ``tunedex`` holds while it changes a directory."""

    def __init__(self, directory: Path, wait: float) -> None:
        folder = directory / _HISTORY
        try:
            folder.mkdir(exist_ok=True)
            self._handle = os.open(folder / "lock", os.O_RDWR | os.O_CREAT, 0o666)
        except OSError as error:
            raise Error(f"cannot be locked: {error.strerror}; nothing was changed",
                        directory) from error
        end = time.monotonic() + wait
        while not take_lock(self._handle):
            if time.monotonic() >= end:
                self.release()
                raise Error(f"another program is changing it (waited {wait:g} s); nothing was "
                            "changed", directory)
            time.sleep(0.01)
        if (folder / "PENDING").exists():
            self.release()
            raise Error("a change of tunedex was interrupted here, and its next change completes "
                        "it; nothing was changed", directory)

    def release(self) -> None:
        os.close(self._handle)


class Change:
    """A change of one file of a directory: everything happens on a copy under the directory's lock,
    and what came out there takes the file's place at the end."""

    def __init__(self, directory: Path, wait: float = 10.0) -> None:
        self.directory = directory
        with ExitStack() as stack:
            stack.callback(DirectoryLock(directory, wait).release)
            self.before: Dict[str, Optional[bytes]] = {name: read(directory / name)
                                                       for name in _ALL}
            try:
                self.scratch = Path(stack.enter_context(
                    tempfile.TemporaryDirectory(prefix="tunedex-")))
                for name, data in self.before.items():
                    if data is not None:
                        (self.scratch / name).write_bytes(data)
            except OSError as error:
                raise Error(f"cannot be copied: {error.strerror}; nothing was changed",
                            directory) from error
            self._ending = stack.pop_all()

    def commit(self, name: str) -> None:
        """Replaces the file by that of the copy. Error, and the file is as it was, where that fails
        and where another program changed it meanwhile."""
        path = self.directory / name
        data = read(self.scratch / name)
        if data is None or any(self.scratch.glob(name + ".unreadable*")):
            raise Error("would be lost; the file is unchanged", path)
        if data == self.before[name]:
            return
        if read(path) != self.before[name]:
            raise Error("another program has changed it meanwhile; that is kept, and nothing else "
                        "was changed", path)
        try:
            replace(path, data)
        except OSError as error:
            state = "unchanged" if read(path) == self.before[name] else "replaced"
            raise Error(f"could not be written: {error.strerror or error}; the file is {state}",
                        path) from error
        if read(path) != data:
            raise Error("is not what was written", path)

    def __enter__(self) -> "Change":
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self._ending.close()
        if isinstance(error, Error) and str(self.scratch) in str(error):
            raise self._named(error) from error.__cause__

    def _named(self, error: Error) -> Error:
        """The error with the directory in the place of its copy."""
        what, where = (text.replace(str(self.scratch), str(self.directory))
                       for text in (error.what, error.where))
        return type(error)(what, where, error.result)
