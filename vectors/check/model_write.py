"""Dates and times as text under models."""

import datetime
import math

import date as dates
import model as models
import names
import timestamp
import zone as zones
import zoned
from line import CannotTell, Raised, Text, Word, case_lines

_ONES = ('ONE TWO THREE FOUR FIVE SIX SEVEN EIGHT NINE TEN ELEVEN TWELVE THIRTEEN FOURTEEN FIFTEEN SIXTEEN SEVENTEEN '
         'EIGHTEEN NINETEEN').split()
_TENS = 'TEN TWENTY THIRTY FORTY FIFTY SIXTY SEVENTY EIGHTY NINETY'.split()
_PAD_TABLES = {'MON': 'abb_mon', 'MONTH': 'std_mon', 'DAY': 'std_day', 'DY': 'abb_day'}
_WIDTHS = {'IYYY': 4, 'IYY': 3, 'IY': 2, 'SYYYY': 4, 'YYYY': 4, 'YYY': 3, 'YY': 2, 'RR': 2, 'RRRR': 4, 'MM': 2, 'DD': 2,
           'DDD': 3, 'WW': 2, 'IW': 2, 'HH': 2, 'HH12': 2, 'HH24': 2, 'MI': 2, 'SS': 2, 'SSSSS': 5, 'TZH': 2, 'TZM': 2}
_pads = {(case.operation, int(case.inputs[0])): int(case.outputs[0].strip('"%-s'))
         for case in case_lines('names') if case.operation.endswith('_fmt_tab_')}


def ordinal(word):
    """The stored spellings: FOUTH, and -TITH for all tens from twenty on."""
    special = {'ONE': 'FIRST', 'TWO': 'SECOND', 'THREE': 'THIRD', 'FOUR': 'FOUTH', 'FIVE': 'FIFTH', 'EIGHT': 'EIGHTH',
               'NINE': 'NINTH', 'TWELVE': 'TWELFTH'}
    return special.get(word) or (word[:-1] + 'ITH' if word.endswith('TY') else word + 'TH')


