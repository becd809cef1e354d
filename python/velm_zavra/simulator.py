"""A simulated unit in this process, with faults, scenarios and a satellite, and a clock that stands still unless time is
let pass: where the driver waits for the unit, by advance(), and by run(). A test of a ground script takes milliseconds.

    with Bench() as bench:                     # velm_zavra.Unit() finds the simulated unit in here
        bench.inject("crc")
        unit = velm_zavra.Unit()
        unit.get_attitude_telemetry()
        bench.advance("10s")
"""
from __future__ import annotations

import json
import os
from collections.abc import Iterator, Mapping, Sequence
from contextlib import contextmanager
from datetime import timedelta
from pathlib import Path
from types import TracebackType
from typing import TYPE_CHECKING, Any

from . import _core
from ._core import Unit

if TYPE_CHECKING:
    import numpy
    import pandas

Duration = float | timedelta | str

FAULTS = ("reset", "dead-bus", "hang", "nak-write", "request", "nak-read", "short-reply", "stale", "crc")


def seconds(duration: Duration) -> float:
    """Of a number of seconds, a timedelta, or a text like "90s", "1.5h"."""
    if isinstance(duration, str):
        return _core.parse_duration(duration)
    return duration.total_seconds() if isinstance(duration, timedelta) else duration


class Record(Mapping[str, "numpy.ndarray[Any, numpy.dtype[numpy.float64]]"]):
    """What a satellite did, as columns by name: the truth, what its actuators did, the unit's mode, and what the unit's
    software believed (NaN where it believed nothing). Units stand in the names."""

    def __init__(self, names: Sequence[str], values: bytes):
        import numpy

        self.names = tuple(names)
        rows = numpy.frombuffer(values).reshape(-1, len(self.names))
        self._columns = {name: rows[:, i] for i, name in enumerate(self.names)}

    def __getitem__(self, name: str) -> numpy.ndarray[Any, numpy.dtype[numpy.float64]]:
        return self._columns[name]

    def __iter__(self) -> Iterator[str]:
        return iter(self.names)

    def __len__(self) -> int:
        return len(self.names)

    def vector(self, name: str) -> numpy.ndarray[Any, numpy.dtype[numpy.float64]]:
        """The columns of a vector side by side: vector("angular_velocity_radps") has three, vector("q") four."""
        import numpy

        stem, _, unit = name.rpartition("_")
        components = [f"{stem}_{each}_{unit}" for each in "xyzuvw"] + [f"{name}_{each}" for each in ("x", "y", "z", 1, 2, 3, 4)]
        found = [self[each] for each in components if each in self._columns]
        if not found:
            raise KeyError(name)
        return numpy.column_stack(found)

    def to_frame(self) -> pandas.DataFrame:
        """A DataFrame of pandas, if that is there, with the time in seconds as its index."""
        import pandas

        return pandas.DataFrame(self._columns).set_index("time_s")

    def __repr__(self) -> str:
        return f"<Record of {len(self['time_s'])} lines, {len(self)} columns>"


class Recording:
    """What is recorded at the moment."""

    record: Record  #: as soon as the recording is over


