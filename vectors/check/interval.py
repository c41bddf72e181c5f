"""Intervals: records, text, arithmetic; and dates and intervals."""

import functools
import math
import re
import struct

import date as dates
import number
from line import CannotTell, Raised

_EXCESS = 0x40000000
_QUALIFIERS = {0: 'Y-m', 1: 'Y', 2: 'M', 3: 'D', 4: 'D h', 5: 'D h:i', 6: 'D h:i:s.f', 7: 'H', 8: 'H:i', 9: 'H:i:s.f',
               10: 'I', 11: 'I:s.f', 12: 'S.f'}
_TOKENS = {'Y': 0, 'M': 1, 'D': 2, 'H': 3, 'I': 4, 'S': 5, 'm': 6, 'h': 7, 'i': 8, 's': 9, 'f': 10, ' ': 11, ':': 12,
           '.': 13, '-': 14}


def wrapped(value, bits=32):
    """As a signed integer of so many bits."""
    value &= (1 << bits) - 1
    return value - (1 << bits) if value >> (bits - 1) else value


def fields(item, count):
    """The signed fields of a record."""
    if item is None:
        raise CannotTell
    if not isinstance(item, bytes):
        return [int(part) for part in item.split(',')]
    if count == 2:
        return [wrapped(int.from_bytes(item[:4], 'big') - _EXCESS), item[4] - 11]
    return [wrapped(value - _EXCESS) for value in struct.unpack('>III', item)]


def encode(values):
    words = b''.join(struct.pack('>I', value + _EXCESS & 0xFFFFFFFF) for value in values[:1 if len(values) == 2 else 3])
    return words + (bytes([values[1] + 11 & 0xFF]) if len(values) == 2 else b'')


def truncated(value, divisor):
    """Division toward zero, and the rest."""
    quotient = abs(value) // divisor * (1 if value >= 0 else -1)
    return quotient, value - quotient * divisor


def in_place(count):
    def decorate(function):
        @functools.wraps(function)
        def recompute(item, *inputs):
            itv = fields(item, count)
            try:
                function(itv, *inputs)
            except Raised as raised:
                raised.left = [encode(itv)]
                raise
            return [encode(itv)]
        return recompute
    return decorate


_ytm, _dts = in_place(2), in_place(3)


def months_of(itv):
    return wrapped(wrapped(itv[0] * 12) + itv[1])


def set_months(itv, total):
    itv[0] = wrapped(truncated(total, 12)[0])
    itv[1] = truncated(total, 12)[1]


def seconds_of(itv):
    return itv[0] * 86400 + itv[1]


def set_seconds(itv, total):
    days, itv[1] = truncated(total, 86400)
    itv[0] = wrapped(days)


