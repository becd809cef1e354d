'''The XTCE export read by an interpreter that knows XTCE and nothing of the unit.'''
import json
import struct
import xml.etree.ElementTree as ElementTree
from contextlib import nullcontext

from frames import Case, REQUESTS, RESPONSES, crc8, main, plain, zavractl

NS = '{http://www.omg.org/spec/XTCE/20180204}'


def one(element, path):
    return element.find('/'.join(NS + part for part in path.split('/')))


def every(element, path):
    return element.findall('/'.join(NS + part for part in path.split('/')))


class Type:
    '''A parameter or argument type: bytes into a value and back.'''

    def __init__(self, element):
        self.encoding = next(child for child in element if child.tag.endswith('DataEncoding'))
        self.kind = self.encoding.tag[len(NS):-len('DataEncoding')]
        self.labels = [each.get('label') for each in every(element, 'EnumerationList/Enumeration')]
        self.unit = element.findtext(f'{NS}UnitSet/{NS}Unit')
        self.range = [float(each.get(end)) for each in element.iter(NS + 'ValidRange')
                      for end in ('minInclusive', 'maxInclusive')]
        if self.kind in ('Integer', 'Float'):
            self.size = int(self.encoding.get('sizeInBits')) // 8
            order = {'mostSignificantByteFirst': '>', 'leastSignificantByteFirst': '<'}[self.encoding.get('byteOrder')]
            letter = {'unsigned': ' BH I   Q', 'twosComplement': ' bh i   q', 'IEEE754_1985': '    f   d'}[
                self.encoding.get('encoding')][self.size]
            self.format = order + letter
        else:
            fixed = self.encoding.findtext(f'.//{NS}FixedValue')
            self.size = int(fixed) // 8 if fixed else None

    def decode(self, data):
        if self.kind == 'String':
            end = bytes.fromhex(self.encoding.findtext(f'.//{NS}TerminationChar'))
            return data.split(end)[0].decode(self.encoding.get('encoding'))
        if self.kind == 'Binary':
            return data
        value, = struct.unpack(self.format, data)
        return self.labels[value] if self.labels else value

    def encode(self, value, arguments):
        if self.kind == 'String':
            return value.encode(self.encoding.get('encoding')).ljust(self.size, b'\0')
        if self.kind == 'Binary':
            if self.size is None:
                dynamic = one(self.encoding, 'SizeInBits/DynamicValue')
                bits = arguments[one(dynamic, 'ArgumentInstanceRef').get('argumentRef')] * int(
                    one(dynamic, 'LinearAdjustment').get('slope'))
                assert bits == 8 * len(value)
            return value
        if self.range:
            assert self.range[0] <= value <= self.range[1], f'{value} is out of range'
        return struct.pack(self.format, self.labels.index(value) if self.labels else value)


def types_of(metadata, of):
    return {each.get('name'): Type(each) for each in one(metadata, of + 'TypeSet')}


def checked_size(container):
    '''Bytes of a frame; its CRC is the one that the test knows, and its last byte.'''
    encoding = one(container, 'BinaryEncoding')
    size = int(one(encoding, 'SizeInBits/FixedValue').text) // 8
    crc = one(encoding, 'ErrorDetectCorrect/CRC')
    assert [one(crc, name).text for name in ('Polynomial', 'InitRemainder', 'FinalXOR')] == ['07', '00', '00']
    assert (crc.get('reference'), int(crc.get('bitsFromReference'))) == ('start', 8 * (size - 1))
    return size


def decode_response(system, types, frame):
    container, = every(system, 'TelemetryMetaData/ContainerSet/SequenceContainer')
    parameters = {each.get('name'): types[each.get('parameterTypeRef')]
                  for each in one(system, 'TelemetryMetaData/ParameterSet')}
    assert checked_size(container) == len(frame)
    values = {}
    offset = 0
    for entry in one(container, 'EntryList'):
        location = one(entry, 'LocationInContainerInBits')
        if location is not None:
            assert location.get('referenceLocation') == 'previousEntry'
            offset += int(one(location, 'FixedValue').text) // 8
        name = entry.get('parameterRef')
        type_ = parameters[name]
        values[name] = type_.decode(frame[offset:offset + type_.size])
        offset += type_.size
    assert offset == len(frame)
    return values


def encode_request(command, types, arguments):
    of = {each.get('name'): types[each.get('argumentTypeRef')] for each in every(command, 'ArgumentList/Argument')}
    assert of.keys() == arguments.keys(), (of.keys(), arguments.keys())
    container = one(command, 'CommandContainer')
    frame = b''
    for entry in one(container, 'EntryList'):
        if entry.tag == NS + 'FixedValueEntry':
            frame += bytes.fromhex(entry.get('binaryValue'))
        else:
            name = entry.get('argumentRef')
            frame += of[name].encode(arguments[name], arguments)
    frame += bytes((crc8(frame),))
    assert one(container, 'BinaryEncoding') is None or checked_size(container) == len(frame)
    return frame


class Xtce_Test(Case):
    def setUp(self):
        self.root = ElementTree.fromstring(zavractl('export', 'xtce'))
        self.systems = {each.get('name'): each for each in every(self.root, 'SpaceSystem')}
        self.commands = {each.get('name'): each for each in every(self.root, 'CommandMetaData/MetaCommandSet/MetaCommand')}
        self.parameter_types = types_of(one(self.root, 'TelemetryMetaData'), 'Parameter')
        self.argument_types = types_of(one(self.root, 'CommandMetaData'), 'Argument')

    def test_responses_mean_what_they_are_known_to_mean(self):
        for method, frame, expected in RESPONSES:
            frame = bytes.fromhex(frame)
            values = decode_response(self.systems[method], self.parameter_types, frame)
            self.assertEqual(values['crc'], crc8(frame[:-1]), method)
            for name, value in expected.items():
                self.assert_value(name, values[plain(name)], value)

    def test_commands_become_the_frames_that_are_known(self):
        for method, arguments, frame in REQUESTS:
            arguments = {plain(name): value for name, value in arguments.items()}
            self.assertEqual(encode_request(self.commands[method], self.argument_types, arguments).hex(), frame, method)

    def test_angles_beyond_the_earth_are_out_of_range(self):
        command = self.commands['Start_TargetPointing_Earth_Fix_Mode']
        arguments = {each.get('name'): 0 for each in every(command, 'ArgumentList/Argument')}
        for name, in_range, beyond in (('latitude', -1.57, -1.58), ('longitude', 3.14, 3.15)):
            for value in (in_range, beyond):
                given = {**arguments, f'parameters_target_{name}': value}
                with self.subTest(name, value=value), (
                        self.assertRaisesRegex(AssertionError, 'out of range') if value == beyond else nullcontext()):
                    encode_request(command, self.argument_types, given)

    def test_everything_is_there_once_with_units_and_enumerations(self):
        methods = {each['name']: each for each in json.loads(zavractl('list', '--json'))}
        self.assertLessEqual(self.systems.keys() | self.commands.keys(), methods.keys())
        self.assertEqual(len(self.commands), sum(each['identifier'] != 0 for each in methods.values()))
        for system in self.systems.values():
            names = [each.get('name') for each in one(system, 'TelemetryMetaData/ParameterSet')]
            self.assertEqual(len(names), len(set(names)), system.get('name'))
        self.assertEqual(self.parameter_types['float32_rad_per_s'].unit, 'rad/s')
        self.assertEqual(self.argument_types['axis'].labels, ['X', 'Y', 'Z'])


main()
