// Sorting NUMBERs: by their first bytes as words of the server's, and where those are the same, by all bytes,
// whose order is that of the values. Of most amounts the first bytes are all there are, so nothing counts how
// many of them differ, as the server does for bytea.

#include <algorithm>
#include <bit>

#include "postgres_value.h"

extern "C" {
#include <utils/sortsupport.h>
}

using namespace dv::impl;

namespace {

// Below 0, 0 or above, as byteacmp.
int order_(Datum x, Datum y, SortSupport) {
    const varlena *const a = PG_DETOAST_DATUM_PACKED(x), *const b = PG_DETOAST_DATUM_PACKED(y);
    const size_t a_size = VARSIZE_ANY_EXHDR(a), b_size = VARSIZE_ANY_EXHDR(b);
    const int order = memcmp(VARDATA_ANY(a), VARDATA_ANY(b), std::min(a_size, b_size));
    if (order != 0) return order;
    return a_size < b_size ? -1 : a_size > b_size ? 1 : 0;
}

// Sign and exponent, and seven of the digits; zeros where a value has no more, which none of its bytes is.
Datum head_(Datum value, SortSupport) {
    number_t number;
    postgres_take_number(number, value);
    uint64_t digits;
    memcpy(&digits, number.coef, sizeof digits);
    if constexpr (std::endian::native == std::endian::little) digits = __builtin_bswap64(digits);
    return Datum{number.signexp} << 56 | digits >> 8;
}

bool never_(int, SortSupport) { return false; }

}  // namespace

DV_POSTGRES_FUNCTION(dvpg_number_sortsupport) {
    auto *support = reinterpret_cast<SortSupport>(PG_GETARG_POINTER(0));
    support->comparator = order_;
    if (support->abbreviate) {
        support->comparator = ssup_datum_unsigned_cmp;
        support->abbrev_converter = head_;
        support->abbrev_abort = never_;
        support->abbrev_full_comparator = order_;
    }
    PG_RETURN_VOID();
}