class Bench:
    """Simulated units on a bus of their own.

    satellite: TOML file of a satellite that each unit sits in; without one units measure a world of fixed values
    addresses: one unit at each
    seed: what faults and the sensors' errors are drawn from
    scenario: TOML file of what happens when

    In a with block, velm_zavra.Unit() and programs that are started look for the bus "i2c-0" at the bench.
    """

    def __init__(self, satellite: str | os.PathLike[str] | None = None, *, addresses: Sequence[int] = (10,), seed: int = 0,
                 scenario: str | os.PathLike[str] | None = None, bus: str = "i2c-0"):
        self._core = _core.Bench(addresses, satellite, seed, bus)
        self._default = addresses[0]
        self._bus = bus
        self._outside: list[str | None] = []
        if scenario is not None:
            self._core.play(scenario)

    def __enter__(self) -> Bench:
        self._outside.append(os.environ.get("VELM_I2C_BUS_DIR"))
        os.environ["VELM_I2C_BUS_DIR"] = str(self.directory)
        return self

    def __exit__(self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None) -> None:
        before = self._outside.pop()
        if before is None:
            del os.environ["VELM_I2C_BUS_DIR"]
        else:
            os.environ["VELM_I2C_BUS_DIR"] = before

    def connect(self, address: int | None = None, ini: str | os.PathLike[str] | None = None) -> Unit:
        """The driver, connected to a unit of the bench."""
        return _core.connect(self._core, self.directory, self._bus, self._address(address), ini)

    @property
    def directory(self) -> Path:
        """Of the bus, for programs that VELM_I2C_BUS_DIR tells of it."""
        return Path(self._core.directory)

    @property
    def time(self) -> float:
        """Seconds since the start, by the bench's clock."""
        return self._core.time

    def advance(self, duration: Duration) -> None:
        """Lets time pass; it may take the place of time.sleep() in a test."""
        self._core.advance(seconds(duration))

    def run(self, duration: Duration, interval: Duration = 1, address: int | None = None) -> Record:
        """Lets time pass as fast as the computer can, and records what the satellite does once in an interval, which is a
        multiple of 0.1 s. Ctrl-C ends it."""
        with self.recording(interval, address) as recording:
            self.advance(duration)
        return recording.record

    @contextmanager
    def recording(self, interval: Duration = 1, address: int | None = None) -> Iterator[Recording]:
        """Records what the satellite does while a with block runs, such as a ground script; `record` has it afterwards."""
        recording = Recording()
        self._core.start_record(seconds(interval), self._address(address))
        try:
            yield recording
        finally:
            recording.record = Record(*self._core.stop_record(False))

    def truth(self, address: int | None = None) -> dict[str, float]:
        """What the satellite does at the moment."""
        self._core.start_record(0.1, self._address(address))
        return {name: float(column[-1]) for name, column in Record(*self._core.stop_record(True)).items()}

    def happen(self, *, address: int | None = None, **event: Any) -> None:
        """Lets something happen, with the keys of a scenario's event: now, or `at` seconds of the bench's time.

        world={"magnetic_field_t": {"x": 2e-5}}, satellite={"wheel": "x", "sticks": True}, command="Set_Epoch_Time",
        arguments={"epoch_time_msec": 0}, fault="crc", startracker_events=[[120, -40]]
        """
        self._core.happen(json.dumps(event), self._address(address))

    def inject(self, fault: str, duration: Duration | None = None, address: int | None = None) -> None:
        """A fault, once: one of FAULTS. A dead bus and a hang last, 1 s if nothing is said."""
        lasting = {} if duration is None else {"for": seconds(duration)}
        self.happen(address=address, fault=fault, **lasting)

    def set_rate(self, fault: str, probability: float, address: int | None = None) -> None:
        """From now on a fault befalls a transaction with that probability; 0 ends it."""
        self.happen(address=address, fault=fault, probability=probability)

    def clear_faults(self, address: int | None = None) -> None:
        """No more faults, and those that last are over."""
        self._core.clear_faults(self._address(address))

    def play(self, scenario: str | os.PathLike[str]) -> None:
        """Puts the events of a scenario's file on the agenda."""
        self._core.play(scenario)

    def world(self, address: int | None = None) -> dict[str, Any]:
        """What a unit without a satellite measures; happen(world=...) changes it."""
        world: dict[str, Any] = json.loads(self._core.state())["units"][str(self._address(address))]["world"]
        return world

    def journal(self) -> list[dict[str, Any]]:
        """The transactions since it was last asked for, the latest 100,000 at most."""
        return [json.loads(line) for line in self._core.take_journal()]

    def _address(self, address: int | None) -> int:
        return self._default if address is None else address
