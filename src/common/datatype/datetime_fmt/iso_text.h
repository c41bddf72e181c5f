// Texts under models of the ISO shape, the most usual ones, without a walk over the model's elements:
//
//     YYYY-MM-DD    YYYY-MM-DD HH24:MI:SS    HH24:MI:SS     the last two also with .FF or .FF1 to .FF9 behind
//
// SYYYY stands for YYYY there too. The characters between the elements are any: one of punctuation or a
// quoted literal each ("T"). The shape is told from the elements again for every text: that takes less than
// one of them took in the walk, and holds for flattened copies of a model too, whose bytes have no room for a
// note.
//
// Both functions either do all that the walk would do, or nothing; the walk is then for the caller. They
// leave to it whatever is unusual: fields out of range, short buffers, blanks, signs, fewer digits, faults.

#ifndef DV_ISO_TEXT_H
#define DV_ISO_TEXT_H

#include "fmt_walk.h"

namespace dv::impl {

// Writes a value and a NUL. str_len is above 0. False: nothing is written.
bool write_iso_text(const dt_fmt_ctx_t &model, const writable_parts_t &value, char *str, int str_len);

// Reads a text of str_len bytes into all fields of a value, which has a time of day. str_len is above 0.
// False: nothing is stored.
bool read_iso_text(const dt_fmt_ctx_t &model, const readable_parts_t &value, const char *str, int str_len);

// A model of the shape that begins with a date, as data for those who read or write many texts.
struct iso_model_t {
    bool has_clock, has_fraction;
    int fraction_digits;  // that are written
    char characters[6];   // between the numbers, in their order; NUL where there is none
};

// False: the model has no such shape, or a part that the type lacks. fprec is that of the type.
bool find_iso_reading(const dt_fmt_ctx_t &model, bool type_has_fraction, iso_model_t &found);
bool find_iso_writing(const dt_fmt_ctx_t &model, bool type_has_fraction, int fprec, iso_model_t &found);

}  // namespace dv::impl

#endif  // DV_ISO_TEXT_H
