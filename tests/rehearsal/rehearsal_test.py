'''The flight build on Debian's ARM kernel, whose I2C bus is the simulated unit's. Usage: rehearsal_test.py BINARIES'''
import fnmatch
import json
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest

TOP = pathlib.Path(__file__).resolve().parents[2]
BINARIES = pathlib.Path(sys.argv[1]).resolve()
sys.path.append(str(TOP / 'tests/support'))
from transcript import examples, pattern

READ = 'zavractl system scheduler'

# What happens to reading a register: its status, what is said, and how many seconds it takes at least.
WRITE_FAILED = 'Cannot write 5 bytes to address 10 (0xA) on /dev/i2c-0 '
READ_FAILED = 'Cannot read 5 bytes from address 10 (0xA) on /dev/i2c-0 '
FAULTS = [
    ('nak-write', 1, WRITE_FAILED + '(not acknowledged: No such device or address)', 0),
    ('nak-read', 1, READ_FAILED + '(not acknowledged: No such device or address)', 0),
    ('short', 1, READ_FAILED + '(Input/output error)', 0),
    ('crc', 0, 'scheduler_register', 0),
    ('crc=1', 1, 'Bad response CRC, Retry failed', 1),
    ('dead-bus=1:1', 1, WRITE_FAILED + '(Input/output error)', 0),
    ('hang=1:1', 1, WRITE_FAILED + '(Input/output error)', 2),
]


class Machine:
    '''The virtual computer; its shell does one command after the other.'''

    def __init__(self, socket):
        self.process = subprocess.Popen([TOP / 'scripts/rehearsal_machine.sh', socket], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)
        self.deadline = threading.Timer(240, self.process.kill) # a machine that hangs ends the test
        self.deadline.start()
        self.read_until('# ')
        # Without a line editor, which would take what comes before it is done.
        self.write('stty -echo; echo ready; while read -r line; do eval "$line"; done')
        self.read_until('\nready\n')

    def write(self, line):
        self.process.stdin.write(line.encode() + b'\n')
        self.process.stdin.flush()

    def read_until(self, end):
        text = ''
        while not (match := re.search('(?s)(.*)' + end, text)):
            some = self.process.stdout.read1(4096)
            if not some:
                raise RuntimeError('the virtual machine has stopped:\n' + text)
            text += some.decode(errors='replace').replace('\r', '')
        return match

    def run(self, command):
        '''Its status and what it prints.'''
        self.write(f'({command}) 2>&1 </dev/null; echo "[status" "$?]"')
        output, status = self.read_until(r'\[status (\d+)\]\n').groups()
        return int(status), output

    def stop(self):
        self.process.kill()
        self.process.communicate()
        self.deadline.cancel()


class Unit:
    '''zavra-sim, and what is on its bus.'''

    def __init__(self, directory):
        self.directory = directory
        self.environment = {**os.environ, 'PATH': f'{BINARIES}:{os.environ["PATH"]}', 'VELM_I2C_BUS_DIR': str(directory)}
        self.start()

    def start(self):
        self.process = subprocess.Popen([BINARIES / 'zavra-sim', '--usb-redir', self.directory / 'adapter', '--journal',
                                         self.directory / 'journal', '--bus-dir', self.directory],
                                        stdout=subprocess.DEVNULL)
        for door in ('i2c-0', 'adapter'):
            while not (self.directory / door).exists():
                time.sleep(0.05)

    def stop(self):
        self.process.kill() # which reaches one that is stopped, too
        self.process.wait()

    def run(self, command):
        ran = subprocess.run(['bash', '-c', command], env=self.environment, cwd=TOP, text=True, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT)
        return ran.returncode, ran.stdout

    def journal(self):
        return [json.loads(line) for line in (self.directory / 'journal').read_text().splitlines()]


