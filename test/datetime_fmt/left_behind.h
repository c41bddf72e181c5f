// Everything that a call leaves behind, for comparing two ways to the same result.

#ifndef DV_TEST_LEFT_BEHIND_H
#define DV_TEST_LEFT_BEHIND_H

#include <gtest/gtest.h>

#include "datetime_support.h"

namespace dv::test {

struct left_behind_t {
    int code = 0;
    long status = 0;
    std::string error, bytes;
    bool operator==(const left_behind_t &) const = default;
};

inline void PrintTo(const left_behind_t &left, std::ostream *out) {
    *out << left.code << ", status " << left.status << ' ' << left.error << ' '
         << testing::PrintToString(left.bytes);
}

// Of call(block), which gives a status, in a block of so many bytes.
template <typename Call>
left_behind_t left_behind(size_t size, Call call) {
    const guarded block(size);
    std::memset(block.text(), '~', size);
    left_behind_t left;
    dv_error_t error{};
    left.code = raise_of([&] { left.status = call(block.text()); }, &error);
    if (left.code != 0) left.error = std::string(error.function) + ": " + error.message;
    left.bytes.assign(block.text(), size);
    EXPECT_TRUE(block.intact());
    return left;
}

}  // namespace dv::test

#endif  // DV_TEST_LEFT_BEHIND_H
