"""Truncation and rounding of dates to a unit."""

import date as dates
from date import to_jdn
from line import Raised

_UNITS = {'CC': 'CC SCC', 'Y': 'YEAR SYEAR SYYYY YYYY YYY YY Y', 'I': 'IYYY IYY IY I', 'Q': 'Q',
          'MM': 'MM MON MONTH RM', 'WW': 'WW', 'W': 'W', 'IW': 'IW', 'D': 'D DAY DY', 'DD': 'DD DDD J',
          'HH': 'HH HH12 HH24', 'MI': 'MI'}
_UNIT_OF = {element: unit for unit, elements in _UNITS.items() for element in elements.split()}


def _century(date, rounds):
    year = date[0]
    if year > 0:
        return _set(date, year // 100 * 100 + (101 if rounds and year % 100 > 50 else 1), 1, 1)
    begin = -(-year // 100 * 100)
    _set(date, (begin or 1) if rounds and -year % 100 <= 50 else begin - 100, 1, 1)


def _year(date, rounds):
    _set(date, date[0] + (rounds and date[1] > 6), 1, 1)


def _iso_year(date, rounds):
    year = date[0] + (rounds and date[1] > 6)
    dates.check(1, year or 1)
    first = to_jdn(year or 1, 1, 1)
    monday = first - first % 7
    dates.add_days(date, (monday if first % 7 < 4 else monday + 7) - to_jdn(*date[:3]))
    date[3:] = [0, 0, 0]


def _quarter(date, rounds):
    quarter = (date[1] - 1) // 3
    begin = 3 * quarter + 1
    if rounds and (date[1] > begin + 1 or date[1] == begin + 1 and date[2] >= 16):
        begin += 3
    _set(date, date[0] + (begin > 12), begin - 12 * (begin > 12), 1)


def _month(date, rounds):
    month = date[1] + (rounds and date[2] >= 16)
    _set(date, date[0] + (month > 12), month - 12 * (month > 12), 1)


def _move(date, back, rounds):
    """Back by so many days, or forward to the next week."""
    dates.add_days(date, 7 - back if rounds and back > 3 else -back)
    date[3:] = [0, 0, 0]


def _week_of_year(date, rounds):
    _move(date, (dates.day_of_year(date) - 1) % 7, rounds)


def _week_of_month(date, rounds):
    back = (date[2] - 1) % 7
    _set(date, date[0], date[1], date[2] - back)
    if rounds and back > 3:
        dates.add_days(date, 7)


def _iso_week(date, rounds):
    _move(date, to_jdn(*date[:3]) % 7, rounds)


def _week(date, rounds):
    day = (to_jdn(*date[:3]) + 1) % 7
    ahead = rounds and (day > 3 or day == 3 and date[3] >= 12)
    dates.add_days(date, (7 if ahead else 0) - day)
    date[3:] = [0, 0, 0]


def _day(date, rounds):
    ahead = rounds and date[3] >= 12
    _set(date, *date[:3])
    dates.add_days(date, int(ahead))


def _hour(date, rounds):
    ahead = rounds and date[4] >= 30
    _set(date, *date[:4])
    dates.add_field(date, 8, int(ahead))


def _minute(date, rounds):
    ahead = rounds and date[5] >= 30
    _set(date, *date[:5])
    dates.add_field(date, 16, int(ahead))


def _set(date, *fields):
    """From the fields it keeps; a year 0 becomes 1."""
    date[:] = [*fields, 0, 0, 0][:6]
    date[0] = date[0] or 1
    dates.check(1, date[0])
    dates.check_date(date)


_RULES = {'CC': _century, 'Y': _year, 'I': _iso_year, 'Q': _quarter, 'MM': _month, 'WW': _week_of_year,
          'W': _week_of_month, 'IW': _iso_week, 'D': _week, 'DD': _day, 'HH': _hour, 'MI': _minute}


def _cut(rounds):
    def change(date, element):
        if element is not None and (element.length or 0) < 0:
            raise Raised(-5014)
        text = element.seen().decode('latin-1').upper() if element else ''
        if (text or 'DD') not in _UNIT_OF:
            raise Raised(-5014)
        _RULES[_UNIT_OF[text or 'DD']](date, rounds)
    return change


def _recomputing(rounds):
    """What the record holds after a raise is not recomputed."""
    cut = dates.in_place(_cut(rounds))

    def recompute(*inputs):
        try:
            return cut(*inputs)
        except Raised as raised:
            raised.left = None
            raise
    return recompute


def _trunc_or_round(item, element, truncates):
    if not element:
        raise Raised(-5014)
    return _recomputing(truncates == '0')(item, element)


OPERATIONS = {'dv_date_trunc': _recomputing(False), 'dv_date_round': _recomputing(True),
              'dt_fmt_trunc_or_round': _trunc_or_round}