class Rehearsal(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.addClassCleanup((temporary := tempfile.TemporaryDirectory()).cleanup)
        cls.unit = Unit(pathlib.Path(temporary.name))
        cls.addClassCleanup(cls.unit.stop)
        cls.machine = Machine(cls.unit.directory / 'adapter')
        cls.addClassCleanup(cls.machine.stop)

    def assert_ran(self, ran, status, text):
        self.assertEqual(ran[0], status, ran[1])
        self.assertIn(text, ran[1])

    def test_the_guide_shows_what_happens(self):
        steps = examples((TOP / 'docs/target.md').read_text(), '$ ', '/ # ')
        self.assertGreater(len(steps), 5)
        for prompt, command, expected in steps:
            side = self.machine if prompt == '/ # ' else self.unit
            with self.subTest(command):
                _, output = side.run(command)
                self.assertTrue(fnmatch.fnmatchcase(output, pattern(expected)), output)

    def test_faults_reach_the_application(self):
        for fault, status, text, seconds in FAULTS:
            with self.subTest(fault):
                self.assert_ran(self.unit.run(f'zavractl sim fault {fault}'), 0, '')
                start = time.monotonic()
                self.assert_ran(self.machine.run(READ), status, text)
                self.assertGreaterEqual(time.monotonic() - start, seconds)
                kind = fault.partition('=')[0]
                self.assertIn(kind, [line.get('fault') for line in self.unit.journal()])
                self.assert_ran(self.unit.run(f'zavractl sim fault {kind}=0'), 0, '')

    def test_the_system_calls_carry_the_bytes_of_the_journal(self):
        before = len(self.unit.journal())
        strace = 'strace -o trace -xx -s 999 -P /dev/i2c-0 -e trace=ioctl,read,write'
        _, trace = self.machine.run(strace + ' zavractl telemetry attitude; cat trace')
        calls = re.findall(r'^(write|read)\(\d+, "((?:\\x[0-9a-f]{2})+)", \d+\) += \d+$', trace, re.MULTILINE)
        self.assertIn('_IOC(_IOC_NONE, 0x7, 0x3, 0), 0xa) = 0', trace) # I2C_SLAVE
        self.assertEqual([name for name, _ in calls], ['write', 'read'])
        self.assertEqual([(name, text.replace('\\x', '')) for name, text in calls],
                         [(line['direction'], line['bytes']) for line in self.unit.journal()[before:]])

    def test_programs_take_turns(self):
        before = len(self.unit.journal())
        loop = f'for i in 1 2 3; do {READ} || echo FAILED; done'
        _, output = self.machine.run(f'{loop} & {loop}; wait')
        self.assertNotIn('FAILED', output)
        self.assertEqual([line['direction'] for line in self.unit.journal()[before:]], ['write', 'read'] * 6)

    def test_flight_reaches_no_simulated_bus(self):
        self.assert_ran(self.machine.run('VELM_I2C_BUS_DIR=/ ' + READ), 0, '')
        self.assert_ran(self.machine.run('zavractl --dry-run system clear-errors'), 2, 'this build reaches no simulated bus')

    def test_an_adapter_that_is_silent_or_unplugged_comes_back(self):
        self.unit.process.send_signal(signal.SIGSTOP)
        self.assert_ran(self.machine.run(READ), 1, 'Input/output error')
        self.unit.process.send_signal(signal.SIGCONT)
        self.assert_ran(self.machine.run(READ), 0, 'scheduler_register')

        self.unit.stop()
        gone = 'while [ -e /dev/i2c-0 ]; do sleep 0.1; done; '
        self.assert_ran(self.machine.run(gone + READ), 1, 'on /dev/i2c-0 (No such file or directory): '
                        'buses are there when the driver is loaded, with modprobe i2c-dev')
        self.unit.start()
        back = 'until [ -e /dev/i2c-0 ]; do sleep 0.1; done; '
        self.assert_ran(self.machine.run(back + READ), 0, 'scheduler_register')


unittest.main(argv=sys.argv[:1] + sys.argv[2:])
