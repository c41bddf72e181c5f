"""DATE and TIME: records, the calendar, arithmetic. Dates are lists [year, month, day, hour, minute, second]."""

import datetime
import functools
import math
import re
import struct

import names
from line import CannotTell, Raised

UNITS = {1: ('year', -9999, 9999), 2: ('month', 1, 12), 4: ('day', 1, 31), 8: ('hour', 0, 23), 16: ('minute', 0, 59),
         32: ('second', 0, 59), 64: ('fractional second', 0, 999999999)}
JULIAN_DAY_MAX = 5373484
_LENGTHS = [31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31]
_READABLE = re.compile(r'(-?)(\d{4})-(\d\d)-(\d\d)T(\d\d):(\d\d):(\d\d)(?:\.(\d{1,9}))?')


def decode(record):
    """A DATE's fields; its last byte is not looked at."""
    return [record[0] * 100 + record[1] - 10100, *record[2:7]]


def encode(date, last=0):
    year = date[0]
    century = abs(year) // 100 * (1 if year >= 0 else -1)
    return bytes([century + 100, year - century * 100 + 100, *date[1:6], last])


def nanoseconds(text):
    return int((text or '').ljust(9, '0'))


def readable(item):
    """Fields and nanoseconds of a readable DATE or TIMESTAMP."""
    match = _READABLE.fullmatch(item)
    fields = [int(part) for part in match.groups()[1:7]]
    fields[0] *= -1 if match[1] else 1
    return fields, nanoseconds(match[8])


def operand(item):
    if item is None:
        raise CannotTell
    return decode(item) if isinstance(item, bytes) else readable(item)[0]


def double(bits):
    return struct.unpack('>d', bits)[0]


def double_bits(value):
    return struct.pack('>d', value)


def single(value):
    return struct.unpack('f', struct.pack('f', value))[0]


# ---- the calendar

def is_leap(year):
    if year >= 1583:
        return year % 4 == 0 and (year % 100 != 0 or year % 400 == 0)
    return year % 4 == 0 if year >= 1 else -46 <= year < -8 and year % 3 == 0


def month_length(year, month):
    return 29 if month == 2 and is_leap(year) else _LENGTHS[month - 1]


def is_gregorian(year, month, day):
    return (year, month, day) >= (1582, 10, 5)


def to_jdn(year, month, day):
    """By Python's own calendar from 1582-10-15; before it by the formula in its truncating form, as stated."""
    if is_gregorian(year, month, day):
        day = 15 if (year, month) == (1582, 10) and day < 15 else day
        return datetime.date(year, month, 1).toordinal() + day - 1 + 1721425
    year += year < 0
    if month < 3:
        year, month = year - 1, month + 12
    return int(1461 * (year + 4716) / 4) + 306001 * (month + 1) // 10000 + day - 1524


