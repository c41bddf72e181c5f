"""NUMBER and machine numbers: integers exactly, floating point through exact fractions."""

import struct
from fractions import Fraction

from line import Raised
from number import cut, encode, in_range, integer, operand, top

_INTEGERS = [(f'{sign}int{bits}', 0 if sign else -2 ** (bits - 1), 2 ** (bits if sign else bits - 1) - 1)
             for bits in (8, 16, 32, 64) for sign in ('', 'u')]
_SIZES = {'float': 4, 'double': 8, 'long_double': 10}


def fraction_of(bits):
    """The value of floating-point bits; an infinity or a NaN is no number."""
    if len(bits) == 10:
        sign, mantissa = struct.unpack('>HQ', bits)
        exponent = sign & 0x7FFF
        value = Fraction(mantissa) * Fraction(2) ** (max(exponent, 1) - 16383 - 63)
        if exponent == 0x7FFF:
            raise Raised(-5074)
        return -value if sign & 0x8000 else value
    value = struct.unpack({4: '>f', 8: '>d'}[len(bits)], bits)[0]
    if value != value or abs(value) == float('inf'):
        raise Raised(-5074)
    return Fraction(value)


def printed(value, digits):
    """As printf prints it: rounded to digits significant ones, a tie to the even one."""
    if value == 0:
        return (0, 0)
    e = len(str(abs(value.numerator))) - len(str(value.denominator)) - digits - 2
    scaled = abs(value) * Fraction(10) ** -e
    e += len(str(int(scaled))) - digits
    n = round(abs(value) * Fraction(10) ** -e)
    return (n if value > 0 else -n, e)


def _from_float(bits):
    x = in_range(printed(fraction_of(bits), {4: 8, 8: 16, 10: 20}[len(bits)]))
    return [encode(cut(x, top(x) - 6, 2) if len(bits) == 4 and x[0] else x)]


def _shortest(bits):
    """Python's repr() is the shortest decimal that reads back, too."""
    x = fraction_of(bits)
    digits, _, exponent = f'{float(x)!r}'.partition('e')
    whole, _, fraction = digits.partition('.')
    return [encode(in_range((int(whole + fraction), int(exponent or 0) - len(fraction))))]


def _fits(x, low, high):
    return low <= integer(x) <= high and (low < 0 or x[0] >= 0)


def _to_integer(low, high):
    def recompute(x):
        x = operand(x)
        if not _fits(x, low, high):
            raise Raised(-5072)
        return [integer(x)]
    return recompute


def _range_check(x, code):
    if not 0 <= int(code) <= 7:
        return [0]
    order = ['int8', 'uint8', 'int16', 'uint16', 'int32', 'uint32', 'int64', 'uint64']
    return [int(_fits(operand(x), *{name: (low, high) for name, low, high in _INTEGERS}[order[int(code)]]))]


def close(kind, x, bits):
    """Whether bits are what the number is, but for the rule's few units in the last place: only the first nine
    base-100 digits count, and each step rounds in long double."""
    exact = Fraction(x[0]) * Fraction(10) ** x[1]
    if x[0] == 0:
        return bits == bytes(_SIZES[kind])
    try:
        value = fraction_of(bits)
    except Raised:
        return kind == 'float' and abs(exact) > 2 ** 128 - 2 ** 103
    allowed = {'float': Fraction(2, 2 ** 24), 'double': Fraction(8, 10 ** 17), 'long_double': Fraction(6, 10 ** 17)}
    smallest = Fraction(1, 2 ** 149) if kind == 'float' else 0
    return abs(value - exact) <= max(abs(exact) * allowed[kind] * 2, smallest)


def _limit(row):
    """The bounds of a type. Those of float are its largest value to seven digits; the others reach beyond NUMBER."""
    order = [f'{sign}int{bits}' for bits in (8, 16, 32, 64) for sign in ('', 'u')]
    kind, is_high = divmod(int(row), 2)
    if kind < len(order):
        return [encode(({name: bounds for name, *bounds in _INTEGERS}[order[kind]][is_high], 0))]
    n, e = (3402823, 32) if kind == 8 else (10 ** 38 - 1, 88)
    return [encode((n if is_high else -n, e))]


OPERATIONS = {f'number_from_{name}': lambda v: [encode((int(v), 0))] for name, _, _ in _INTEGERS}
OPERATIONS |= {f'number_to_{name}': _to_integer(low, high) for name, low, high in _INTEGERS}
OPERATIONS |= {f'number_from_{name}': _from_float for name in _SIZES}
OPERATIONS |= {'number_from_double_shortest': _shortest}
OPERATIONS |= {'number_range_check': _range_check, '_number_limit': _limit}


def _judge_to_float(kind):
    def judge(case):
        x = operand(case.inputs[0])
        if case.error:
            return kind == 'float' and abs(Fraction(x[0]) * Fraction(10) ** x[1]) > Fraction(34, 10) * 10 ** 38
        return close(kind, x, bytes.fromhex(case.outputs[0][1:]))
    return judge


# Judged by nearness: the call's value is not correctly rounded.
JUDGES = {f'number_to_{kind}': _judge_to_float(kind) for kind in _SIZES}
