// What the fuzzers share: input in a heap block of exactly its size, so that a sanitizer sees one byte too
// many, and a check that prints what it found before it ends the process.

#ifndef DV_FUZZ_INPUT_H
#define DV_FUZZ_INPUT_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace dv::fuzz {

// An unfilled block, a copy of bytes, and a copy with a NUL behind it.
inline std::unique_ptr<char[]> exact_block(size_t size) { return std::unique_ptr<char[]>(new char[size]); }

inline std::unique_ptr<char[]> exact_copy(const void *data, size_t size) {
    auto block = exact_block(size);
    if (size != 0) std::memcpy(block.get(), data, size);
    return block;
}

inline std::unique_ptr<char[]> ended_text(const void *data, size_t size) {
    auto block = exact_block(size + 1);
    if (size != 0) std::memcpy(block.get(), data, size);
    block[size] = '\0';
    return block;
}

// Takes pieces off the input; zeros when it has run out.
class cursor {
  public:
    cursor(const uint8_t *data, size_t size) : data_(data), left_(size) {}

    uint8_t byte() {
        uint8_t value = 0;
        bytes(&value, 1);
        return value;
    }
    int below(int limit) {
        const int high = byte();
        return (high << 8 | byte()) % limit;
    }
    void bytes(void *to, size_t count) {
        const size_t have = std::min(count, left_);
        std::memset(to, 0, count);
        if (have != 0) std::memcpy(to, data_, have);
        data_ += have;
        left_ -= have;
    }
    bool empty() const { return left_ == 0; }

  private:
    const uint8_t *data_;
    size_t left_;
};

inline void require(bool holds, const std::string &what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

}  // namespace dv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

#endif  // DV_FUZZ_INPUT_H
