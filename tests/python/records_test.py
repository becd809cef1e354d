"""Records: every one of them, filled with values that differ."""
import copy
import itertools
import pickle
from datetime import datetime, timedelta, timezone
from enum import IntEnum

import pytest
import velm_zavra
from conftest import SOURCES
from velm_zavra import AttitudeTelemetry, GyroscopeParameters, Matrix3x3, Quaternion, SensorTelemetry, Vector3

RECORDS = [each for each in vars(velm_zavra).values() if isinstance(each, type) and hasattr(each, "from_dict")]


def filled(record):
    numbers = itertools.count(1)

    def fill(value):
        if isinstance(value, dict):
            return {name: fill(each) for name, each in value.items()}
        if isinstance(value, list):
            return [fill(each) for each in value]
        if isinstance(value, (bool, IntEnum)):
            return value
        return type(value)(next(numbers) % 250)

    return record.from_dict(fill(record().to_dict()))


def test_there_are_all_records():
    headers = [path.read_text() for path in (SOURCES / "api/records").glob("*.h")]
    assert len(RECORDS) == sum(text.count("\nstruct ") for text in headers)


@pytest.mark.parametrize("record", RECORDS)
def test_a_record_survives_whatever_happens_to_it(record):
    value = filled(record)
    assert value != record() and value == record(**value.to_dict())
    for other in copy.copy(value), copy.deepcopy(value), pickle.loads(pickle.dumps(value)), eval(repr(value), vars(velm_zavra)):
        assert other == value and other is not value and not other != value
    assert value != value.to_dict() and copy.copy(value).replace() == value
    assert len(set(map(str, value.to_dict().values()))) > 1 or len(value.to_dict()) == 1
    with pytest.raises(TypeError):
        hash(value)


def test_a_copy_is_one():
    frame = AttitudeTelemetry()
    other = copy.copy(frame)
    other.angular_velocity_radps.x = 1  # of the record inside, not of a copy of it
    assert (frame.angular_velocity_radps.x, other.angular_velocity_radps.x) == (0, 1)
    rate = AttitudeTelemetry(angular_velocity_radps=(1, 2, 3)).angular_velocity_radps
    assert rate == Vector3(1, 2, 3)  # and its frame is still there


@pytest.mark.parametrize("change, error, words", [
    ({"output_type": 256}, ValueError, "output_type: expected a whole number from 0 to 255, got 256"),
    ({"output_type": -1}, ValueError, "output_type"),
    ({"output_type": 1.5}, TypeError, "output_type"),
    ({"avg_filter_criterion": 1e39}, ValueError, "avg_filter_criterion: expected a number up to 3.40"),
    ({"avg_filter_criterion": "1"}, TypeError, "avg_filter_criterion"),
    ({"sensor_stddev": (1, 2)}, ValueError, "expected 3 components, got 2"),
    ({"sensor_stddev": 5}, TypeError, "expected Vector3"),
    ({"output": 1}, TypeError, 'GyroscopeParameters has no "output"'),
    ({"update_interval_msec": 2**64}, ValueError, "update_interval_msec"),
    ({"update_interval_msec": datetime.now(timezone.utc)}, TypeError, "timedelta"),
])
def test_values_that_do_not_fit_are_refused(change, error, words):
    with pytest.raises(error, match=words):
        GyroscopeParameters(**change)


def test_texts_and_arrays_have_their_length():
    assert velm_zavra.OrbitTleData(tle_1="é" * 69).tle_1 == "é" * 69
    with pytest.raises(ValueError, match="at most 69 characters"):
        velm_zavra.OrbitTleData(tle_1="1" * 70)
    wheels = velm_zavra.ActuatorTelemetry().reactionwheel_target_radps
    wheels[-1] = 5
    assert wheels == [0, 0, 0, 0, 0, 5] and wheels[4:] == [0, 5] and len(list(wheels)) == 6
    with pytest.raises(IndexError):
        wheels[6] = 1
    with pytest.raises(ValueError, match="expected 6 elements"):
        velm_zavra.ActuatorTelemetry(reactionwheel_target_radps=[1, 2])
    with pytest.raises(AttributeError):
        Vector3().w = 1


def test_numpy_shares_the_memory():
    numpy = pytest.importorskip("numpy")
    frame = SensorTelemetry()
    gyros = numpy.asarray(frame.measured_angular_velocity_gyro_radps)
    assert gyros.shape == (4, 3) and gyros.dtype == numpy.float32
    gyros[2, 1] = 5
    assert frame.measured_angular_velocity_gyro_radps[2] == Vector3(0, 5, 0)
    del frame
    assert gyros[2, 1] == 5
    assert numpy.asarray(Matrix3x3(m12=2)).tolist() == [[0, 2, 0], [0, 0, 0], [0, 0, 0]]
    assert numpy.asarray(velm_zavra.ReactionwheelArrayParameters().torque_distribution_matrix).shape == (6, 3)
    assert numpy.asarray(Quaternion(1, 2, 3, 4)).tolist() == [1, 2, 3, 4] == list(Quaternion(q_3=3, q_1=1, q_4=4, q_2=2))
    assert Vector3(numpy.array([1, 2, 3])) == Vector3(1, 2, 3)


def test_times_are_datetime_as_well():
    moment = datetime(2026, 5, 1, 12, tzinfo=timezone(timedelta(hours=2)))
    mode = velm_zavra.DetumblingModeParameters(start_epoch_time=moment)
    assert mode.start_epoch_time == 1777629600000
    assert mode.start_epoch_time_utc == moment and mode.start_epoch_time_utc.utcoffset() == timedelta(0)
    mode.start_epoch_time_utc += timedelta(milliseconds=5)
    assert mode.start_epoch_time == 1777629600005
    with pytest.raises(ValueError, match="time zone"):
        mode.stop_epoch_time = datetime(2026, 5, 1)
    assert GyroscopeParameters(update_interval_msec=timedelta(seconds=2)).update_interval_msec == 2000


def test_telemetry_is_ordered_by_time():
    frames = [AttitudeTelemetry(epoch_time_msec=time) for time in (3, 1, 2)]
    assert [frame.epoch_time_msec for frame in sorted(frames)] == [1, 2, 3] and frames[1] <= frames[1]
    with pytest.raises(TypeError):
        frames[0] < SensorTelemetry()


def test_enumerations_are_numbers():
    assert velm_zavra.Reactionwheels.REACTIONWHEEL_5 == 5 and issubclass(velm_zavra.Gyroscopes, IntEnum)
    assert pickle.loads(pickle.dumps(velm_zavra.SingleaxisControlTargetAxis.Z)) is velm_zavra.SingleaxisControlTargetAxis.Z
