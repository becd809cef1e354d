import struct

import sigrokdecode as srd

from .tables import COMMANDS

EXECUTION_WAIT_MSEC = 100  # from the end of a request to whatever the bus master does next

REQUEST, RESPONSE, FIELD, CRC_RIGHT, CRC_WRONG, WARNING = range(6)


def crc8(data):
    crc = 0
    for byte in data:
        crc ^= byte
        for _ in range(8):
            crc = (crc << 1) ^ (0x107 if crc & 0x80 else 0)
    return crc


def size_of(fields):
    '''Bytes of the fields, or None where any number will do.'''
    if any(field.format == '' for field in fields):
        return None
    return sum(struct.calcsize(field.format) for field in fields)


def text_of(field, value):
    if isinstance(value, bytes):
        if not field.is_text:
            return value.hex()
        text = value.split(b'\0')[0].decode('latin-1')
        return '"' + ''.join(c if c.isprintable() else '?' for c in text) + '"'
    if isinstance(value, float):
        text = '%.7g' % value if field.format.endswith('f') else repr(value)
    elif 0 <= value < len(field.labels):
        return field.labels[value]
    elif field.hexadecimal:
        text = '0x%0*x' % (2 * struct.calcsize(field.format), value)
    else:
        text = str(value)
    return text + (' ' + field.unit if field.unit else '')


