// What the fuzzers share: the input taken apart, texts in blocks of their size, and checks that print what
// they found before they end the process.

#ifndef DV_FUZZ_INPUT_H
#define DV_FUZZ_INPUT_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace dv::fuzz {

// Takes what a property of number_properties.h found.
inline void require_none(const std::string &fault) {
    if (fault.empty()) return;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
}

inline void require(bool holds, const char *property, long long value) {
    if (!holds) require_none(std::string(property) + ": " + std::to_string(value));
}

template <size_t N>
void require_one_of(const int (&codes)[N], const char *what, int code) {
    require(std::count(codes, codes + N, code) == 1, what, code);
}

// The input, taken from the front; zeros when it has run out.
class input_t {
  public:
    input_t(const uint8_t *data, size_t size) : rest_(reinterpret_cast<const char *>(data), size) {}

    std::string_view take(size_t size) {
        const std::string_view taken = rest_.substr(0, std::min(size, rest_.size()));
        rest_.remove_prefix(taken.size());
        return taken;
    }
    template <typename Value>
    Value take() {
        Value value{};
        const std::string_view bytes = take(sizeof value);
        std::memcpy(&value, bytes.data(), bytes.size());
        return value;
    }
    uint8_t byte() { return take<uint8_t>(); }
    std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

// A text in a heap block that ends where the text ends; an empty one has a NUL, up to which a length of 0
// reaches.
inline std::vector<char> block(std::string_view text) {
    return text.empty() ? std::vector<char>(1) : std::vector<char>(text.begin(), text.end());
}

// The text up to its first NUL, and that.
inline std::vector<char> ended_block(std::string_view text) {
    std::vector<char> characters(text.begin(), std::find(text.begin(), text.end(), '\0'));
    characters.push_back('\0');
    return characters;
}

}  // namespace dv::fuzz

#endif  // DV_FUZZ_INPUT_H
