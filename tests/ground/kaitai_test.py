'''The Kaitai Struct export, compiled by Kaitai Struct's own compiler and read with its own library.'''
import json
import subprocess

import yaml

from frames import Case, PROGRAM, REQUESTS, RESPONSES, main, plain, zavractl

# Before the program: where npm has put the compiler.
COMPILER = PROGRAM.pop(0)
COMPILE = '''
const Compiler = require(process.argv[1]);
new Compiler().compile('python', JSON.parse(require('fs').readFileSync(0, 'utf8')), null, false)
    .then(files => process.stdout.write(files['zavra_100.py']));
'''


def compiled():
    description = json.dumps(yaml.safe_load(zavractl('export', 'ksy')))
    code = subprocess.run(['node', '-e', COMPILE, COMPILER], input=description, check=True, capture_output=True,
                          text=True).stdout
    names = {}
    exec(code, names)
    return names['Zavra100']


class Kaitai_Test(Case):
    @classmethod
    def setUpClass(cls):
        cls.reader = compiled()

    def test_responses_mean_what_they_are_known_to_mean(self):
        for method, frame, expected in RESPONSES:
            type_ = getattr(self.reader, method.replace('_', ' ').title().replace(' ', '') + 'Response')
            response = type_.from_bytes(bytes.fromhex(frame))
            self.assertTrue(response._io.is_eof(), method)
            for name, value in expected.items():
                self.assert_value(name, getattr(response, plain(name)), value)
            self.assertEqual(response.crc, int(frame[-2:], 16))

    def test_requests_mean_what_they_are_known_to_mean(self):
        for method, arguments, frame in REQUESTS:
            request = self.reader.from_bytes(bytes.fromhex(frame))
            self.assertTrue(request._io.is_eof(), method)
            self.assertEqual(request.identifier, int(frame[:4], 16))
            for name, value in arguments.items():
                if name == 'length':
                    self.assertEqual(request.len_payload, value)
                elif isinstance(value, str):
                    self.assertEqual(getattr(request.payload, plain(name)).name, value.lower())
                else:
                    self.assert_value(name, getattr(request.payload, plain(name)), value)

    def test_the_length_tells_requests_with_one_identifier_apart(self):
        for size, type_ in ((33, 'AngularvelocityControllerParametersRequest'),
                            (53, 'AnglestepControllerParametersRequest')):
            frame = bytes((0xc0, 0x11, size, 0)) + bytes(size + 1)
            body = self.reader.from_bytes(frame).payload.body
            self.assertEqual(type(body).__name__, 'SetSingleaxis' + type_)


main()
