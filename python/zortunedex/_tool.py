"""What the command-line host does: it is run, and its answer is read."""
from __future__ import annotations

import json
import os
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Dict, List, Mapping, Optional, Sequence, Tuple, Union

from ._errors import E_FAIL, E_INVALIDARG, Error, InvalidValue, LibraryNotFound
from ._files import data_directory
from ._library import WINDOWS, PathLike
from ._texts import check_text
from ._words import signal_of, whole_number

_DONE, _LOOK = 0, 3  # what the tool ends with
_WRONG_LINE = 2


@dataclass(frozen=True)
class Finding:
    """One finding of ``tunedex check``; its codes are told in docs/check.md."""

    code: str
    severity: str
    """``error``, ``warning`` or ``note``."""
    file: str
    line: Optional[int]
    """From 1."""
    column: Optional[int]
    """In characters, from 1."""
    path: Optional[str]
    """The element: ``Country[49]/ChannelSet[64]/Channel[index=5]``."""
    attribute: Optional[str]
    value: Optional[str]
    text: str
    """What is wrong, in a sentence."""
    repair: str
    """``yes``, ``option`` or ``no``: whether ``tunedex repair`` mends it."""
    option: Optional[str]
    """The option that makes it do so."""


@dataclass(frozen=True)
class FieldChange:
    """What a merge makes of one field; None where there is no such value."""

    field: str
    list: Any
    base: Any
    scan: Any
    result: Any


@dataclass(frozen=True)
class Candidate:
    """A service of the scan that an ambiguous channel may be."""

    identity: str
    name: str


@dataclass(frozen=True)
class MergeChange:
    """What a merge makes of one channel."""

    code: str
    """``M100`` (unchanged) to ``M404``."""
    index: Optional[int]
    """In the list; None for a new channel without a place there."""
    identity: Optional[str]
    name: Optional[str]
    fields: Tuple[FieldChange, ...]
    became: Optional[int]
    """The index after the merge; None for a channel that is removed, or does not come in."""
    absent: int
    """How many scans in a row lacked it."""
    candidates: Tuple[Candidate, ...]
    """Of an ambiguous channel, which is left alone."""


@dataclass(frozen=True)
class MergePlan:
    """What merging a scan into a list would do."""

    summary: Mapping[str, int]
    """How many channels each code has."""
    changes: Tuple[MergeChange, ...]
    """In the order of the indexes, new channels last."""


def find_tool(named: Optional[PathLike] = None) -> str:
    """The program: what ``named`` says, else ``TUNEDEX_TOOL``, else ``tunedex`` on the PATH."""
    asked = os.fspath(named) if named is not None else os.environ.get("TUNEDEX_TOOL")
    if asked:
        found = shutil.which(os.path.abspath(asked))
        if found is None:
            raise LibraryNotFound("there is no such program", asked)
        return found
    found = shutil.which("tunedex")
    if found is None:
        raise LibraryNotFound("tunedex is not on the PATH; install the package zortunedex, or name "
                              "it with TUNEDEX_TOOL")
    return found


def _option(name: str, value: Union[str, int, bool, PathLike, None]) -> List[str]:
    """``gone_favorites=True``: --gone-favorites; ``new="none"``: --new none."""
    option = "--" + name.replace("_", "-")
    if value is None or value is False:
        return []
    return [option] if value is True else [option, check_text(os.fspath(value) if not isinstance(
        value, int) else str(value), option)]


def _run(tool: Optional[PathLike], directory: PathLike, arguments: Sequence[str],
         kind: str) -> Dict[str, Any]:
    """The JSON document that a command prints."""
    path = data_directory(directory)
    line = [find_tool(tool), "--dir", str(path.resolve()), *arguments]
    flags = getattr(subprocess, "CREATE_NO_WINDOW", 0) if WINDOWS else 0
    try:
        ended = subprocess.run(line, stdin=subprocess.DEVNULL, capture_output=True, check=False,
                               creationflags=flags)
    except OSError as error:
        raise LibraryNotFound(f"cannot be run: {error.strerror}", line[0]) from error
    if ended.returncode not in (_DONE, _LOOK):
        said = ended.stderr.decode("utf-8", "replace").strip() or "it told nothing"
        raise Error(f"tunedex ended with {ended.returncode}: {said}", path,
                    E_INVALIDARG if ended.returncode == _WRONG_LINE else E_FAIL)
    try:
        document = json.loads(ended.stdout.decode("utf-8"))
        if document["tunedex"] == kind and document["version"] == 1:
            return dict(document)
    except (ValueError, TypeError, KeyError):
        pass
    raise Error(f"the answer is no {kind} document of version 1", line[0])


def _dated(kind: Any, row: Mapping[str, Any], **more: Any) -> Any:
    """A value of a class, of the keys that it knows; a key that is missing is None."""
    return kind(**{**{name: row.get(name) for name in kind.__dataclass_fields__}, **more})


def check(directory: PathLike, *, level: Optional[str] = None, file: Optional[str] = None,
          tool: Optional[PathLike] = None) -> List[Finding]:
    """What ``tunedex check`` finds in a directory; nothing is changed.

    level: ``error``, ``warning`` (taken unless given) or ``note``, the least severe that is wanted.
    file: one file alone. tool: the program, where it is neither on the PATH nor named by
    ``TUNEDEX_TOOL``.
    """
    if level not in (None, "error", "warning", "note"):
        raise InvalidValue(f"takes error, warning or note, not {level!r}", "level")
    arguments = ["--json", "check", *_option("level", level), *_option("file", file)]
    found = _run(tool, directory, arguments, "check")["findings"]
    return [_dated(Finding, row) for row in found]


def merge_plan(directory: PathLike, scan: PathLike, *, country: int, signal: Union[str, int],
               tool: Optional[PathLike] = None,
               **policies: Union[str, int, bool, PathLike, None]) -> MergePlan:
    """What ``tunedex channels merge`` would do with a scan; nothing is changed.

    scan: a file of another program, or a data directory that was scanned into. policies: the
    command's options, ``format="vdr"``, ``new="none"``, ``gone_favorites=True``; see the command's
    help.
    """
    path = Path(check_text(os.fspath(scan), "scan")).resolve()
    if not path.exists():
        raise Error("there is no such file or directory", path)
    arguments = ["--country", str(whole_number(country, 0, 2**32 - 1, "country")), "--signal",
                 signal_of(signal).name, "--json", "channels", "merge", str(path), "--dry-run"]
    for name, value in policies.items():
        arguments += _option(name, value)
    document = _run(tool, directory, arguments, "merge")
    return MergePlan(dict(document["summary"]), tuple(_change(row) for row in document["changes"]))


def _change(row: Mapping[str, Any]) -> MergeChange:
    def values(kind: Any, key: str) -> Tuple[Any, ...]:
        return tuple(_dated(kind, value) for value in row.get(key) or ())

    # What is not said of a channel did not come about.
    became, absent = row.get("became", row.get("index")), row.get("absent", 0)
    change: MergeChange = _dated(MergeChange, row, fields=values(FieldChange, "fields"),
                                 became=became, absent=absent,
                                 candidates=values(Candidate, "candidates"))
    return change
