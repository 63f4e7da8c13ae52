"""The catalogue of satellites, and what the dishes receive."""
from __future__ import annotations

import ctypes
import xml.etree.ElementTree as ElementTree
from contextlib import ExitStack
from dataclasses import dataclass
from pathlib import Path
from types import TracebackType
from typing import TYPE_CHECKING, List, NamedTuple, Optional, Sequence, Tuple, Type, TypeVar, Union

from ._com import Interface
from ._errors import Error, InvalidValue, Unreadable
from ._files import CATALOGUE, SETTINGS, Change, read, why_unreadable
from ._generated import Band, Division, Region, Signal
from ._library import Library
from ._session import Session, require_readable
from ._texts import ATTRIBUTE_LIMIT, Texts
from ._words import whole_number, word_of

if TYPE_CHECKING:
    from ._database import Database

DISHES = 4
_SAT_ATTRIBUTES = {"id", "band", "LNB_Low", "LNB_High", "LNB_Switch"}


@dataclass(frozen=True)
class Transponder:
    """One transponder of a satellite."""

    name: str
    frequency: int
    """Carrier, in the unit of the catalogue: kHz in those that ``tunedex`` builds."""
    polarisation: Union[str, int]
    """``LinearH``, ``LinearV``, ``CircularL``, ``CircularR`` or ``NotSet``."""
    symbol_rate: int
    """In thousands of symbols a second in catalogues that ``tunedex`` builds."""
    fec_rate: Union[str, int]
    """Inner rate, ``3/4`` and so on, or ``NotSet``; a number for a rate without a word."""
    modulation: Union[str, int]
    """``QPSK`` and so on, or ``NotSet``; a number for one without a word."""
    spectral_inversion: Union[str, int]
    """``automatic``, ``normal``, ``inverted`` or ``NotSet``."""


@dataclass(frozen=True)
class Satellite:
    """One satellite with its transponders."""

    id: str
    name: str
    longitude: int
    """Orbital position in tenths of a degree; negative in the west."""
    azimuth: Optional[int]
    """In tenths of a degree; None where it is not set."""
    elevation: Optional[int]
    """In tenths of a degree; None where it is not set."""
    region: Region
    division: Division
    c_band: Tuple[Transponder, ...]
    ku_band: Tuple[Transponder, ...]


@dataclass(frozen=True)
class Lnb:
    """A type of low-noise block converter. Frequencies in the unit of the catalogue, kHz in those
    that ``tunedex`` builds."""

    type: str
    low: int
    """Local oscillator of the low band."""
    high: int
    """Local oscillator of the high band; a type with one oscillator has it as both."""
    switch: int
    """Where reception changes to the high band; 0 for a type with one oscillator."""


@dataclass(frozen=True)
class DishSatellite:
    """A satellite as a dish receives it. Frequencies in the unit of the catalogue."""

    id: str
    """The satellite's ``id``."""
    band: str
    """As the settings name it: ``C-Band`` or ``Ku-Band``."""
    low: int = 0
    """Local oscillator of the low band."""
    high: int = 0
    """Local oscillator of the high band."""
    switch: int = 0
    """Where reception changes to the high band."""


class Catalogue(NamedTuple):
    satellites: Tuple[Satellite, ...]
    lnbs: Tuple[Lnb, ...]


def _transponder(session: Session, record: Interface) -> Transponder:
    return Transponder(
        session.text_of(record, "GetName"), record.number("GetCarrierFrequency", signed=False),
        word_of("Polarisation", record.number("GetPolarisation")), record.number("GetSymbolRate"),
        word_of("FecRate", record.number("GetInnerFECRate")),
        word_of("Modulation", record.number("GetModulationType")),
        word_of("SpectralInversion", record.number("GetSpectralInversion")))


def _band(session: Session, satellite: Interface, band: Band) -> Tuple[Transponder, ...]:
    found = []
    with satellite.ask("GetTransponderMgr", "ITransponderInfoMgr", band) as transponders:
        for place in range(transponders.number("GetTransponderCount", signed=False)):
            with transponders.ask("GetTransponderInfoByIndex", "ITransponderInfo", place) as record:
                found.append(_transponder(session, record))
    return tuple(found)


