// The rules of NUMBER in decimal positions. See reference_number.h.
//
// Base-100 structure shows in four places only, all of which are rules of the type and not of its storage:
// the range, the 20-digit span of addition, the 24 quotient digits of division, and the 64 digits of a root.

#include "reference_number.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace dv::test {

namespace {

constexpr int _precision = 38;
constexpr const char *_decimal_digits = "0123456789";

const big_t &pow10_(int n) {
    static const auto powers = [] {
        std::vector<big_t> table{1};
        while (table.size() < 300) table.push_back(table.back() * 10);
        return table;
    }();
    return powers.at(static_cast<size_t>(n));
}

// x in units of 10^exponent, which is not above its own.
big_t in_units_(const decimal_t &x, int exponent) { return x.digits * pow10_(x.exponent - exponent); }

// Position of the first significant base-100 digit: one less than the exponent E of the record.
int top_pair_(const decimal_t &x) { return top_position(x) >> 1; }

const decimal_t &in_range_(const decimal_t &x) {
    if (x.digits != 0 && top_pair_(x) > 62) throw twin_raise{-5068};
    if (x.digits != 0 && top_pair_(x) < -65) throw twin_raise{-5069};
    return x;
}

// Does an inexact magnitude grow? against_half compares what is dropped with half a unit.
bool grows_(int mode, bool negative, bool odd, int against_half) {
    const bool by_mode[] = {/*TRUNC*/ false,
                            /*UP*/ true,
                            /*HALF_DOWN*/ against_half > 0,
                            /*HALF_UP*/ against_half >= 0,
                            /*HALF_EVEN*/ against_half > 0 || (against_half == 0 && odd),
                            /*CEIL*/ !negative,
                            /*FLOOR*/ negative};
    return mode >= 0 && mode <= 6 && by_mode[mode];
}

// x as a multiple of 10^pos: the one place where digits are dropped.
decimal_t cut_(const decimal_t &x, int pos, int mode) {
    if (x.digits == 0 || pos <= x.exponent) return x;
    const big_t &unit = pow10_(pos - x.exponent);
    const big_t rest = abs(x.digits % unit);
    decimal_t result{x.digits / unit, pos};
    const bool negative = x.digits < 0;
    const bool odd = result.digits % 2 != 0;
    const big_t twice = rest * 2;
    if (rest != 0 && grows_(mode, negative, odd, twice.compare(unit))) result.digits += negative ? -1 : 1;
    return result;
}

decimal_t to_precision_(const decimal_t &x, int digits, int mode) {
    return in_range_(cut_(in_range_(x), top_position(x) - digits + 1, mode));
}

// x - q * |y|, where q is x / |y| as an integer.
decimal_t rest_of_(const decimal_t &x, const decimal_t &y, int integer_mode, int mode) {
    const decimal_t divisor{abs(y.digits), y.exponent};
    const decimal_t quotient = twin_round(twin_div(x, divisor, mode), 0, integer_mode);
    return twin_sub(x, twin_mul(quotient, divisor, mode), mode);
}

std::string significant_digits_(const decimal_t &x) {  // without zeros at the end; "0" for zero
    std::string text = big_t(abs(x.digits)).str();
    text.erase(text.find_last_not_of('0') + 1);
    return text.empty() ? "0" : text;
}

// Takes the leading characters of the text that are among `characters`, at most `count`.
std::string_view take_(std::string_view &text, std::string_view characters,
                       size_t count = std::string::npos) {
    const std::string_view taken = text.substr(0, std::min(text.find_first_not_of(characters), count));
    text.remove_prefix(taken.size());
    return taken;
}

long long take_exponent_(std::string_view &text) {
    if (take_(text, "Ee", 1).empty()) return 0;
    const bool negative = take_(text, "+-", 1) == "-";
    const std::string_view digits = take_(text, _decimal_digits);
    if (digits.empty()) throw twin_raise{-5074};
    long long value = 0;
    for (const char c : digits) value = std::min(value * 10 + (c - '0'), 1'000'000'000'000LL);
    return negative ? -value : value;
}

// The first 38 of the digits, the last of which stands at last_position.
decimal_t keep_first_digits_(bool negative, std::string digits, long long last_position) {
    digits.erase(0, digits.find_first_not_of('0'));
    if (digits.empty()) return {};
    const long long top = last_position + static_cast<long long>(digits.size()) - 1;
    if (top > 125) throw twin_raise{-5068};
    if (top < -130) throw twin_raise{-5069};
    digits.resize(_precision, '0');
    return {big_t((negative ? "-" : "") + digits), static_cast<int>(top) - (_precision - 1)};
}

// Rounded to as many fraction digits as the buffer holds behind sign, integer digits and point.
std::string shortened_normal_(const decimal_t &x, int buf_size) {
    const int room = buf_size - 1 - (x.digits < 0 ? 1 : 0) - std::max(top_position(x) + 1, 0);
    return normal_text(twin_round(x, room >= 2 ? 1 - room : 0, NUMBER_RMODE_HALF_UP));
}

// Rounded to as many digits as the buffer holds beside sign, point and exponent.
std::string shortened_scientific_(const decimal_t &x, int buf_size) {
    const int least = (x.digits < 0 ? 7 : 6) + (std::abs(top_position(x)) >= 100 ? 1 : 0);
    if (buf_size < least) return {};
    const int room = buf_size - least;  // a point and digits; a point alone is never written
    return scientific_text(to_precision_(x, room >= 2 ? room : 1, NUMBER_RMODE_HALF_UP));
}

}  // namespace