class Decoder(srd.Decoder):
    api_version = 3
    id = 'zavra_100'
    name = 'ZAVRA-100'
    longname = 'ZAVRA-100 attitude determination and control unit'
    desc = 'Commands and telemetry of the ZAVRA-100.'
    license = 'apache-2.0'
    inputs = ['i2c']
    outputs = []
    tags = ['Embedded/industrial', 'Sensor']
    options = (
        {'id': 'address', 'desc': 'Address of the unit', 'default': 10},
    )
    annotations = (
        ('request', 'Request'),
        ('response', 'Response'),
        ('field', 'Field'),
        ('crc-right', 'CRC right'),
        ('crc-wrong', 'CRC wrong'),
        ('warning', 'Warning'),
    )
    annotation_rows = (
        ('frames', 'Frames', (REQUEST, RESPONSE)),
        ('fields', 'Fields', (FIELD, CRC_RIGHT, CRC_WRONG)),
        ('warnings', 'Warnings', (WARNING,)),
    )

    def __init__(self):
        self.reset()

    def reset(self):
        self.samplerate = None
        self.candidates = []  # what the last request may have been
        self.is_pending = False  # its response has not been read
        self.end_of_request = None
        self.begin(None)

    def begin(self, ss):
        self.ss = ss
        self.octets = []  # (ss, es, value)
        self.is_read = None
        self.is_ours = False
        self.is_refused = False

    def metadata(self, key, value):
        if key == srd.SRD_CONF_SAMPLERATE:
            self.samplerate = value

    def start(self):
        self.out_ann = self.register(srd.OUTPUT_ANN)

    def show(self, ss, es, kind, *texts):
        self.put(ss, es, self.out_ann, [kind, list(texts)])

    def decode(self, ss, es, data):
        kind, value = data
        if kind == 'START':
            self.begin(ss)
        elif self.ss is None:
            return
        elif kind in ('ADDRESS READ', 'ADDRESS WRITE'):
            self.is_read = kind == 'ADDRESS READ'
            self.is_ours = value == self.options['address']
        elif kind in ('DATA READ', 'DATA WRITE'):
            self.octets.append((ss, es, value))
        elif kind == 'NACK':
            # Behind the last byte that it reads a bus master always puts one.
            self.is_refused = not (self.is_read and self.octets)
        elif kind in ('STOP', 'START REPEAT'):
            if self.is_ours:
                self.transaction(es)
            self.begin(ss if kind == 'START REPEAT' else None)

    def transaction(self, es):
        self.check_wait()
        if self.is_refused:
            what = 'Read' if self.is_read else 'Request'
            self.show(self.ss, es, WARNING, '%s not acknowledged' % what, 'NAK')
        elif self.is_read:
            self.response(es)
        else:
            self.request(es)

    def check_wait(self):
        '''Whatever follows a request, a read or the next request, comes too soon within 100 ms.'''
        if self.end_of_request is None or not self.samplerate:
            return
        msec = 1000 * (self.ss - self.end_of_request) / self.samplerate
        if msec < EXECUTION_WAIT_MSEC:
            what = 'Read' if self.is_read else 'Request'
            self.show(self.end_of_request, self.ss, WARNING,
                      '%s %.1f ms after a request, which needs %d ms' % (what, msec, EXECUTION_WAIT_MSEC),
                      '%.1f ms' % msec)
        self.end_of_request = None

    def request(self, es):
        frame = bytes(octet[2] for octet in self.octets)
        if self.is_pending:
            self.show(self.ss, es, WARNING, 'Request while the reply to %s is pending' % self.names(), 'Reply pending')
        self.candidates = []
        self.is_pending = False
        self.end_of_request = es
        if len(frame) < 5:
            self.show(self.ss, es, WARNING, 'Request of %d bytes, too short for a frame' % len(frame), 'Short')
            return
        identifier, length = struct.unpack('>H', frame[:2])[0], struct.unpack('<H', frame[2:4])[0]
        if length != len(frame) - 5:
            self.show(self.ss, es, WARNING,
                      '%d bytes of payload with a header for %d' % (len(frame) - 5, length), 'Length')
        else:
            self.candidates = [command for command in COMMANDS if command.identifier == identifier
                               and size_of(command.request) in (length, None)]
        title = self.names() if self.candidates else 'Unknown command 0x%04x with %d bytes' % (identifier, length)
        self.show(self.ss, es, REQUEST, title, '0x%04x' % identifier)
        is_right = self.crc()
        # The unit has nothing to say to a request that it did not understand.
        self.is_pending = is_right and any(command.response for command in self.candidates)
        if self.candidates:
            self.fields(self.candidates[0].request, self.octets[4:-1])

    def response(self, es):
        payload_size = len(self.octets) - 1
        found = [command for command in self.candidates if command.response
                 and size_of(command.response) == payload_size]
        title = '%d bytes' % max(payload_size, 0)
        if found and self.is_pending:
            self.candidates = found
            self.show(self.ss, es, RESPONSE, 'Reply to ' + self.names(), 'Reply')
        elif self.is_pending:
            expected = [size_of(command.response) for command in self.candidates]
            self.show(self.ss, es, RESPONSE, '%s in reply to %s' % (title, self.names()), title)
            self.show(self.ss, es, WARNING, '%s of payload, expected %s' % (
                title, ' or '.join(str(size) for size in expected)), 'Length')
        else:
            self.show(self.ss, es, RESPONSE, 'Read of %s without a request to answer' % title, title)
        if self.octets:
            self.crc()
        if found and self.is_pending:
            self.fields(found[0].response, self.octets[:-1])
        self.is_pending = False

    def names(self):
        return ' or '.join(command.method for command in self.candidates)

    def crc(self):
        ss, es, value = self.octets[-1]
        computed = crc8(octet[2] for octet in self.octets[:-1])
        if computed == value:
            self.show(ss, es, CRC_RIGHT, 'CRC right', 'CRC')
        else:
            self.show(ss, es, CRC_WRONG, 'CRC wrong: 0x%02x, computed 0x%02x' % (value, computed), 'CRC!')
            self.show(ss, es, WARNING, 'CRC wrong', 'CRC')
        return computed == value

    def fields(self, fields, octets):
        payload = bytes(octet[2] for octet in octets)
        offset = 0
        events = None
        for field in fields:
            form = field.format or '%ds' % (len(payload) - offset)
            size = struct.calcsize(form)
            if field.name and size and (field.event is None or field.event < events):
                value, = struct.unpack_from(form, payload, offset)
                if field.name == 'num_event':
                    events = value
                text = text_of(field, value)
                self.show(octets[offset][0], octets[offset + size - 1][1], FIELD,
                          '%s = %s' % (field.name, text), text)
            offset += size