def _satellite(session: Session, record: Interface) -> Satellite:
    # The file has no place for a mark of the west: its positions are negative there.
    west, longitude = ctypes.c_int32(0), ctypes.c_int32(0)
    record.require("GetOrbitalPosition", ctypes.addressof(west), ctypes.addressof(longitude))
    azimuth, elevation = record.number("GetAzimuth"), record.number("GetElevation")
    return Satellite(
        session.text_of(record, "GetID"), session.text_of(record, "GetName"), longitude.value,
        None if azimuth == -1 else azimuth, None if elevation == -1 else elevation,
        _known(Region, record.number("GetRegion")), _known(Division, record.number("GetDivision")),
        _band(session, record, Band.CBand), _band(session, record, Band.KuBand))


_Numbered = TypeVar("_Numbered", Region, Division)


def _known(kind: Type[_Numbered], value: int) -> _Numbered:
    return next((known for known in kind if known == value), kind.Unknown)


def read_catalogue(library: Library, directory: Path) -> Catalogue:
    """SatelliteInfo.xml. Raises Error where there is none, or it cannot be read."""
    with Session(library, directory, 1, Signal.DVBSatellite) as session:
        if session.database.call("LoadSatInfoFromFile") < 0:
            data = read(directory / CATALOGUE)
            if data is None:
                raise Error("there is no such file", directory / CATALOGUE)
            raise Unreadable(why_unreadable(data), directory / CATALOGUE)
        satellites = session.member("GetSatelliteInfoMgr", "ISatelliteInfoMgr")
        lnbs = session.member("GetLNBInfoMgr", "ILNBInfoMgr")
        found = []
        for place in range(satellites.number("GetSatCount", 0, 0, 0, signed=False)):
            with satellites.ask("GetSatInfoByIndex", "ISatelliteInfo", place, 0, 0, 0) as record:
                found.append(_satellite(session, record))
        types = []
        for place in range(lnbs.number("GetLNBCount", signed=False)):
            with lnbs.ask("GetLNBInfoByIndex", "ILNBInfo", place) as record:
                types.append(Lnb(session.text_of(record, "GetType"), *(
                    record.number(method, signed=False)
                    for method in ("GetLowFreq", "GetHighFreq", "GetSwitchFreq"))))
    return Catalogue(tuple(found), tuple(types))


Dish = List[DishSatellite]


def read_dishes(library: Library, directory: Path) -> List[Dish]:
    """The four dishes of UserSettings.xml; without the file they are empty."""
    dishes: List[Dish] = []
    with Session(library, directory, 1, Signal.DVBSatellite) as session:
        assignments = session.member("GetDishSatInfoMgr", "IDishSatInfoMgr")
        for dish in range(DISHES):
            count = assignments.number("GetDishSatCount", dish, signed=False, first=True)
            dishes.append([_assignment(session, assignments, dish, place)
                           for place in range(count)])
    if not any(dishes):
        require_readable(library, directory / SETTINGS)
    return dishes


def _assignment(session: Session, assignments: Interface, dish: int, place: int) -> DishSatellite:
    found = ctypes.c_void_p()
    assignments.require("GetDishSatInfoByIndex", ctypes.addressof(found), dish, place)
    with Interface("IDishSatInfo", found.value) as record:
        return DishSatellite(
            session.text_of(record, "GetID"), session.text_of(record, "GetBand"),
            *(record.number(method, signed=False)
              for method in ("GetLowFreq", "GetHighFreq", "GetSwitchFreq")))


def _write_dishes(session: Session, dishes: Sequence[Dish]) -> None:
    """A save takes no element away: clearing the list does, and all are written afresh."""
    assignments = session.member("GetDishSatInfoMgr", "IDishSatInfoMgr")
    assignments.require("Clear")
    for dish, satellites in enumerate(dishes):
        for place, satellite in enumerate(satellites):
            with assignments.ask("CreateDishSatInfo", "IDishSatInfo") as record:
                record.require("SetIndex", place)
                session.set_text(record, "SetID", satellite.id)
                session.set_text(record, "SetBand", satellite.band)
                record.require("SetLowFreq", satellite.low)
                record.require("SetHighFreq", satellite.high)
                record.require("SetSwitchFreq", satellite.switch)
                assignments.require("AddDishSatInfo", record.address, dish)


