// Operands, printing and guards for the NUMBER tests. See number_support.h.

#include "number_support.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

bool operator==(const number_t &x, const number_t &y) {
    return x.size == y.size && std::memcmp(&x, &y, std::min<size_t>(x.size + 1u, sizeof x)) == 0;
}

void PrintTo(const number_t &x, std::ostream *out) { *out << dv::test::describe(x); }

namespace dv::test {

namespace {

constexpr uint8_t _guard = 0xA5;

bool has_only_digits_(const number_t &x) {
    const bool negative = (x.signexp & 0x80) == 0;
    const int count = x.size - 1 - (negative ? 1 : 0);
    if (x.size < 2 || x.size > 22 || count < 1) return x.size == 1;
    return std::all_of(x.coef, x.coef + count, [negative](uint8_t byte) {
        const int d = negative ? 128 - byte : byte - 128;
        return d >= 0 && d <= 99;
    });
}

}  // namespace

std::string describe(const number_t &x) {
    std::string text;
    const size_t meaningful = std::min<size_t>(x.size + 1u, sizeof x);
    const auto *bytes = reinterpret_cast<const uint8_t *>(&x);
    for (size_t i = 0; i < meaningful; ++i) {
        constexpr char hex[] = "0123456789abcdef";
        text += {hex[bytes[i] / 16], hex[bytes[i] % 16], ' '};
    }
    return text + (x.size == 0           ? "(NULL)"
                   : has_only_digits_(x) ? "(" + scientific_text(decode(x)) + ")"
                                         : "(?)");
}

number_t num(std::string_view text) { return encode(twin_read(text)); }

long scaled(long rounds) {
    const char *factor = std::getenv("DV_TEST_ROUNDS");
    return factor == nullptr
               ? rounds
               : std::max(1L, static_cast<long>(static_cast<double>(rounds) * std::atof(factor)));
}

bool operator==(const outcome_t &x, const outcome_t &y) { return x.code == y.code && x.value == y.value; }

void PrintTo(const outcome_t &x, std::ostream *out) {
    if (x.code != 0) {
        *out << "raise " << x.code;
    } else {
        *out << describe(x.value);
    }
}

guarded_number::guarded_number(const number_t &x) {
    bytes_.fill(_guard);
    std::memcpy(get(), &x, sizeof x);
}

bool guarded_number::intact() const {
    const auto is_guard = [](uint8_t byte) { return byte == _guard; };
    return std::all_of(bytes_.begin(), bytes_.begin() + guard_size, is_guard) &&
           std::all_of(bytes_.end() - guard_size, bytes_.end(), is_guard);
}

int number_source::pick(int low, int high) {
    return low + static_cast<int>(engine_() % static_cast<uint64_t>(high - low + 1));
}

std::string number_source::digits_(int count) {
    const auto wanted = static_cast<size_t>(count);
    std::string digits;
    while (digits.size() < wanted) {
        const auto run = static_cast<size_t>(pick(1, pick(0, 1) != 0 ? 40 : 4));
        constexpr char runs[] = "9905";
        const int kind = pick(0, 6);
        for (size_t i = 0; i < run; ++i) {
            digits += kind < 4 ? runs[kind] : static_cast<char>('0' + pick(0, 9));
        }
    }
    digits.resize(wanted);
    if (digits.front() == '0') digits.front() = static_cast<char>('0' + pick(1, 9));
    return digits;
}

// 0.digits x 10^(top + 1) with a random sign; top is brought into the range.
number_t number_source::build_(std::string digits, int top) {
    top = std::clamp(top, -130, 125);
    const bool negative = pick(0, 1) != 0;
    const int exponent = (top + 200) / 2 - 99;  // floor(top / 2) + 1
    if (top % 2 == 0) digits.insert(0, "0");
    if (digits.size() % 2 != 0) digits += '0';
    number_t x{0, static_cast<uint8_t>(negative ? 0x3F - exponent : 0xC0 + exponent), {}};
    size_t count = 0;
    for (size_t i = 0; i + 1 < digits.size(); i += 2) {
        const int d = (digits[i] - '0') * 10 + (digits[i + 1] - '0');
        x.coef[i / 2] = static_cast<uint8_t>(negative ? 128 - d : 128 + d);
        if (d != 0) count = i / 2 + 1;
    }
    if (negative) x.coef[count++] = NUMBER_TOP;
    x.size = static_cast<uint8_t>(count + 1);
    return with_stray_bytes(x, engine_());
}

number_t number_source::with_digits(int low, int high) {
    const int count = pick(low, high);
    return build_(digits_(count), pick(-3, count + 2));
}

number_t number_source::any() {
    switch (pick(0, 7)) {
        case 0:
            return pick(0, 9) == 0 ? *_number_zero : build_("1", pick(-130, 125));
        case 1:
            return with_digits(1, 8);
        case 2:
        case 3:
            return with_digits(30, 38);
        case 4:
            return build_(digits_(pick(1, 38)), pick(118, 125));
        case 5:
            return build_(digits_(pick(1, 38)), pick(-130, -123));
        case 6:
            return build_(digits_(38), pick(-50, 50));
        default:
            return build_(digits_(pick(1, 38)), pick(-130, 125));
    }
}

number_t number_source::pair_for(const number_t &x) {
    if (x.size <= 1 || pick(0, 4) == 0) return any();
    const decimal_t value = decode(x);
    const int top = top_position(value);
    switch (pick(0, 5)) {
        case 0:  // the tail begins around the 38th digit, or 17 to 21 base-100 digits below
            return build_(digits_(pick(1, 38)), top - pick(33, 43));
        case 1:
            return build_(digits_(pick(1, 38)), top + pick(-43, 43));
        case 2: {  // the same digits but for a few at the end: cancellation
            std::string digits = value.digits.str();
            digits.resize(static_cast<size_t>(pick(1, 38)), '0');
            digits.back() = static_cast<char>('0' + pick(0, 9));
            if (digits.front() == '0') digits.front() = '1';
            return build_(digits, top + (pick(0, 5) == 0 ? 1 : 0));
        }
        case 3:
            return build_("5", top - pick(36, 40));  // an exact half
        case 4:
            return build_(digits_(pick(1, 38)), pick(-2, 2) + (pick(0, 1) != 0 ? top : -top));
        default:  // product, or quotient, at an end of the range
            return build_(digits_(pick(1, 38)), (pick(0, 1) != 0 ? 125 : -130) - top + pick(-2, 2));
    }
}

number_t number_source::hostile() {
    number_t x;
    for (auto *byte = reinterpret_cast<uint8_t *>(&x); byte != reinterpret_cast<uint8_t *>(&x + 1); ++byte) {
        *byte = static_cast<uint8_t>(bits() >> 32);
    }
    return x;
}

number_t with_stray_bytes(number_t x, uint64_t noise) {
    auto *bytes = reinterpret_cast<uint8_t *>(&x);
    for (size_t i = x.size + 1u; i < sizeof x; ++i) {
        bytes[i] = static_cast<uint8_t>(noise >> (i % 8 * 8));
    }
    return x;
}

}  // namespace dv::test