int top_position(const decimal_t &x) {
    if (x.digits == 0) return x.exponent;
    const big_t magnitude = abs(x.digits);
    int top = static_cast<int>(0.30102 * msb(magnitude));  // log10(2), rounded down
    while (magnitude >= pow10_(top + 1)) ++top;
    return x.exponent + top;
}

decimal_t decode(const number_t &record) {
    if (record.size <= 1) return {};
    const bool negative = (record.signexp & 0x80) == 0;
    const int count = record.size - 1 - (negative ? 1 : 0);
    const int exponent = negative ? 0x3F - record.signexp : record.signexp - 0xC0;
    decimal_t x{0, 2 * (exponent - count)};
    for (int i = 0; i < count; ++i) x.digits = x.digits * 100 + (record.coef[i] - 128);
    return x;
}

number_t encode(const decimal_t &x) {
    number_t record{1, 0x80, {}};
    if (in_range_(x).digits == 0) return record;
    std::string digits = significant_digits_(x);
    if (top_position(x) % 2 == 0) digits.insert(0, "0");
    if (digits.size() % 2 != 0) digits += '0';
    const int sign = x.digits < 0 ? -1 : 1;
    const size_t count = digits.size() / 2;
    for (size_t i = 0; i < count; ++i) {
        const int pair = 10 * (digits[2 * i] - '0') + (digits[2 * i + 1] - '0');
        record.coef[i] = static_cast<uint8_t>(128 + sign * pair);
    }
    if (sign < 0) record.coef[count] = NUMBER_TOP;
    record.size = static_cast<uint8_t>(count + (sign < 0 ? 2 : 1));
    record.signexp = static_cast<uint8_t>((sign < 0 ? 0x3F : 0xC0) + sign * (top_pair_(x) + 1));
    return record;
}

int compare(const decimal_t &x, const decimal_t &y) {
    const int exponent = std::min(x.exponent, y.exponent);
    return in_units_(x, exponent).compare(in_units_(y, exponent));
}

decimal_t twin_round(const decimal_t &x, int pos, int mode) {
    if (x.digits == 0 || pos <= x.exponent) return x;
    if (pos > top_position(x) + 1 && pos / 2 > 62) throw twin_raise{-5068};
    return in_range_(cut_(x, pos, mode));
}

