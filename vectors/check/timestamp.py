"""TIME and TIMESTAMP: records, order, numbers, arithmetic. Timestamps are a list of date fields and nanoseconds."""

import functools
import re
import struct

import date as dates
import interval
import number
from line import CannotTell, Raised

_TIME = re.compile(r'(\d\d):(\d\d):(\d\d)(?:\.(\d{1,9}))?')
_BILLION = 10 ** 9


def decode(item):
    """Fields of a TIMESTAMP, with the nanoseconds as the last."""
    if item is None:
        raise CannotTell
    if not isinstance(item, bytes):
        date, nanoseconds = dates.readable(item)
        return date + [nanoseconds]
    return dates.decode(item) + [int.from_bytes(item[8:12], 'big')]


def encode(ts, last=0):
    return dates.encode(ts[:6], last) + struct.pack('>I', ts[6])


def decode_time(item):
    if isinstance(item, bytes):
        return [*item[:3], int.from_bytes(item[4:8], 'big')]
    *fields, fraction = _TIME.fullmatch(item).groups()
    return [int(field) for field in fields] + [dates.nanoseconds(fraction)]


def encode_time(time, last=0):
    return bytes([*time[:3], last]) + struct.pack('>I', time[3])


def _in_place(decode, encode, last_place):
    def decorate(function):
        @functools.wraps(function)
        def recompute(item, *inputs):
            if item is None:
                raise CannotTell
            value = decode(item)
            last = item[last_place] if isinstance(item, bytes) else 0
            try:
                function(value, *inputs)
            except Raised as raised:
                raised.left = [encode(value, last)]
                raise
            return [encode(value, last)]
        return recompute
    return decorate


on_timestamp = _in_place(decode, encode, 7)
on_time = _in_place(decode_time, encode_time, 3)


def get_field(fields, units):
    def recompute(item, unit):
        if int(unit) not in units:
            raise Raised(-5006)
        return [fields(item)[units.index(int(unit))]]
    return recompute


def check_time(time):
    for unit, value in zip((8, 16, 32), time):
        dates.check(unit, value)


def _set_field(units, first_of_time):
    def change(fields, unit, value, check_input, check_result):
        unit, value = int(unit), int(value)
        if unit not in units:
            if int(check_input) and unit in dates.UNITS:
                raise CannotTell
            raise Raised(-5006)
        if int(check_input):
            dates.check(unit, value)
        place = units.index(unit)
        if not (0 <= value < 256 or unit == 64 and 0 <= value or unit == 1 and abs(value) <= 9999):
            raise CannotTell
        fields[place] = value
        if int(check_result) and place < first_of_time:
            date = fields[:6]
            dates.check_date(date)
            fields[:6] = date
        elif int(check_result):
            check_time(fields[first_of_time:])
    return change


def _time_from_units(*values):
    time = [int(value) for value in values]
    for unit, value in zip((8, 16, 32, 64), time):
        dates.check(unit, value)
    return [encode_time(time)]


def units(*values):
    """The fields of a timestamp, each and their date checked."""
    ts = [int(value) for value in values]
    for unit, value in zip((1, 2, 4, 8, 16, 32), ts):
        dates.check(unit, value)
    date = ts[:6]
    dates.check_date(date)  # which brings a day of the gap behind it
    dates.check(64, ts[6])
    return date + ts[6:]


def _from_units(*values):
    return [encode(units(*values))]


def trim(fields, precision):
    precision = int(precision)
    if not 0 <= precision <= 9:
        raise Raised(-5041)
    if fields[-1] >= 2 ** 31:
        raise Raised(-5114, 'fractional second', interval.wrapped(fields[-1]), 0, 999999999)
    if fields[-1] < _BILLION:
        fields[-1] = interval.trimmed(fields[-1], precision, -5041)


def _ordered(decode, encode):
    def recompute(x, y):
        if x is None or y is None:
            return [(x is not None) - (y is not None)]
        x, y = (item if isinstance(item, bytes) else encode(decode(item)) for item in (x, y))
        if (x > y) - (x < y) != (decode(x) > decode(y)) - (decode(x) < decode(y)):
            raise ValueError('the order of the bytes is not that of the values')
        return [(x > y) - (x < y)]
    return recompute


compare = _ordered(decode, encode)


# ---- numbers: seconds since the beginning of day 0

def to_double(ts):
    return dates.to_seconds(ts[:6]) + ts[6] * 1e-9


def to_number(ts):
    seconds = int(dates.to_seconds(ts[:6]))
    return number.encode((seconds * _BILLION + ts[6], -9))


def from_seconds(seconds, nanoseconds):
    """By a calendar that is Gregorian for every day, with a year 0 that is refused. All divisions are toward zero."""
    def quotient(x, y):
        return interval.truncated(x, y)[0]
    days, second = interval.truncated(seconds, 86400)
    a = days + 68569
    n = quotient(4 * a, 146097)
    a -= quotient(146097 * n + 3, 4)
    i = quotient(4000 * (a + 1), 1461001)
    a += 31 - quotient(1461 * i, 4)
    j = quotient(80 * a, 2447)
    last = quotient(j, 11)
    ts = [100 * (n - 49) + i + last, j + 2 - 12 * last, a - quotient(2447 * j, 80), quotient(second, 3600),
          quotient(interval.truncated(second, 3600)[1], 60), interval.truncated(second, 60)[1], nanoseconds]
    for unit, value in zip((1, 2, 4, 8, 16, 32, 64), ts):
        if not -2 ** 31 <= value < 2 ** 31:
            raise CannotTell
        dates.check(unit, value)
    return ts