def add_nanoseconds(itv, value):
    """Carried into the seconds, so that the sum has their sign; the days stay. NaN adds nothing."""
    seconds, total = itv[1], itv[2] + (0 if math.isnan(value) else int(value))
    billion = 10 ** 9
    if seconds > 0 and total < 0:
        borrowed = -(total // billion)
        seconds, total = seconds - borrowed, total + borrowed * billion
    elif seconds >= 0:
        carry = max(total // billion, 0)
        seconds, total = seconds + carry, total - carry * billion
    elif total <= -billion:
        carry = -total // billion
        seconds, total = seconds - carry, total + carry * billion
    elif total > 0:
        carry = -(-total // billion)
        seconds, total = seconds + carry, total - carry * billion
    itv[1], itv[2] = wrapped(seconds), total


def set_total(itv, seconds):
    if seconds != seconds or not -2 ** 31 - 1 < seconds / 86400 < 2 ** 31:
        raise Raised(-5087)
    itv[0] = int(seconds / 86400)
    itv[1] = int(seconds - itv[0] * 86400.0)


def _months_product(divide):
    def change(itv, bits):
        factor = dates.double(bits)
        if divide and factor == 0:
            raise Raised(-5065)
        product = months_of(itv) / factor if divide else months_of(itv) * factor
        if product != product:
            product = 0
        itv[:] = [0, 0]
        set_months(itv, wrapped(int(max(min(product, 2 ** 63 - 1), -2 ** 63))))
    return _ytm(change)


def _seconds_product(operation):
    def change(itv, factor):
        factor = number.operand(factor)
        if operation is number.div and factor[0] == 0:
            raise Raised(-5065)
        total = operation(number.add((seconds_of(itv), 0), (itv[2], -9), 3), factor, 3)
        whole = number.round_at(total, 0, 0)
        set_total(itv, float(number.integer(whole)))
        rest = number.round_at(number.mul(number.sub(total, whole, 3), (10 ** 9, 0), 3), 0, 0)
        itv[2] = number.integer(rest)
    return _dts(change)


def trimmed(value, precision, code):
    """Digits counted from the first significant one, a sign as one, in at most nine characters."""
    if not 0 <= precision <= 9:
        raise Raised(code)
    if value > 999999999:
        raise CannotTell
    text = str(value)[:9]
    kept = len(text.rstrip('0'))
    return int(text[:precision] + '0' * (kept - precision) + text[kept:]) if kept > precision else value


def _check_leading(value, precision):
    if len(str(value)) > precision if value > 0 else 1 > precision:
        raise Raised(-5064)


def _cut(text, size):
    return [text[:size - 1], int(len(text) >= size)] if size > 0 else ['', 1]


def _digits(value, least):
    text = '' if value == 0 and least == 0 else str(abs(value))
    return text.rjust(least if least > 0 else 1, '0') if text or least else ''


def _ytm_text(item, precision, size='16'):
    itv = fields(item, 2)
    sign = '-' if min(itv) < 0 else '+'
    return _cut(f'{sign}{_digits(itv[0], int(precision))}-{abs(itv[1]):02}', int(size))


def _dts_text(item, precision, fraction, size='36'):
    itv, precision, fraction = fields(item, 3), int(precision), int(fraction)
    if not 0 <= precision <= 9 or not 1 <= fraction <= 9:
        raise Raised(-5057)
    sign, seconds = '-' if min(itv) < 0 else '+', abs(itv[1])
    return _cut(f'{sign}{_digits(itv[0], precision)} {seconds // 3600:02}:{seconds // 60 % 60:02}:{seconds % 60:02}.'
                f'{abs(itv[2]) // 10 ** (9 - fraction):0{fraction}}', int(size))


_WHITE = ' \t\n\r\0'


def _read(text, qualifier, precision, count, fraction=9):
    """The reader of both types: walks the qualifier's tokens."""
    itv = [0] * count
    try:
        _walk(itv, text, int(qualifier), int(precision), max(min(int(fraction), 9), 0))
    except Raised as raised:
        raised.left = [encode(itv)]
        raise
    return [encode(itv)]


def _walk(itv, text, qualifier, precision, fraction):
    if text is None or (text.length or 0) < 0:
        raise Raised(-5056)
    text = text.seen().decode('latin-1')
    rest = text.lstrip(_WHITE)
    if not rest:
        raise Raised(-5056)
    sign = -1 if rest[0] == '-' else 1
    rest = rest[rest[0] in '+-':]
    if not (0 <= qualifier <= 2 if len(itv) == 2 else 3 <= qualifier <= 12):
        raise CannotTell
    for token in _QUALIFIERS[qualifier]:
        if token != ' ' or len(itv) == 2:
            rest = rest.lstrip(_WHITE)
        if not rest:
            if token in '.f':
                break
            raise Raised(-5009)
        if token in ' :.-':
            if rest[0] != token:
                raise Raised(-5056)
            rest = rest[1:]
            continue
        digits = re.match('[0-9]{0,9}', rest)[0]
        if not digits:
            raise Raised(-5056)
        rest = rest[len(digits):]
        _take(itv, token, int(digits) * sign, len(digits), fraction)
        _check_leading(itv[0], precision)
    if rest.strip(_WHITE):
        raise Raised(-5010)


def _take(itv, token, value, count, fraction):
    limit = {'m': (12, -5060), 'h': (24, -5061), 'i': (60, -5062), 's': (60, -5063)}.get(token)
    if limit and abs(value) >= limit[0]:
        raise Raised(limit[1])
    if token in 'YD':
        itv[0] = value
    elif token == 'M':
        set_months(itv, value)
    elif token == 'm':
        itv[1] = value
    elif token == 'f':
        unit = 10 ** (9 - fraction)
        nanoseconds = (abs(value) * 10 ** (9 - count) + unit // 2) // unit * unit
        add_nanoseconds(itv, nanoseconds if value >= 0 else -nanoseconds)
    else:
        set_seconds(itv, seconds_of(itv) + wrapped(value * {'h': 3600, 'i': 60, 's': 1}[token.lower()]))


def compare(count):
    def recompute(x, y):
        if x is None or y is None:
            return [(x is not None) - (y is not None)]
        x, y = fields(x, count), fields(y, count)
        return [(encode(x) > encode(y)) - (encode(x) < encode(y))]
    return recompute


def _set(places):
    def change(itv, unit, value):
        if int(unit) not in places:
            raise CannotTell
        itv[places[int(unit)]] = int(value)
    return change


def _get(count, places):
    return lambda item, unit: [fields(item, count)[places[int(unit)]]]


_Y, _D = {1: 0, 2: 1}, {4: 0, 32: 1, 64: 2}


@_dts
def _add(itv, other):
    other = fields(other, 3)
    set_seconds(itv, seconds_of(itv) + seconds_of(other))
    add_nanoseconds(itv, other[2])


@_dts
def _sub(itv, other):
    other = fields(other, 3)
    set_seconds(itv, seconds_of(itv) - seconds_of(other))
    add_nanoseconds(itv, -other[2])


@_dts
def _trim(itv, precision):
    itv[2] = trimmed(itv[2], int(precision), -5008)


@_ytm
def _add_years(itv, value):
    itv[0] += int(value)


@_dts
def _add_days(itv, value):
    itv[0] += int(value)


def _months(sign):
    return _ytm(lambda itv, value: set_months(itv, months_of(itv) + sign * _as_months(value)))


def _as_months(value):
    return months_of(fields(value, 2)) if ',' in str(value) else int(value)


def _seconds(factor):
    return _dts(lambda itv, value: set_seconds(itv, seconds_of(itv) + wrapped(int(value) * factor,
                                                                              64 if factor == 1 else 32)))


OPERATIONS = {
    '_itv_fmt': lambda row: [_TOKENS[token] for token in _QUALIFIERS[int(row)]],
    'dv_itv_ytm_set_field': _ytm(_set(_Y)), 'dv_itv_ytm_get_field': _get(2, _Y),
    'dv_itv_ytm_get_total_month': lambda itv: [months_of(fields(itv, 2))],
    'dv_itv_ytm_set_total_month': _ytm(lambda itv, total: set_months(itv, int(total))),
    'dv_itv_ytm_add_year': _add_years,
    'dv_itv_ytm_add_month': _months(1), 'dv_itv_ytm_add_itv_ytm': _months(1), 'dv_itv_ytm_sub_itv_ytm': _months(-1),
    'dv_itv_ytm_mul': _months_product(False), 'dv_itv_ytm_div': _months_product(True),
    'dv_itv_ytm_compare': compare(2),
    'dv_itv_ytm_check_leading_prec': lambda itv, precision: _check_leading(fields(itv, 2)[0], int(precision)) or [],
    'dv_itv_ytm_to_str': _ytm_text,
    'dv_itv_ytm_from_str': lambda text, qualifier, precision: _read(text, qualifier, precision, 2),
    'dv_itv_dts_set_field': _dts(_set(_D)), 'dv_itv_dts_get_field': _get(3, _D),
    'dv_itv_dts_get_total_sec': lambda itv: [seconds_of(fields(itv, 3))],
    'dv_itv_dts_set_total_sec': _dts(lambda itv, bits: set_total(itv, dates.double(bits))),
    'dv_itv_dts_add_sec': _seconds(1), 'dv_itv_dts_add_min': _seconds(60), 'dv_itv_dts_add_hour': _seconds(3600),
    'dv_itv_dts_add_day': _add_days,
    'dv_itv_dts_add_fsec': _dts(lambda itv, bits: add_nanoseconds(itv, dates.double(bits))),
    'dv_itv_dts_add_itv_dts': _add, 'dv_itv_dts_sub_itv_dts': _sub,
    'dv_itv_dts_mul': _seconds_product(number.mul), 'dv_itv_dts_div': _seconds_product(number.div),
    'dv_itv_dts_compare': compare(3), 'dv_itv_dts_cmp': compare(3),
    'dv_itv_dts_check_leading_prec': lambda itv, precision: _check_leading(fields(itv, 3)[0], int(precision)) or [],
    'dv_itv_dts_trim_fsec': _trim,
    'dv_itv_dts_to_str': _dts_text,
    'dv_itv_dts_from_str': lambda text, qualifier, precision, fraction: _read(text, qualifier, precision, 3, fraction),
    'dv_date_add_itv_ytm': dates.in_place(lambda d, i: dates.add_months(d, months_of(fields(i, 2)), True)),
    'dv_date_sub_itv_ytm': dates.in_place(lambda d, i: dates.add_months(d, -months_of(fields(i, 2)), True)),
    'dv_date_add_itv_dts': dates.in_place(lambda d, i: dates.add_field(d, 32, seconds_of(fields(i, 3)))),
    'dv_date_sub_itv_dts': dates.in_place(lambda d, i: dates.add_field(d, 32, -seconds_of(fields(i, 3)))),
}
