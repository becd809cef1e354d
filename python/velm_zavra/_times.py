"""Milliseconds of the unit as datetime has them."""
from __future__ import annotations

from datetime import datetime, timedelta, timezone

_EPOCH = datetime(1970, 1, 1, tzinfo=timezone.utc)
_MILLISECOND = timedelta(milliseconds=1)


def to_datetime(epoch_time_msec: int) -> datetime:
    """The moment, in UTC, of milliseconds since 01.01.1970 0:00:00 UTC."""
    return _EPOCH + epoch_time_msec * _MILLISECOND


def epoch_msec(time: datetime) -> int:
    """Milliseconds since 01.01.1970 0:00:00 UTC, rounded down."""
    if not isinstance(time, datetime):
        raise TypeError(f"expected milliseconds or a datetime, got {time!r}")
    if time.tzinfo is None:
        raise ValueError(f"{time} has no time zone; datetime.timezone.utc is the unit's")
    return (time - _EPOCH) // _MILLISECOND


def interval_msec(interval: timedelta) -> int:
    """Milliseconds, rounded down."""
    if not isinstance(interval, timedelta):
        raise TypeError(f"expected milliseconds or a timedelta, got {interval!r}")
    return interval // _MILLISECOND
