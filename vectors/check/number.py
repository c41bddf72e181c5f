"""NUMBER: records, arithmetic in seven rounding modes, roots and powers.

A value is a pair (n, e), n * 10**e with a signed integer n. Every rule is in dvtypes/number.h.
"""

from math import isqrt

from line import CannotTell, Raised

PRECISION = 38
ONE = (1, 0)
NULL = b'\0'
SPECIAL = {  # records that stand for no finite value, in the place that they take in the order
    bytes.fromhex('020010'): -3, bytes.fromhex('027FF0'): -1, bytes.fromhex('028010'): 1, bytes.fromhex('02FFF0'): 3}


def decode(record):
    """The value of a record, checked to be canonical."""
    if record == b'\x01\x80':
        return (0, 0)
    if record == NULL:
        raise CannotTell
    size, signexp, digits = record[0], record[1], record[2:]
    if size + 1 != len(record) or record in SPECIAL:
        raise CannotTell
    negative = signexp < 0x80
    if negative:
        if digits[-1] != 0xF0:
            raise ValueError('a negative record without its terminator')
        digits = digits[:-1]
    digits = [128 - d if negative else d - 128 for d in digits]
    if not digits or not all(0 <= d <= 99 for d in digits) or 0 in (digits[0], digits[-1]) or len(digits) > 20:
        raise ValueError('no canonical record')
    exponent = 0x3F - signexp if negative else signexp - 0xC0
    n = 0
    for digit in digits:
        n = 100 * n + digit
    return (-n if negative else n, 2 * (exponent - len(digits)))


def top(x):
    """The position of the first significant digit."""
    return len(str(abs(x[0]))) - 1 + x[1]


def encode(x):
    """The record of a value of at most 38 digits."""
    n, e = in_range(x)
    if n == 0:
        return b'\x01\x80'
    digits = str(abs(n))
    if e % 2:
        digits, e = digits + '0', e - 1
    digits = ('0' if len(digits) % 2 else '') + digits
    exponent = e // 2 + len(digits) // 2
    pairs = bytes.fromhex(digits).rstrip(b'\0')
    pairs = [int(f'{b:02x}') for b in pairs]
    if n > 0:
        return bytes([len(pairs) + 1, 0xC0 + exponent] + [128 + p for p in pairs])
    return bytes([len(pairs) + 2, 0x3F - exponent] + [128 - p for p in pairs] + [0xF0])


def in_range(x):
    if x[0] != 0 and top(x) > 125:
        raise Raised(-5068)
    if x[0] != 0 and top(x) < -130:
        raise Raised(-5069)
    return x


def cut(x, pos, mode):
    """Without the digits below pos, rounded in a mode. Not checked to be in the range."""
    n, e = x
    if n == 0 or pos <= e:
        return x
    unit = 10 ** (pos - e)
    kept, rest = divmod(abs(n), unit)
    half = (2 * rest > unit) - (2 * rest < unit)
    grows = rest != 0 and (
        mode == 1 or mode == 2 and half > 0 or mode == 3 and half >= 0 or
        mode == 4 and (half > 0 or half == 0 and kept % 2) or mode == 5 and n > 0 or mode == 6 and n < 0)
    kept += bool(grows)
    return (kept if n > 0 else -kept, pos)


def to_precision(x, mode, digits=PRECISION):
    in_range(x)
    return in_range(cut(x, top(x) - digits + 1, mode)) if x[0] else x


def round_at(x, pos, mode):
    if x[0] == 0 or pos <= lowest(x):
        return x
    if pos > top(x) + 1 and int(pos / 2) > 62:
        raise Raised(-5068)
    return in_range(cut(x, pos, mode))


def lowest(x):
    """The position of the last significant digit."""
    digits = str(abs(x[0]))
    return x[1] + len(digits) - len(digits.rstrip('0'))


def pair_of(x):
    """The base-100 position of the first digit."""
    return top(x) // 2


def aligned(x, e):
    return x[0] * 10 ** (x[1] - e)


