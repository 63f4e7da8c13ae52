"""Channel databases of television tuners.

    import zortunedex as zt

    with zt.open("samples/home", country=49, signal="DVBSatellite") as db:
        for c in db.channels:
            print(c.index, c.display_name, c["serviceID"])
        with db.edit() as e:
            e[5].favorite = True

What goes wrong raises :class:`Error`, and nothing is half done then.
"""
from ._channel import Channel
from ._database import Database, open
from ._edit import ChannelList, Edit
from ._errors import Error, InvalidValue, LibraryNotFound, NotFound, Unreadable, UnknownField
from ._generated import VERSION as __version__
from ._generated import Division, Region, Service, Signal
from ._library import set_code_page
from ._presets import PresetArea, PresetList, Presets
from ._satellites import DishEdit, DishSatellite, Lnb, Satellite, Transponder
from ._streams import Entry, Streams
from ._tool import Candidate, FieldChange, Finding, MergeChange, MergePlan, check, merge_plan

__all__ = [
    "Candidate", "Channel", "ChannelList", "Database", "DishEdit", "DishSatellite", "Division",
    "Edit", "Entry", "Error", "FieldChange", "Finding", "InvalidValue", "LibraryNotFound",
    "Lnb", "MergeChange", "MergePlan", "NotFound", "PresetArea", "PresetList", "Presets",
    "Region", "Satellite", "Service", "Signal", "Streams", "Transponder", "UnknownField",
    "Unreadable", "__version__", "check", "merge_plan", "open", "set_code_page",
]
