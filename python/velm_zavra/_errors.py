"""Why a call failed: a class for each cause."""
from __future__ import annotations


class Error(Exception):
    """A failure of the library, the unit or the bus, with the messages of all layers in one."""

    error_number: int = 0  #: the system's errno for a bus or a file; 0 where nobody said


class BusError(Error):
    """The bus cannot be opened, or a transfer failed."""


class NotAcknowledged(BusError):
    """Nobody answers at the address, or who does is busy."""


class BusTimeout(BusError):
    """The bus did not come to an end with a transfer."""


class DamagedReply(Error):
    """Ten replies with a wrong CRC."""


class RefusedArgument(Error, ValueError):
    """Nothing was sent."""


class FileError(Error):
    """A file cannot be read, or has not the content that it should have."""


class NotConnected(Error):
    """The unit has been disconnected."""
