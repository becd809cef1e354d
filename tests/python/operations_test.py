"""No operation is missing, each reaches the unit, and what is set is what is read."""
import re
import subprocess

import pytest
import velm_zavra
from conftest import BUILD
from records_test import filled

OPERATIONS = sorted(name for name, value in vars(velm_zavra.Unit).items()
                    if not name.startswith("_") and name not in ("disconnect", "connected"))
# Those that send nothing, and those that print a unit's own or read a file.
SILENT = {"rpm_to_radps", "radps_to_rpm", "print_info", "initialize_device", "parse_tle_file", "read_startracker_native_reply"}


def test_the_class_has_every_operation_of_the_library():
    symbols = subprocess.check_output(["nm", "-DC", "--defined-only", BUILD / "lib/libvelm_zavra_api.so"], text=True)
    declared = {name.lower() for name in re.findall(r" VELM_ZAVRA_API::(\w+)\(", symbols)} - {"velm_zavra_api"}
    assert len(declared) > 120
    pointing = re.compile(r"((start|stop)_.*)_mode$")
    assert {pointing.sub(r"\1", name) for name in declared} == set(OPERATIONS)


def arguments(name):
    """Zeros, as the signature in the documentation has them."""
    signature = getattr(velm_zavra.Unit, name).__doc__.splitlines()[0]
    values = {}
    for parameter, hint in re.findall(r"(\w+): ([\w.\[\]]+)", signature.split(" -> ")[0]):
        kind = {"float": float, "bytes": bytes}.get(hint) or getattr(velm_zavra, hint, int)
        values[parameter] = 0 if issubclass(kind, int) else kind()
    return values


@pytest.mark.parametrize("name", [name for name in OPERATIONS if name not in SILENT])
def test_each_operation_is_a_command_that_the_unit_knows(bench, unit, name):
    getattr(unit, name)(**arguments(name))
    sent = [entry for entry in bench.journal() if entry["direction"] == "write"]
    assert len(sent) == 1 and "command" in sent[0]
    assert unit.get_standard_telemetry().number_of_failed_commands == 0


@pytest.mark.parametrize("index, noun, record", [
    ([2], "gyro_parameters", velm_zavra.GyroscopeParameters),
    ([0], "magnetometer_parameters", velm_zavra.MagnetometerParameters),
    ([5], "reactionwheel_parameters", velm_zavra.SingleReactionwheelParameters),
    ([], "reactionwheel_all_parameters", velm_zavra.ReactionwheelArrayParameters),
    ([], "magnettorquer_parameters", velm_zavra.MagnetorquerParameters),
    ([1], "singleaxis_angularvelocity_controller_parameters", velm_zavra.PidControllerParameters),
    ([], "threeaxis_sunpointing_controller_parameters", velm_zavra.SunPointingControllerParameters),
    ([], "kalman_filter_parameters", velm_zavra.KalmanFilterParameters),
])
def test_what_is_set_is_read(unit, index, noun, record):
    value = filled(record)
    getattr(unit, f"set_{noun}")(*index, value)
    assert getattr(unit, f"get_{noun}")(*index) == value


def test_operations_with_pointers(unit, tmp_path):
    unit.send_startracker_native_command(b"\x01\x02\x03")
    assert unit.check_for_startracker_native_reply() == 1
    assert unit.read_startracker_native_reply() == 1  # the simulated star tracker gives back what it got
    file = tmp_path / "iss.tle"
    file.write_text("1" * 69 + "\n" + "2" * 69 + "\n")
    assert unit.parse_tle_file(file) == velm_zavra.TleFileData(2, "1" * 69, "2" * 69)


def test_an_ini_file_configures_the_sensors(bench):
    from conftest import SOURCES
    with bench.connect(ini=SOURCES / "examples/velm_zavra_dev_init.ini") as unit:
        assert unit.get_gyro_parameters(0).update_interval_msec > 0
    assert "Set_Gyro_Parameters" in {entry.get("command") for entry in bench.journal()}
