"""The simulated unit in the process: time, faults, events, and the record of a satellite."""
import csv
import subprocess
import time
from datetime import datetime, timezone

import numpy
import pytest
import velm_zavra
from conftest import BUILD, SATELLITE, SOURCES
from velm_zavra import simulator
from velm_zavra.simulator import Bench

TLE = (SOURCES / "examples/iss.tle").read_text().splitlines()


def test_time_passes_where_the_driver_waits_and_not_else(bench, unit):
    wall, before = time.monotonic(), bench.time
    for _ in range(50):
        unit.get_epoch_time()
    assert bench.time - before == pytest.approx(5) and time.monotonic() - wall < 2.5
    bench.advance("1.5h")
    assert bench.time == pytest.approx(before + 5 + 5400)
    assert unit.get_system_time() == pytest.approx(5_405_000)


def test_a_ground_script_finds_the_bench(bench):
    assert velm_zavra.Unit().get_info_frame().device_name != ""
    script = "import velm_zavra; print(velm_zavra.Unit().get_hil_configuration())"
    bench.happen(command="Set_HIL_Configuration", arguments={"hil_configuration": 77})
    assert velm_zavra.Unit().get_hil_configuration() == 77
    assert subprocess.check_output(["python3", "-c", script], text=True) == "77\n"


def test_events(bench, unit):
    bench.happen(world={"angular_velocity_radps": {"x": 0.25}})
    assert unit.get_attitude_telemetry().angular_velocity_radps.x == 0.25
    assert bench.world()["angular_velocity_radps"]["x"] == 0.25
    bench.happen(at=60, fault="reset")
    bench.advance(59)
    assert unit.get_system_time() > 59_000
    bench.advance(1)
    assert unit.get_system_time() < 2_000
    for event, words in [({"fault": "fire"}, "fire"), ({}, "nothing happens"), ({"world": {"x": 1}}, "no \"x\"")]:
        with pytest.raises(ValueError, match=words):
            bench.happen(**event)


def test_faults_are_drawn_from_the_seed():
    def failures(seed):
        bench = Bench(seed=seed)
        bench.set_rate("nak-write", 0.3)
        unit = bench.connect()
        failed = []
        for _ in range(40):
            try:
                unit.get_epoch_time()
                failed.append(False)
            except velm_zavra.NotAcknowledged:
                failed.append(True)
        return failed

    assert failures(1) == failures(1) != failures(2)
    assert set(failures(1)) == {True, False}


def test_scenarios_and_journals():
    bench = Bench(scenario=SOURCES / "examples/scenarios/bad_harness.toml")
    with bench.connect() as unit:
        for _ in range(100):
            try:
                unit.get_epoch_time()
            except velm_zavra.Error:
                pass
            bench.advance(2)
    assert {entry["fault"] for entry in bench.journal() if "fault" in entry}
    assert bench.journal() == []


def test_a_record_is_what_the_program_writes(tmp_path):
    file = tmp_path / "record.csv"
    subprocess.check_call([BUILD / "bin/zavra-sim", "--satellite", SATELLITE, "--run", "20min", "--record", file,
                           "--record-interval", "10s"], stdout=subprocess.DEVNULL)
    record = Bench(SATELLITE).run("20min", interval="10s")
    rows = list(csv.DictReader(file.open()))
    assert list(rows[0]) == list(record) and len(rows) == len(record["time_s"]) == 121
    for name in record:
        expected = [float(row[name] or "nan") for row in rows]
        numpy.testing.assert_array_equal(record[name], expected)


def test_a_satellite_is_steered_and_seen():
    bench = Bench(SATELLITE)
    bench.happen(satellite={"angular_velocity_radps": [0.1, 0, 0]})
    assert bench.truth()["angular_velocity_x_radps"] == pytest.approx(0.1)
    bench.advance(1)
    with bench.connect() as unit:
        assert unit.get_gyro_values(0).x == pytest.approx(0.1, abs=0.002)
    record = bench.run(60)
    assert record.vector("q").shape == (60, 4) and record.vector("wheel_speed_radps").shape == (60, 6)
    frame = record.to_frame()
    assert list(frame.index[:2]) == pytest.approx([bench.time - 60, bench.time - 59], abs=1) and frame.shape == (60, 39)
    with pytest.raises(KeyError):
        record.vector("q_9")


@pytest.mark.parametrize("call, words", [
    (lambda: Bench().run("1s"), "only a satellite"),
    (lambda: Bench(SATELLITE).run("1s", interval=0.15), "multiple of 100 ms"),
    (lambda: Bench(SATELLITE).run("soon"), "soon"),
    (lambda: Bench("missing.toml"), "missing.toml"),
])
def test_what_makes_no_sense_is_refused(call, words):
    with pytest.raises((ValueError, RuntimeError), match=words):
        call()


def test_orbits(unit):
    unit.set_epoch_time(datetime(2018, 1, 21, tzinfo=timezone.utc))
    assert unit.init_orbit_module(velm_zavra.OrbitTleData(TLE[-2], TLE[-1], 1000)) == 0
    orbit = unit.get_orbit_data()
    assert 6700 < numpy.linalg.norm(orbit.position) < 6900


def test_durations():
    assert [simulator.seconds(each) for each in (2, "90s", "6h")] == [2, 90, 21600]
