"""TIMESTAMP WITH TIME ZONE, a UTC timestamp and its zone, and WITH LOCAL TIME ZONE, a UTC timestamp."""

import date as dates
import interval
import timestamp
import zone as zones
from line import CannotTell, Raised


def decode(item):
    if item is None:
        raise CannotTell
    if isinstance(item, bytes):
        return timestamp.decode(item[:12]), zones.decode(item[12:])
    utc, _, zone = item.partition('@')
    utc = timestamp.decode(utc)
    return utc, zones.adjusted(zones.decode(zone), utc[:6])


def encode(utc, zone):
    return timestamp.encode(utc) + zones.encode(zone)


def local(utc, zone):
    """Local time by the offset that the zone holds."""
    date = utc[:6]
    zones.shift(date, zone, 1)
    return date + utc[6:]


def of_local(ts, zone):
    date = ts[:6]
    zone = zones.normalized(zone, date)
    return date + ts[6:], zone


def in_session(item, zone):
    """Local time of a WITH LOCAL TIME ZONE value in the session's zone."""
    utc, zone = timestamp.decode(item), zones.decode(zone)
    date = utc[:6]
    zones.localized(zone, date)
    return date + utc[6:]


def _without_left(function):
    def recompute(*inputs):
        try:
            return function(*inputs)
        except Raised as raised:
            raised.left = None
            raise
    return recompute


def _making(of_inputs):
    """Both types from local time: with the zone, and the UTC timestamp alone."""
    def with_zone(*inputs):
        return [encode(*of_local(of_inputs(*inputs[:-1]), zones.decode(inputs[-1])))]

    def with_local(*inputs):
        return [timestamp.encode(of_local(of_inputs(*inputs[:-1]), zones.decode(inputs[-1]))[0])]
    return _without_left(with_zone), _without_left(with_local)


def _units(_, *values):
    return timestamp.units(*values)


def _changing(change):
    def recompute(item, itv):
        utc, zone = decode(item)
        change(utc, itv)
        return [encode(utc, zones.adjusted(zone, utc[:6]))]
    return _without_left(recompute)


def _months(sign):
    def change(utc, itv):
        date = utc[:6]
        dates.add_months(date, sign * interval.months_of(interval.fields(itv, 2)), True)
        utc[:6] = date
    return _changing(change)


def _trim(item, precision):
    utc, zone = decode(item)
    try:
        timestamp.trim(utc, precision)
    except Raised as raised:
        raised.left = [encode(utc, zone)]
        raise
    return [encode(utc, zone)]


def _compare(x, y):
    return timestamp.compare(*(item and timestamp.encode(decode(item)[0]) for item in (x, y)))


def _double(ts):
    return [dates.double_bits(timestamp.to_double(ts))]


_MAKING = {
    'from_date': _making(lambda date: dates.operand(date) + [0]),
    'from_timestamp': _making(timestamp.decode),
    'from_unit_values': _making(_units),
    'from_double': _making(timestamp.from_double),
    'from_number': _making(timestamp.from_number),
    'current': _making(lambda: [2024, 2, 29, 13, 14, 15, 123456000]),
}
OPERATIONS = {f'dv_ts_tz_{name}': both[0] for name, both in _MAKING.items()}
OPERATIONS |= {f'dv_ts_ltz_{name}': both[1] for name, both in _MAKING.items()}
OPERATIONS |= {
    'dv_ts_tz_from_ts_ltz': lambda item, zone: [encode(
        timestamp.decode(item), zones.adjusted(zones.decode(zone), timestamp.decode(item)[:6]))],
    'dv_ts_ltz_from_ts_tz': lambda item: [timestamp.encode(decode(item)[0])],
    'dv_date_from_ts_tz': _without_left(lambda item: [dates.encode(local(*decode(item))[:6])]),
    'dv_timestamp_from_ts_tz': _without_left(lambda item: [timestamp.encode(local(*decode(item)))]),
    'dv_time_from_ts_tz': lambda item: [timestamp.encode_time(decode(item)[0][3:])],
    'dv_date_from_ts_ltz': lambda item, zone: [dates.encode(in_session(item, zone)[:6])],
    'dv_timestamp_from_ts_ltz': lambda item, zone: [timestamp.encode(in_session(item, zone))],
    'dv_ts_tz_to_double': lambda item: _double(local(*decode(item))),
    'dv_ts_tz_to_number': lambda item: [timestamp.to_number(local(*decode(item)))],
    'dv_ts_ltz_to_double': lambda item, zone: _double(in_session(item, zone)),
    'dv_ts_ltz_to_number': lambda item, zone: [timestamp.to_number(in_session(item, zone))],
    'dv_ts_tz_add_itv_ytm': _months(1), 'dv_ts_tz_sub_itv_ytm': _months(-1),
    'dv_ts_tz_add_itv_dts': _changing(lambda utc, itv: timestamp.add_interval(utc, itv, 1)),
    'dv_ts_tz_sub_itv_dts': _changing(lambda utc, itv: timestamp.add_interval(utc, itv, -1)),
    'dv_ts_tz_sub_ts_tz_into_itv_ytm': lambda x, y: [timestamp.months_between(decode(x)[0], decode(y)[0])],
    'dv_ts_tz_sub_ts_tz_into_itv_dts': lambda x, y: [timestamp.days_between(decode(x)[0], decode(y)[0])],
    'dv_ts_tz_compare': _compare,
    'dv_ts_ltz_compare': timestamp.compare,
    'dv_ts_tz_trim_fsec': _trim,
    'dv_ts_ltz_trim_fsec': timestamp.on_timestamp(timestamp.trim),
}
