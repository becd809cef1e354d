#!/usr/bin/python3
"""Catches a tumble from the ground: a B-dot controller in Python, first against a simulated satellite.

Usage: catch_tumble.py [SATELLITE.toml [REPORT.png]]
"""
from __future__ import annotations

import sys
import time
from collections.abc import Callable
from pathlib import Path

import numpy as np
from velm_zavra import BusError, Unit, Vector3, plot
from velm_zavra.simulator import Bench

SATELLITES = Path(__file__).resolve().parents[1] / "satellites"


def rate_degps(unit: Unit) -> float:
    return float(np.degrees(np.linalg.norm(unit.get_attitude_telemetry().angular_velocity_radps)))


def field_t(unit: Unit) -> np.ndarray[tuple[int], np.dtype[np.float32]]:
    """Measured while the magnetorquers rest."""
    unit.set_magnettorquer_all_dipole_moments(Vector3())
    return np.array(unit.get_sensor_telemetry().measured_magnetic_field_magnetometer_t[0])


def detumble(unit: Unit, seconds: float, sleep: Callable[[float], None] = time.sleep, gain: float = 4e4, pause: float = 0.7) -> None:
    """Dipole moments against the change of the magnetic field, once in a second or so."""
    limit = np.array(unit.get_magnettorquer_parameters().max_dipole_moment)
    before, end = unit.get_sensor_telemetry(), unit.get_epoch_time() + 1000 * seconds
    while before.epoch_time_msec < end:
        try:
            field = field_t(unit)
            now = unit.get_sensor_telemetry()
            change = field - np.array(before.measured_magnetic_field_magnetometer_t[0])
            change /= max(now.epoch_time_msec - before.epoch_time_msec, 1) / 1000
            unit.set_magnettorquer_all_dipole_moments(Vector3(np.clip(-gain * change, -limit, limit)))
            before = now
        except BusError as error:
            print(error, file=sys.stderr)
        sleep(pause)
    unit.set_magnettorquer_all_dipole_moments(Vector3())


def main(satellite: Path = SATELLITES / "3u.toml", report: Path | None = None) -> None:
    bench = Bench(satellite)
    with bench.connect() as unit, bench.recording("10s") as recording:
        bench.advance(1)
        print(f"tumbles with {rate_degps(unit):.1f} deg/s")
        detumble(unit, 2 * 3600, sleep=bench.advance)
        print(f"turns with {rate_degps(unit):.1f} deg/s")
    if report is not None:
        plot.report(recording.record).savefig(report)


if __name__ == "__main__":
    main(*map(Path, sys.argv[1:]))
