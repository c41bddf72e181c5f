"""Datetime models: elements, compiling, measuring, flattening. The rules are in docs/datetime-models.md."""

import struct

import names
from line import CannotTell, Raised, Text, Word

# By number: element, class (0 DATE, 1 TIME, 2 punctuation, 3 FM, 4 FX, 5 TZ), whether it can be read, width, whether
# it is written as a word, unit.
_TABLE = '''AD 0 1 2 w AD|A.D. 0 1 4 w AD|BC 0 1 2 w BC|B.C. 0 1 4 w BC|CC 0 0 2 - -|SCC 0 0 3 - -|IYYY 0 0 4 - YEAR|
IYY 0 0 3 - YEAR|IY 0 0 2 - YEAR|I 0 0 1 - YEAR|YEAR 0 0 40 w YEAR|SYEAR 0 0 40 w YEAR|SYYYY 0 1 4 - SYYYY|
YYYY 0 1 4 - YEAR|YYY 0 1 3 - YEAR|YY 0 1 2 - YEAR|Y 0 1 1 - YEAR|RR 0 1 2 - YEAR|RRRR 0 1 4 - YEAR|MM 0 1 2 - MONTH|
MON 0 1 3 w MONTH|MONTH 0 1 9 w MONTH|RM 0 1 1 w MONTH|D 0 0 1 - DAY|DAY 0 0 9 w DAY|DD 0 1 2 - DAY|DDD 0 1 3 - DDD|
DY 0 0 3 w DAY|WW 0 0 2 - -|W 0 0 1 - -|Q 0 0 1 - -|IW 0 0 2 - -|J 0 1 10 - -|AM 1 1 2 w AM|A.M. 1 1 4 w AM|
PM 1 1 2 w PM|P.M. 1 1 4 w PM|HH 1 1 2 - HOUR|HH12 1 1 2 - HOUR|HH24 1 1 2 - HH24|MI 1 1 2 - MINUTE|SS 1 1 2 - SECOND|
SSSSS 1 1 5 - SSSSS|FF 1 1 9 - FSEC|X 1 1 1 w -|TZH 5 1 2 - TZH|TZM 5 1 2 - TZM|TZR 5 1 32 w TZR|TZD 5 1 8 w TZD|
FM 3 1 0 w -|FX 4 1 0 w -'''
_ROWS = [row.strip().split(' ') for row in _TABLE.split('|')]
ELEMENTS = [row[0] for row in _ROWS]
LITERAL, PUNCTUATION = 51, 54
PUNCTUATION_CODES = {0x09, 0x0A, 0x0D, *range(0x20, 0x30), *range(0x3A, 0x41), *range(0x5B, 0x61), *range(0x7B, 0x81)}
_BY_LENGTH = sorted(ELEMENTS, key=len, reverse=True)
_SUFFIXES = {'TH': 1, 'SP': 2, 'THSP': 3, 'SPTH': 4}
_FIELDS = {'FSEC': 'fractions of a second', 'AD': 'AD/BC', 'BC': 'AD/BC', 'AM': 'AM/PM', 'PM': 'AM/PM',
           'SYYYY': 'YEAR', 'HH24': 'HOUR'}
# What a new element's unit may not stand beside, in this order; a code, or None for a field given twice.
_CONFLICTS = {
    'YEAR': [('YEAR SYYYY', None)], 'SYYYY': [('AD BC', -5039), ('YEAR', None)],
    'MONTH': [('MONTH', None)], 'DAY': [('DAY', None)], 'DDD': [('DDD', None)],
    'AD': [('AD BC', None), ('SYYYY', -5039)], 'BC': [('AD BC', None), ('SYYYY', -5039)],
    'AM': [('AM PM', None), ('HH24', -5040)], 'PM': [('AM PM', None), ('HH24', -5040)],
    'HOUR': [('HOUR', None), ('SSSSS', -5026)], 'HH24': [('AM PM', -5040), ('HOUR', None), ('SSSSS', -5026)],
    'MINUTE': [('MINUTE', None), ('SSSSS', -5027)], 'SECOND': [('SECOND', None), ('SSSSS', -5028)],
    'SSSSS': [('HOUR', -5026), ('MINUTE', -5027), ('SECOND', -5028)], 'FSEC': [('FSEC', None)],
    'TZR': [('TZR', None), ('TZH TZM', -5096)], 'TZD': [('TZD', None), ('TZH TZM', -5096)],
    'TZH': [('TZH', None), ('TZR TZD', -5097)], 'TZM': [('TZM', None), ('TZR TZD', -5097)]}


