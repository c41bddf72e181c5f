// Texts of the ISO shape, many at a time: YYYY-MM-DD, the same with HH:MM:SS behind, and with a fraction.
//
// What stands between the numbers may be other characters, so that texts under compiled models of this shape
// are done too. Kernels do texts of years from 1 AD on with all their digits; the rest is for the functions
// for one value.

#ifndef DV_COLUMN_ISO_ROWS_H
#define DV_COLUMN_ISO_ROWS_H

#include "../datetime_fmt/iso_text.h"
#include "text_rows.h"

namespace dv::impl {

inline constexpr int ISO_TEXT_SIZE = 32;  // of a vector; the longest text has 29 characters
inline constexpr int ISO_DATE_LENGTH = 10, ISO_CLOCK_LENGTH = 19;

// What is read.
struct alignas(ISO_TEXT_SIZE) iso_reading_t {
    char characters[ISO_TEXT_SIZE];        // at their places, and '0' for each digit
    char other_characters[ISO_TEXT_SIZE];  // the same, or what may stand instead
    uint32_t lengths;                      // bit n: of a text of n characters
    bool has_fraction;                     // of the type: a TIMESTAMP, else a DATE
};

// What is written.
struct alignas(ISO_TEXT_SIZE) iso_writing_t {
    char characters[ISO_TEXT_SIZE];  // as above, but 0 for digits of the fraction
    int length;
};

iso_reading_t iso_reading(const iso_model_t &model, bool has_fraction);
iso_writing_t iso_writing(const iso_model_t &model);

// The texts of dvtypes/iso.h.
iso_reading_t iso_reading(bool has_fraction);
iso_writing_t iso_writing(bool has_fraction);

// Read and write rows [row, row + count) of `valid`; what is left is returned. Writing to a result by offsets
// stops at the first row that it cannot do.
using iso_read_t = uint64_t(const iso_reading_t &shape, const dv_column_t &text, const dv_column_t &result,
                            int64_t row, int count, uint64_t valid);
using iso_write_t = uint64_t(const iso_writing_t &shape, const dv_column_t &x, text_result_t &texts,
                             int64_t row, int count, uint64_t valid);

// The kernels of the level in use.
iso_read_t *iso_reader();
iso_write_t *iso_writer();

}  // namespace dv::impl

#endif  // DV_COLUMN_ISO_ROWS_H