decimal_t twin_add(const decimal_t &x, const decimal_t &y, int mode) {
    if (y.digits == 0) return x;
    if (x.digits == 0) return y;
    const int lead = top_pair_(x);
    if (top_pair_(y) > lead) return twin_add(y, x, mode);
    if (lead - top_pair_(y) > 19) return x;
    const decimal_t tail = cut_(y, 2 * (lead - 19), NUMBER_RMODE_TRUNC);
    const int exponent = std::min(x.exponent, tail.exponent);
    decimal_t sum{in_units_(x, exponent) + in_units_(tail, exponent), exponent};
    if (top_pair_(sum) > lead) sum = cut_(in_range_(sum), 2 * (lead - 18), NUMBER_RMODE_TRUNC);
    return to_precision_(sum, _precision, mode);
}

decimal_t twin_sub(const decimal_t &x, const decimal_t &y, int mode) {
    return twin_add(x, {-y.digits, y.exponent}, mode);
}

decimal_t twin_mul(const decimal_t &x, const decimal_t &y, int mode) {
    return to_precision_({x.digits * y.digits, x.exponent + y.exponent}, _precision, mode);
}

decimal_t twin_div(const decimal_t &x, const decimal_t &y, int mode) {
    if (y.digits == 0) throw twin_raise{-5070};
    if (x.digits == 0) return {};
    // Both as fractions 0.d1 d2 ... x 100^E; the quotient of the fractions in units of 100^-24.
    const int x_exponent = 2 * (top_pair_(x) + 1);
    const int y_exponent = 2 * (top_pair_(y) + 1);
    const big_t numerator = x.digits * pow10_((x.exponent - x_exponent) - (y.exponent - y_exponent) + 48);
    return to_precision_({numerator / y.digits, x_exponent - y_exponent - 48}, _precision, mode);
}

decimal_t twin_mod(const decimal_t &x, const decimal_t &y, int mode) {
    return y.digits == 0 ? x : rest_of_(x, y, NUMBER_RMODE_TRUNC, mode);
}

decimal_t twin_rem(const decimal_t &x, const decimal_t &y, int mode) { return rest_of_(x, y, mode, mode); }

decimal_t twin_sqrt(const decimal_t &x, int mode) {
    if (x.digits < 0) throw twin_raise{-5073};
    if (x.digits == 0) return {};
    const int k = (top_position(x) + 16) >> 4;  // x / 10^(16 k) is a fraction
    const big_t root = sqrt(in_units_(x, 16 * k - 128));
    return to_precision_({root, 8 * k - 64}, _precision, mode);
}

decimal_t twin_pow(const decimal_t &x, const decimal_t &y, int mode) {
    const decimal_t one{1, 0};
    if (compare(y, one) == 0) return x;
    const int exponent = std::min(y.exponent, 0);
    const big_t &unit = pow10_(-exponent);
    const big_t magnitude = abs(in_units_(y, exponent));
    const big_t integer = magnitude / unit;
    big_t fraction = magnitude % unit;
    if ((x.digits < 0 && fraction != 0) || (x.digits == 0 && y.digits < 0)) throw twin_raise{-5073};
    if (x.digits == 0) return x;

    decimal_t result = one;
    for (unsigned bit = integer == 0 ? 0 : msb(integer) + 1; bit-- > 0;) {
        result = twin_mul(result, result, mode);
        if (bit_test(integer, bit)) result = twin_mul(result, x, mode);
    }
    decimal_t root = x;
    for (int i = 0; i < 160 && fraction != 0; ++i) {
        root = twin_sqrt(root, mode);
        fraction *= 2;
        if (fraction < unit) continue;
        fraction -= unit;
        result = twin_mul(result, root, mode);
    }
    return y.digits < 0 ? twin_div(one, result, mode) : result;
}

