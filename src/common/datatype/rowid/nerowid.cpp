// A row number as text: 64 bits in 11 digits of base 64, without a terminator.
//
// Eleven digits are 66 bits, so the first holds four: it is at most "P", 15.

#include "dvtypes/nerowid.h"

#include "../error.h"
#include "base64.h"

using namespace dv::impl;

namespace {

constexpr size_t _digits = sizeof(nerowid_t::text);
constexpr uint8_t _first_digit_max = 15;

}  // namespace

extern "C" void nerowid_new(nerowid_t *erowid, nrowid_t rowid) {
    if (!DV_ASSERT(erowid != NULL)) return;
    write_base64<_digits>(erowid->text, rowid);
}

extern "C" void nerowid_get_rowid(const nerowid_t *erowid, nrowid_t *rowid) {
    if (!DV_ASSERT(erowid != NULL) || !DV_ASSERT(rowid != NULL)) return;
    const base64_t read = read_base64<_digits>(erowid->text);
    const bool fits = base64_value[static_cast<uint8_t>(erowid->text[0])] <= _first_digit_max;
    nrowid_t sum = 0;
    if (!read.is_valid || !fits || __builtin_add_overflow(*rowid, read.value, &sum)) raise(DV_ERR_ROWID_TEXT);
    *rowid = sum;
}
