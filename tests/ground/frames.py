'''Literal frames that the readers of the exported descriptions are tried on, and what they say.'''
import subprocess
import sys
import unittest

INFO = ('5a41' '02' '01120000' '00000007' + b'ZAVRA-100'.hex() + '000004d2' + b'Nov 21 2026 \xb5'.hex().ljust(64, '0')
        + 'deadbeef' + 'ff' * 8 + '01234567' + 'ff' * 4 + '03' + b'gcc'.hex().ljust(40, '0') + b'12.2.0'.hex().ljust(20, '0')
        + b'1.0'.hex().ljust(20, '0') + b'yesterday'.hex().ljust(64, '0'))

EVENTS = '0102' '0a000000' 'feffffff' '00010000' 'ffffff7f' + '00' * 168 + '77'

# Command, payload and CRC of its response, and some of the values.
RESPONSES = [
    ('Get_Gyro_Values', '3b03126fba902de03a03126f0000000000000624' 'da',
     {'angular_velocity.x': 0.002, 'angular_velocity.y': -0.0011, 'angular_velocity.z': 0.0005, 'timestamp': 1572}),
    ('Get_Epoch_Time', '000000000000042f' '99', {'epoch_time_msec': 1071}),
    ('Get_Startracker_Event_List', EVENTS + 'bc',
     {'header': 1, 'num_event': 2, 'xisf.0': 10, 'yisf.0': -2, 'xisf.1': 256, 'yisf.1': 0x7fffffff, 'yisf.22': 0}),
    ('Get_Info_Frame', INFO + 'bc',
     {'frame_identifier': 'ZA', 'frame_version': 2, 'sw_version_minor': 18, 'device_name': 'ZAVRA-100',
      'device_serial_number': 1234, 'build_timestamp': 'Nov 21 2026 \xb5', 'sw_commit_id_library': 0x1234567,
      'low_level_build_timestamp': 'yesterday'}),
]

# Command, its arguments, the request.
REQUESTS = [
    ('Set_Gyro_Values',
     {'index': 'GYRO_1', 'angular_velocity.x': 0.01, 'angular_velocity.y': -0.02, 'angular_velocity.z': 0.03},
     'a1010d00' '01' '3c23d70a' 'bca3d70a' '3cf5c28f' '12'),
    ('Set_Epoch_Time', {'epoch_time_msec': 258}, '02100800' '0000000000000102' '1f'),
    ('Clear_System_Error_Register', {}, '02300000' 'cd'),
    ('Send_Startracker_Native_Command', {'length': 3, 'data': bytes((1, 2, 3))}, 'ab200300' '010203' '72'),
    ('Set_TargetPointing_Operation_Parameters',
     {'parameters.update_interval': 1000, 'parameters.angle_tolerance_rad': 0.5, 'parameters.angle_tolerance_perc': 1.0,
      'parameters.speed_tolerance_radps': 2.0, 'parameters.angles.x': 0.0, 'parameters.angles.y': 0.0,
      'parameters.angles.z': -1.0, 'parameters.wait_time': 2},
     'c1632d00' '00000000000003e8' '3f000000' '3f800000' '40000000' '00000000' '00000000' 'bf800000'
     '0000000000000002' '0000000000' 'a6'),
]


def crc8(data):
    remainder = int.from_bytes(data + b'\0', 'big')
    for bit in reversed(range(8, 8 * len(data) + 8)):
        if remainder >> bit & 1:
            remainder ^= 0x107 << (bit - 8)
    return remainder


def plain(name):
    return name.replace('.', '_')


def zavractl(*words, **options):
    return subprocess.run([*PROGRAM, *words], check=True, capture_output=True, text=True, **options).stdout


class Case(unittest.TestCase):
    def assert_value(self, name, value, expected):
        if isinstance(expected, float):
            self.assertAlmostEqual(value, expected, delta=1e-6 * abs(expected), msg=name)
        else:
            self.assertEqual(value, expected, name)


# The command that runs zavractl, from the test's command line.
PROGRAM = sys.argv[1:]


def main():
    unittest.main(module='__main__', argv=sys.argv[:1])
