"""Row identifiers."""

from line import CannotTell, Raised

_DIGITS = b'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/'


def _write(value, count):
    return bytes(_DIGITS[value >> 6 * i & 63] for i in reversed(range(count))).decode()


def _digits(text):
    """Digits from the right; -1 for a character that is none."""
    return [_DIGITS.find(bytes([c])) for c in reversed(text)]


def _part(begin, count, largest, code):
    def recompute(text):
        if text is None:
            raise CannotTell
        return [_value(text[begin:begin + count], largest, code)]
    return recompute


def _value(text, largest, code):
    value = 0
    for i, digit in enumerate(_digits(text)):
        if digit < 0:
            raise Raised(-5080)
        value += digit << 6 * i
        if value > largest:
            raise Raised(code)
    return value


def _pair(first, second, largest, codes):
    """Two parts read side by side from the right."""
    values = [0, 0]
    for i, digits in enumerate(zip(_digits(first), _digits(second))):
        for j, digit in enumerate(digits):
            if digit < 0:
                raise Raised(-5080)
            values[j] += digit << 6 * i
            if values[j] > largest:
                raise Raised(codes[j])
    return values


def _read(text):
    if text is None:
        raise CannotTell
    segment, block = _pair(text[0:6], text[9:15], 2 ** 32 - 1, (-5081, -5081))
    file, row = _pair(text[6:9], text[15:18], 2 ** 16 - 1, (-5082, -5084))
    return [segment, file, block, row]


def _read_number(text, value='0'):
    if text is None:
        raise CannotTell
    total = int(value)
    try:
        total += _value(text, 2 ** 64 - 1, -5080)
        if total >= 2 ** 64:
            raise Raised(-5080)
    except Raised as raised:
        raised.left = [int(value)]
        raise
    return [total]


OPERATIONS = {
    'erowid_new': lambda s, f, b, r: [
        _write(int(s), 6) + _write(int(f), 3) + _write(int(b), 6) + _write(int(r), 3)],
    'erowid_get_rowid': _read,
    'erowid_get_sgmt': _part(0, 6, 2 ** 32 - 1, -5081),
    'erowid_get_file': _part(6, 3, 2 ** 16 - 1, -5082),
    'erowid_get_block': _part(9, 6, 2 ** 32 - 1, -5083),
    'erowid_get_row': _part(15, 3, 2 ** 16 - 1, -5084),
    'nerowid_new': lambda value: [_write(int(value), 11)],
    'nerowid_get_rowid': _read_number,
    'rowid_equals': lambda *fields: [int(fields[:4] == fields[4:])],
}
