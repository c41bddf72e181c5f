"""The reader of a text under a datetime model, element by element."""

import re

import date as dates
import model as models
import names
import zone as zones
from line import CannotTell, Raised

WHITE = ' \t\n\r\0'
_SIGNED = 'The signed year is not allowed'
_CUT = b'...'  # stands for a text that an error shows the beginning of


class End(Exception):
    """The text ended where only elements of a time are left."""


class Reader:
    """Reads a text under a model into a timestamp's fields and a zone, from the defaults that are in them."""

    def __init__(self, model, setting, text, ts, precision):
        self.language, self.charset = setting
        self.elements, self.has_zone = model.elements, model.has_zone
        self.text, self.at, self.ts, self.precision = text.decode('latin-1')[:129], 0, ts, precision
        self.given, self.day_of_year, self.zone, self.abbreviation = set(), 0, (0, 0, 0, zones.NO_ZONE), ''

    def read(self):
        index = 0
        try:
            while index < len(self.elements):
                index = self._element(self.elements[index], index) or index + 1
        except End:
            pass

    def read_one(self, e):
        try:
            self._element(e, 0)
        except End:
            pass

    def _rest(self):
        return self.text[self.at:]

    def _skip_white(self, e):
        if not e.exact:
            self.at += len(self._rest()) - len(self._rest().lstrip(WHITE))

    def _fail(self, field, code=-5113):
        here, whole = (text.split('\0')[0].encode('latin-1') for text in (self._rest(), self.text))
        raise Raised(code, field, here if len(here) < 64 else _CUT, whole if len(whole) < 64 else _CUT)

    def _signed_year(self):
        whole = self.text.encode('latin-1')
        raise Raised(-5113, 'year', _SIGNED, whole if len(whole) < 64 else _CUT)

    def _element(self, e, index):
        if e.kind in (3, 4):
            return None
        if e.kind == 2:
            return self.read_punctuation(e, index)
        if not e.is_readable:
            raise Raised(-5013)
        self._skip_white(e)
        if e.kind != 5:
            if self.at == 0 and self.text[:1] == '-' and e.name != 'SYYYY':
                self._signed_year()
            if not self._rest():
                self._ended(e, index)
        if e.name == 'X':
            return self._radix(index)
        getattr(self, '_read_' + e.name.replace('.', ''))(e)
        return None

    def _ended(self, e, index):
        if e.kind == 0 or any(later.kind == 0 for later in self.elements[index + 1:]):
            raise Raised(-5045)
        raise End

    # ---- punctuation, and fractions that are left out

    def _behind(self, index):
        """The next element that is no punctuation."""
        index += 1
        while index < len(self.elements) and self.elements[index].kind in (2, 3, 4):
            index += 1
        return index

    def _is_fraction(self, index):
        return index < len(self.elements) and self.elements[index].name == 'FF'

    def _skip_fraction(self, index):
        fraction = self._behind(index)
        if not self._is_fraction(fraction):
            return index + 1
        while fraction + 1 < len(self.elements) and self.elements[fraction + 1].kind == 2:
            fraction += 1
        return fraction + 1

    def read_punctuation(self, e, index):
        if e.exact:
            if not self._rest().startswith(e.text):
                raise Raised(-5089)
            self.at += len(e.text)
            return None
        if not self._rest():
            self._ended(e, index)
        is_literal = e.number == models.LITERAL
        for _ in range(2):
            if is_literal and self._rest().startswith(e.text):
                self.at += len(e.text)
                return None
            self._skip_white(e)
        following = self._behind(index)
        if self._is_fraction(following):
            omitted = not self._rest().startswith(e.text[:1] or '.') if self.has_zone else not self._rest()
            if omitted:
                return self._skip_fraction(index)
            if e.text == '.' and self._rest()[:1] != '.':
                raise Raised(-5042)
        sign_follows = following < len(self.elements) and self.elements[following].kind == 5
        for c in self._rest()[:len(e.text)]:
            if not models.is_punctuation(c) or c in WHITE or c in '+-' and sign_follows:
                break
            self.at += 1
        return None

    def _radix(self, index):
        rest = self._rest()
        if rest[:1] == '.':
            self.at += 1
            return None
        if rest and not (self.has_zone and (rest[0] in '+-' or rest[0].isalnum() and rest[0] < '\x80')):
            raise Raised(-5042)
        return self._skip_fraction(index)

    # ---- numbers

    def _find(self, width):
        match = re.match(r'([+-]?)[ \t]*([0-9]{0,%d})' % width, self._rest())
        return match[1] == '-', match[2], self.at + match.end()

    def _number(self, e, field):
        negative, digits, end = self._find(e.width)
        if not digits or negative:
            self._fail(field)
        if e.exact and len(digits) != e.width:
            raise Raised(-5088)
        self.at = end
        return int(digits)

    def _store(self, unit, place, value, flag):
        dates.check(unit, value)
        self.ts[place] = value
        self.given.add(flag)

    # ---- years

    def _read_YYYY(self, e, name=None):
        name = name or e.name
        width = len(name) if name != 'SYYYY' else 4
        negative, digits, end = self._find(width)
        if negative and name != 'SYYYY':
            self._signed_year()
        if not digits:
            self._fail('year')
        if e.exact and len(digits) != width:
            raise Raised(-5088)
        if name in ('YY', 'RR') and e.before_punctuation and self._rest()[2:3].isdigit():
            _, digits, end = self._find(4)
            year = int(digits)
        else:
            year = int(digits) * (-1 if negative or 'BC' in self.given else 1)
            unit = {'YYY': 1000, 'YY': 100, 'RR': 100, 'Y': 10}.get(name)
            if unit and not (name == 'RR' and year < 0):
                present = abs(self.ts[0]) // unit * unit * (1 if self.ts[0] > 0 else -1)
                year += present - (100 if name == 'RR' and year >= 50 else 0)
        self._store(1, 0, year, 'YEAR')
        self.at = end

    _read_SYYYY = _read_YYY = _read_YY = _read_Y = _read_RR = _read_YYYY

    def _read_RRRR(self, e):
        negative, digits, end = self._find(4)
        if len(digits) != 4 or negative:
            return self._read_YYYY(e, 'YYYY' if e.exact else 'RR')
        self._store(1, 0, int(digits), 'YEAR')
        self.at = end

    # ---- names

    def _match(self, table, index, skipped=0):
        """Bytes that a name has in the text, in upper or lower case."""
        text = self._rest()[skipped:].encode('latin-1')
        for letter_case in (0, 1):
            name = names.encode(names.name(table, self.language, letter_case, index), self.charset)
            if name and self._folded(text[:len(name)]) == self._folded(name):
                return len(name)
        return 0

    def _folded(self, text):
        try:
            return names.decode(text, self.charset).lower()
        except UnicodeError:
            return text

    def _read_AD(self, e):
        index = int('.' in e.name)
        ad, bc = self._match('std_adbc', index), self._match('std_adbc', index + 2)
        if not ad and not bc:
            self._fail('ad/bc')
        self.at += max(ad, bc)
        self.given.add('AD' if ad >= bc else 'BC')
        if ad < bc and 'YEAR' in self.given:
            self._store(1, 0, -self.ts[0], 'YEAR')

    _read_BC = _read_AD

    def _month_name(self, table):
        skipped = len(self._rest()) - len(self._rest().lstrip(' \t'))
        for index in reversed(range(12)):
            length = self._match(table, index, skipped)
            if length:
                self.at += skipped + length
                return index + 1
        return 0

    def _read_MON(self, e, alone=None):
        tables = {'MON': ['abb_month'], 'MONTH': ['std_month'], 'RM': ['rm_month']}[alone or e.name]
        if not e.exact and tables != ['rm_month']:
            tables = ['std_month', 'abb_month']
        for table in tables:
            month = self._month_name(table)
            if month:
                return self._store(2, 1, month, 'MONTH')
        return self._fail('month')

    _read_MONTH = _read_RM = _read_MON

    def _read_MM(self, e):
        negative, digits, end = self._find(2)
        if not digits or negative:
            return self._read_MON(e, 'MON')
        if e.exact and len(digits) != 2:
            raise Raised(-5088)
        self.at = end
        return self._store(2, 1, int(digits), 'MONTH')

    def _read_DD(self, e):
        self._store(4, 2, self._number(e, 'day'), 'DAY')

    def _read_DDD(self, e):
        before = self.at
        number = self._number(e, 'day of year')
        if not 1 <= number <= 366:
            self.at = before
            _, digits, end = self._find(e.width)
            self.at = end - len(digits)
            self._fail('day of year')
        self.day_of_year = number
        self.given.add('DDD')

    def _read_J(self, e):
        pass

    # ---- time of day

    def _hour(self, hour):
        if 'PM' in self.given and hour < 12:
            return hour + 12
        return 0 if 'AM' in self.given and hour == 12 else hour

    def _read_AM(self, e):
        index = int('.' in e.name)
        am, pm = self._match('std_ampm', index), self._match('std_ampm', index + 2)
        if not am and not pm:
            self._fail('am/pm')
        self.at += max(am, pm)
        self.given.add('AM' if am >= pm else 'PM')
        if 'HOUR' in self.given:
            self.ts[3] = self._hour(self.ts[3])

    _read_PM = _read_AM

    def _read_HH(self, e):
        low, high = (0, 23) if e.name == 'HH24' else (1, 12)
        hour = self._number(e, 'hour')
        if not low <= hour <= high:
            raise Raised(-5114, 'hour', hour, low, high)
        self.ts[3] = hour if high == 23 else self._hour(hour)
        self.given.add('HH24' if high == 23 else 'HOUR')

    _read_HH12 = _read_HH24 = _read_HH

    def _read_MI(self, e):
        self._store(16, 4, self._number(e, 'minute'), 'MINUTE')

    def _read_SS(self, e):
        self._store(32, 5, self._number(e, 'second'), 'SECOND')

    def _read_SSSSS(self, e):
        second = self._number(e, 'seconds past midnight')
        if second > 86399:
            raise Raised(-5114, 'seconds past midnight', second, 0, 86399)
        self.ts[3:6] = [second // 3600, second // 60 % 60, second % 60]
        self.given.add('SSSSS')

    def _read_FF(self, e):
        if (e.precision or self.precision) > 9:
            raise Raised(-5041)
        digits = re.match('[0-9]{0,9}', self._rest())[0]
        if not digits:
            self._fail('fractional seconds')
        if e.exact and len(digits) != 9:
            raise Raised(-5088)
        self.at += len(digits)
        self.ts[6] = int(digits.ljust(9, '0'))
        self.given.add('FSEC')

    # ---- zones

    def _set_offset(self, hour, minute, unit):
        self.zone = (hour, minute, 0, zones.FIXED)
        self.given.add(unit)
        if not -46799 <= (hour * 3600 + minute * 60 if hour >= 0 else hour * 3600 - minute * 60) <= 50400:
            raise Raised(-5099)

    def _read_TZH(self, e):
        negative, digits, end = self._find(2)
        if not digits:
            self._fail('timezone hour')
        if e.exact and len(digits) != 2:
            raise Raised(-5088)
        hour = -int(digits) if negative else int(digits)
        if not -12 <= hour <= 14:
            raise Raised(-5114, 'timezone hour', hour, -12, 14)
        self.at = end
        self._set_offset(hour, self.zone[1], 'TZH')

    def _read_TZM(self, e):
        minute = self._number(e, 'timezone minute')
        if minute > 59:
            raise Raised(-5114, 'timezone minute', minute, 0, 59)
        self._set_offset(self.zone[0], minute, 'TZM')

    def _read_TZR(self, e):
        text = re.match('[^ \t\n\r\0]*', self._rest())[0]
        try:
            self.zone = zones.parse(text) if text else self._fail('timezone region')
        except Raised as raised:
            if raised.code == -5104:
                self._fail('timezone region')
            raise
        self.at += len(text)
        self.given.add('TZR')

    def _read_TZD(self, e):
        """Which abbreviations there are depends on the release: only those that the region uses are told here."""
        text = re.match('[A-Za-z]+|[+-][0-9]+', self._rest())
        if text is None or self.zone[3] >= zones.NO_ZONE or text[0].upper() not in zones.abbreviations(self.zone):
            raise CannotTell
        self.abbreviation = text[0].upper()
        self.at += len(text[0])
        self.given.add('TZD')

    # ---- the end

    def check_day_of_year(self):
        if not self.day_of_year:
            return
        year, day = self.ts[0], self.day_of_year
        if day == 366 and not dates.is_leap(year):
            raise Raised(-5113, 'day of year', '366', '366 for leap year')
        month = 1
        while month < 12 and day > dates.month_length(year, month):
            day -= dates.month_length(year, month)
            month += 1
        if 'MONTH' in self.given and self.ts[1] != month:
            raise Raised(-5024)
        if 'DAY' in self.given and self.ts[2] != day:
            raise Raised(-5025)
        self.ts[1:3] = [month, day]

    def check_end(self):
        if self._rest().strip(WHITE):
            raise Raised(-5010)

    def check_record(self):
        date = self.ts[:6]
        dates.check_date(date)
        self.ts[:6] = date
