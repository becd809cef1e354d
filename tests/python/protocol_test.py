"""What travels, as data: literal bytes, and what the unit makes of them."""
import pytest
import velm_zavra
from velm_zavra import protocol


@pytest.mark.parametrize("name, arguments, frame", [
    ("Set_Epoch_Time", {"epoch_time_msec": 258}, "0210080000000000000001021f"),
    ("Set_Gyro_Values", {"index": 1, "angular_velocity": velm_zavra.Vector3(1, 2, 3)}, "a1010d00013f8000004000000040400000d2"),
])
def test_requests(name, arguments, frame):
    command = protocol.command(name)
    assert command.encode(**arguments).hex() == frame
    (explained,) = protocol.decode(bytes.fromhex(frame))
    assert explained.good and name in explained.title and list(explained.values) == list(arguments)
    assert protocol.decode(frame[:-2] + "00")[0].good is False
    assert protocol.crc8(bytes.fromhex(frame)) == 0 and protocol.crc8(b"123456789") == 0xF4  # the published check value


def test_fields():
    fields = protocol.command("Get_Attitude_Telemetry").response
    rate = next(field for field in fields if field.name == "angular_velocity_y_radps")
    assert (rate.unit, rate.kind, rate.size, rate.count) == ("rad/s", "real", 4, 1)
    for command in protocol.COMMANDS.values():
        for fields, size in (command.request, command.request_size), (command.response, command.response_size):
            assert not fields or fields[-1].offset + fields[-1].size * fields[-1].count <= size


def test_arguments_that_do_not_fit():
    command = protocol.command("Set_Epoch_Time")
    for arguments, words in [({}, "epoch_time_msec"), ({"epoch_time_msec": -1}, "epoch_time_msec"), ({"x": 1}, "Set_Epoch_Time")]:
        with pytest.raises(ValueError, match=words):
            command.encode(**arguments)
    with pytest.raises(ValueError, match="expected 8 bytes"):
        command.decode_request(b"\0")
    with pytest.raises(KeyError):
        protocol.command("Set_Fire")


def test_a_journal_is_explained(bench, unit, tmp_path):
    import json
    unit.set_epoch_time(1_000_000)
    bench.inject("crc")
    unit.get_epoch_time()
    file = tmp_path / "journal.jsonl"
    file.write_text("".join(json.dumps(entry) + "\n" for entry in bench.journal()))
    explained = protocol.decode_file(file)
    assert [each.good for each in explained] == [True, True, False, True, True]
    assert explained[-1].values == {"epoch_time_msec": 1_000_500} and "Get_Epoch_Time" in explained[-1].title
