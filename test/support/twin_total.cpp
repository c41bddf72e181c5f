#include "twin_total.h"

namespace dv::test {

void twin_total::add_(const integer_t &digits, int exponent) {
    sum_ += digits * pow(integer_t(10), static_cast<unsigned>(exponent + 336));
}

void twin_total::add(const number_t &x, int sign) {
    const decimal_t value = decode(x);
    add_(integer_t(value.digits) * sign, value.exponent);
    count_ += sign;
}

void twin_total::add_product(const number_t &x, const number_t &y) {
    const decimal_t a = decode(x), b = decode(y);
    add_(integer_t(a.digits) * integer_t(b.digits), a.exponent + b.exponent);
    ++count_;
}

void twin_total::add(const twin_total &other) {
    sum_ += other.sum_;
    count_ += other.count_;
}

std::string twin_total::packed() const {
    integer_t value = sum_;
    int weight = value == 0 ? 0 : -168;
    for (; value != 0 && value % 100 == 0; value /= 100) ++weight;
    std::string head(1, '\1');
    head += '\0';
    const auto append = [&head](uint64_t number, int bytes) {
        while (bytes-- > 0) head += static_cast<char>(number >> 8 * bytes);
    };
    append(static_cast<uint64_t>(int64_t{weight} + 32768), 2);
    append(static_cast<uint64_t>(count_), 8);

    // Two's complement: bytes until what is left is the sign of the last one.
    std::string digits;
    const bool negative = value < 0;
    for (integer_t rest = negative ? integer_t(-value - 1) : value; value != 0; rest >>= 8) {
        const auto byte = static_cast<unsigned>(rest & 0xFF);
        digits.insert(digits.begin(), static_cast<char>(negative ? ~byte : byte));
        if (rest < 128) break;
    }
    return head + digits;
}

std::string packed(const number_total_t &total) {
    uint8_t bytes[DV_TOTAL_PACKED_MAX];
    const int64_t size = number_total_pack(&total, sizeof bytes, bytes);
    return std::string(reinterpret_cast<const char *>(bytes), static_cast<size_t>(size));
}

}  // namespace dv::test
