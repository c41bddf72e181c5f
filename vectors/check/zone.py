"""Time zones by zoneinfo, and zoned timestamps. A zone is a tuple (hour, minute, second, number)."""

import datetime
import re
import zoneinfo

import date as dates
from line import CannotTell, Raised, case_lines

NO_ZONE, FIXED = 580, 581
_names = [case.outputs[0].strip('"') for case in case_lines('zones') if case.operation == 'region_tab_']
_numbers = {name.lower(): number for number, name in enumerate(_names)}


def decode(item):
    """A zone; a readable region has no offset yet."""
    if item is None:
        raise CannotTell
    if isinstance(item, bytes):
        return (item[0] - 100, item[1], item[2], item[3] * 256 + item[4])
    return (0, 0, 0, NO_ZONE) if item == 'none' else parse(item)


def encode(zone):
    return bytes([zone[0] + 100, *zone[1:3], zone[3] >> 8, zone[3] & 255])


def info(number):
    if number >= len(_names):
        raise CannotTell
    try:
        return zoneinfo.ZoneInfo(_names[number])
    except zoneinfo.ZoneInfoNotFoundError:
        raise CannotTell from None


def _moment(date):
    if not 1 < date[0] < 9999 or not dates.is_gregorian(*date[:3]):
        raise CannotTell
    return datetime.datetime(*date[:6])


def with_offset(zone, offset):
    """The zone with the offset's hours and minutes; its seconds count for nothing."""
    minutes = int(abs(offset.total_seconds())) // 60
    hours = minutes // 60 if offset >= datetime.timedelta(0) else -(minutes // 60)
    return (hours, minutes % 60, 0, zone[3])


def adjusted(zone, date):
    if zone[3] == FIXED:
        return zone
    local = _moment(date).replace(tzinfo=datetime.timezone.utc).astimezone(info(zone[3]))
    return with_offset(zone, local.utcoffset())


def shift(date, zone, sign):
    """East is 1. The minutes have the sign of the hours, and that of 0 is minus."""
    dates.add_field(date, 8, sign * zone[0])
    dates.add_field(date, 16, sign * (zone[1] if zone[0] > 0 else -zone[1]))


def localized(zone, date):
    """The zone with its offset; the date becomes local time."""
    zone = adjusted(zone, date)
    shift(date, zone, 1)
    return zone


def normalized(zone, date, abbreviation=b''):
    """The zone with its offset; the date becomes UTC. Of two meanings the later one, unless the abbreviation says."""
    if zone[3] != FIXED:
        zone = with_offset(zone, _meaning(_moment(date), info(zone[3]), (abbreviation or b'').decode()))
    shift(date, zone, -1)
    return zone


def _meaning(local, tz, abbreviation):
    meanings = []
    for fold in (1, 0):
        aware = local.replace(tzinfo=tz, fold=fold)
        back = aware.astimezone(datetime.timezone.utc).astimezone(tz)
        if back.replace(tzinfo=None) == local and aware.utcoffset() not in [m.utcoffset() for m in meanings]:
            meanings.append(aware)
    if not meanings:
        raise Raised(-5110)
    if not abbreviation or _never_changes(tz):
        return meanings[0].utcoffset()
    for aware in meanings:
        if aware.tzname() == abbreviation:
            return aware.utcoffset()
    raise Raised(-5109)


def _never_changes(tz):
    return tz.utcoffset(None) is not None


# ---- text

def offset_of(text, for_parser):
    """Hours and minutes, or a code."""
    letters = re.match('[A-Za-z]*', text)[0]
    match = re.match(r'[ \t]*([+-]?)[ \t]*(\d+)[ \t]*(:[ \t]*(\d*)[ \t]*)?', text[len(letters):])
    if match is None or match[3] is not None and not match[4]:
        return -5103
    if for_parser and match.end() + len(letters) != len(text):
        return -5103
    sign = -1 if (match[1] == '-') == bool(for_parser) else 1
    hours, minutes = sign * int(match[2]), int(match[4] or 0)
    if not -12 <= hours <= 14:
        return -5098
    if minutes > 59 or not -46799 <= sign * (abs(hours) * 3600 + minutes * 60) <= 50400:
        return -5099
    return hours, minutes


def parse(text):
    stripped = text.lstrip(' \t')
    if re.match('[-+0-9]', stripped):
        offset = offset_of(stripped, True)
        if isinstance(offset, int):
            raise Raised(offset)
        return (*offset, 0, FIXED)
    name = stripped.rstrip(' \t')
    if len(stripped) > 64 or name and name.lower() not in _numbers:
        raise Raised(-5104)
    return (0, 0, 0, _numbers[name.lower() or 'etc/utc'])


def _parse(text):
    if text is None or len(text.seen()) == 0 or text.length is not None and text.length < 1:
        error = Raised(-5104)
    else:
        try:
            return [encode(parse(text.seen().decode('latin-1')))]
        except Raised as raised:
            error = raised
    error.left = None
    raise error


def _parse_offset(item, text, for_parser):
    offset = offset_of(text.decode('latin-1'), int(for_parser))
    if isinstance(offset, int):
        return [encode(decode(item)), offset]
    return [encode((*offset, 0, FIXED)), 0]


