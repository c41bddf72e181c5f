// The extended rowid: four numbers in base 64, 6 + 3 + 6 + 3 digits, without a terminator.
//
//     AAAAAB AAC AAAAAD AAE      segment 1, file 2, block 3, row 4 (in one word)
//
// A field of n digits holds more than its number may be, but only its first digit can carry it past the
// bound: five digits are 30 bits, two are 12. So a field is read whole and checked once, and the outcome is
// that of digits which are met one by one from the right.

#include "dvtypes/erowid.h"

#include "../error.h"
#include "base64.h"

using namespace dv::impl;

constexpr char erowid_encoding[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

namespace dv::impl {

constinit const std::array<uint8_t, 256> base64_value = [] {
    std::array<uint8_t, 256> values{};
    values.fill(NO_BASE64_DIGIT);
    for (uint8_t value = 0; value < 64; ++value) {
        values[static_cast<uint8_t>(erowid_encoding[value])] = value;
    }
    return values;
}();

}  // namespace dv::impl

namespace {

constexpr int _no_fault = 0;

// Where a field stands, and the code of one that is above its bound, the largest Number.
template <typename Number, size_t Digits>
struct field_t {
    size_t first;
    int overflow;
};

constexpr field_t<uint32_t, 6> _sgmt{0, DV_ERR_ROWID_SGMT};
constexpr field_t<uint16_t, 3> _file{6, DV_ERR_ROWID_FILE};
constexpr field_t<uint32_t, 6> _block{9, DV_ERR_ROWID_BLOCK};
constexpr field_t<uint32_t, 6> _block_of_whole{9, DV_ERR_ROWID_SGMT};
constexpr field_t<uint16_t, 3> _row{15, DV_ERR_ROWID_ROW};

// Reads a field into *number; returns the code to raise, and then leaves *number alone.
template <typename Number, size_t Digits>
int read_(const erowid_t &erowid, const field_t<Number, Digits> &field, Number *number) {
    const base64_t read = read_base64<Digits>(erowid.text + field.first);
    if (!read.is_valid) return DV_ERR_ROWID_TEXT;
    if (read.value > Number(-1)) return field.overflow;
    *number = static_cast<Number>(read.value);
    return _no_fault;
}

// The fault of two fields whose digits are met in turn from the right: a character that is no digit, of
// either of them, comes before a number that is too large.
int first_fault_(int left, int right) {
    if (left == DV_ERR_ROWID_TEXT || right == DV_ERR_ROWID_TEXT) return DV_ERR_ROWID_TEXT;
    return left != _no_fault ? left : right;
}

}  // namespace

extern "C" void erowid_new(erowid_t *erowid, uint32_t sgmt, uint16_t file, uint32_t block, uint16_t row) {
    if (!DV_ASSERT(erowid != NULL)) return;
    write_base64<6>(erowid->text, sgmt);
    write_base64<3>(erowid->text + 6, file);
    write_base64<6>(erowid->text + 9, block);
    write_base64<3>(erowid->text + 15, row);
}

extern "C" void erowid_get_rowid(const erowid_t *erowid, rowid_t *rowid) {
    if (!DV_ASSERT(erowid != NULL) || !DV_ASSERT(rowid != NULL)) return;
    *rowid = {};
    int fault =
        first_fault_(read_(*erowid, _sgmt, &rowid->sgmt), read_(*erowid, _block_of_whole, &rowid->block));
    if (fault != _no_fault) raise(fault);
    fault = first_fault_(read_(*erowid, _file, &rowid->file), read_(*erowid, _row, &rowid->row));
    if (fault != _no_fault) raise(fault);
}

extern "C" void erowid_get_sgmt(const erowid_t *erowid, uint32_t *sgmt) {
    if (!DV_ASSERT(erowid != NULL) || !DV_ASSERT(sgmt != NULL)) return;
    if (const int fault = read_(*erowid, _sgmt, sgmt); fault != _no_fault) raise(fault);
}

extern "C" void erowid_get_file(const erowid_t *erowid, uint16_t *file) {
    if (!DV_ASSERT(erowid != NULL) || !DV_ASSERT(file != NULL)) return;
    if (const int fault = read_(*erowid, _file, file); fault != _no_fault) raise(fault);
}

extern "C" void erowid_get_block(const erowid_t *erowid, uint32_t *block) {
    if (!DV_ASSERT(erowid != NULL) || !DV_ASSERT(block != NULL)) return;
    if (const int fault = read_(*erowid, _block, block); fault != _no_fault) raise(fault);
}

extern "C" void erowid_get_row(const erowid_t *erowid, uint16_t *row) {
    if (!DV_ASSERT(erowid != NULL) || !DV_ASSERT(row != NULL)) return;
    if (const int fault = read_(*erowid, _row, row); fault != _no_fault) raise(fault);
}