def add(x, y, mode):
    if y[0] == 0:
        return x
    if x[0] == 0:
        return y
    if pair_of(y) > pair_of(x):
        x, y = y, x
    lead = pair_of(x)
    if lead - pair_of(y) > 19:
        return x
    y = cut(y, 2 * (lead - 19), 0)
    e = min(x[1], y[1])
    total = (aligned(x, e) + aligned(y, e), e)
    if total[0] and pair_of(total) > lead:
        total = cut(in_range(total), 2 * (lead - 18), 0)
    return to_precision(total, mode)


def sub(x, y, mode):
    return add(x, (-y[0], y[1]), mode)


def mul(x, y, mode):
    return to_precision((x[0] * y[0], x[1] + y[1]), mode)


def div(x, y, mode):
    if y[0] == 0:
        raise Raised(-5070)
    if x[0] == 0:
        return x
    # Both as fractions 0.d1 d2 ... of base-100 digits: the quotient has 24 of them behind the point.
    xe, ye = 2 * (pair_of(x) + 1), 2 * (pair_of(y) + 1)
    shift = (x[1] - xe) - (y[1] - ye) + 48
    numerator, denominator = abs(x[0]) * 10 ** max(shift, 0), abs(y[0]) * 10 ** max(-shift, 0)
    quotient = numerator // denominator
    return to_precision((quotient if (x[0] < 0) == (y[0] < 0) else -quotient, xe - ye - 48), mode)


def rest(x, y, mode, integer_mode):
    divisor = (abs(y[0]), y[1])
    quotient = round_at(div(x, divisor, mode), 0, integer_mode)
    return sub(x, mul(quotient, divisor, mode), mode)


def mod(x, y, mode):
    return rest(x, y, mode, 0) if y[0] else x


def rem(x, y, mode):
    return rest(x, y, mode, mode)


def sqrt(x, mode):
    if x[0] < 0:
        raise Raised(-5073)
    if x[0] == 0:
        return x
    k = (top(x) + 16) // 16  # x / 10**(16 k) is a fraction
    shift = x[1] - (16 * k - 128)
    operand = x[0] * 10 ** shift if shift >= 0 else x[0] // 10 ** -shift
    return to_precision((isqrt(operand), 8 * k - 64), mode)


def power(x, y, mode):
    if aligned(y, min(y[1], 0)) == 10 ** -min(y[1], 0):
        return x
    unit = 10 ** -min(y[1], 0)
    integer, fraction = divmod(abs(aligned(y, min(y[1], 0))), unit)
    if x[0] < 0 and fraction or x[0] == 0 and y[0] < 0:
        raise Raised(-5073)
    if x[0] == 0:
        return x
    result = ONE
    for bit in bin(integer)[2:] if integer else '':
        result = mul(result, result, mode)
        if bit == '1':
            result = mul(result, x, mode)
    root = x
    for _ in range(160):
        if fraction == 0:
            break
        root = sqrt(root, mode)
        fraction *= 2
        if fraction >= unit:
            fraction -= unit
            result = mul(result, root, mode)
    return div(ONE, result, mode) if y[0] < 0 else result


def integer(x):
    """The integer toward zero."""
    n, e = cut(x, 0, 0)
    return n * 10 ** e if e >= 0 else n // 10 ** -e if n >= 0 else -(-n // 10 ** -e)


E = (int('27182818284590452353602874713526624977'), -37)


def operand(item):
    """An input: a record's bytes, or a number as text."""
    if item is None:
        raise CannotTell
    if isinstance(item, bytes):
        return decode(item)
    from number_text import read
    return read(item.encode())


_NINES = (10 ** 38 - 1, 88)
_CONSTANTS = {'_number_max': _NINES, '_number_min': (-_NINES[0], 88), '_number_zero': (0, 0), '_number_one': ONE,
              '_number_e': E, 'n1000000000': (10 ** 9, 0)}
_MARKERS = {'_number_neginf': -3, '_number_negzero': -1, '_number_poszero': 1, '_number_posinf': 3}


def _constant(name):
    if name in _CONSTANTS:
        return [encode(_CONSTANTS[name])]
    return [NULL] if name == '_number_null' else [r for r, place in SPECIAL.items() if place == _MARKERS[name]]


