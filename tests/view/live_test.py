'''The live view in a real browser, and what it refuses.

Usage: live_test.py DIRECTORY_OF_PROGRAMS DIRECTORY_FOR_SCREENSHOTS
'''
import http.client
import json
import os
import re
import socket
import subprocess
import tempfile
import time

from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import WebDriverWait

from browser import EXAMPLES, PROGRAMS, Browser_Case, main


class Live_Test(Browser_Case):
    def setUp(self):
        self.room = tempfile.TemporaryDirectory()
        self.environment = {**os.environ, 'VELM_I2C_BUS_DIR': self.room.name}
        self.port = 0
        self.start()

    def tearDown(self):
        self.stop()
        self.room.cleanup()

    def start(self):
        self.simulator = subprocess.Popen(
            [PROGRAMS / 'zavra-sim', '--satellite', EXAMPLES / 'satellites/3u.toml', '--view', str(self.port), '--latency', '0'],
            env=self.environment, stdout=subprocess.PIPE, text=True)
        for line in self.simulator.stdout:
            if found := re.search(r'http://127\.0\.0\.1:(\d+)/', line):
                self.port = int(found[1])
            if 'Ctrl-C' in line:
                return
        self.fail('it did not start')

    def stop(self):
        self.simulator.terminate()
        self.assertEqual(self.simulator.wait(), 0)
        self.simulator.stdout.close()

    def zavractl(self, *words):
        return subprocess.run([PROGRAMS / 'zavractl', *words], env=self.environment, text=True, capture_output=True)

    def wait_for(self, condition):
        WebDriverWait(self.browser, 90, 0.5).until(lambda _: condition())

    def text(self, identifier):
        return self.browser.find_element(By.ID, identifier).text

    def request(self, method, path, body=None, headers=()):
        connection = http.client.HTTPConnection('127.0.0.1', self.port, timeout=20)
        connection.request(method, path, body, dict(headers))
        answer = connection.getresponse()
        return answer.status, answer.read()

    def test_follows_a_bus_that_an_application_uses_and_survives_a_restart(self):
        self.open(f'http://127.0.0.1:{self.port}/')
        rows = self.js('page.flight.time_s.length')
        self.wait_for(lambda: self.js('page.flight.time_s.length') > rows + 3)
        self.assertEqual(self.zavractl('call', 'Set_ReactionWheel_Speed', '0', '5').returncode, 0)
        self.wait_for(lambda: 'Set_ReactionWheel_Speed' in self.text('journal'))
        self.assertGreater(self.js('page.time'), 1, 'the picture goes on with the flight')
        self.wait_for(lambda: 4.5 < self.js('page.flight.curves.wheel_speed_x_radps.slice(-1)[0]') < 5.5)
        self.assertRegex(self.text('telemetry'), r'reactionwheel_current_speed_x_radps (4\.[5-9]|5)')
        self.screenshot('live')

        self.browser.find_element(By.XPATH, '//button[text()="nak-write"]').click()
        self.wait_for(lambda: 'nak-write' not in self.text('note'))
        time.sleep(1)
        failed = self.zavractl('time', 'get')
        self.assertEqual(failed.returncode, 1, failed.stdout)
        self.wait_for(lambda: 'FAULT nak-write' in self.text('journal'))
        self.assert_no_complaints()

        self.stop()
        self.wait_for(lambda: 'is gone' in self.text('lost'))
        run = self.js('page.flight.live.run')
        self.start()
        self.wait_for(lambda: self.js('page.flight.live.run') != run)
        rows = self.js('page.flight.time_s.length')
        self.wait_for(lambda: self.js('page.flight.time_s.length') > rows)
        self.assertEqual(self.text('lost'), '')
        self.browser.get('about:blank')
        self.browser.get_log('browser')  # of the time without the unit

    def test_what_makes_no_sense_gets_an_error_and_changes_nothing(self):
        origin = {'Origin': 'http://evil.example'}
        crc = json.dumps({'fault': 'crc', 'probability': 1})
        for expected, *request in [
            (403, 'POST', '/control', crc, origin),
            (403, 'GET', '/', None, origin),
            (403, 'GET', '/', None, {'Host': 'evil.example'}),
            (405, 'GET', '/control'),
            (405, 'POST', '/', crc),
            (405, 'PUT', '/control', crc),
            (404, 'GET', '/etc/passwd'),
            (413, 'POST', '/control', crc + ' ' * 4096),
            (400, 'POST', '/control', '{"fault": '),
            (400, 'POST', '/control', '{"fault": "flood"}'),
            (400, 'POST', '/control', '[]'),
        ]:
            self.assertEqual(self.request(*request)[0], expected, request)
        status, state = self.request('POST', '/control', '{}')
        self.assertEqual((status, json.loads(state)['units']['10']['faults']), (200, {}))
        self.assertEqual(self.request('POST', '/control', crc, {'Origin': f'http://localhost:{self.port}'})[0], 200)
        self.assertEqual(json.loads(self.request('POST', '/control', '{}')[1])['units']['10']['faults'], {'crc': 1.0})

    def test_only_this_computer_is_listened_to(self):
        with open('/proc/net/tcp') as lines:  # address:port of this end is the second word, in hexadecimal
            ends = [line.split()[1].split(':') for line in list(lines)[1:] if line.split()[3] == '0A']
        self.assertEqual([address for address, port in ends if int(port, 16) == self.port], ['0100007F'])

    def test_slow_viewers_hold_up_nobody(self):
        slow = []
        for _ in range(20):  # they ask, and never read
            viewer = socket.socket()
            viewer.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 4096)
            viewer.connect(('127.0.0.1', self.port))
            viewer.sendall(f'GET /stream HTTP/1.1\r\nHost: 127.0.0.1:{self.port}\r\n\r\n'.encode())
            slow.append(viewer)
        time.sleep(1)
        self.assertEqual(self.zavractl('time', 'get').returncode, 0)
        self.assertEqual(self.request('GET', '/')[0], 200)
        for viewer in slow:
            viewer.close()


main()
