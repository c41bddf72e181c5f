"""Number models: compiling, writing, reading. The rules are in docs/number-models.md."""

import re

import number
from line import Raised
from number import operand
from number_text import normal, read, scientific

_TEXT_MINIMUM = ('TM', 'TM9', 'TME')
_CURRENCIES = {'C': 2, 'L': 3, 'U': 4}
_MARKS = {0: ((' ', '-'), ('', '')), 1: (('', ''), (' ', '-')), 2: ((' ', '<'), (' ', '>')), 3: (('+', '-'), ('', '')),
          4: (('', ''), ('+', '-'))}  # by sign element: in front and behind, of other and of negative values


class Model:
    """A compiled model. Its elements stand in the order of the phases below, and none is taken back."""

    def __init__(self, text):
        self.digits, self.sign, self.currency = '', 0, 0
        self.fm = self.hexadecimal = self.scientific = self.has_sign = False
        rest = self._prefix(text)
        rest = self._currency(rest)
        rest = self._digit_part(rest)
        rest = self._exponent(rest)
        rest = self._currency(rest)
        rest = self._trailing_sign(rest)
        if rest or self.raised:
            raise Raised(-5075)
        places = re.sub('[^90X.D]', '', self.digits)
        self.integer = len(re.split('[.D]', places)[0])
        self.places = len(re.sub('[.D]', '', places))

    def _prefix(self, rest):
        while rest[:1].upper() in ('F', 'S', 'B') and rest:
            if rest[0].upper() == 'B':
                raise Raised(-3006)
            if rest[0].upper() == 'S':
                self._set_sign(3)
                rest = rest[1:]
            elif rest[:2].upper() == 'FM' and not self.fm:
                self.fm, rest = True, rest[2:]
            else:
                raise Raised(-5075)
        return rest

    def _set_sign(self, sign):
        if self.has_sign:
            raise Raised(-5075)
        self.has_sign, self.sign = True, sign

    def _currency(self, rest):
        letter = rest[:1].upper()
        if letter in _CURRENCIES and letter:
            if self.currency:
                raise Raised(-5075)
            self.currency = _CURRENCIES[letter]
            self.digits += letter
            return rest[1:]
        return rest

    def _digit_part(self, rest):
        self.raised = False
        while rest and rest[0].upper() in '90X,.GDV$':
            c, seen = rest[0].upper(), self.digits
            point = '.' in seen or 'D' in seen
            if (c in '90' and 'X' in seen or c == 'X' and ('9' in seen or point) or
                    c in ',.' and ('G' in seen or 'D' in seen or point) or
                    c in 'GD' and (',' in seen or '.' in seen or point) or
                    c == '$' and self.currency or c == 'V' and self.raised):
                raise Raised(-5075)
            if c == '$':
                self.currency = 1
            elif c == 'V':
                self.raised = True
            else:
                self.digits += c
            rest = rest[1:]
        self.hexadecimal = 'X' in self.digits
        return rest

    def _exponent(self, rest):
        if rest[:1].upper() != 'E':
            return rest
        if rest[:4] not in ('EEEE', 'eeee') or self.hexadecimal or not re.search('[90]', self.digits):
            raise Raised(-5075)
        self.scientific = True
        return rest[4:]

    def _trailing_sign(self, rest):
        while rest[:1].upper() in ('M', 'P', 'S', 'B') and rest:
            element = rest[:2].upper()
            if element[0] == 'B':
                raise Raised(-3006)
            if element[0] == 'S':
                self._set_sign(4)
                rest = rest[1:]
                continue
            if element not in ('MI', 'PR'):
                raise Raised(-5075)
            if element == 'MI' or not self.fm:
                self._set_sign(1 if element == 'MI' else 2)
            else:
                self._set_sign(0)
            rest = rest[2:]
        return rest

    def fields(self):
        return [self.digits, self.fm, self.sign, self.currency, self.integer - 1, self.integer - self.places, 0,
                self.hexadecimal, self.scientific]

    def width(self):
        return (len(self.digits) + sum(mark != '' for mark, _ in _MARKS[self.sign]) + (self.currency == 1) +
                2 * (self.currency == 2) + 4 * self.scientific)


def _model_text(model):
    if model is None:
        return ''
    return bytes(model[:max(model.length, 0)] if model.length is not None else model).split(b'\0')[0].decode('latin-1')


def compiled(text):
    if len(text) > 256:
        raise Raised(-5075)
    return Model(text)


