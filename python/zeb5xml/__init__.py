"""Reads and writes the XML documents of an accelerator's data acquisition.

    import zeb5xml
    channels = zeb5xml.read("channels.xml")
    for channel in channels:
        print(channel.prop_name, zeb5xml.event_names(channel.ev_type))
    channels.to_dataframe()                 # one row a channel; needs pandas
    channels.to_dataframe("bits")           # one row a bit

A list owns its records; a record keeps its list alive. Reading turns standard output and standard error of the whole
process elsewhere for that time, so that an Error has what the reader reported.

Documents that a list writes are labelled ISO-8859-1 and have the texts as they are: neither `&` nor `<` is escaped.
"""

import json
import os
import stat
import subprocess
from collections import namedtuple

from ._zeb5xml import (Bit, CameraFeatures, Channel, ChannelList, DictionaryEntry, Dim, EnvDictionary, Error, Event,
                       EventList, Feature, ServerBlock, Stat, _root_of_file, _root_of_text, block_names, event_names)

__all__ = ["Bit", "CameraFeatures", "Channel", "ChannelList", "DictionaryEntry", "Dim", "EnvDictionary", "Error", "Event",
           "EventList", "Feature", "Finding", "ServerBlock", "Stat", "block_names", "check", "event_names", "parse", "read"]

_KINDS = {"CHANDESCRIPTIONS": ChannelList, "DAQvariables": ChannelList, "BMR": EventList, "ENVINDEXDICT": EnvDictionary}


def _mode_of(path):
    """Returns 0 for what is not there: the reader reports it."""
    try:
        return os.stat(path).st_mode
    except OSError:
        return 0


def _kind_of(root):
    """A document with any other root is a camera file, if it is anything."""
    return _KINDS.get(root, CameraFeatures)


def read(path, **options):
    """Reads a file of any kind: returns a ChannelList, an EventList, an EnvDictionary or CameraFeatures. Raises Error.

    The kind goes by the root element; an unknown one is that of a camera file. Channel descriptions take the options of
    ChannelList.read().
    """
    if stat.S_ISFIFO(_mode_of(path)):
        with open(path, "rb") as pipe:  # it can be read only once
            return parse(pipe.read(), **options)
    return _kind_of(_root_of_file(os.fspath(path))).read(path, **options)


def parse(text, **options):
    """Reads a document in memory of any kind; see read().

    A str is read as UTF-8, so it must not declare another encoding; bytes are read as they declare.
    """
    return _kind_of(_root_of_text(text)).parse(text, **options)


Finding = namedtuple("Finding", "file line column severity message rule")
Finding.__doc__ = "One line of `zeb5xml check`."


def check(*paths, command="zeb5xml"):
    """Returns what the command `zeb5xml check` finds in the files, which a reader would pass over in silence."""
    done = subprocess.run([command, "check", "--format", "json", "--", *map(os.fspath, paths)], capture_output=True,
                          text=True)
    if not done.stdout:
        error = Error(done.stderr.strip() or f"{command} check failed with status {done.returncode}")
        error.code, error.printed, error.records = done.returncode, done.stderr, None
        raise error
    return [Finding(**{name: row.get(name) for name in Finding._fields}) for row in json.loads(done.stdout)]


_PARTS = (Bit, Dim, ServerBlock, Stat)


def _attributes(record):
    """All attributes of a record as a dict, its parts as lists of dicts."""
    return {name: _plain(getattr(record, name)) for name, kind in vars(type(record)).items() if isinstance(kind, property)}


def _plain(value):
    if isinstance(value, list):
        return [_plain(part) for part in value]
    return _attributes(value) if isinstance(value, _PARTS) else value


def _channels_to_dict(self, of="channels"):
    """Returns a dict with a list for each field, of all channels or of all their "bits", "dims" or "stats"."""
    return self._columns(of, False)


def _channels_to_dataframe(self, of="channels"):
    """Returns a pandas DataFrame with a row for each channel, or for each of their "bits", "dims" or "stats"."""
    import pandas
    return pandas.DataFrame(self._columns(of, True), copy=False)


def _to_dict(self):
    """Returns a dict with a list for each field; parts are lists of dicts."""
    rows = [_attributes(record) for record in self]
    return {name: [row[name] for row in rows] for name in (rows[0] if rows else {})}


def _to_dataframe(self):
    """Returns a pandas DataFrame with a row for each record."""
    import pandas
    return pandas.DataFrame(_to_dict(self))


ChannelList.to_dict, ChannelList.to_dataframe = _channels_to_dict, _channels_to_dataframe
for _kind in (EventList, EnvDictionary, CameraFeatures):
    _kind.to_dict, _kind.to_dataframe = _to_dict, _to_dataframe
for _record in (Bit, Channel, DictionaryEntry, Dim, Event, Feature, ServerBlock, Stat):
    _record.to_dict = _attributes
