// Models whose texts have everything in the same places: YYYY, MM, DD, HH24, MI and SS as digits, and single
// characters between them, in any order, such as DD.MM.YYYY HH24:MI:SS.
//
// Both functions either do all that the functions for one value would do, or return false: blanks, signs,
// fewer digits, fields out of range and dates that are not plainly valid are for those.

#ifndef DV_COLUMN_FIXED_MODEL_H
#define DV_COLUMN_FIXED_MODEL_H

#include "../datetime_fmt/fmt_walk.h"
#include "column_layout.h"

namespace dv::impl {

class fixed_model_t {
  public:
    static constexpr int LENGTH_MAX = 32;

    // For timestamps of a precision, where one above the greatest is refused row by row; dates have 0.
    static fixed_model_t for_reading(const dt_fmt_ctx_t &model, int fprec);
    static fixed_model_t for_writing(const dt_fmt_ctx_t &model, int fprec);

    int length() const { return length_; }  // of a text; 0: the model is none of these

    // Reads into a date that holds what the model does not give.
    bool read(const row_bytes_t &text, dv_date_t &date) const;

    // Writes LENGTH_MAX bytes, of which length() are the text.
    bool write(const dv_date_t &date, char *text) const;

  private:
    // Two digits of the text and the byte of a record that they stand for.
    struct field_t {
        uint8_t at, byte, excess;
    };
    static constexpr int FIELDS_MAX = LENGTH_MAX / 2;

    bool add_element_(const dt_fmt_token_info_t &element);
    bool add_field_(size_t byte, uint8_t excess = 0);

    int length_ = 0;
    int field_count_ = 0, character_count_ = 0;
    field_t fields_[FIELDS_MAX] = {};
    uint8_t places_[LENGTH_MAX] = {};   // of the characters between the fields
    char characters_[LENGTH_MAX] = {};  // of a text, the fields empty
};

}  // namespace dv::impl

#endif  // DV_COLUMN_FIXED_MODEL_H
