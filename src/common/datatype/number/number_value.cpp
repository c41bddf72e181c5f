// The constants of NUMBER, and copying.

#include <algorithm>
#include <iterator>

#include "../error.h"
#include "number_internal.h"
#include "number_layout.h"

using namespace dv::impl;

namespace {

// Ten rows of 22 bytes in the bytewise order of their names below. An operand is read as 23 bytes of storage,
// so the table is as much longer than its last row.
struct constant_table_t {
    uint8_t row[10][NUMBER_ROW_SIZE];
    uint8_t end[sizeof(number_t) - NUMBER_ROW_SIZE];
};

// clang-format off
constexpr constant_table_t _number_constants = {{
    {0x02, 0xFF, 0xF0},                                                                           // +infinity
    {0x14, 0xFF, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3,
                 0xE3, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3, 0xE3},                           // largest
    {0x02, 0x80, 0x10},                                                                           // +tiny
    {0x01, 0x80},                                                                                 // zero
    {0x02, 0x7F, 0xF0},                                                                           // -tiny
    {0x15, 0x00, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D,
                 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0x1D, 0xF0},                     // smallest
    {0x02, 0x00, 0x10},                                                                           // -infinity
    {0x00},                                                                                       // NULL
    {0x02, 0xC1, 0x81},                                                                           // one
    {0x15, 0xC1, 0x82, 0xC7, 0xD2, 0xD1, 0xD2, 0xD4, 0xBB, 0x84, 0xB4, 0xA3,
                 0xA4, 0x82, 0xD7, 0xAF, 0x8D, 0xB4, 0xC2, 0x98, 0xE1, 0xC6},                     // e
}, {}};
// clang-format on

// By row; NULL: a value.
constexpr const char *_marker_texts[] = {"inf",   nullptr, "tiny",  nullptr, "-tiny",
                                         nullptr, "-inf",  nullptr, nullptr, nullptr};
static_assert(std::size(_marker_texts) == std::size(_number_constants.row));

constexpr number_t _ten_to_the_9 = {2, 0xC5, {0x8A}};

}  // namespace

// Given names; a pointer to a constant is for reading only, though its type cannot say so.
extern "C" {
number_t *const _number_posinf =
    reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[0]));
number_t *const _number_max = reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[1]));
number_t *const _number_poszero =
    reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[2]));
number_t *const _number_zero = reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[3]));
number_t *const _number_negzero =
    reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[4]));
number_t *const _number_min = reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[5]));
number_t *const _number_neginf =
    reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[6]));
number_t *const _number_null = reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[7]));
number_t *const _number_one = reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[8]));
number_t *const _number_e = reinterpret_cast<number_t *>(const_cast<uint8_t *>(_number_constants.row[9]));
number_t *const n1000000000 = const_cast<number_t *>(&_ten_to_the_9);
}

void dv::impl::number_copy(number_t &x, const number_t &y) {
    const size_t bytes = std::min<size_t>(y.size + size_t{1}, sizeof(number_t));
    memmove(&x, &y, bytes);
}

const char *dv::impl::marker_text(const number_t &x) {
    constexpr size_t marker_size = 3;  // size, signexp, and a byte that is no digit
    for (size_t i = 0; i < std::size(_marker_texts); ++i) {
        if (memcmp(&x, _number_constants.row[i], marker_size) == 0) return _marker_texts[i];
    }
    return nullptr;
}

extern "C" void number_assign(number_t *x, const number_t *y) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x) && number_is_valid_ptr(y)) && !given(x, y)) return;
    number_copy(*x, *y);
}
