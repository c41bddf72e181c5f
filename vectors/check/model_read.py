"""Dates and times read under models."""

import date as dates
import model as models
import timestamp
import zone as zones
import zoned
from line import CannotTell, Raised
from reader import WHITE, End, Reader


def _first_bytes(text, zero_is_measured=True):
    """The text that a call sees; its length may be refused."""
    length = len(text) if text.length is None else text.length
    if length == 0 and zero_is_measured:
        seen = bytes(text).split(b'\0')[0]
        length = len(seen)
    else:
        seen = bytes(text[:max(length, 0)])
    if length < 1:
        raise Raised(-5007)
    return seen


def _read(value_type, finish, word, text, given, precision=0, present=(2024, 2)):
    """The reader at the end of the text; finish makes the outputs of it."""
    if word.count('.') > 1:
        raise CannotTell  # a model of another type
    model, *setting = models.compiled(word, text, value_type, 1)
    try:
        seen = _first_bytes(given, value_type != 6)
        if precision > 9:
            raise Raised(-5041)
        start = [2000, 1, 1] if value_type == 6 else [*present, 1]
        reader = Reader(model, setting, seen, start + [0, 0, 0, 0], precision)
        if model.has_zone and value_type == 22:
            raise Raised(-5011)
        reader.read()
        return finish(reader)
    except Raised as raised:
        raised.left = None
        raise


def _finish_local(reader):
    reader.check_day_of_year()
    reader.check_end()
    reader.check_record()
    return reader.ts


def _finish_time(reader):
    reader.check_end()
    return [timestamp.encode_time(reader.ts[3:])]


def _read_zoned(word, text, given, precision, session, present=(2024, 2)):
    def finish(reader):
        zone = reader.zone if reader.zone[3] != zones.NO_ZONE else zones.decode(session)
        date = reader.ts[:6]
        reader.zone = zones.normalized(zone, date, reader.abbreviation.encode())
        reader.ts[:6] = date
        reader.check_day_of_year()
        reader.check_end()
        reader.check_record()
        return [zoned.encode(reader.ts, reader.zone)]
    return _read(21, finish, word, text, given, int(precision), present)


def _read_local(word, text, given, precision, session):
    def finish(reader):
        ts = _finish_local(reader)
        date = ts[:6]
        zone = zones.normalized(zones.decode(session), date)
        return [timestamp.encode(date + ts[6:]), zones.encode(zone)]
    return _read(22, finish, word, text, given, int(precision))


# ---- single elements

_FLAGS = {'YEAR': 0x1, 'MONTH': 0x2, 'DAY': 0x4, 'HOUR': 0x8, 'MINUTE': 0x10, 'SECOND': 0x20, 'FSEC': 0x40, 'AD': 0x80,
          'BC': 0x100, 'AM': 0x200, 'PM': 0x400, 'HH24': 0x1000, 'DDD': 0x2000, 'SSSSS': 0x4000, 'TZR': 0x20000,
          'TZD': 0x40000, 'TZH': 0x80000, 'TZM': 0x100000}


def _read_element(kind, decode, encode):
    """One element, the first of the model that is not FM or FX, from a record as it is."""
    def recompute(word, text, given, item=None, precision='0'):
        model, *setting = models.compiled(word, text, 21, 1)
        elements = [e for e in model.elements if e.kind not in (3, 4)]
        if not elements:
            raise CannotTell
        ts, zone = decode(item)
        reader = Reader(model, setting, bytes(given), ts, int(precision))
        reader.zone = zone
        e = elements[0]
        if e.kind != kind:
            raise CannotTell
        try:
            reader.read_one(e)
        except Raised as raised:
            raised.left = None
            raise
        flags = sum(_FLAGS[unit] for unit in reader.given)
        return encode(reader) + [reader.at, flags]
    return recompute


_MIDNIGHT = [0, 0, 0, 0]


