// See operands.h. Every operand is drawn on its own, so that lengths and signs follow no pattern.

#include "operands.h"

#include <cmath>
#include <cstdlib>
#include <random>

namespace dv::bench {

namespace {

class source_ {
  public:
    explicit source_(uint64_t seed) : engine_(seed) {}
    int pick(int low, int high) {
        return low + static_cast<int>(engine_() % static_cast<uint64_t>(high - low + 1));
    }
    uint64_t bits() { return engine_(); }
    std::string sign() { return pick(0, 3) == 0 ? "-" : ""; }

    std::string digits(int count) {  // the first and the last are not 0
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += static_cast<char>('0' + pick(i == 0 || i == count - 1 ? 1 : 0, 9));
        }
        return text;
    }

  private:
    std::mt19937_64 engine_;
};

int digit_count_(operands_e kind, source_ &source) {
    return kind == operands_e::SHORT ? source.pick(2, 8) : source.pick(30, 38);
}

template <typename T, typename F>
std::vector<T> drawn_(int count, uint64_t seed, F &&draw) {
    source_ source(seed);
    std::vector<T> values;
    values.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) values.push_back(draw(source));
    return values;
}

}  // namespace

const char *name_of(operands_e kind) { return kind == operands_e::SHORT ? "short" : "long"; }

std::vector<std::string> decimals(operands_e kind, int count, uint64_t seed) {
    return drawn_<std::string>(count, seed, [kind](source_ &source) {
        std::string text = source.digits(digit_count_(kind, source));
        const size_t before =
            kind == operands_e::SHORT ? text.size() - 2 : static_cast<size_t>(source.pick(5, 20));
        return source.sign() + text.insert(before, ".");
    });
}

std::vector<std::string> magnitudes(operands_e kind, int count, uint64_t seed) {
    std::vector<std::string> texts = decimals(kind, count, seed);
    for (std::string &text : texts) text.erase(0, text.find_first_not_of('-'));
    return texts;
}

std::vector<std::string> integral_exponents(operands_e kind, int count, uint64_t seed) {
    return drawn_<std::string>(count, seed, [kind](source_ &source) {
        return std::to_string(source.pick(2, kind == operands_e::SHORT ? 20 : 6));
    });
}

std::vector<std::string> fractional_exponents(int count, uint64_t seed) {
    return drawn_<std::string>(count, seed, [](source_ &source) {
        return std::to_string(source.pick(0, 2)) + "." + source.digits(source.pick(3, 6));
    });
}

std::vector<std::string> integers(operands_e kind, int count, uint64_t seed) {
    return drawn_<std::string>(count, seed, [kind](source_ &source) {
        const std::string digits = source.digits(digit_count_(kind, source));
        return source.sign() + digits;
    });
}

std::vector<int64_t> machine_integers(operands_e kind, int count, uint64_t seed) {
    return drawn_<int64_t>(count, seed, [kind](source_ &source) {
        const int digits = kind == operands_e::SHORT ? source.pick(2, 8) : source.pick(17, 18);
        const std::string text = source.digits(digits);
        return std::strtoll((source.sign() + text).c_str(), nullptr, 10);
    });
}

std::vector<double> machine_doubles(operands_e kind, int count, uint64_t seed) {
    return drawn_<double>(count, seed, [kind](source_ &source) {
        if (kind == operands_e::LONG) {
            const double fraction = static_cast<double>(static_cast<int64_t>(source.bits())) * 0x1p-63;
            return std::ldexp(fraction, source.pick(-330, 330));
        }
        const std::string text = source.digits(source.pick(2, 8));
        return std::strtod((source.sign() + text).c_str(), nullptr) / 100;
    });
}

}  // namespace dv::bench
