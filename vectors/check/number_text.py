"""NUMBER as text: number_from_str, number_to_str, dumps."""

import re

from line import CannotTell, Raised, Text
from number import NULL, PRECISION, decode, encode, operand, round_at, to_precision, top

_NUMBER = re.compile(rb' *([+-]?)([0-9]*)(?:\.([0-9]*))?(?:[eE]([+-]?[0-9]+))? *')


def read(text):
    match = _NUMBER.fullmatch(text)
    if match is None or not (match[2] or match[3]):
        raise Raised(-5074)
    digits = (match[2] + (match[3] or b'')).lstrip(b'0')
    if not digits.strip(b'0'):
        return (0, 0)
    e = int(match[4] or 0) - len(match[3] or b'')
    if e + len(digits) - 1 > 125:
        raise Raised(-5068)
    if e + len(digits) - 1 < -130:
        raise Raised(-5069)
    dropped = max(len(digits) - PRECISION, 0)
    n = int(digits[:PRECISION])
    return (-n if match[1] == b'-' else n, e + dropped)


def read_nt(text):
    if not text.lstrip(b' ').removeprefix(b'-').removeprefix(b'+').lstrip(b'0') and not text.lstrip(b' ')[:2] in (
            b'-+', b'+-'):
        return (0, 0)
    return read(text)


def _significant(x):
    return str(abs(x[0])).rstrip('0') or '0'


def normal(x):
    if x[0] == 0:
        return '0'
    digits, point = _significant(x), top(x) + 1
    digits = digits.ljust(point, '0') if point > 0 else '0' * -point + digits
    point = max(point, 0)
    fraction = digits[point:]
    return ('-' if x[0] < 0 else '') + digits[:point] + ('.' + fraction if fraction else '')


def scientific(x):
    digits, e = _significant(x), top(x) if x[0] else 0
    mantissa = digits[0] + ('.' + digits[1:] if len(digits) > 1 else '')
    return f'{"-" if x[0] < 0 else ""}{mantissa}E{"-" if e < 0 else "+"}{abs(e):02d}'


def write(x, form, size):
    """The text, or the text and -5067."""
    letter = form[:1].upper() if form is not None else None
    if letter not in (None, b'N', b'S'):
        raise Raised(-5075)
    candidates = []
    if letter != b'S':
        candidates.append(normal(x))
    if letter != b'N':
        candidates.append(scientific(x))
    if letter != b'S':
        room = size - 1 - (x[0] < 0) - max(top(x) + 1, 0)
        candidates.append(normal(round_at(x, 1 - room if room >= 2 else 0, 3)))
    for text in candidates:
        if len(text) < size:
            return text, 0
    least = (7 if x[0] < 0 else 6) + (abs(top(x)) >= 100)
    if letter == b'N' or size < least:
        raise Raised(-3005)
    text = scientific(to_precision(x, 3, max(size - least, 1) if size - least >= 2 else 1))
    if len(text) >= size:
        raise Raised(-3005)
    return text, -5067


def _to_text(x, form, size='171'):
    text, code = write(operand(x), form, int(size))
    if code:
        error = Raised(code)
        error.left = [text]
        raise error
    return [text]


def _dump(x, size='69'):
    if x is None:
        text = 'NULL'
    else:
        record = x if isinstance(x, bytes) else encode(operand(x))
        record = record + b'\0' if record == NULL else record  # signexp is written all the same
        text = ':'.join(f'{b:02x}' for b in record)
    return [text[:max(int(size) - 1, 0)]]


def _from_text(reader):
    def recompute(text):
        if not isinstance(text, Text):
            raise CannotTell
        return [encode(reader(text.seen().split(b'\0')[0] if (text.length or 1) <= 0 else text.seen()))]
    return recompute


OPERATIONS = {
    'number_from_str': _from_text(read),
    'number_from_str_nt': _from_text(read_nt),
    'number_to_str': _to_text,
    'number_sdump': _dump,
}
__all__ = ['OPERATIONS', 'decode', 'normal', 'read', 'scientific', 'write']