def spelled(value, is_ordinal=False):
    """A number from 1 to 999,999,999 in words."""
    if not 0 < value < 10 ** 9:
        raise CannotTell
    words = []
    for scale, name in ((10 ** 6, 'MILLION'), (1000, 'THOUSAND')):
        if value >= scale:
            words += [spelled(value // scale), name]
            value %= scale
    if value >= 100:
        words += [_ONES[value // 100 - 1], 'HUNDRED']
        value %= 100
    if value >= 20:
        tens, ones = _TENS[value // 10 - 1], value % 10
        words.append(f'{tens}-{_ordinal_or_not(_ONES[ones - 1], is_ordinal)}' if ones
                     else _ordinal_or_not(tens, is_ordinal))
    elif value:
        words.append(_ordinal_or_not(_ONES[value - 1], is_ordinal))
    elif is_ordinal:
        words[-1] += 'TH'
    return ' '.join(words)


def _ordinal_or_not(word, is_ordinal):
    return ordinal(word) if is_ordinal else word


def spelled_year(year):
    a = abs(year)
    if a % 100 < 11:
        return spelled(a)
    return (spelled(a // 100) + ' ' if a >= 100 else '') + spelled(a % 100)


def iso_week(date):
    """ISO 8601 year, which counts 1 BC as 0, and week: by Python from February 1583 on, before by day numbers."""
    year, month, day = date[:3]
    if (1583, 2) <= (year, month) and year < 9999:
        return datetime.date(*date[:3]).isocalendar()[:2]
    before, after = (year - 1 or -1, year + 1 or 1)
    first = dates.to_jdn(year, 1, 1) % 7
    shift = first - 7 if first > 3 else first
    if month == 12 and year < 9999 and day > 31 - dates.to_jdn(after, 1, 1) % 7 > 27:
        return after + (after < 0), 1
    if month == 1 and day + shift < 1:
        return before + (before < 0), iso_week([before, 12, 31])[1]
    return year + (year < 0), (dates.day_of_year(date) + shift + 6) // 7


class Writer:
    """Writes elements of one value: date fields, nanoseconds, zone."""

    def __init__(self, setting, ts, precision, zone=None):
        self.language, self.charset = setting
        self.ts, self.precision, self.zone = ts, precision, zone

    def written(self, e):
        if e.kind == 5 and self.zone is None or e.name == 'FF' and self.precision is None:
            raise Raised(-5011)
        if e.text is not None:
            return e.text.encode('latin-1')
        if e.kind in (3, 4):
            return b''
        word = getattr(self, '_word_' + e.name.replace('.', ''), None)
        if word:
            return word(e)
        return self._number(e, self._value(e.name)).encode()

    # ---- words

    def _name(self, e, table, index, pad=None):
        text = names.encode(names.name(table, self.language, e.letter_case, index), self.charset)
        if pad and not e.fills:
            width = 4 if pad == 'RM' else _pads[f'nls_date_lang_{_PAD_TABLES[pad]}_fmt_tab_', self.language]
            text = text.ljust(width)
        return text

    def _word_AD(self, e):
        return self._name(e, 'std_adbc', 2 * (self.ts[0] < 0) + ('.' in e.name))

    def _word_AM(self, e):
        return self._name(e, 'std_ampm', 2 * (self.ts[3] >= 12) + ('.' in e.name))

    _word_BC, _word_PM = _word_AD, _word_AM

    def _word_MONTH(self, e):
        return self._name(e, 'std_month', self.ts[1] - 1, e.name)

    def _word_MON(self, e):
        return self._name(e, 'abb_month', self.ts[1] - 1, e.name)

    def _word_RM(self, e):
        return self._name(e, 'rm_month', self.ts[1] - 1, e.name)

    def _word_DAY(self, e):
        return self._name(e, 'std_day' if e.name == 'DAY' else 'abb_day', dates.to_jdn(*self.ts[:3]) % 7, e.name)

    _word_DY = _word_DAY

    def _word_YEAR(self, e):
        text = spelled_year(self.ts[0])
        if e.letter_case:
            text = text.lower()
        if e.letter_case == 2:
            text = text.title()
        return ((('-' if self.ts[0] < 1 else ' ') if e.name == 'SYEAR' else '') + text).encode()

    _word_SYEAR = _word_YEAR

    def _word_X(self, e):
        return b'.' if self.precision else b''

    def _word_TZR(self, e):
        return zones.zone_name(self.zone).encode()

    def _word_TZD(self, e):
        return b''

    def _word_J(self, e):
        raise Raised(-5054)

    def _word_FF(self, e):
        precision = e.precision or self.precision
        if precision > 9:
            raise Raised(-5041)
        if precision == 0:
            return b''
        if precision < 0:
            raise CannotTell
        return self._number(e, self.ts[6] // 10 ** (9 - precision), precision).encode()

    def _word_TZH(self, e):
        text = self._number(e, self.zone[0])
        return (text if text[:1] == '-' or e.fills or e.suffix > 1 else '+' + text).encode()

    # ---- numbers

    def _value(self, name):
        year, month, day, hour, minute, second, _ = self.ts
        a = abs(year)
        if name in ('IYYY', 'IYY', 'IY', 'I', 'IW'):
            iso_year, week = iso_week(self.ts)
            return week if name == 'IW' else int(math.copysign(abs(iso_year) % 10 ** len(name), iso_year))
        values = {
            'CC': (a + 99) // 100, 'SCC': (a + 99) // 100, 'SYYYY': year, 'YYYY': a, 'RRRR': a, 'YYY': a % 1000,
            'YY': a % 100, 'RR': a % 100, 'Y': a % 10, 'MM': month, 'DD': day, 'Q': (month + 2) // 3,
            'W': (day + 6) // 7, 'HH': (hour + 11) % 12 + 1, 'HH12': (hour + 11) % 12 + 1, 'HH24': hour, 'MI': minute,
            'SS': second, 'SSSSS': hour * 3600 + minute * 60 + second}
        if name in values:
            return values[name]
        if name == 'TZM':
            return self.zone[1]
        if name == 'D':
            return (dates.to_jdn(year, month, day) + 1) % 7 + 1
        yearday = dates.day_of_year(self.ts)
        return yearday if name == 'DDD' else (yearday + 6) // 7

    def _number(self, e, value, width=None):
        if e.suffix > 1:
            text = spelled(value, is_ordinal=e.suffix > 2)
            return text if e.letter_case == 0 else text.lower()
        width = 1 if e.fills else width or _WIDTHS.get(e.name, 1)
        digits = f'{abs(value):0{width}d}'
        text = '-' * (value < 0) + digits
        if e.suffix == 1:
            teens = 11 <= math.fmod(value, 100) <= 19
            suffix = 'TH' if teens else {'1': 'ST', '2': 'ND', '3': 'RD'}.get(digits[-1], 'TH')
            text += suffix if e.letter_case == 0 else suffix.lower()
        return text


def _outputs(model, writer, size):
    """What a buffer of so many bytes gets."""
    size, text, status = int(size), b'', 0
    if size < 1:
        raise Raised(-5007)
    for element in model.elements:
        if element.kind in (3, 4):
            continue
        room = size - len(text)
        if room < 1:
            status = 1
            break
        piece = writer.written(element)
        text += piece[:room]
        if len(piece) > room:
            status = 1
            break
    return [Text(text.split(b'\0')[0]), status] + ([Word('unended')] if len(text) == size else [])


def _is_null(item, size):
    return item == bytes(size)


def _write_date(word, text, item, size='1024'):
    model, *setting = models.compiled(word, text, 5, 0)
    if item is None:
        raise CannotTell
    if _is_null(item, 8):
        return [Text(b''), 0]
    return _outputs(model, Writer(setting, dates.operand(item) + [0], None), size)


def _check_precision(precision, size):
    if int(size) < 1:
        raise Raised(-5007)
    if int(precision) > 9:
        raise Raised(-5041)
    return int(precision)


def _write_time(word, text, item, precision, size='1024'):
    model, *setting = models.compiled(word, text, 6, 0)
    if any(e.kind in (0, 5) for e in model.elements):
        raise CannotTell  # a model of another type
    time = timestamp.decode_time(item)
    return _outputs(model, Writer(setting, [2000, 1, 1] + time, _check_precision(precision, size)), size)


def _write_timestamp(word, text, item, precision, size='1024'):
    model, *setting = models.compiled(word, text, 7, 0)
    precision = _check_precision(precision, size)
    if _is_null(item, 12):
        return [Text(b''), 0]
    return _outputs(model, Writer(setting, timestamp.decode(item), precision), size)


def _write_zoned(word, text, item, precision, size='1024'):
    model, *setting = models.compiled(word, text, 21, 0)
    precision = _check_precision(precision, size)
    if _is_null(item, 17):
        return [Text(b''), 0]
    utc, zone = zoned.decode(item)
    return _outputs(model, Writer(setting, zoned.local(utc, zone), precision, zone), size)


def _write_local(word, text, item, precision, zone, size='1024'):
    model, *setting = models.compiled(word, text, 22, 0)
    if model.has_zone:
        raise Raised(-5011)
    return _outputs(model, Writer(setting, zoned.in_session(item, zone), _check_precision(precision, size)), size)


def _write_element(kind, decode):
    """One element, the first of the model that is not FM or FX."""
    def recompute(word, text, item, precision='0'):
        model, *setting = models.compiled(word, text, 21, 0)
        elements = [e for e in model.elements if e.kind not in (3, 4)]
        if not elements or elements[0].kind != kind or item is None:
            raise CannotTell
        writer = Writer(setting, *decode(item, int(precision)))
        return [Text(writer.written(elements[0])), 0]
    return recompute


def _zoned_parts(item, precision):
    utc, zone = zoned.decode(item)
    return utc, precision, zone


def _once(write):
    """The model as text, behind the value, compiled for this call in Korean and MSWIN949."""
    return lambda item, text, *rest: write('KOREAN.MSWIN949', text, item, *rest)


_PRESENT = '2024-02-29T13:14:15.123456'


def _current(write):
    """Of the present; these calls return nothing, so that the status is always 0."""
    def recompute(*inputs):
        text, _, *unended = write(*inputs)
        return [text, 0, *unended]
    return recompute


def _write_current_zoned(word, text, zone):
    value = zoned.encode(*zoned.of_local(timestamp.decode(_PRESENT), zones.decode(zone)))
    return _write_zoned(word, text, value, '6')


def _write_local_once(item, text, precision, zone, size='1024'):
    """Compiled for TIMESTAMP, which refuses zones in its own way."""
    local = timestamp.encode(zoned.in_session(item, zone))
    return _write_timestamp('KOREAN.MSWIN949', text, local, precision, size)


OPERATIONS = {'dt_fmt_write_date': _write_element(0, lambda item, precision: (dates.operand(item) + [0], precision)),
              'dt_fmt_write_time': _write_element(1, lambda item, precision: (
                  [2000, 1, 1] + timestamp.decode_time(item), precision)),
              'dt_fmt_write_tz': _write_element(5, _zoned_parts), 'dv_date_to_str_DEPRECATED': _once(_write_date),
              'dv_time_to_str_DEPRECATED': _once(_write_time),
              'dv_timestamp_to_str_DEPRECATED': _once(_write_timestamp),
              'dv_ts_tz_to_str_DEPRECATED': _once(_write_zoned),
              'dv_ts_ltz_to_str_DEPRECATED': _write_local_once,
              'dv_date_current_str': _current(
                  lambda word, text, *size: _write_date(word, text, _PRESENT[:19], *size)),
              'dv_date_current_str_DEPRECATED': _current(
                  lambda text: _write_date('KOREAN.MSWIN949', text, _PRESENT[:19])),
              'dv_timestamp_current_str': _current(lambda word, text: _write_timestamp(word, text, _PRESENT, '6')),
              'dv_ts_tz_current_str': _current(_write_current_zoned)}
OPERATIONS |= {'dv_date_to_str': _write_date, 'dv_time_to_str': _write_time, 'dv_timestamp_to_str': _write_timestamp,
              'dv_ts_tz_to_str': _write_zoned, 'dv_ts_ltz_to_str': _write_local}
