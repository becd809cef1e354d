'''The sigrok decoder on captures that are made from journals of literal frames, by sigrok's own program.'''
import json
import os
import subprocess
import tempfile

from frames import Case, EVENTS, main, zavractl

GET_SCHEDULER = (0, 'write', '022800003e')
RIGHT = ['Get_System_Scheduler_Register', 'CRC right', 'Reply to Get_System_Scheduler_Register', 'CRC right',
         'scheduler_register = 0x12345678']


def journal(*transactions):
    lines = []
    for time, direction, octets, *error in transactions:
        line = {'time_msec': time, 'bus': 'i2c-0', 'address': 10, 'direction': direction, 'bytes': octets}
        if error:
            line['error'] = error[0]
        lines.append(json.dumps(line) + '\n')
    return ''.join(lines)


CASES = {
    'a request and its reply': ([GET_SCHEDULER, (100, 'read', '123456781c')], RIGHT),
    'values in words': (
        [(0, 'write', 'a1010d00013c23d70abca3d70a3cf5c28f12')],
        ['Set_Gyro_Values', 'CRC right', 'index = GYRO_1', 'angular_velocity.x = 0.01 rad/s',
         'angular_velocity.y = -0.02 rad/s', 'angular_velocity.z = 0.03 rad/s']),
    'little-endian events, as many as are counted': (
        [(0, 'write', 'ab040000de'), (100, 'read', EVENTS + 'bc')],
        ['Get_Startracker_Event_List', 'CRC right', 'Reply to Get_Startracker_Event_List', 'CRC right', 'header = 1',
         'num_event = 2', 'xisf[0] = 10', 'yisf[0] = -2', 'xisf[1] = 256', 'yisf[1] = 2147483647']),
    'a reply tells requests with one identifier apart': (
        [(0, 'write', 'c01201000178'), (100, 'read', '00' * 33)],
        ['Get_SingleAxis_AngularVelocity_Controller_Parameters or Get_SingleAxis_AngleStep_Controller_Parameters',
         'CRC right', 'axis = Y', 'Reply to Get_SingleAxis_AngularVelocity_Controller_Parameters', 'CRC right',
         'parameters.k_p = 0', 'parameters.k_i = 0', 'parameters.k_d = 0', 'parameters.k_aw = 0',
         'parameters.th_aw = 0', 'parameters.ctrl_actuator_cmd_if = 0', 'parameters.update_interval = 0']),
    'a damaged reply': (
        [GET_SCHEDULER, (100, 'read', '123456791c')],
        [*RIGHT[:3], 'CRC wrong: 0x1c, computed 0x1b', 'CRC wrong', 'scheduler_register = 0x12345679']),
    'a damaged request': ([(0, 'write', '022800003f')],
                          ['Get_System_Scheduler_Register', 'CRC wrong: 0x3f, computed 0x3e', 'CRC wrong']),
    'a short reply': (
        [GET_SCHEDULER, (100, 'read', '1234')],
        [*RIGHT[:2], '1 bytes in reply to Get_System_Scheduler_Register', '1 bytes of payload, expected 4',
         'CRC wrong: 0x34, computed 0x7e', 'CRC wrong']),
    'refused': (
        [(*GET_SCHEDULER, 'No such device or address'), GET_SCHEDULER, (100, 'read', '', 'No such device or address'),
         (100, 'read', '123456781c')],
        ['Request not acknowledged', *RIGHT[:2], 'Read not acknowledged', *RIGHT[2:]]),
    'a unit that hangs, then a dead bus': (
        [(*GET_SCHEDULER, 'Connection timed out'), (*GET_SCHEDULER, 'Input/output error'), GET_SCHEDULER],
        ['Request not acknowledged', *RIGHT[:2]]),
    'too soon': (
        [GET_SCHEDULER, (99, 'read', '123456781c'), (99, 'write', '02300000cd'), (100, 'write', '02300000cd')],
        [*RIGHT[:2], 'Read 99.0 ms after a request, which needs 100 ms', *RIGHT[2:],
         'Clear_System_Error_Register', 'CRC right', 'Request 1.0 ms after a request, which needs 100 ms',
         'Clear_System_Error_Register', 'CRC right']),
    'the reply was not fetched': (
        [GET_SCHEDULER, (100, 'write', '02300000cd')],
        [*RIGHT[:2], 'Request while the reply to Get_System_Scheduler_Register is pending',
         'Clear_System_Error_Register', 'CRC right']),
    'what is no frame of the unit': (
        [(0, 'write', '0228'), (100, 'write', '022801003f'), (200, 'write', 'ffff0000fa'), (300, 'read', '00')],
        ['Request of 2 bytes, too short for a frame', '0 bytes of payload with a header for 1',
         'Unknown command 0x0228 with 1 bytes', 'CRC wrong: 0x3f, computed 0x2b', 'CRC wrong',
         'Unknown command 0xffff with 0 bytes', 'CRC right', 'Read of 0 bytes without a request to answer',
         'CRC right']),
}


class Sigrok_Test(Case):
    def test_transactions_are_named_explained_and_judged(self):
        with tempfile.TemporaryDirectory() as directory:
            zavractl('export', 'sigrok', '-o', directory + '/zavra_100')
            capture = directory + '/capture.vcd'
            for name, (transactions, expected) in CASES.items():
                zavractl('export', 'vcd', '-', '-o', capture, input=journal(*transactions))
                shown = subprocess.run(
                    ['sigrok-cli', '-I', 'vcd', '-i', capture, '-P', 'i2c:scl=SCL:sda=SDA,zavra_100', '-A', 'zavra_100'],
                    env={**os.environ, 'SIGROKDECODE_DIR': directory}, check=True, capture_output=True, text=True)
                with self.subTest(name):
                    self.assertEqual([line.split(': ', 1)[1] for line in shown.stdout.splitlines()], expected)
                    self.assertEqual(shown.stderr, '')


main()