class Element:
    def __init__(self, number, text, letters):
        self.number, self.text, self.letter_case = number, text, _letter_case(number, letters)
        self.suffix = self.precision = 0
        self.fills = self.exact = self.before_punctuation = False
        self.kind = 2 if text is not None else int(_ROWS[number][1])
        self.width = len(text) if text is not None else int(_ROWS[number][3])
        self.is_word = text is not None or _ROWS[number][4] == 'w'
        self.unit = '-' if text is not None else _ROWS[number][5]
        self.name = None if text is not None else ELEMENTS[number]
        self.is_readable = text is not None or _ROWS[number][2] == '1'

    def fields(self):
        return [self.number, self.letter_case, self.suffix, self.kind, self.precision, self.width, int(self.fills),
                int(self.exact), int(self.before_punctuation)]


def _letter_case(number, letters):
    """0 upper, 1 lower, 2 initial capitals, from the element as it is written in the model."""
    if number < LITERAL and ELEMENTS[number] in ('FF', 'TZH', 'TZM', 'TZR', 'FX'):
        return 0
    if not 'A' <= letters[:1] <= 'Z':
        return 1
    second = letters[1:2]
    if second == '.' and len(letters) > 2:
        return 2 if 'a' <= letters[2] <= 'z' else 0
    return 2 if 'a' <= second <= 'z' else 0


def is_punctuation(character):
    return ord(character) in PUNCTUATION_CODES or character in '+-'


class Model:
    def __init__(self, text, value_type, reads):
        self.elements, self.given = [], set()
        self.fills = self.exact = False
        rest = text
        while rest:
            element, rest = self._next(rest, reads)
            self._check_type(element, value_type)
            element.fills, element.exact = self.fills, self.exact
            self.elements.append(element)
        self.has_zone = any(element.kind == 5 for element in self.elements)

    def _next(self, rest, reads):
        if rest[0] == '"':
            literal, _, rest = rest[1:].partition('"')
            element = Element(LITERAL, literal, literal)
        elif is_punctuation(rest[0]):
            size = next((i for i, c in enumerate(rest) if not is_punctuation(c) or c == '"'), len(rest))
            element, rest = Element(PUNCTUATION, rest[:size], rest[:size]), rest[size:]
        else:
            element, rest = self._keyword(rest)
        if element.name == 'FF' and rest[:1] == '0':
            raise Raised(-5041)
        if element.name == 'FF' and rest[:1].isdigit():
            element.precision, rest = int(rest[0]), rest[1:]
        if reads:
            self._check_duplicate(element)
        else:
            rest = self._suffix(element, rest)
        element.before_punctuation = bool(rest) and is_punctuation(rest[0])
        self.fills ^= element.kind == 3
        self.exact ^= element.kind == 4
        return element, rest

    def _keyword(self, rest):
        for name in _BY_LENGTH:
            if rest[:len(name)].upper() == name:
                return Element(ELEMENTS.index(name), None, rest[:len(name)]), rest[len(name):]
        raise Raised(-5014)

    def _check_duplicate(self, element):
        for units, code in _CONFLICTS.get(element.unit, []):
            if self.given & set(units.split()):
                if code is None:
                    raise Raised(-5112, _FIELDS.get(element.unit, element.unit))
                raise Raised(code, *([element.unit] if code in (-5096, -5097) else []))
        self.given.add(element.unit)

    def _suffix(self, element, rest):
        for suffix in ('THSP', 'SPTH', 'TH', 'SP'):
            if rest[:len(suffix)].upper() == suffix:
                if element.is_word:
                    raise Raised(-5014)
                element.suffix = _SUFFIXES[suffix]
                return rest[len(suffix):]
        return rest

    @staticmethod
    def _check_type(element, value_type):
        if value_type == 5 and (element.name == 'FF' or element.kind == 5):
            raise Raised(-5011)
        if value_type == 6 and element.kind in (0, 5) or value_type == 7 and element.kind == 5:
            raise Raised(-5012)

    def length(self, precision):
        total = 0
        for e in self.elements:
            width = (e.precision or precision) if e.name == 'FF' else e.width
            if e.kind == 2:
                total += e.width
            elif e.kind in (0, 1):
                width += e.name == 'SYYYY'
                total += 12 if e.suffix > 1 else width + 2 * e.suffix
            elif e.kind == 5 and e.name != 'TZD':
                total += width + (e.name == 'TZH')
        return total