def from_jdn(jdn):
    if jdn >= 2299161:
        date = datetime.date.fromordinal(jdn - 1721425)
        return date.year, date.month, date.day
    if jdn < 0:
        raise CannotTell
    # The Julian calendar by its cycle of four years, each beginning in March, from -4716-03-01 on.
    cycle, day = divmod(jdn + 1401, 1461)
    year = min(day // 365, 3)
    day -= 365 * year
    month = (5 * day + 2) // 153
    day -= (153 * month + 2) // 5
    year, month = 4 * cycle + year - 4716 + month // 10, (month + 2) % 12 + 1
    return (year if year > 0 else year - 1), month, day + 1


def day_of_year(date):
    year, month, day = date[:3]
    if (year, month) == (1582, 10) and 5 <= day <= 14:
        day = 15
    return sum(month_length(year, m) for m in range(1, month)) + day


# ---- checks

def check(unit, value):
    if unit not in UNITS:
        raise CannotTell
    word, low, high = UNITS[unit]
    if not low <= value <= high or unit == 1 and value == 0:
        raise Raised(-5114, word, value, -4713 if unit == 1 else low, high)


def check_date(date):
    """The whole record; moves a day of the gap of 1582."""
    check(1, date[0])
    check(2, date[1])
    length = month_length(date[0], date[1])
    if not 1 <= date[2] <= length:
        raise Raised(-5114, 'day', date[2], 1, length)
    for unit, value in zip((8, 16, 32), date[3:]):
        check(unit, value)
    if date[0:2] == [1582, 10] and 5 <= date[2] <= 14:
        date[2] = 15


# ---- arithmetic, in place

def set_jdn(date, jdn):
    date[:3] = from_jdn(jdn)


def add_days(date, days):
    """Days of any number type; a fraction is rounded to the second, measured from the day below."""
    if days == 0:
        return
    whole = math.floor(days) if days == days and abs(days) < 1e17 else None
    if whole is None or not 0 <= to_jdn(*date[:3]) + whole <= JULIAN_DAY_MAX:
        raise Raised(-5114, 'year', date[0], -4713, 9999)
    fraction = days - whole
    set_jdn(date, to_jdn(*date[:3]) + whole)
    if fraction:
        hours = fraction * 24
        minutes = (hours - int(hours)) * 60
        add_field(date, 32, int((minutes - int(minutes)) * 60 + 0.5))
        add_field(date, 16, int(minutes))
        add_field(date, 8, int(hours))


def add_field(date, unit, count):
    if count == 0:
        return
    if unit == 4:
        return add_days(date, count)
    if unit not in (8, 16, 32):
        raise Raised(-5006)
    place, modulus = {32: (5, 60), 16: (4, 60), 8: (3, 24)}[unit]
    carry, date[place] = divmod(date[place] + count, modulus)
    add_field(date, unit // 2, carry)


def add_months(date, months, strict):
    if months == 0:
        return
    was_last = date[2] == month_length(date[0], date[1])
    years, month = divmod(date[1] + months - 1, 12)
    check(1, date[0] + years)
    date[0], date[1] = date[0] + years, month + 1
    length = month_length(date[0], date[1])
    if not was_last and date[2] <= length:
        return
    if strict and date[2] > length:
        raise Raised(-5005)
    date[2] = length


def to_seconds(date):
    return to_jdn(*date[:3]) * 86400.0 + (date[3] * 3600 + date[4] * 60 + date[5])


def _days(date):
    hour, minute, second = (single(1 / divisor) for divisor in (24, 1440, 86400))
    return to_jdn(*date[:3]) + date[3] * hour + date[4] * minute + date[5] * second


def _months_between(x, y):
    whole = float((x[0] - y[0]) * 12 + x[1] - y[1])
    if x[2] == y[2] or all(date[2] == month_length(date[0], date[1]) for date in (x, y)):
        return whole
    parts = [single(single(single(d[3] * 216000 + d[4] * 3600 + d[5]) / 5184000) + d[2]) / 31.0 for d in (x, y)]
    return whole + (parts[0] - parts[1])


def weekday_of_name(text, language, charset):
    """0 Monday, by a full or abbreviated name or a number 1 (Sunday) to 7."""
    if 0 <= language < 7 and 0 <= charset < 13:
        for index in range(7):
            for table in ('std_day', 'abb_day'):
                for letter_case in (0, 1):
                    known = names.encode(names.name(table, language, letter_case, index), charset)
                    if _folded(known, charset) == _folded(text, charset):
                        return index
    if text.isdigit() and 1 <= int(text) <= 7:
        return (int(text) + 5) % 7
    raise Raised(-5113, 'day_name', text[:63], 'Inconsistent with NLS_DATE_LANGUAGE')


def _folded(text, charset):
    try:
        return names.decode(text, charset).lower()
    except UnicodeError:
        return text


def next_day(date, text, language, charset):
    text = text.split(b'\0')[0] if text.length is not None and text.length < 1 else text
    index = weekday_of_name(bytes(text), int(language), int(charset))
    ahead = (index - to_jdn(*date[:3]) % 7 + 6) % 7 + 1
    if to_jdn(*date[:3]) + ahead > JULIAN_DAY_MAX:
        raise Raised(-5114, 'year', date[0], -4713, 9999)
    set_jdn(date, to_jdn(*date[:3]) + ahead)


# ---- operations

def in_place(function):
    """An operation on a DATE, which is listed as the call left it."""
    @functools.wraps(function)
    def recompute(item, *inputs):
        if item is None:
            raise CannotTell
        date = operand(item)
        last, before = item[7] if isinstance(item, bytes) else 0, list(date)
        try:
            returned = function(date, *inputs)
        except Raised as raised:
            raised.left = [item if date == before and isinstance(item, bytes) else encode(date, last)]
            raise
        return [encode(date, last)] + ([] if returned is None else [returned])
    return recompute


def _get(date, unit):
    units = [1, 2, 4, 8, 16, 32]
    if int(unit) not in units:
        raise Raised(-5006)
    return [operand(date)[units.index(int(unit))]]


def set_field(date, unit, value, check_input, check_result):
    unit, value = int(unit), int(value)
    if int(check_input) and unit in UNITS:
        check(unit, value)
    if unit not in (1, 2, 4, 8, 16, 32):
        raise Raised(-5006)
    if unit == 1 and not 0 <= abs(value) <= 9999 or not (unit == 1 or 0 <= value < 256):
        raise CannotTell
    date[[1, 2, 4, 8, 16, 32].index(unit)] = value
    if int(check_result):
        check_date(date)


def _from_units(*values):
    date = [int(value) for value in values]
    for unit, value in zip((1, 2, 4, 8, 16, 32), date):
        check(unit, value)
    check_date(date)
    return [encode(date)]


def _last_date(item):
    date = operand(item)
    if not 1 <= date[1] <= 12:
        raise CannotTell
    date[2] = month_length(date[0], date[1])
    return [encode(date)]


def compare(x, y):
    if x is None or y is None:
        return [(x is not None) - (y is not None)]
    x, y = (item if isinstance(item, bytes) else encode(operand(item)) for item in (x, y))
    order = (x[:7] > y[:7]) - (x[:7] < y[:7])
    if order != (decode(x) > decode(y)) - (decode(x) < decode(y)):
        raise ValueError('the order of the bytes is not that of the values')
    return [order]


def _from_epoch(seconds, zone):
    offset = {b'UTC0': 0, b'KST-9': 32400, b'EST5': -18000, b'<+0530>-5:30': 19800}[bytes(zone)]
    days, second = divmod(int(seconds) + offset, 86400)
    jdn = days + 2440588
    if jdn > JULIAN_DAY_MAX or jdn < 1721426:
        raise CannotTell
    date = datetime.date.fromordinal(jdn - 1721425)  # the C library's calendar is Gregorian throughout
    return [encode([date.year, date.month, date.day, second // 3600, second // 60 % 60, second % 60])]


OPERATIONS = {
    'dt_fmt_get_days_of_mon': lambda year, month: [month_length(int(year), int(month))],
    'dv_dt_check_validity_of_unit': lambda unit, value: check(int(unit), int(value)) or [],
    'dv_date_get_field': _get,
    'dv_date_set_field': in_place(set_field),
    'dv_date_is_valid': in_place(check_date),
    'dv_date_from_unit_values': _from_units,
    'dv_date_from_epoch_time': _from_epoch,
    'dv_date_to_julian_day': lambda date: [to_jdn(*operand(date)[:3])],
    'dv_date_from_julian_day': in_place(lambda date, jdn: set_jdn(date, int(jdn))),
    'dv_date_to_double': lambda date: [double_bits(to_seconds(operand(date)))],
    'dv_date_add_day': in_place(lambda date, days: add_days(date, double(days))),
    'dv_date_add_field': in_place(lambda date, unit, count: add_field(date, int(unit), int(count))),
    'dv_date_add_month': in_place(lambda date, months, strict: add_months(date, int(months), strict == '1')),
    'dv_date_sub': lambda x, y: [double_bits(_days(operand(x)) - _days(operand(y)))],
    'dv_date_months_between': lambda x, y: [double_bits(_months_between(operand(x), operand(y)))],
    'dv_date_get_last_date': _last_date,
    'dv_date_get_next_day': in_place(next_day),
    'dt_fmt_get_day_idx_of_week': lambda text, language, charset: [
        weekday_of_name(bytes(text), int(language), int(charset))],
    'dv_date_compare': compare,
    'dv_date_cmp': compare,
    'dv_date_from_timestamp': lambda ts: [encode(operand(ts))],
    'dv_date_init': lambda: [encode([2024, 2, 1, 0, 0, 0])],
    'dv_date_current': lambda: [encode([2024, 2, 29, 13, 14, 15])],
    'dv_date_assign': lambda date: [date],
}
