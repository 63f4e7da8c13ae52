"""A data directory, opened for a country and a signal type."""
from __future__ import annotations

from types import TracebackType
from typing import Callable, List, Optional, Tuple, Type, TypeVar, Union

from ._channel import Channel
from ._edit import ChannelList, Edit
from ._errors import Error, NotFound
from ._files import Change, data_directory
from ._generated import Signal
from ._library import PathLike, load
from ._presets import PresetArea, PresetChange, PresetList, Presets, read_presets
from ._satellites import (DishEdit, DishSatellite, Lnb, Satellite, read_catalogue, read_dishes)
from ._session import scan
from ._words import seconds, signal_of, whole_number

_Result = TypeVar("_Result")


class Database:
    """A data directory, as :func:`open` gives it. What it hands out are values: they stay what they
    were when they were read, also behind ``close``."""

    def __init__(self, directory: PathLike, country: int, signal: Union[str, int],
                 library: Optional[PathLike], wait: float) -> None:
        self.signal = signal_of(signal)
        """The signal type of the list of channels."""
        self.country = whole_number(country, 0, 2**32 - 1, "country")
        """The telephone country code of the list of channels."""
        self.directory = data_directory(directory)
        """Where the files are."""
        self._wait = seconds(wait, "wait")
        self._library = load(library)
        channels, self._texts = scan(self._library, self.directory.resolve(), self.country,
                                     self.signal)
        self._take(channels)
        self._open = True

    @property
    def channels(self) -> ChannelList:
        """The channels of the country and signal type, as they were read last: by ``open``,
        ``reload`` or behind a change."""
        self._require_open()
        return self._channels

    def reload(self) -> ChannelList:
        """Reads the channels again: what other programs changed meanwhile."""
        self._require_open()
        channels, self._texts = scan(self._library, self.directory.resolve(), self.country,
                                     self.signal)
        self._take(channels)
        return self._channels

    def edit(self) -> Edit:
        """Changes the channels: ``with db.edit() as e:``. The directory is locked until the end of
        the ``with``, ``tunedex`` waits meanwhile."""
        self._require_open()
        return Edit(self)

    @property
    def satellites(self) -> Tuple[Satellite, ...]:
        """The satellites of the catalogue, SatelliteInfo.xml, with their transponders. Nothing
        writes it but ``tunedex catalogue build``."""
        self._require_open()
        return read_catalogue(self._library, self.directory.resolve()).satellites

    def satellite(self, name: str) -> Satellite:
        """The first satellite with that id, else with that name; NotFound where there is none."""
        found = self.satellites
        for key in ("id", "name"):
            for satellite in found:
                if getattr(satellite, key) == name:
                    return satellite
        raise NotFound(f"the catalogue has no satellite {name!r}", self.directory)

    @property
    def lnbs(self) -> Tuple[Lnb, ...]:
        """The LNB types of the catalogue."""
        self._require_open()
        return read_catalogue(self._library, self.directory.resolve()).lnbs

    def lnb(self, name: str) -> Lnb:
        """The first LNB type of that name; NotFound where there is none."""
        for lnb in self.lnbs:
            if lnb.type == name:
                return lnb
        raise NotFound(f"the catalogue has no LNB type {name!r}", self.directory)

    @property
    def dishes(self) -> Tuple[Tuple[DishSatellite, ...], ...]:
        """What the four dishes receive, as UserSettings.xml has it; dish 1 is ``dishes[0]``."""
        self._require_open()
        return tuple(map(tuple, read_dishes(self._library, self.directory.resolve())))

    def edit_dishes(self) -> DishEdit:
        """Changes what the dishes receive: ``with db.edit_dishes() as dishes:``."""
        self._require_open()
        return DishEdit(self)

    @property
    def presets(self) -> Presets:
        """The presets of one-segment reception and the customer's own lists."""
        self._require_open()
        return read_presets(self._library, self.directory.resolve(), self.country)

    @property
    def current_preset(self) -> Optional[Tuple[PresetArea, PresetList]]:
        """The first sub-area that has the channels of this database; None where none has."""
        channels = list(self.channels)
        for area in self.presets:
            for found in area.lists:
                if channels and list(found.channels) == channels:
                    return area, found
        return None

    def select_preset(self, area: int, sub_area: int) -> ChannelList:
        """Puts the channels of a sub-area in the place of all one-segment channels of the country.
        Checked as ``edit`` is."""
        self._require_one_seg()
        self._take(self._change(lambda change: change.select(area, sub_area)))
        return self._channels

    def add_customer_list(self, name: str) -> PresetList:
        """Stores the channels of the file as a new list of the customer's, behind the others.
        To store them in the place of an old one delete that: the others move up."""
        self._require_one_seg()
        return self._change(lambda change: change.add(name))

    def delete_customer_list(self, number: int) -> None:
        """Deletes one of the customer's lists; the others move up."""
        self._require_one_seg()
        self._change(lambda change: change.delete(number))

    def close(self) -> None:
        """Ends the use of this object. Nothing is saved by it, and no memory waits for it."""
        self._open = False

    def __enter__(self) -> "Database":
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self.close()

    def __repr__(self) -> str:
        return f"<Database {str(self.directory)!r}, {self.country}, {self.signal.name}>"

    def _change(self, work: Callable[[PresetChange], _Result]) -> _Result:
        with Change(self.directory, self._wait) as change:
            return work(PresetChange(self, change))

    def _take(self, channels: List[Channel]) -> None:
        self._channels = ChannelList([channel._freeze() for channel in channels])

    def _require_open(self) -> None:
        if not self._open:
            raise Error("was closed", self.directory)

    def _require_one_seg(self) -> None:
        self._require_open()
        if self.signal != Signal.ISDBTerrestrialOneSeg:
            raise Error(f"is opened for {self.signal.name}, and presets are of "
                        "ISDBTerrestrialOneSeg", self.directory)


def open(directory: PathLike, country: int, signal: Union[str, int], *,  # noqa: A001
         library: Optional[PathLike] = None, wait: float = 10.0) -> Database:
    """Opens a data directory, ``with zt.open("samples/home", 49, "DVBSatellite") as db:``

    country: telephone country code. signal: the name of a signal type in any letter case,
    ``"DVBSatellite"``, its number, or one of :class:`Signal`. library: the shared library, where it
    is neither installed nor named by ``TUNEDEX_LIBRARY``. wait: seconds that a change waits for
    other programs.

    A directory without ChanInfo.xml has no channels. Raises InvalidValue for a signal type that is
    unknown or that the file cannot hold, Unreadable for a file that cannot be read,
    LibraryNotFound, and Error for a directory that is missing.
    """
    return Database(directory, country, signal, library, wait)
