"""Packed keys: parts, ranges and prefixes, by docs/keys.md."""

import struct

import date as dates
import interval
import number
import timestamp
import zoned
from line import CannotTell, Raised, Text, Word

_EARLY = Text(b'the key ends within a part')
_LT, _EQ, _GT = 1, 2, 4


def _number(item):
    return number.encode(number.operand(item))[1:] + b'\0'


def _double(item):
    value, = struct.unpack('>d', item)
    if value != value:
        return b'\xFF' * 8
    bits, = struct.unpack('>Q', struct.pack('>d', value or 0.0))
    return struct.pack('>Q', bits ^ (2 ** 64 - 1 if bits >> 63 else 2 ** 63))


def _integer(size):
    return lambda item: (int(item) + 2 ** (8 * size - 1)).to_bytes(size, 'big')


def _wide(item):
    return bytes([item[0] ^ 0x80]) + item[1:]


def _instant(item):
    return timestamp.encode(zoned.decode(item)[0])


VALUES = {  # the bytes of a value, ascending
    'NUMBER': _number,
    'DATE': lambda item: dates.encode(dates.operand(item))[:7],
    'TIME': lambda item: timestamp.encode_time(timestamp.decode_time(item)),
    'TIMESTAMP': lambda item: timestamp.encode(timestamp.decode(item)),
    'TS_TZ': _instant,
    'TS_LTZ': lambda item: timestamp.encode(timestamp.decode(item)),
    'ITV_YTM': lambda item: interval.encode(interval.fields(item, 2)),
    'ITV_DTS': lambda item: interval.encode(interval.fields(item, 3)),
    'ROWID': lambda *numbers: struct.pack('>IHIH', *map(int, numbers)),
    'INT32': _integer(4),
    'INT64': _integer(8),
    'INT128': _wide,
    'DOUBLE': _double,
    'BYTES': lambda item: item.replace(b'\0', b'\0\xFF') + b'\0\0',
}
SIZES = {'DATE': 7, 'TIME': 8, 'TIMESTAMP': 12, 'TS_TZ': 12, 'TS_LTZ': 12, 'ITV_YTM': 5, 'ITV_DTS': 12, 'ROWID': 12,
         'INT32': 4, 'INT64': 8, 'INT128': 16, 'DOUBLE': 8}


def _turned(key, order):
    return bytes(255 - byte for byte in key) if order == 'DESCENDING' else key


def _front(nulls, has_value):
    return b'' if nulls == 'NOT_NULL' else bytes([has_value == (nulls == 'NULLS_FIRST')])


def _part(kind, order, nulls, *value):
    if value == (None,):
        return _front(nulls, False)
    return _front(nulls, True) + _turned(VALUES[kind](*value), order)


def _end_of_prefix(key):
    key = key.rstrip(b'\xFF')
    return key[:-1] + bytes([key[-1] + 1]) if key else b''


def _range(prefix, relation, kind, order, nulls, *value):
    key, first = prefix + _part(kind, order, nulls, *value), prefix + _front(nulls, True)
    relation = int(relation)
    if value == (None,):
        relation = _LT | _EQ | _GT if relation == _LT | _GT else relation
    elif order == 'DESCENDING':
        relation = relation & _EQ | (_GT if relation & _LT else 0) | (_LT if relation & _GT else 0)
    if relation == _GT and not key[len(first):].strip(b'\xFF'):
        return [0]
    start = first if relation & _LT else key if relation & _EQ else _end_of_prefix(key)
    end = _end_of_prefix(first) if relation & _GT else _end_of_prefix(key) if relation & _EQ else key
    return [start, end]


def _escaped(key):
    """A text, and what is behind it."""
    text, at = b'', 0
    while True:
        zero = key.find(b'\0', at)
        if zero < 0 or zero + 1 == len(key):
            return None, _EARLY
        text += key[at:zero]
        if key[zero + 1] == 0:
            return text, key[zero + 2:]
        if key[zero + 1] != 255:
            return None, Text(b'a byte 0 is not escaped')
        text, at = text + b'\0', zero + 2


def _back(kind, key):
    """The output of a value of a fixed length."""
    if kind in ('INT32', 'INT64'):
        return [int.from_bytes(key, 'big') - 2 ** (8 * len(key) - 1)]
    if kind == 'ROWID':
        return list(struct.unpack('>IHIH', key))
    if kind == 'INT128':
        return [_wide(key)]
    if kind == 'DOUBLE':
        bits = int.from_bytes(key, 'big')
        return [(bits ^ (2 ** 63 if bits >> 63 else 2 ** 64 - 1)).to_bytes(8, 'big')]
    return [key + {'DATE': b'\0', 'TS_TZ': bytes.fromhex('6400000245')}.get(kind, b'')]


def _has_time(key):
    *clock, zero = key[:4]
    return all(map(int.__lt__, clock, (24, 60, 60))) and zero == 0 and int.from_bytes(key[4:], 'big') < 10 ** 9


def _has_date(key):
    try:
        dates.check_date(dates.decode(key))
    except Raised:
        return False
    return abs(key[0] - 100) <= 99 and abs(key[1] - 100) <= 99 and (key[0] - 100) * (key[1] - 100) >= 0


def _has_one_sign(count, limits):
    def check(key):
        fields = interval.fields(key, count)
        return all(abs(f) < limit for f, limit in zip(fields, limits)) and not min(fields) < 0 < max(fields)
    return check


def _has_timestamp(key):
    return _has_date(key) and _has_time(key[4:])


SOUND = {  # whether bytes are a value's; of others only the library says what is wrong
    'DATE': lambda key: _has_date(key) and _has_time(key[4:] + b'\0'),
    'TIME': _has_time, 'TIMESTAMP': _has_timestamp, 'TS_TZ': _has_timestamp, 'TS_LTZ': _has_timestamp,
    'ITV_YTM': _has_one_sign(2, (10 ** 9, 12)), 'ITV_DTS': _has_one_sign(3, (10 ** 9, 86400, 10 ** 9)),
    'DOUBLE': lambda key: _double(_back('DOUBLE', key)[0]) == key}


def _take(kind, order, nulls, key):
    if nulls != 'NOT_NULL':
        if not key:
            return [_EARLY]
        if key[0] > 1:
            return [Text(b'the first byte of a part tells neither NULL nor a value')]
        if key[:1] == _front(nulls, False):
            return [Word('null'), len(key) - 1]
        key = key[1:]
    key = _turned(key, order)
    if kind == 'BYTES':
        text, rest = _escaped(key)
        return [rest] if text is None else [Text(text), len(rest)]
    if kind == 'NUMBER':
        end = key.find(b'\0', 1)
        if end < 0 and len(key) <= 22:
            return [_EARLY]
        if end < 0 or end > 22:
            return [Text(b'it is too long for a NUMBER')]
        record = bytes([end]) + key[:end]
        try:
            number.decode(record)
        except (ValueError, IndexError):
            raise CannotTell from None
        return [record, len(key) - end - 1]
    size = SIZES[kind]
    if len(key) < size:
        return [_EARLY]
    if kind in SOUND and not SOUND[kind](key[:size]):
        raise CannotTell
    return _back(kind, key[:size]) + [len(key) - size]


OPERATIONS = {
    'dv_key_append': lambda *part: [_part(*part)],
    'dv_key_take': _take,
    'dv_key_end_of_prefix': lambda key: [_end_of_prefix(key)],
    'dv_key_range': _range,
}