def _roman(value, upper):
    text = ''
    for worth, numeral in zip((1000, 900, 500, 400, 100, 90, 50, 40, 10, 9, 5, 4, 1),
                              ('M', 'CM', 'D', 'CD', 'C', 'XC', 'L', 'XL', 'X', 'IX', 'V', 'IV', 'I')):
        text += numeral * (value // worth)
        value %= worth
    return text if upper else text.lower()


def roman(x, upper):
    value = number.integer(number.cut(x, 0, 3))
    return _roman(value, upper).rjust(15) if 1 <= value <= 3999 else '#' * 15


def write(x, text):
    upper = text.upper()
    if upper in _TEXT_MINIMUM:
        return scientific(x) if upper == 'TME' or len(normal(x)) > 64 else normal(x)
    if upper == 'RN':
        return roman(x, text[0] == 'R')
    if upper == 'FMRN':
        return roman(x, text[2] == 'R').strip()
    model = compiled(text)
    exponent, x = _rounded(x, model)
    negative = x[0] < 0
    integer = str(abs(number.integer(x))).lstrip('0') if not model.hexadecimal else f'{abs(number.integer(x)):X}'
    integer = '' if integer == '0' else integer
    if len(integer) > model.integer or model.hexadecimal and negative:
        return '#' * model.width()
    fraction_places = model.places - model.integer
    fraction = str(abs(number.aligned(x, -fraction_places)) % 10 ** fraction_places).rjust(fraction_places, '0')
    front, behind = (mark[negative] for mark in _MARKS[model.sign])
    body = (('' if front == ' ' and model.fm else front) + ('$' if model.currency == 1 else '') +
            _laid(model, integer, fraction if fraction_places else ''))
    if model.scientific:
        body += f'E{"-" if exponent < 0 else "+"}{abs(exponent):02d}'
    body += behind
    return body if model.fm else body.rjust(model.width())


def _rounded(x, model):
    """Rounded half up at the model's last place; under EEEE once the point stands behind the first digit."""
    places = model.places - model.integer
    if not model.scientific or x[0] == 0:
        return 0, number.cut(x, -places, 3)
    exponent = number.top(x)
    mantissa = number.cut((x[0], x[1] - exponent), -places, 3)
    if mantissa[0] and number.top(mantissa) > 0:
        exponent, mantissa = exponent + 1, (mantissa[0] // 10, mantissa[1])
    return exponent, mantissa


def _laid(model, integer, fraction):
    """The digits in the model's places, from the first written one on."""
    places = re.sub('[^90X]', '', model.digits)
    forced = places.find('0') if '0' in places else model.places
    first = min(model.integer - len(integer), forced, model.integer)
    if model.scientific:
        first = min(first, max(model.integer - 1, 0))
    end = model.places
    if model.fm and not model.digits[-1:] in 'CLU' or model.fm and not model.digits:
        end = max(model.integer, model.integer + len(fraction.rstrip('0')), places.rfind('0') + 1)
    if first >= end and model.places:
        first, end = (model.integer - 1, end) if model.integer else (0, 1)
    digits, text, place = integer.rjust(model.integer, '0') + fraction, '', 0
    for element in model.digits:
        if element in ',G':
            text += ',' if place > first else ''
        elif element in '.D':
            text += '.'
        elif element in 'CLU':
            text += 'USD' if element == 'C' else '$'
        else:
            text += digits[place] if first <= place < end else ''
            place += 1
    return text


def read_under(text, model_text):
    if model_text.upper() in _TEXT_MINIMUM:
        return read(text)
    if model_text.upper() == 'RN':
        raise Raised(-3006)
    model = compiled(model_text)
    text = text.decode('latin-1')
    return _read_hexadecimal(text) if model.hexadecimal else _read_decimal(text, model)


def _read_hexadecimal(text):
    value = (0, 0)
    for c in text.lstrip(' ').split(' ')[0]:
        if c not in '0123456789ABCDEF':
            raise Raised(-5074)
        value = number.add(number.mul(value, (16, 0), 3), (int(c, 16), 0), 3)
    return value


def _read_decimal(text, model):
    skip = model.integer - len(re.sub('[^0-9]', '', re.split('[.D]', text.replace('USD', ''))[0]))
    if skip < 0:
        raise Raised(-5074)
    rest, gathered = text.lstrip(' '), ''
    if rest[:1] == '-':
        rest, gathered = rest[1:], '-'

    def demand(what):
        nonlocal rest
        if not rest.startswith(what):
            raise Raised(-5074)
        rest = rest[len(what):]

    if model.currency == 1:
        demand('$')
    begun = False
    for element in model.digits:
        if element == '9' and rest and not begun and skip >= 1:
            skip -= 1
        elif element in '90' and rest:
            if rest[0] == '+':
                raise Raised(-5074)
            gathered, rest, begun = gathered + rest[0], rest[1:], True
        elif element in ',G' and begun:
            demand(',')
        elif element == 'D' or element == '.' and rest:
            demand('.')
            gathered += '.'
        elif element in 'CLU':
            demand('USD' if element == 'C' else '$')
    if rest.strip(' '):
        raise Raised(-5074)
    return read(gathered.encode('latin-1'))


def _to_text(x, model, size='261'):
    x = (0, 0) if x == number.NULL else operand(x)
    text = write(x, _model_text(model))
    if len(text) >= int(size) or _model_text(model).upper() == 'FMRN' and int(size) < 16:
        raise Raised(-3005)
    return [text]


def _to_roman(x, upper, size='16'):
    if int(size) < 16:
        raise Raised(-3005)
    return [roman(operand(x), int(upper))]


def _from_text(text, model):
    seen = bytes(text[:max(text.length, 0)] if text.length is not None else text)
    return [number.encode(read_under(seen, _model_text(model)))]


def _check(model):
    text = _model_text(model)
    if text.upper() not in _TEXT_MINIMUM + ('RN',):
        compiled(text)
    return []


def _length(model):
    text = re.sub('FM', '', _model_text(model), flags=re.I)
    length = len(write((0, 0), text))
    if length > 256:
        raise Raised(-3005)
    return [length]


OPERATIONS = {
    'number_fmt_parse': lambda model: compiled(_model_text(model)).fields(),
    'number_format_check': _check,
    'number_get_length': _length,
    'number_to_str_fmt': _to_text,
    '_number_to_str_fmt_rn': _to_roman,
    'number_from_str_fmt': _from_text,
}