class DishEdit:
    """The four dishes while they are changed: ``with db.edit_dishes() as dishes:``. Each is a list
    of :class:`DishSatellite`; dish 1 is ``dishes[0]``. At the end of the ``with`` they are saved,
    read back and compared; where that fails, and where an exception ends the ``with``, the file is
    as it was."""

    def __init__(self, database: "Database") -> None:
        self._database = database
        self._change: Optional[Change] = None

    def __enter__(self) -> Tuple[Dish, Dish, Dish, Dish]:
        if self._change is not None:
            raise Error("is being changed already", self._database.directory)
        with ExitStack() as stack:
            change = stack.enter_context(Change(self._database.directory, self._database._wait))
            self._before = read_dishes(self._database._library, change.scratch)
            self._change = change
            self._ending = stack.pop_all()
        first, second, third, fourth = [list(dish) for dish in self._before]
        self._dishes = (first, second, third, fourth)
        return self._dishes

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        change, self._change = self._change, None
        if change is None:
            return
        with self._ending:
            if kind is None and list(self._dishes) != self._before:
                self._save(change)

    def _save(self, change: Change) -> None:
        database = self._database
        path = database.directory / SETTINGS
        _check(self._dishes, database._texts)
        _check_kept(change.before[SETTINGS], self._before, path)
        with Session(database._library, change.scratch, 1, Signal.DVBSatellite) as session:
            _write_dishes(session, self._dishes)
            result = session.database.call("SaveUserSettingsToFile")
        found = read_dishes(database._library, change.scratch)
        for number, (meant, dish) in enumerate(zip(self._dishes, found), 1):
            if meant and not dish:
                raise Error(f"has no DISH_{number} element, and cannot hold satellites of that "
                            "dish; the file is unchanged", path)
        if result < 0 or found != list(self._dishes):
            raise Error("would not hold these assignments; the file is unchanged", path, result
                        if result < 0 else -0x7FFFBFFB)
        change.commit(SETTINGS)


def _check(dishes: Sequence[Dish], texts: Texts) -> None:
    """Refuses what the settings would not give back."""
    for number, dish in enumerate(dishes, 1):
        for place, satellite in enumerate(dish):
            where = f"dish {number}[{place}]"
            if not isinstance(satellite, DishSatellite):
                raise InvalidValue(f"takes a DishSatellite, not {satellite!r}", where)
            if satellite in dish[:place]:
                raise InvalidValue("is there twice", where)
            texts.require(satellite.id, ATTRIBUTE_LIMIT, where + ".id")
            texts.require(satellite.band, ATTRIBUTE_LIMIT, where + ".band")
            for name in ("low", "high", "switch"):
                whole_number(getattr(satellite, name), 0, 2**32 - 1, f"{where}.{name}")


def _check_kept(data: Optional[bytes], loaded: Sequence[Dish], path: Path) -> None:
    """All are written afresh: refused where the file holds more of one than was read."""
    if data is None:
        return
    try:
        root = ElementTree.fromstring(data)
    except (ElementTree.ParseError, ValueError, LookupError) as error:
        raise Error(f"is in a form whose assignments cannot be kept ({error}); the file is "
                    "unchanged", path) from error
    stored = root.find("SAT_SETTING")
    for number, dish in enumerate(loaded, 1):
        element = None if stored is None else stored.find(f"DISH_{number}")
        assignments = [] if element is None else element.findall("SAT")
        if [_plain(assignment) for assignment in assignments] != dish:
            raise Error(f"holds assignments of dish {number} that would not be kept; the file is "
                        "unchanged", path)


def _plain(assignment: ElementTree.Element) -> Optional[DishSatellite]:
    """The assignment of an element that holds nothing else."""
    if len(assignment) or (assignment.text or "").strip():
        return None
    if not set(assignment.keys()) <= _SAT_ATTRIBUTES:
        return None
    try:
        numbers = [int(assignment.get(name) or "0") % 2**32
                   for name in ("LNB_Low", "LNB_High", "LNB_Switch")]
    except ValueError:
        return None
    return DishSatellite(assignment.get("id") or "", assignment.get("band") or "", *numbers)