def _integer_root(*limbs):
    """Limbs of base 10**8: the root, and what is left."""
    base, value = 10 ** 8, 0
    for limb in limbs:
        value = value * base + int(limb)
    root = isqrt(value)

    def split(number, count):
        return [number // base ** i % base for i in reversed(range(count))]
    return split(root, (len(limbs) + 1) // 2) + split(value - root * root, len(limbs))


def _from_interchange(given):
    """Negative values: the length does not count the terminator, and is copied as it is."""
    size = given[0]
    if size < 2 or given[1] >= 0x80:
        return [given[:2] + bytes(b + 127 for b in given[2:size + 1]) + b'\0' * (size + 2 - max(len(given), 1))]
    return [given[:2] + bytes(b + 27 for b in given[2:size + 1]) + b'\xF0']


def _binary(function):
    return lambda mode, x, y: [encode(function(operand(x), operand(y), int(mode)))]


def _force(x, precision, scale):
    from number_text import normal
    if x == NULL:
        return [x]
    x, precision, scale = operand(x), int(precision), int(scale)
    if scale != -128:
        x = round_at(x, -scale, 3)
    if precision == -128 or x[0] == 0:
        return [encode(x)]
    if scale == -128:
        return [encode(to_precision(x, 3, precision) if precision > 0 else (0, 0))]
    if top(x) + 1 + scale > precision:
        text = normal(x)
        raise Raised(-5111, text if len(text) < 64 else CUT, precision, scale)
    return [encode(x)]


CUT = b'...'  # an argument that is too long for an error: only its beginning is compared


def _fits(x, precision, scale):
    if x == NULL:
        return [1]
    x, precision, scale = operand(x), int(precision), int(scale)
    if x[0] == 0:
        return [1]
    if precision != -128 and top(x) + 1 + scale > precision:
        return [0]
    return [int(scale == -128 or lowest(x) >= -scale)]


def _compare(x, y):
    x, y = (item if isinstance(item, bytes) else encode(operand(item)) for item in (x, y))
    if NULL in (x, y):
        return [(x != NULL) - (y != NULL)]
    order = [(SPECIAL[r], 0) if r in SPECIAL else _place(decode(r)) for r in (x, y)]
    if (x[1:] > y[1:]) - (x[1:] < y[1:]) != (order[0] > order[1]) - (order[0] < order[1]):
        raise ValueError('the order of the bytes is not that of the values')
    return [(order[0] > order[1]) - (order[0] < order[1])]


def _place(x):
    """Finite values stand between the markers: -2 below zero, 0, 2 above."""
    return ((x[0] > 0) * 2 - (x[0] < 0) * 2, aligned(x, -200) if x[0] else 0)


def _to_interchange(x):
    x = x if isinstance(x, bytes) else encode(operand(x))
    if x in SPECIAL:
        raise CannotTell
    decode(x) if x != NULL else None
    if len(x) > 1 and x[1] < 0x80:
        return [x[:2] + bytes(d - 27 for d in x[2:-1]) + b'\x66']
    return [x[:2] + bytes(d - 127 for d in x[2:])]


OPERATIONS = {
    'number_add': _binary(add), 'number_sub': _binary(sub), 'number_mul': _binary(mul), 'number_div': _binary(div),
    'number_mod': _binary(mod), 'number_rem': _binary(rem), 'number_pow': _binary(power),
    'number_add_with_mode': lambda mode, x, y, is_add: [
        encode((add if int(is_add) else sub)(operand(x), operand(y), int(mode)))],
    'number_sqr': lambda mode, x: [encode(mul(operand(x), operand(x), int(mode)))],
    'number_sqrt': lambda mode, x: [encode(sqrt(operand(x), int(mode)))],
    'number_exp': lambda mode, x: [encode(power(E, operand(x), int(mode)))],
    'number_negate': lambda x: [encode((-operand(x)[0], operand(x)[1]))],
    'number_abs': lambda x: [encode((abs(operand(x)[0]), operand(x)[1]))],
    'number_assign': lambda x: [x if isinstance(x, bytes) else encode(operand(x))],
    'number_round_at_withmode': lambda x, pos, mode: [
        x if x == NULL else encode(round_at(operand(x), int(pos), int(mode)))],
    'number_force_prec_scale': _force,
    'number_check_prec_scale': _fits,
    'number_cmp': _compare,
    'number_to_oracle_format': _to_interchange,
    'number_from_oracle_format': _from_interchange,
    'number_constant': _constant,
    'number_ui_sqrt': _integer_root,
}