def from_double(bits):
    value = dates.double(bits)
    if value != value or not 0 <= value < 1e15:
        raise CannotTell
    return from_seconds(int(value), int(1e9 * (value - int(value))))


def from_number(item):
    x = number.operand(item)
    seconds = number.integer(x)
    if not -2 ** 63 <= seconds < 2 ** 63:
        raise Raised(-5072)
    rest = number.mul(number.sub(x, (seconds, 0), 3), (_BILLION, 0), 3)
    return from_seconds(seconds, number.integer(rest))


def _or_nothing(make):
    """A raise leaves the record as it was, zeros."""
    def recompute(item):
        try:
            return [encode(make(item))]
        except Raised as raised:
            raised.left = [bytes(12)]
            raise
    return recompute


# ---- intervals

def add_interval(ts, item, sign):
    itv = interval.fields(item, 3)
    date = ts[:6]
    try:
        dates.add_field(date, 32, sign * interval.seconds_of(itv))
        ts[:6] = date
        carry, ts[6] = divmod(ts[6] + sign * itv[2], _BILLION)
        dates.add_field(date, 32, carry)
        ts[:6] = date
    except Raised:
        raise CannotTell from None


def days_between(x, y):
    itv = [0, 0, 0]
    total = (dates.to_jdn(*x[:3]) - dates.to_jdn(*y[:3])) * 86400
    total += sum(factor * (a - b) for factor, a, b in zip((3600, 60, 1), x[3:6], y[3:6]))
    interval.set_seconds(itv, total)
    interval.add_nanoseconds(itv, x[6] - y[6])
    return interval.encode(itv)


def months_between(x, y):
    """Rounded at about half a month, by the rules of dvtypes/timestamp.h."""
    negative = x < y
    later, earlier = (y, x) if negative else (x, y)
    years, months = divmod((later[0] - earlier[0]) * 12 + later[1] - earlier[1], 12)
    order = (later[3:] > earlier[3:]) - (later[3:] < earlier[3:])
    day, first = later[2] + (order < 0), earlier[2]
    if day >= first:
        months += later[2] - first >= 15
    elif first > 16 and not (day >= first - 15 and order > 0 or order < 0 and day > first - 15):
        months -= 1
    sign = -1 if negative else 1
    return interval.encode([sign * years, sign * months])


_SIZES = {'date': 8, 'time': 8, 'timestamp': 12, 'ts_tz': 17, 'ts_ltz': 12}


def _constant(name):
    if name == 'max_dv_date':
        return [dates.encode([9999, 12, 31, 0, 0, 0])]
    return [bytes(_SIZES[name.removeprefix('null_dv_')])]


_TIME_UNITS, _UNITS = [8, 16, 32, 64], [1, 2, 4, 8, 16, 32, 64]
OPERATIONS = {
    'dv_time_get_field': get_field(decode_time, _TIME_UNITS),
    'dv_time_set_field': on_time(_set_field(_TIME_UNITS, 0)),
    'dv_time_is_valid': on_time(check_time),
    'dv_time_from_unit_values': _time_from_units,
    'dv_time_from_timestamp': lambda ts: [encode_time(decode(ts)[3:])],
    'dv_time_from_ts_ltz': lambda ts: [encode_time(decode(ts)[3:])],
    'dv_time_from_date': lambda date: [encode_time(dates.operand(date)[3:] + [0])],
    'dv_time_compare': _ordered(decode_time, encode_time),
    'dv_time_to_double': lambda item: [dates.double_bits(
        float(sum(f * v for f, v in zip((3600, 60, 1), decode_time(item)))) + decode_time(item)[3] * 1e-9)],
    'dv_time_trim_fsec': on_time(trim),
    'dv_time_current': lambda: [encode_time([13, 14, 15, 123456000])],
    'dv_date_from_time': lambda time: [dates.encode([2024, 2, 29] + decode_time(time)[:3])],
    'datetime_constant': _constant,
    'dv_timestamp_current': lambda: [encode([2024, 2, 29, 13, 14, 15, 123456000])],
    'dv_timestamp_get_field': get_field(decode, _UNITS),
    'dv_timestamp_set_field': on_timestamp(_set_field(_UNITS, 3)),
    'dv_timestamp_from_unit_values': _from_units,
    'dv_timestamp_compare': compare, 'dv_timestamp_cmp': compare,
    'dv_timestamp_trim_fsec': on_timestamp(trim),
    'dv_timestamp_to_double': lambda ts: [dates.double_bits(to_double(decode(ts)))],
    'dv_timestamp_to_number': lambda ts: [to_number(decode(ts))],
    'dv_timestamp_from_double': _or_nothing(from_double),
    'dv_timestamp_from_number': _or_nothing(from_number),
    'dv_timestamp_add_itv_dts': on_timestamp(lambda ts, itv: add_interval(ts, itv, 1)),
    'dv_timestamp_sub_itv_dts': on_timestamp(lambda ts, itv: add_interval(ts, itv, -1)),
    'dv_timestamp_sub_timestamp_into_itv_dts': lambda x, y: [days_between(decode(x), decode(y))],
    'dv_timestamp_sub_timestamp_into_itv_ytm': lambda x, y: [months_between(decode(x), decode(y))],
}
