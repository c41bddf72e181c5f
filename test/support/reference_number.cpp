// The rules of NUMBER in decimal positions. See reference_number.h.
//
// Base-100 structure shows in three places only, all of which are rules of the type and not of its storage:
// the range (floor(top / 2) in -65..62), the 20-digit span of addition, and the 24 quotient digits of
// division.

#include "reference_number.h"

#include <algorithm>
#include <array>
#include <climits>
#include <vector>

namespace dv::test {

namespace {

constexpr int _precision = 38;
constexpr int _pow10_count = 154;  // 10^153 < 2^512

// floor(position / 2): the base-100 exponent minus one of a value whose first digit stands there.
int base100_exponent_(int position) { return position >= 0 ? position / 2 : -((1 - position) / 2); }

int digit_count_(const big_t &n) {
    int count = 1;
    while (n >= pow10(count)) ++count;
    return count;
}

decimal_t in_range_(decimal_t x) {
    if (x.digits == 0) return {};
    const int exponent = base100_exponent_(top_position(x));
    if (exponent > 62) throw twin_raise{-5068};
    if (exponent < -65) throw twin_raise{-5069};
    return x;
}

decimal_t negated_(decimal_t x) {
    if (x.digits != 0) x.negative = !x.negative;
    return x;
}

decimal_t magnitude_(decimal_t x) {
    x.negative = false;
    return x;
}

bool rounds_away_(int mode, bool negative) {
    return mode == NUMBER_RMODE_UP || (mode == NUMBER_RMODE_CEIL && !negative) ||
           (mode == NUMBER_RMODE_FLOOR && negative);
}

bool increments_(int mode, bool negative, bool odd, const big_t &rest, const big_t &unit) {
    const big_t twice = rest * 2;
    if (rest == 0) return false;
    switch (mode) {
        case NUMBER_RMODE_HALF_DOWN:
            return twice > unit;
        case NUMBER_RMODE_HALF_UP:
            return twice >= unit;
        case NUMBER_RMODE_HALF_EVEN:
            return twice > unit || (twice == unit && odd);
        default:
            return rounds_away_(mode, negative);
    }
}

decimal_t cut_to_precision_(const decimal_t &x, int digits, int mode) {
    return x.digits == 0 ? x : twin_round(x, top_position(x) - digits + 1, mode);
}

// x without what lies below 10^position.
decimal_t drop_below_(decimal_t x, int position) {
    if (x.exponent >= position) return x;
    const int drop = std::min(position - x.exponent, _pow10_count - 1);
    x.digits -= x.digits % pow10(drop);
    return x;
}

big_t aligned_(const decimal_t &x, int exponent) { return x.digits * pow10(x.exponent - exponent); }

// |x| +- |y| with the sign of |x|'s owner; x is the operand with the larger base-100 exponent.
decimal_t combine_(const decimal_t &x, const decimal_t &y, bool subtract, int mode) {
    const int lead = base100_exponent_(top_position(x));
    if (lead - base100_exponent_(top_position(y)) > 19) return x;

    const decimal_t tail = drop_below_(y, 2 * (lead - 19));
    const int exponent = std::min(x.exponent, tail.exponent);
    const big_t a = aligned_(x, exponent);
    const big_t b = aligned_(tail, exponent);
    decimal_t result{x.negative, 0, exponent};
    if (!subtract) {
        result.digits = a + b;
        if (base100_exponent_(top_position(result)) > lead) {
            result = drop_below_(in_range_(result), 2 * (lead - 18));
        }
    } else if (a >= b) {
        result.digits = a - b;
    } else {
        result.digits = b - a;
        result.negative = !x.negative;
    }
    return cut_to_precision_(in_range_(result), _precision, mode);
}

std::string digits_of_(const decimal_t &x) {  // without zeros at the end; "0" for zero
    std::string text = x.digits.str();
    text.erase(text.find_last_not_of('0') + 1);
    return text.empty() ? "0" : text;
}

bool fits_(const std::string &text, int buf_size) { return static_cast<int>(text.size()) < buf_size; }

// The scientific form shortened to the buffer; throws when the buffer is too small for it.
std::string shortened_scientific_(const decimal_t &x, int buf_size) {
    const int top = top_position(x);
    const int least = (x.negative ? 7 : 6) + (std::abs(top) >= 100 ? 1 : 0);
    if (buf_size < least) throw twin_raise{-3005};
    const int room = buf_size - least;  // a point and digits; a point alone is never written
    std::string text = scientific_text(cut_to_precision_(x, room >= 2 ? room : 1, NUMBER_RMODE_HALF_UP));
    if (!fits_(text, buf_size)) throw twin_raise{-3005};
    return text;
}

// The normal form rounded to the buffer; false when the buffer cannot hold it.
bool shortened_normal_(const decimal_t &x, int buf_size, std::string &text) {
    const int top = top_position(x);
    const int integer_part = (x.negative ? 1 : 0) + std::max(top + 1, 0);
    const int room = buf_size - 1 - integer_part;  // a point and fraction digits
    if (room < 0 && top >= 0) return false;
    text = normal_text(twin_round(x, room >= 2 ? 1 - room : 0, NUMBER_RMODE_HALF_UP));
    return fits_(text, buf_size);
}

written_t write_(const decimal_t &x, int buf_size, bool normal, bool scientific) {
    std::string text = x.digits == 0 && !normal ? "0E+00" : normal_text(x);
    if (normal && fits_(text, buf_size)) return {0, text};
    if (x.digits == 0) return fits_(text, buf_size) ? written_t{0, text} : written_t{-3005, ""};
    if (scientific && fits_(scientific_text(x), buf_size)) return {0, scientific_text(x)};
    if (normal && shortened_normal_(x, buf_size, text)) return {0, text};
    if (!scientific) return {-3005, ""};
    return {-5067, shortened_scientific_(x, buf_size)};
}

// Cursor over a text.
struct scan_t {
    std::string_view rest;
    bool accept(char c) {
        if (rest.empty() || rest[0] != c) return false;
        rest.remove_prefix(1);
        return true;
    }
    int skip(char c) {
        int count = 0;
        while (accept(c)) ++count;
        return count;
    }
    std::string_view digits() {
        const size_t count = std::min(rest.find_first_not_of("0123456789"), rest.size());
        const std::string_view found = rest.substr(0, count);
        rest.remove_prefix(count);
        return found;
    }
};

long long scan_exponent_(scan_t &scan) {
    if (!scan.accept('E') && !scan.accept('e')) return 0;
    const bool negative = scan.accept('-');
    if (!negative) scan.accept('+');
    const std::string_view digits = scan.digits();
    if (digits.empty()) throw twin_raise{-5074};
    long long value = 0;
    for (const char c : digits) value = std::min(value * 10 + (c - '0'), 1'000'000'000'000LL);
    return negative ? -value : value;
}

decimal_t from_text_digits_(bool negative, std::string digits, long long last_position) {
    const size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
    digits.erase(0, zeros);
    if (digits.empty()) return {};
    const long long top = last_position + static_cast<long long>(digits.size()) - 1;
    if (top > 125) throw twin_raise{-5068};
    if (top < -130) throw twin_raise{-5069};
    digits.resize(_precision, '0');
    return {negative, big_t(digits), static_cast<int>(top) - (_precision - 1)};
}

decimal_t whole_(unsigned long long magnitude) { return {false, magnitude, 0}; }

}  // namespace

const big_t &pow10(int n) {
    static const std::array<big_t, _pow10_count> powers = [] {
        std::array<big_t, _pow10_count> table;
        table[0] = 1;
        for (size_t i = 1; i < table.size(); ++i) table[i] = table[i - 1] * 10;
        return table;
    }();
    return powers.at(static_cast<size_t>(n));
}

int top_position(const decimal_t &x) { return x.exponent + digit_count_(x.digits) - 1; }

int low_position(const decimal_t &x) { return top_position(x) - static_cast<int>(digits_of_(x).size()) + 1; }

decimal_t decode(const number_t &record) {
    if (record.size <= 1) return {};
    const bool negative = (record.signexp & 0x80) == 0;
    const int count = record.size - 1 - (negative ? 1 : 0);
    const int exponent = negative ? 0x3F - record.signexp : record.signexp - 0xC0;
    decimal_t x{negative, 0, 2 * (exponent - count)};
    for (int i = 0; i < count; ++i) {
        x.digits =
            x.digits * 100 + static_cast<unsigned>(negative ? 128 - record.coef[i] : record.coef[i] - 128);
    }
    return x;
}

number_t encode(const decimal_t &value) {
    number_t record{1, 0x80, {}};
    if (value.digits == 0) return record;
    decimal_t x = in_range_(value);
    const int exponent = base100_exponent_(top_position(x)) + 1;
    if (x.exponent % 2 != 0) {
        x.digits *= 10;
        --x.exponent;
    }
    std::vector<int> pairs;  // least significant first
    for (; x.digits != 0; x.digits /= 100) pairs.push_back(static_cast<int>(x.digits % 100));
    const auto first = std::find_if(pairs.begin(), pairs.end(), [](int d) { return d != 0; });
    size_t at = 0;
    for (auto it = pairs.end(); it != first;) {
        const int d = *--it;
        record.coef[at++] = static_cast<uint8_t>(x.negative ? 128 - d : 128 + d);
    }
    if (x.negative) record.coef[at++] = NUMBER_TOP;
    record.size = static_cast<uint8_t>(at + 1);
    record.signexp = static_cast<uint8_t>(x.negative ? 0x3F - exponent : 0xC0 + exponent);
    return record;
}

int compare(const decimal_t &x, const decimal_t &y) {
    const int xs = x.digits == 0 ? 0 : (x.negative ? -1 : 1);
    const int ys = y.digits == 0 ? 0 : (y.negative ? -1 : 1);
    if (xs != ys || xs == 0) return xs - ys;
    const int tops = top_position(x) - top_position(y);
    if (tops != 0) return tops > 0 ? xs : -xs;
    const int exponent = std::min(x.exponent, y.exponent);  // equal tops: at most 40 digits apart
    return xs * aligned_(x, exponent).compare(aligned_(y, exponent));
}

decimal_t twin_round(const decimal_t &x, int pos, int mode) {
    if (x.digits == 0 || pos <= x.exponent) return x;
    if (pos > top_position(x) + 1) {
        if (pos / 2 > 62) throw twin_raise{-5068};
        return rounds_away_(mode, x.negative) ? decimal_t{x.negative, 1, pos} : decimal_t{};
    }
    const big_t &unit = pow10(pos - x.exponent);
    decimal_t result{x.negative, x.digits / unit, pos};
    const bool odd = (result.digits & 1) != 0;
    if (increments_(mode, x.negative, odd, x.digits % unit, unit)) result.digits += 1;
    return in_range_(result);
}

decimal_t twin_add(const decimal_t &x, const decimal_t &y, int mode) {
    if (y.digits == 0) return x;
    if (x.digits == 0) return y;
    const bool subtract = x.negative != y.negative;
    const bool y_leads = base100_exponent_(top_position(y)) > base100_exponent_(top_position(x));
    return y_leads ? combine_(y, x, subtract, mode) : combine_(x, y, subtract, mode);
}

decimal_t twin_sub(const decimal_t &x, const decimal_t &y, int mode) {
    return twin_add(x, negated_(y), mode);
}

decimal_t twin_mul(const decimal_t &x, const decimal_t &y, int mode) {
    if (x.digits == 0 || y.digits == 0) return {};
    const decimal_t product{x.negative != y.negative, x.digits * y.digits, x.exponent + y.exponent};
    return cut_to_precision_(in_range_(product), _precision, mode);
}

decimal_t twin_div(const decimal_t &x, const decimal_t &y, int mode) {
    if (y.digits == 0) throw twin_raise{-5070};
    if (x.digits == 0) return {};
    // As fractions 0.d1 d2 ...: divide by 100^E, that is, read the digits as digits * 10^(exponent - 2E).
    const int x_exponent = 2 * (base100_exponent_(top_position(x)) + 1);
    const int y_exponent = 2 * (base100_exponent_(top_position(y)) + 1);
    const int shift = (x.exponent - x_exponent) - (y.exponent - y_exponent) + 48;  // 24 base-100 digits
    const big_t numerator = shift >= 0 ? x.digits * pow10(shift) : x.digits;
    const big_t denominator = shift >= 0 ? y.digits : y.digits * pow10(-shift);
    const decimal_t quotient{x.negative != y.negative, numerator / denominator, x_exponent - y_exponent - 48};
    return cut_to_precision_(in_range_(quotient), _precision, mode);
}

decimal_t twin_mod(const decimal_t &x, const decimal_t &y, int mode) {
    if (y.digits == 0) return x;
    const decimal_t q = twin_round(twin_div(x, magnitude_(y), mode), 0, NUMBER_RMODE_TRUNC);
    return twin_sub(x, twin_mul(q, magnitude_(y), mode), mode);
}

decimal_t twin_rem(const decimal_t &x, const decimal_t &y, int mode) {
    const decimal_t q = twin_round(twin_div(x, magnitude_(y), mode), 0, mode);
    return twin_sub(x, twin_mul(q, magnitude_(y), mode), mode);
}

bool twin_check(const decimal_t &x, int prec, int scale) {
    if (x.digits == 0) return true;
    const long long integer_digits = top_position(x) + 1;
    if (prec != NUMBER_NOT_GIVEN && integer_digits + scale > prec) return false;
    return scale == NUMBER_NOT_GIVEN || low_position(x) >= -static_cast<long long>(scale);
}

decimal_t twin_force(const decimal_t &x, int prec, int scale) {
    decimal_t rounded =
        scale == NUMBER_NOT_GIVEN ? x : twin_round(x, -std::max(scale, -INT_MAX), NUMBER_RMODE_HALF_UP);
    if (prec == NUMBER_NOT_GIVEN || rounded.digits == 0) return rounded;
    if (scale == NUMBER_NOT_GIVEN) {
        return prec > 0 ? cut_to_precision_(rounded, std::min(prec, 100), NUMBER_RMODE_HALF_UP) : decimal_t{};
    }
    if (top_position(rounded) + 1LL + scale > prec) throw twin_raise{-5111};
    return rounded;
}

decimal_t twin_read(std::string_view text) {
    scan_t scan{text};
    scan.skip(' ');
    const bool negative = scan.accept('-');
    if (!negative) scan.accept('+');
    std::string digits(scan.digits());
    long long last_position = 0;
    if (scan.accept('.')) {
        const std::string_view fraction = scan.digits();
        last_position = -static_cast<long long>(fraction.size());
        digits += fraction;
    }
    if (digits.empty()) throw twin_raise{-5074};
    last_position += scan_exponent_(scan);
    scan.skip(' ');
    if (!scan.rest.empty()) throw twin_raise{-5074};
    return from_text_digits_(negative, digits, last_position);
}

decimal_t twin_read_nt(std::string_view text) {
    scan_t scan{text};
    scan.skip(' ');
    if (!scan.accept('-')) scan.accept('+');
    scan.skip('0');
    return scan.rest.empty() ? decimal_t{} : twin_read(text);
}

std::string normal_text(const decimal_t &x) {
    if (x.digits == 0) return "0";
    const std::string digits = digits_of_(x);
    const int top = top_position(x);
    const auto count = static_cast<int>(digits.size());
    const std::string sign = x.negative ? "-" : "";
    if (top < 0) return sign + "." + std::string(static_cast<size_t>(-top - 1), '0') + digits;
    if (count <= top + 1) return sign + digits + std::string(static_cast<size_t>(top + 1 - count), '0');
    const size_t integer_digits = static_cast<size_t>(top) + 1;
    return sign + digits.substr(0, integer_digits) + "." + digits.substr(integer_digits);
}

std::string scientific_text(const decimal_t &x) {
    if (x.digits == 0) return "0E+00";
    const std::string digits = digits_of_(x);
    const int top = top_position(x);
    std::string exponent = std::to_string(std::abs(top));
    if (exponent.size() < 2) exponent.insert(0, "0");
    return (x.negative ? "-" : "") + digits.substr(0, 1) + (digits.size() > 1 ? "." : "") + digits.substr(1) +
           (top < 0 ? "E-" : "E+") + exponent;
}

written_t twin_write(const decimal_t &x, int buf_size, const char *format) {
    const char letter = format == nullptr ? 'A' : *format;
    const bool normal = letter == 'N' || letter == 'n';
    const bool scientific = letter == 'S' || letter == 's';
    if (format != nullptr && !normal && !scientific) return {-5075, ""};
    try {
        return write_(x, buf_size, !scientific, !normal);
    } catch (const twin_raise &raised) {
        return {raised.code, ""};
    }
}

bool twin_in_range(const decimal_t &x, int type) {
    if (type == NUMBER_TYPE_FLOAT) return compare(magnitude_(x), {false, 3402823, 32}) <= 0;
    if (type == NUMBER_TYPE_DOUBLE || type == NUMBER_TYPE_LONG_DOUBLE) return true;
    if (type < 0 || type >= NUMBER_TYPE_MAX) return false;
    const bool is_unsigned = type % 2 == 1;
    const int bits = 8 << type / 2;
    if (is_unsigned && x.negative && x.digits != 0) return false;
    const unsigned long long all_ones = ~0ULL >> (64 - bits);
    const decimal_t truncated = twin_round(x, 0, NUMBER_RMODE_TRUNC);
    const unsigned long long highest = is_unsigned ? all_ones : all_ones >> 1;
    return compare(magnitude_(truncated), whole_(highest + (truncated.negative ? 1 : 0))) <= 0;
}

}  // namespace dv::test