def model_text(text):
    seen = bytes(text) if text.length is None else bytes(text[:max(text.length, 0)]) if text.length else \
        bytes(text).split(b'\0')[0]
    return seen.decode('latin-1')


def setting(word):
    """Language and character set by number."""
    language, charset = word.split('.')[:2]
    language = language.replace('_', ' ')
    if language not in names.LANGUAGES:
        raise Raised(-11035)
    return names.LANGUAGES.index(language), names.CHARSETS.index(charset)


def compiled(word, text, value_type, reads):
    """The model and its setting. A model is compiled first."""
    if text is None:
        raise CannotTell
    value_type = word.split('.')[2] if word.count('.') > 1 else value_type
    model = Model(model_text(text), int(value_type), int(reads))
    return model, *setting(word)


def _compile(value_type, reads, word, text):
    model = compiled(word, text, value_type, reads)[0]
    outputs = [model.length(6)]
    for element in model.elements:
        outputs.append(Word(':'.join(map(str, element.fields()))))
        if element.text is not None:
            outputs.append(Text(element.text.encode('latin-1')))
    return outputs


def _serialise(value_type, reads, word, text):
    model, language, charset = compiled(word, text, value_type, reads)
    texts, places = b'', []
    begin = 40 + 40 * len(model.elements)
    for element in model.elements:
        places.append(begin + len(texts) if element.text is not None else 0)
        texts += element.text.encode('latin-1') + b'\0' if element.text is not None else b''
    block = struct.pack('<i4xQB3x5i', len(model.elements), 40, model.has_zone, charset, language, 1, language, 1)
    for element, place in zip(model.elements, places):
        number, letter_case, suffix, kind, precision, width, *flags = element.fields()
        block += struct.pack('<3iBb2xi4xQ3B5x', number, letter_case, suffix, kind, precision, width, place, *flags)
    return [block + texts]


def _length(value_type):
    return lambda text, precision='0': [Model(model_text(text), value_type, False).length(int(precision))]


def _check(value_type):
    return lambda text: Model(model_text(text), value_type, True) and []


def _settings(*texts):
    """Language and calendar in force: 7 and 1 are none."""
    given = [7, 1]
    force = [1, 0]
    for text in texts:
        if text is None or text.length is not None and text.length < 1 or not text:
            continue
        try:
            parameter, value = names.parse_setting(text[:256])[:2]
        except Raised as raised:
            raised.left = force
            raise
        if parameter == 5:
            error = Raised(-11035)
            error.left = force
            raise error
        given[parameter - 3] = value
        force = list(given)
    return force


_TYPES = {'date': 5, 'time': 6, 'timestamp': 7, 'ts_tz': 21}
OPERATIONS = {'dt_fmt_ctx_set': _compile, 'dt_fmt_ctx_set_user_nls': _settings,
              'dt_fmt_ctx_serialize': _serialise}
OPERATIONS |= {f'dv_{name}_get_length': _length(code) for name, code in _TYPES.items()}
OPERATIONS |= {f'dv_{name}_check_format': _check(code) for name, code in _TYPES.items()}