def _read_punctuation(word, text, given):
    model, *setting = models.compiled(word, text, 21, 1)
    reader = Reader(model, setting, bytes(given), [2000, 1, 1] + _MIDNIGHT, 6)
    first = next(e for e in model.elements if e.kind not in (3, 4))
    if first.kind != 2:
        raise CannotTell
    try:
        reader.read_punctuation(first, model.elements.index(first))
    except End:
        pass
    return [reader.at, 0]


def _check_ansi_punctuation(word, text, given):
    models.compiled(word, text, 21, 1)
    first = given.decode('latin-1')[:1]
    return [1, int(first != '' and models.is_punctuation(first))]


def _check_day_of_year(number, flags, item):
    date = dates.operand(item)
    reader = Reader(models.Model('', 21, True), (0, 3), b'', date + [0], 0)
    reader.day_of_year = int(number)
    reader.given = {name for name, flag in _FLAGS.items() if flag & int(flags)}
    reader.check_day_of_year()
    return [dates.encode(reader.ts[:6])]


def _check_blank(text, code):
    if text.decode('latin-1').strip(WHITE):
        raise Raised(code)
    return []


def _once(read):
    """The model as text, compiled for this call in Korean and MSWIN949."""
    return lambda given, text, *rest: read('KOREAN.MSWIN949', text, given, *rest)


def _read_date(word, text, given, present=(2024, 2)):
    return _read(5, lambda reader: [dates.encode(_finish_local(reader)[:6])], word, text, given, 0, present)


def _read_time(word, text, given, precision):
    return _read(6, _finish_time, word, text, given, int(precision))


def _read_timestamp(word, text, given, precision, present=(2024, 2)):
    def finish(reader):
        return [timestamp.encode(_finish_local(reader))]
    return _read(7, finish, word, text, given, int(precision), present)


def _as_of(read):
    """The last input is the DATE whose year and month stand for the present."""
    return lambda *inputs: read(*inputs[:-1], dates.operand(inputs[-1])[:2])


OPERATIONS = {
    'dv_date_from_str': _read_date, 'dv_time_from_str': _read_time, 'dv_timestamp_from_str': _read_timestamp,
    'dv_ts_tz_from_str': _read_zoned, 'dv_ts_ltz_from_str': _read_local,
    'dv_date_from_str_DEPRECATED': _once(_read_date), 'dv_time_from_str_DEPRECATED': _once(_read_time),
    'dv_timestamp_from_str_DEPRECATED': _once(_read_timestamp), 'dv_ts_tz_from_str_DEPRECATED': _once(_read_zoned),
    'dv_ts_ltz_from_str_DEPRECATED': _once(_read_local),
    'dt_fmt_parse_date': _read_element(0, lambda item: (dates.operand(item) + [0], None),
                                       lambda reader: [dates.encode(reader.ts[:6])]),
    'dt_fmt_parse_time': _read_element(1, lambda item: ([2000, 1, 1] + timestamp.decode_time(item), None),
                                       lambda reader: [timestamp.encode_time(reader.ts[3:])]),
    'dt_fmt_parse_tz': _read_element(5, lambda item: ([2000, 1, 1] + _MIDNIGHT, zones.decode(item)),
                                     lambda reader: [zones.encode(reader.zone)]),
    'dv_date_from_str_as_of': _as_of(_read_date), 'dv_timestamp_from_str_as_of': _as_of(_read_timestamp),
    'dv_ts_tz_from_str_as_of': _as_of(_read_zoned),
    'dt_fmt_parse_punc_token': _read_punctuation, 'dt_fmt_check_ansi_punc': _check_ansi_punctuation,
    'dt_fmt_check_ddd': _check_day_of_year,
    'dt_parse_check_input_trailing_space': lambda text: _check_blank(text, -5010),
    'dt_parse_check_fmt_trailing_space': lambda text, cut: _check_blank(text, -5048 if int(cut) else -5049),
}
