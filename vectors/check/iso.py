"""Datetimes as ISO 8601 texts, without a model."""

import re

import date as dates
import timestamp
import zone as zones
import zoned
from line import CannotTell, Raised

_DAY = {'-': re.compile(r'([+-]?)(\d{4})-(\d\d)-(\d\d)'), '': re.compile(r'([+-]?)(\d{4})(\d\d)(\d\d)')}
_CLOCK = {'-': re.compile(r'(\d\d)(?::(\d\d)(?::(\d\d)(?:\.(\d{1,9})(?!\d))?)?)?'),
          '': re.compile(r'(\d\d)(?:(\d\d)(?:(\d\d)(?:\.(\d{1,9})(?!\d))?)?)?')}
_OFFSET = re.compile(r' ?([+-]\d\d(?::?\d\d)?)')


def _refused(text):
    return Raised(-5113, b'...', b'...', text.partition('\0')[0].encode('latin-1'))


def _clock(form, text):
    """Hour, minute, second and nanoseconds at the beginning of a text, and what is behind them."""
    found = _CLOCK[form].match(text)
    if found is None:
        return None
    fields = [int(field or 0) for field in found.groups()[:3]]
    for unit, value in zip((8, 16, 32), fields):
        dates.check(unit, value)
    return fields, dates.nanoseconds(found[4]), text[found.end():]


def _parts(text):
    """Fields of a timestamp, and what is behind them."""
    for form, pattern in _DAY.items():
        found = pattern.match(text)
        if found is not None:
            break
    else:
        raise _refused(text)
    year, month, day = (int(field) for field in found.groups()[1:])
    dates.check(1, year)
    dates.check(2, month)
    date = [-year if found[1] == '-' else year, month, day]
    rest = text[found.end():]
    clock = _clock(form, rest[1:]) if rest[:1] in ('T', 't', ' ') else None
    if clock is None:
        return date + [0, 0, 0, 0], rest
    return date + clock[0] + [clock[1]], clock[2]


def _offset(text):
    offset = zones.offset_of(text[:3] + ':' + (text[3:].lstrip(':') or '00'), True)
    if isinstance(offset, int):
        raise Raised(offset)
    if offset[0] == 0 and offset[1] and text[0] == '+':
        raise Raised(-5099)
    return (*offset, 0, zones.FIXED)


def _zone(rest, text):
    """The zone that is told, and its abbreviation or the offset in force."""
    fixed = _OFFSET.fullmatch(rest)
    if rest in ('', 'Z', 'z'):
        return (0, 0, 0, zones.FIXED), ''
    if fixed is not None:
        return _offset(fixed[1]), ''
    words = rest.split(' ')
    if words[0] or len(words) > 3 or '' in words[1:]:
        raise _refused(text)
    if words[1][0] in '+-0123456789':
        raise _refused(text)
    zone = zones.parse(words[1])
    told = words[2] if len(words) > 2 else ''
    if len(told) > 8 and told[0] not in '+-':
        raise _refused(text)
    if not re.match('[+-]..:', told):
        return zone, told
    if not re.fullmatch(r'[+-]\d\d:\d\d', told):
        raise _refused(text)
    return zone, _offset(told)


def _at_offset(zone, offset, date):
    zones.shift(date, offset, -1)
    zone = zones.adjusted(zone, date)
    if zone[:2] != offset[:2]:
        raise Raised(-5110)
    return zone


def _reading(read):
    def recompute(text):
        if text is None:
            raise CannotTell
        try:
            return read(text.seen().decode('latin-1'))
        except Raised as raised:
            raised.left = None
            raise
    return recompute


def _without_zone(encode, has_fraction):
    def read(text):
        ts, rest = _parts(text)
        if rest or '.' in text and not has_fraction:
            raise _refused(text)
        date = ts[:6]
        dates.check_date(date)
        return [encode(date + ts[6:])]
    return _reading(read)


def _read_zoned(text):
    ts, rest = _parts(text)
    zone, told = _zone(rest, text)
    date = ts[:6]
    dates.check_date(date)
    if isinstance(told, tuple):
        zone = _at_offset(zone, told, date)
    else:
        zone = zones.normalized(zone, date, told.encode())
    return [zoned.encode(date + ts[6:], zone)]


def _read_time(text):
    form = '' if len(text) >= 4 and text[2] != ':' else '-'
    clock = _clock(form, text)
    if clock is None or clock[2]:
        raise _refused(text)
    return [timestamp.encode_time(clock[0] + [clock[1]])]


def _date_text(date):
    for unit, value in zip((1, 2, 4, 8, 16, 32), date):
        dates.check(unit, value)
    return ('-' if date[0] < 0 else '') + '{:04}-{:02}-{:02} {:02}:{:02}:{:02}'.format(abs(date[0]), *date[1:6])


def _timestamp_text(ts):
    text = _date_text(ts[:6])
    dates.check(64, min(ts[6], 2 ** 31 - 1))
    return text + f'.{ts[6]:09}'


def _time_text(time):
    timestamp.check_time(time)
    dates.check(64, min(time[3], 2 ** 31 - 1))
    return '{:02}:{:02}:{:02}.{:09}'.format(*time)


def _zoned_text(utc, zone):
    local = zoned.local(utc, zone)
    text, offset = _timestamp_text(local), zones.zone_name((*zone[:3], zones.FIXED))
    if zone[0] == 0 and zone[1]:
        offset = '-' + offset[1:]
    if zone[3] == zones.FIXED:
        return f'{text} {offset}'
    abbreviation = zones.abbreviation(zone, utc[:6])
    return f'{text} {zones.zone_name(zone)} {abbreviation if _tells(zone, local, abbreviation) else offset}'


def _tells(zone, local, abbreviation):
    """Whether the abbreviation leads back to the zone's offset."""
    return zones.normalized(zone, local[:6], abbreviation.encode())[:2] == zone[:2]


def _writing(decode, to_text):
    def recompute(item, size='1000'):
        text = '' if isinstance(item, bytes) and not any(item) and decode is not timestamp.decode_time \
            else to_text(decode(item))
        if len(text) >= int(size):
            raise Raised(-3005)
        return [text, len(text)]
    return recompute


OPERATIONS = {
    'dv_date_from_iso': _without_zone(lambda ts: dates.encode(ts[:6]), False),
    'dv_timestamp_from_iso': _without_zone(timestamp.encode, True),
    'dv_time_from_iso': _reading(_read_time),
    'dv_ts_tz_from_iso': _reading(_read_zoned),
    'dv_date_to_iso': _writing(dates.operand, _date_text),
    'dv_timestamp_to_iso': _writing(timestamp.decode, _timestamp_text),
    'dv_time_to_iso': _writing(timestamp.decode_time, _time_text),
    'dv_ts_tz_to_iso': _writing(zoned.decode, lambda value: _zoned_text(*value)),
}
