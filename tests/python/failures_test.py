"""A class for each cause, times and enumerators as arguments, and what happens between calls."""
import copy
import gc
import os
import signal
import subprocess
import sys
import textwrap
import threading
import time
from datetime import datetime, timedelta, timezone

import pytest
import velm_zavra
from conftest import BUILD
from velm_zavra.simulator import Bench


@pytest.mark.parametrize("fault, error, number", [
    (("dead-bus", 60), velm_zavra.BusError, 5),
    (("hang", 60), velm_zavra.BusTimeout, 110),
    (("nak-write",), velm_zavra.NotAcknowledged, 6),
])
def test_each_cause_has_its_class(bench, unit, fault, error, number):
    bench.inject(*fault)
    with pytest.raises(error, match=r"Failed to get epoch time \(Failed to Get Epoch Time \(.*\(") as caught:
        unit.get_epoch_time()
    assert type(caught.value) is error and caught.value.error_number == number
    assert isinstance(caught.value, (velm_zavra.BusError, velm_zavra.Error))
    bench.clear_faults()
    unit.get_epoch_time()


def test_a_damaged_reply_is_asked_for_again_but_not_for_ever(bench, unit):
    bench.inject("crc")
    unit.get_epoch_time()
    bench.set_rate("crc", 1)
    with pytest.raises(velm_zavra.DamagedReply):
        unit.get_epoch_time()


def test_refusals_files_and_connections(bench, unit, tmp_path):
    with pytest.raises(velm_zavra.RefusedArgument) as refused:
        unit.set_gyro_parameters(7, velm_zavra.GyroscopeParameters())
    assert isinstance(refused.value, ValueError)
    with pytest.raises(ValueError, match="255"):
        unit.set_active_gyroscope(256)
    with pytest.raises(TypeError, match="GyroscopeParameters"):
        unit.set_gyro_parameters(0, velm_zavra.Vector3())
    assert not [entry for entry in bench.journal()]
    with pytest.raises(velm_zavra.FileError):
        unit.parse_tle_file(tmp_path / "missing")
    with pytest.raises(velm_zavra.BusError, match="i2c-7"):
        velm_zavra.Unit(bus="i2c-7")
    unit.disconnect()
    unit.disconnect()
    with pytest.raises(velm_zavra.NotConnected, match="address=10"):
        unit.get_epoch_time()


def test_arguments_are_what_people_have(unit):
    moment = datetime(2030, 1, 1, tzinfo=timezone.utc)
    unit.set_epoch_time(epoch_time_msec=moment)
    assert velm_zavra.to_datetime(unit.get_epoch_time()) - moment < timedelta(seconds=1)
    unit.set_gyro_bias_value(gyro=velm_zavra.Gyroscopes.GYRO_1, bias=(1, 2, 3))
    assert unit.get_gyro_bias_value(1) == velm_zavra.Vector3(1, 2, 3)
    unit.set_power_update_interval(timedelta(seconds=1.5))
    assert unit.get_power_update_interval() == 1500
    for code in 3, 200:  # a mode that has no name is passed on
        unit.set_startracker_operation_mode(code)
        assert unit.get_startracker_operation_mode() == code


def test_register_maps():
    names = velm_zavra.RegisterMap()
    reading = names.decode(velm_zavra.Registers.SYSTEM_ERROR_REGISTER, 2)
    assert [flag.name for flag in reading.flags if flag.state] == ["command_error_1"] and names.is_set(reading, "bit_01")
    assert names.encode(velm_zavra.Registers.HIL_CONFIGURATION, ["bit_03", "bit_00"]) == 9


def test_threads_with_a_unit_each():
    def talk():
        with Bench().connect() as unit:
            for number in range(2500):
                unit.set_hil_configuration(number)
                if number % 25 == 0 and unit.get_hil_configuration() != number:
                    wrong.append(number)
        done.append(True)

    wrong, done = [], []
    references = sys.getrefcount(velm_zavra.Unit)
    threads = [threading.Thread(target=talk) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not wrong and len(done) == 4 and abs(sys.getrefcount(velm_zavra.Unit) - references) < 5


def test_threads_that_share_a_unit(unit):
    def turn(gyro):
        for number in range(200):
            unit.set_gyro_update_interval(gyro, 1000 * gyro + number)
            assert unit.get_gyro_update_interval(gyro) == 1000 * gyro + number
        done.append(gyro)

    done = []
    threads = [threading.Thread(target=turn, args=[gyro]) for gyro in range(3)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert sorted(done) == [0, 1, 2]


def test_nothing_leaks(unit):
    def make():
        for _ in range(300):
            frame = unit.get_sensor_telemetry()
            frame.measured_angular_velocity_gyro_radps[0].x = 1
            repr(frame), frame.to_dict(), frame == frame.replace(temperature_degc=1)
            with pytest.raises(velm_zavra.RefusedArgument):
                unit.set_gyro_parameters(7, velm_zavra.GyroscopeParameters(sensor_stddev=(1, 2, 3)))
        gc.collect()
        return [sys.getallocatedblocks(), *map(sys.getrefcount, [None, *vars(velm_zavra).values()])]

    make()
    before, after = make(), make()
    assert max(map(abs, map(int.__sub__, after, before))) < 200


@pytest.fixture
def real_time_unit(tmp_path, monkeypatch):
    monkeypatch.setenv("VELM_I2C_BUS_DIR", str(tmp_path))
    with subprocess.Popen([BUILD / "bin/zavra-sim", "--bus-dir", tmp_path], stdout=subprocess.DEVNULL) as process:
        while not (tmp_path / "i2c-0").exists():
            time.sleep(0.01)
        yield
        process.terminate()


def test_other_threads_run_while_a_call_waits(real_time_unit):
    def count():
        while not over.wait(0.001):
            counted.append(time.monotonic())

    counted, over = [], threading.Event()
    unit = velm_zavra.Unit()
    with unit:
        thread = threading.Thread(target=count)
        thread.start()
        begin = time.monotonic()
        unit.get_epoch_time()
        end = time.monotonic()
        over.set()
        thread.join()
    assert end - begin >= 0.1
    assert sum(begin < moment < end for moment in counted) >= 10


def test_an_interrupt_is_heard_when_the_call_is_over(real_time_unit):
    script = textwrap.dedent("""
        import velm_zavra
        with velm_zavra.Unit() as unit:
            print("ready", flush=True)
            try:
                while True:
                    unit.set_hil_configuration(5)
            except KeyboardInterrupt:
                print(unit.get_hil_configuration())
    """)
    with subprocess.Popen([sys.executable, "-c", script], stdout=subprocess.PIPE, text=True, env=os.environ) as process:
        assert process.stdout.readline() == "ready\n"
        time.sleep(0.25)
        process.send_signal(signal.SIGINT)
        assert process.stdout.read() == "5\n" and process.wait(timeout=5) == 0


def test_a_call_costs_little_more_than_in_cpp(unit):
    """Without what the unit and the bus take: converted, locked, without the interpreter's lock and back."""
    def best(call):
        def once():
            begin = time.perf_counter()
            for _ in range(200):
                call()
            return (time.perf_counter() - begin) / 200
        return min(once() for _ in range(20))

    frame = velm_zavra.SensorTelemetry()
    assert best(lambda: unit.rpm_to_radps(1)) + best(lambda: copy.copy(frame)) < 20e-6