def zone_name(zone):
    return f'{zone[0]:+03d}:{zone[1]:02d}' if zone[3] == FIXED else _names[zone[3]]


def _zone_name(item, size='65'):
    zone = decode(item)
    if zone[3] not in (FIXED, *range(len(_names))):
        raise CannotTell
    return [zone_name(zone)[:int(size) - 1]]


def abbreviation(zone, date):
    local = _moment(date).replace(tzinfo=datetime.timezone.utc).astimezone(info(zone[3]))
    return local.tzname()


def abbreviations(zone):
    """In capitals, those that the region has had."""
    tz = info(zone[3])
    return {datetime.datetime(year, month, 1, tzinfo=tz).tzname().upper()
            for year in range(1900, 2040) for month in (1, 4, 7, 10)}


def _zone_abbreviation(item, date, size='9'):
    zone = decode(item)
    return ['' if zone[3] == FIXED else abbreviation(zone, dates.operand(date))[:int(size) - 1]]


# ---- operations

def _search(name):
    number = _numbers.get((name or b'').decode('latin-1').lower() or 'etc/utc')
    return [] if number is None else [number, _names[number]]


def _region_at(item, date):
    zone, date = decode(item), dates.operand(date)
    told = abbreviation(zone, date)
    found = localized(zone, date)
    outputs = [dates.encode(date), encode(found), told]
    normalized(zone, date, told.encode())
    return outputs + [dates.encode(date)]


def _localize(item, date, *null):
    zone, date = decode(item), dates.operand(date)
    if zone[3] == NO_ZONE:
        raise CannotTell
    found = localized(zone, date)
    return [dates.encode(date)] + ([] if null else [encode(found)])


def _normalize(item, date, abbreviation):
    zone, date = decode(item), dates.operand(date)
    try:
        found = normalized(zone, date, abbreviation)
    except Raised as raised:
        raised.left = None
        raise
    return [encode(found), dates.encode(date)]


def _sample(number, sample):
    seconds = 974937600 - int(sample) * 7862400
    utc = datetime.datetime(1970, 1, 1, tzinfo=datetime.timezone.utc) + datetime.timedelta(seconds=seconds)
    local = utc.astimezone(info(int(number)))
    tm = local.timetuple()
    return [tm.tm_sec, tm.tm_min, tm.tm_hour, tm.tm_mday, tm.tm_mon - 1, tm.tm_year - 1900, (tm.tm_wday + 1) % 7,
            tm.tm_yday - 1, tm.tm_isdst, local.tzname()]


def _set_field(item, field, value):
    zone, field, value = list(decode(item)), int(field), int(value)
    limits = {0: (-12, 14, -5098), 1: (0, 59, -5099), 2: (0, 59, -5100)}
    error = None
    if field in limits and not limits[field][0] <= value <= limits[field][1]:
        error = Raised(limits[field][2])
    elif field not in (0, 1, 2, 3):
        error = Raised(-5006)
    if error:
        error.left = [encode(zone)]
        raise error
    if field == 3 and not 0 <= value <= FIXED:
        raise CannotTell
    zone[field] = value
    return [encode(zone)]


def _get_field(item, field):
    if int(field) not in (0, 1, 2, 3):
        raise Raised(-5006)
    return [decode(item)[int(field)]]


def _default(text):
    """Of the environment's TZ; it is 2024-02-29 13:14:15."""
    text = text.decode('latin-1')
    name = text[1:] if text.startswith(':') else text
    if text == ':':
        raise CannotTell
    if len(name) <= 64 and name.rstrip(' \t').lower() in _numbers or not name:
        number = _numbers[name.rstrip(' \t').lower() or 'etc/utc']
        return [encode((*normalized((0, 0, 0, number), [2024, 2, 29, 13, 14, 15])[:3], FIXED))]
    offset = -1 if text.startswith(':') else offset_of(text, False)
    return [encode((0, 0, 0, FIXED) if isinstance(offset, int) else (*offset, 0, FIXED))]


def _shift(sign):
    def recompute(item, date):
        zone, date = decode(item), dates.operand(date)
        try:
            shift(date, zone, sign)
        except Raised as raised:
            raised.left = None
            raise
        return [dates.encode(date)]
    return recompute


OPERATIONS = {
    'region_tab_': lambda number: [_names[int(number)], _names[int(number)].lower()],
    'region_at': _region_at,
    'sample_tab_': _sample,
    'zonetab_search_region': _search,
    'timezone_init': lambda: [encode((0, 0, 0, NO_ZONE))],
    'timezone_set_field': _set_field,
    'timezone_get_field': _get_field,
    'timezone_parse': _parse,
    'parse_offset_': _parse_offset,
    'timezone_shift_to_east': _shift(1), 'timezone_shift_to_west': _shift(-1),
    'timezone_normalize': _normalize,
    'timezone_localize': _localize,
    'timezone_adjust': lambda item, date: [encode(adjusted(decode(item), dates.operand(date)))],
    'timezone_get_zone_name': _zone_name,
    'timezone_get_zone_abbr': _zone_abbreviation,
    'timezone_get_system_default': _default,
}
