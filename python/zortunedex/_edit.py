"""Changing the channels of a list."""
from __future__ import annotations

from contextlib import ExitStack
from types import TracebackType
from typing import TYPE_CHECKING, Any, Callable, Dict, Iterator, List, Optional, Sequence, Type

from ._channel import Channel, same_channels, set_values
from ._errors import Error, InvalidValue, NotFound
from ._files import CHANNELS, Change
from ._session import Session, scan

if TYPE_CHECKING:
    from ._database import Database

_LAST_INDEX = 0xFFFFFFFD  # the one behind it marks the end while a list is read


def find(channels: Sequence[Channel], index: int) -> Channel:
    """The first channel with an index."""
    for channel in channels:
        if channel.index == index:
            return channel
    raise NotFound(f"there is no channel with index {index!r}")


def ascending(channels: Sequence[Channel]) -> bool:
    return all(a.index < b.index for a, b in zip(channels, channels[1:]))


class ChannelList:
    """Channels in the order of their list. They are addressed by their index in the file, which
    begins at 1 and need not be without gaps."""

    def __init__(self, channels: List[Channel]) -> None:
        self._channels = channels

    def __len__(self) -> int:
        return len(self._channels)

    def __iter__(self) -> Iterator[Channel]:
        return iter(list(self._channels))

    def __getitem__(self, index: int) -> Channel:
        return find(self._channels, index)

    def __contains__(self, index: object) -> bool:
        return any(channel.index == index for channel in self._channels)

    def __repr__(self) -> str:
        return f"<{type(self).__name__} of {len(self)}>"


class Edit(ChannelList):
    """A list that is being changed: ``with db.edit() as e:``. At the end of the ``with`` it is
    saved, read back and compared; where that fails, and where an exception ends the ``with``, the
    file is as it was."""

    def __init__(self, database: "Database") -> None:
        super().__init__([])
        self._database = database
        self._change: Optional[Change] = None

    def __enter__(self) -> "Edit":
        if self._change is not None:
            raise Error("is being changed already", self._database.directory)
        database = self._database
        with ExitStack() as stack:
            change = stack.enter_context(Change(database.directory, database._wait))
            self._before, self._texts = scan(database._library, change.scratch, database.country,
                                             database.signal)
            self._change = change
            self._ending = stack.pop_all()
        self._channels = [channel.copy() for channel in self._before]
        self._begun = list(self._channels)
        self._last = max((channel.index for channel in self._before), default=0)
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        change, self._change = self._change, None
        if change is None:
            return
        try:
            with self._ending:
                if kind is None and self._channels != self._before:
                    self._save(change)
        finally:
            for channel in self._channels:
                channel._freeze()

    def new(self, **values: Any) -> Channel:
        """A channel of the list's signal type that no list holds: attributes and items by name,
        ``e.new(display_name="One", frequency=11494000, serviceID=28721)``."""
        self._require_open()
        channel = Channel(self._database.signal, self._texts)
        set_values(channel, values)
        return channel

    def add(self, channel: Optional[Channel] = None, **values: Any) -> Channel:
        """Adds a copy of a channel, or a new one, behind the last one, and answers what was added,
        with its index."""
        self._require_open()
        added = self.new() if channel is None else channel.copy()
        if added.signal != self._database.signal:
            raise InvalidValue(f"is of {added.signal.name}, the list of "
                               f"{self._database.signal.name}", "channel")
        set_values(added, values)
        if self._last >= _LAST_INDEX:
            raise Error("no index is left; sort the list first", self._database.directory)
        self._last += 1
        added._record = added._record.having(index=self._last)
        added._texts = self._texts
        self._channels.append(added)
        return added

    def remove(self, *indexes: int) -> None:
        """Takes out the channels with these indexes and numbers the rest 1, 2, 3, …; NotFound, and
        nothing is taken out, where one is not there."""
        self._require_open()
        known: Dict[int, List[Channel]] = {}
        for channel in self._channels:
            known.setdefault(channel.index, []).append(channel)
        gone = {id(self._single(known.get(index, []), index)) for index in indexes}
        self._channels = [channel for channel in self._channels if id(channel) not in gone]
        self._number()

    def move(self, index: int, to: int) -> None:
        """Puts a channel at the place of another one and numbers the list 1, 2, 3, …"""
        self._require_open()
        channel, other = (self._single([known for known in self._channels if known.index == wanted],
                                       wanted) for wanted in (index, to))
        place = next(place for place, known in enumerate(self._channels) if known is other)
        self._channels = [known for known in self._channels if known is not channel]
        self._channels.insert(place, channel)
        self._number()

    def sort(self, key: Callable[[Channel], Any], reverse: bool = False) -> None:
        """Sorts as ``list.sort`` does and numbers the list 1, 2, 3, …"""
        self._require_open()
        self._channels.sort(key=key, reverse=reverse)
        self._number()

    def _number(self) -> None:
        for index, channel in enumerate(self._channels, 1):
            channel._record = channel._record.having(index=index)
        self._last = len(self._channels)

    def _single(self, found: Sequence[Channel], index: int) -> Channel:
        """The channel with an index, of all that have it."""
        if len(found) > 1:
            raise Error(f"two channels have index {index}; sort the list first",
                        self._database.directory)
        return find(found, index)

    def _require_open(self) -> None:
        if self._change is None:
            raise Error("can be changed inside of its 'with' alone", self._database.directory)

    def _save(self, change: Change) -> None:
        database = self._database
        if not ascending(self._channels):
            raise Error("the indexes do not ascend, and channels would become one; sort the list "
                        "first", database.directory)
        for channel in self._channels:
            channel._check_storable()
        with Session(database._library, change.scratch, database.country,
                     database.signal) as session:
            self._store(session)
            session.database.require("SaveChannelToFile", what="was not written")
        found, _ = scan(database._library, change.scratch, database.country, database.signal)
        different = same_channels(self._channels, found)
        if different:
            raise Error(f"would not hold what was meant ({different}); the file is unchanged",
                        database.directory / CHANNELS)
        change.commit(CHANNELS)
        database._take(found)

    def _in_place(self, channels: Sequence[Channel]) -> bool:
        """Whether these are the channels that the list began with, by their indexes."""
        return len(channels) == len(self._before) and all(
            now is begun and now.index == old.index
            for now, begun, old in zip(channels, self._begun, self._before))

    def _store(self, session: Session) -> None:
        """Puts the channels into the library's list. What it does not know of a channel stays in
        the file as long as the channels keep their indexes."""
        before, now = self._before, self._channels
        channels = session.channel_list()
        if ascending(before) and self._in_place(now[:len(before)]):
            for old, new in zip(before, now):
                if old != new:
                    with channels.ask("GetChannelInfoByIndex", "IChannelInfo", new.index) as record:
                        session.write_channel(new, record)
            added = now[len(before):]
        else:
            channels.require("Clear")
            channels.require("SetDirty", 1)  # clearing an empty list does not
            added = now
        for channel in added:
            session.add_channel(channels, channel)
