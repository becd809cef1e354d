"""What travels between the driver and the unit: every command with its fields, and frames made and taken apart.

    command("Set_Epoch_Time").encode(epoch_time_msec=1000)      # the frame of a request
    command("Get_Epoch_Time").decode_response(bytes)            # {"epoch_time_msec": ...}
    decode("02100800000000000000010262")                        # what a captured frame says
"""
from __future__ import annotations

import json
import os
from collections.abc import Iterable
from dataclasses import dataclass
from pathlib import Path
from typing import Any

from . import _core


@dataclass(frozen=True)
class Field:
    """A value in a payload, or an array of them."""

    name: str  #: with the records around it, as in "parameters.correction_scale.m11"
    unit: str  #: "" where there is none, or it is the unit's own
    kind: str  #: "unsigned", "signed", "real", "text" or "bytes"
    size: int  #: bytes of one number or character
    count: int  #: numbers, characters or bytes; 0: as many as there are
    offset: int  #: in the payload


@dataclass(frozen=True)
class Command:
    """A command of the unit."""

    name: str  #: the device method that sends it
    identifier: int
    action: str  #: the words of its failure message
    request: tuple[Field, ...]
    response: tuple[Field, ...]  #: empty for a command without one
    request_size: int  #: bytes of payload
    response_size: int

    def payload(self, **arguments: Any) -> bytes:
        """The payload of a request. Raises ValueError that names an argument that is missing, unknown or out of range."""
        return _core.encode_request(self.name, json.dumps(arguments, default=_plain))

    def encode(self, **arguments: Any) -> bytes:
        """The frame of a request."""
        return _core.request_frame(self.identifier, self.payload(**arguments))

    def decode_request(self, payload: bytes) -> dict[str, Any]:
        """The arguments in a payload."""
        return _object(_core.decode_request(self.name, payload))

    def decode_response(self, payload: bytes) -> dict[str, Any]:
        """The results in a payload."""
        return _object(_core.decode_response(self.name, payload))


@dataclass(frozen=True)
class Explanation:
    """What a captured frame turned out to be."""

    title: str
    good: bool
    values: dict[str, Any]
    line: int  #: of the capture
    time: str = ""  #: as the capture has it


def request_frame(identifier: int, payload: bytes = b"") -> bytes:
    """Any request: header, payload and CRC."""
    return _core.request_frame(identifier, payload)


def crc8(data: bytes) -> int:
    """The CRC of a frame's bytes; of a whole frame it is 0."""
    return _core.crc8(data)


def decode(capture: bytes | str | Iterable[bytes | str]) -> list[Explanation]:
    """Explains frames: one in bytes or hexadecimal, or the lines of a capture, of the debug dump or of a journal. A
    response is understood by the request before it."""
    lines = [capture] if isinstance(capture, (bytes, str)) else capture
    text = "".join((each.hex() if isinstance(each, bytes) else each.rstrip("\n")) + "\n" for each in lines)
    return [Explanation(each["frame"], each["good"], each["values"], each["line"], each.get("time", ""))
            for each in map(json.loads, _core.explain(text).splitlines())]


def decode_file(path: str | os.PathLike[str]) -> list[Explanation]:
    """Explains the lines of a file, such as the journal of zavra-sim."""
    return decode(Path(path).read_text(encoding="utf-8").splitlines())


def command(name: str) -> Command:
    """The command of a device method's name."""
    return COMMANDS[name]


def _plain(value: Any) -> Any:
    return value.to_dict() if hasattr(value, "to_dict") else value.hex() if isinstance(value, bytes) else list(value)


def _object(text: str) -> dict[str, Any]:
    value: dict[str, Any] = json.loads(text)
    return value


def _fields(items: Iterable[_core.Item]) -> tuple[tuple[Field, ...], int]:
    fields, path, offset = [], [], 0
    for name, unit, kind, size, count in items:
        if kind == "open":
            path.append(name)
        elif kind == "close":
            path.pop()
        else:
            if kind != "skipped":
                fields.append(Field(".".join([*path, name]), unit, kind, size, count, offset))
            offset += size * count
    return tuple(fields), offset


def _commands() -> dict[str, Command]:
    commands = {}
    for name, identifier, action, request, response in _core.commands():
        (fields, size), (results, result_size) = _fields(request), _fields(response)
        commands[name] = Command(name, identifier, action, fields, results, size, result_size)
    return commands


COMMANDS: dict[str, Command] = _commands()  #: every command by name
