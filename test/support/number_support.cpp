// Operands, printing and guards for the NUMBER tests. See number_support.h.

#include "number_support.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

bool operator==(const number_t &x, const number_t &y) {
    return x.size == y.size && std::memcmp(&x, &y, std::min<size_t>(x.size + 1u, sizeof x)) == 0;
}

void PrintTo(const number_t &x, std::ostream *out) { *out << dv::test::describe(x); }

namespace dv::test {

static constexpr uint8_t _guard = 0xA5;

std::string hex(const number_t &x) {
    uint8_t bytes[sizeof x];
    std::memcpy(bytes, &x, sizeof x);
    std::string text;
    for (size_t i = 0; i < std::min<size_t>(x.size + 1u, sizeof x); ++i) {
        constexpr char digits[] = "0123456789abcdef";
        if (i > 0) text += ':';
        text += {digits[bytes[i] / 16], digits[bytes[i] % 16]};
    }
    return text;
}

std::string describe(const number_t &x) {
    return hex(x) + (x.size > 22 ? " " : " (" + scientific_text(decode(x)) + ") ");
}

std::string describe(const outcome_t &x) {
    if (x.code == BROKEN_RECORD) return "broken record or guard";
    return x.code != 0 ? "raise " + std::to_string(x.code) : describe(x.value);
}

bool operator==(const outcome_t &x, const outcome_t &y) { return x.code == y.code && x.value == y.value; }

void PrintTo(const outcome_t &x, std::ostream *out) { *out << describe(x); }

number_t num(std::string_view text) { return encode(twin_read(text)); }

std::vector<number_t> nums(const std::string &texts) {
    std::istringstream stream(texts);
    std::vector<number_t> numbers;
    for (std::string text; stream >> text;) numbers.push_back(num(text));
    return numbers;
}

long scaled(long rounds) {
    const char *factor = std::getenv("DV_TEST_ROUNDS");
    if (factor == nullptr) return rounds;
    return std::max(1L, static_cast<long>(static_cast<double>(rounds) * std::atof(factor)));
}

guarded::guarded(size_t size, const void *content)
    : size_(size), bytes_(new uint8_t[size + size_t{2} * DV_TEST_GUARD_SIZE]) {
    std::memset(bytes_.get(), _guard, size + size_t{2} * DV_TEST_GUARD_SIZE);
    if (content != nullptr) std::memcpy(text(), content, size);
}

bool guarded::intact() const {
    const auto is_guard = [](uint8_t byte) { return byte == _guard; };
    const uint8_t *const behind = bytes_.get() + DV_TEST_GUARD_SIZE + size_;
    return std::all_of(bytes_.get(), bytes_.get() + DV_TEST_GUARD_SIZE, is_guard) &&
           std::all_of(behind, behind + DV_TEST_GUARD_SIZE, is_guard);
}

int number_source::pick(int low, int high) {
    const auto count = static_cast<uint64_t>(int64_t{high} - low + 1);
    return static_cast<int>(low + static_cast<int64_t>(engine_() % count));
}

void number_source::fill(void *to, size_t size) {
    auto *bytes = static_cast<uint8_t *>(to);
    std::generate(bytes, bytes + size, [this] { return static_cast<uint8_t>(bits() >> 32); });
}

number_t number_source::with_stray_bytes(number_t x) {
    number_t noise;
    fill(&noise, sizeof noise);
    std::memcpy(&noise, &x, x.size + 1u);
    return noise;
}

std::string number_source::digits_(int count) {
    std::string digits;
    while (digits.size() < static_cast<size_t>(count)) {
        const int kind = pick(0, 6);
        for (int run = pick(1, pick(0, 1) != 0 ? 40 : 4); run > 0; --run) {
            digits += kind < 4 ? "9905"[kind] : static_cast<char>('0' + pick(0, 9));
        }
    }
    digits.resize(static_cast<size_t>(count));
    return digits;
}

// A value of random sign whose first digit, made other than 0, stands at top.
number_t number_source::build_(const std::string &digits, int top) {
    big_t integer(digits.front() == '0' ? "7" + digits.substr(1) : digits);
    if (pick(0, 1) != 0) integer = -integer;
    return with_stray_bytes(
        encode({integer, std::clamp(top, -130, 125) - static_cast<int>(digits.size()) + 1}));
}

number_t number_source::with_digits(int count, int top) { return build_(digits_(count), top); }

number_t number_source::any() {
    struct kind_t {
        int digits[2];
        int top[2];
    };
    constexpr kind_t kinds[] = {{{1, 1}, {-130, 125}}, {{1, 24}, {-3, 24}},   {{1, 8}, {-3, 10}},
                                {{30, 38}, {-3, 40}},  {{1, 38}, {118, 125}}, {{1, 38}, {-130, -123}},
                                {{38, 38}, {-50, 50}}, {{1, 38}, {-130, 125}}};
    if (pick(0, 79) == 0) return with_stray_bytes(*_number_zero);
    const kind_t &kind = kinds[pick(0, std::size(kinds) - 1)];
    return with_digits(pick(kind.digits[0], kind.digits[1]), pick(kind.top[0], kind.top[1]));
}

number_t number_source::pair_for(const number_t &x) {
    if (x.size == 1 || pick(0, 4) == 0) return any();
    const decimal_t value = decode(x);
    const int top = top_position(value);
    const int count = pick(1, 38);
    switch (pick(0, 4)) {
        case 0:  // the tail begins around the 38th digit, or 17 to 21 base-100 digits below
            return with_digits(count, top - pick(33, 43));
        case 1:  // near, or an exact half
            return pick(0, 1) != 0 ? with_digits(count, top + pick(-43, 43))
                                   : build_("5", top - pick(36, 40));
        case 2: {  // the same digits but for the last one: cancellation
            std::string digits = big_t(abs(value.digits)).str();
            digits.resize(static_cast<size_t>(count), '0');
            digits.back() = static_cast<char>('0' + pick(0, 9));
            return build_(digits, top + (pick(0, 5) == 0 ? 1 : 0));
        }
        case 3:
            return with_digits(count, pick(-2, 2) + (pick(0, 1) != 0 ? top : -top));
        default:  // product, or quotient, at an end of the range
            return with_digits(count, (pick(0, 1) != 0 ? 125 : -130) - top + pick(-2, 2));
    }
}

}  // namespace dv::test