bool twin_check(const decimal_t &x, int prec, int scale) {
    if (x.digits == 0) return true;
    if (prec != NUMBER_NOT_GIVEN && top_position(x) + 1LL + scale > prec) return false;
    if (scale == NUMBER_NOT_GIVEN) return true;
    return compare(cut_(x, -std::clamp(scale, -130, 200), NUMBER_RMODE_TRUNC), x) == 0;
}

decimal_t twin_force(const decimal_t &x, int prec, int scale) {
    const bool has_scale = scale != NUMBER_NOT_GIVEN;
    decimal_t rounded = has_scale ? twin_round(x, -std::clamp(scale, -130, 200), NUMBER_RMODE_HALF_UP) : x;
    if (prec == NUMBER_NOT_GIVEN || rounded.digits == 0) return rounded;
    if (has_scale && top_position(rounded) + 1LL + scale > prec) throw twin_raise{-5111};
    if (has_scale) return rounded;
    return prec > 0 ? to_precision_(x, std::min(prec, 100), NUMBER_RMODE_HALF_UP) : decimal_t{};
}

decimal_t twin_read(std::string_view text) {
    take_(text, " ");
    const bool negative = take_(text, "+-", 1) == "-";
    std::string digits(take_(text, _decimal_digits));
    long long last_position = 0;
    if (!take_(text, ".", 1).empty()) {
        const std::string_view fraction = take_(text, _decimal_digits);
        last_position = -static_cast<long long>(fraction.size());
        digits += fraction;
    }
    if (digits.empty()) throw twin_raise{-5074};
    last_position += take_exponent_(text);
    take_(text, " ");
    if (!text.empty()) throw twin_raise{-5074};
    return keep_first_digits_(negative, digits, last_position);
}

decimal_t twin_read_nt(std::string_view text) {
    const std::string_view whole = text;
    take_(text, " ");
    take_(text, "+-", 1);
    take_(text, "0");
    return text.empty() ? decimal_t{} : twin_read(whole);
}

std::string normal_text(const decimal_t &x) {
    std::string digits = significant_digits_(x);
    const int top = top_position(x);
    if (top < 0) digits.insert(0, static_cast<size_t>(-top - 1), '0');
    const size_t integer_digits = static_cast<size_t>(std::max(top + 1, 0));
    if (digits.size() < integer_digits) digits.resize(integer_digits, '0');
    if (digits.size() > integer_digits) digits.insert(integer_digits, ".");
    return (x.digits < 0 ? "-" : "") + (x.digits == 0 ? "0" : digits);
}

std::string scientific_text(const decimal_t &x) {
    std::string digits = significant_digits_(x);
    const int top = x.digits == 0 ? 0 : top_position(x);
    if (digits.size() > 1) digits.insert(1, ".");
    const std::string zero = std::abs(top) < 10 ? "0" : "";
    return (x.digits < 0 ? "-" : "") + digits + (top < 0 ? "E-" : "E+") + zero +
           std::to_string(std::abs(top));
}

written_t twin_write(const decimal_t &x, int buf_size, const char *format) {
    const int letter = format == nullptr ? -1 : std::toupper(*format);
    if (letter != -1 && letter != 'N' && letter != 'S') return {-5075, ""};
    const auto fits = [&](const std::string &text) { return static_cast<int>(text.size()) < buf_size; };
    if (letter != 'S' && fits(normal_text(x))) return {0, normal_text(x)};
    if (letter != 'N' && fits(scientific_text(x))) return {0, scientific_text(x)};
    if (letter != 'S' && fits(shortened_normal_(x, buf_size))) return {0, shortened_normal_(x, buf_size)};
    try {
        const std::string text = letter == 'N' ? "" : shortened_scientific_(x, buf_size);
        return text.empty() || !fits(text) ? written_t{-3005, ""} : written_t{-5067, text};
    } catch (const twin_raise &raised) {
        return {raised.code, ""};
    }
}

}  // namespace dv::test
