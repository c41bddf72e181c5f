// A value's text under a compiled model, element by element: what the from_str and to_str functions of all
// datetime types are made of.

#ifndef DV_FMT_WALK_H
#define DV_FMT_WALK_H

#include <climits>

#include "fmt_element.h"

namespace dv::impl {

inline bool is_given(const dt_fmt_ctx_t *fmt_ctx) { return DV_ASSERT(fmt_ctx != NULL); }
inline bool is_given_str(const char *str) { return DV_ASSERT(str != NULL); }
inline bool is_given_fmt(const char *fmt) { return DV_ASSERT(fmt != NULL); }

inline int text_length(const char *text) { return static_cast<int>(strnlen(text, INT_MAX)); }

// Prepare a working context as dt_parse_ctx_init does, but for the texts in it, which the readers and writers
// here fill before they look at them: clearing those took a tenth of the time. Of a text to be read the first
// DV_DATETIME_TEXT_MAX bytes are looked at.
void begin_reading(dt_fmt_parse_ctx_t &ctx, const dt_fmt_ctx_t &model, const char *str, int str_len);
void begin_writing(dt_fmt_parse_ctx_t &ctx, const dt_fmt_ctx_t &model, char *str, int str_len);

// Loads the date into which a model reads: the first of the month of as_of at midnight; NULL: of the present
// month, without a look at the clock where the model overwrites all that it tells. as_of may be the date.
void load_date_defaults(dv_date_t &date, const dt_fmt_ctx_t &model, const dv_date_t *as_of);

inline bool is_given_as_of(const dv_date_t *as_of) {
    DV_ASSERT(as_of != NULL);
    return as_of != NULL;
}

// A value in parts. An element of a part that is not there is refused.
template <typename Date, typename Time, typename Zone>
struct datetime_parts_t {
    Date *date;         // or nullptr
    Time *time;         // without has_fraction only hour, minute and second are touched
    bool has_fraction;  // FF is refused without
    bool skips_zone;    // without a zone: else its elements are refused
    int fprec;          // fractional-second precision of the type
    Zone *zone = nullptr;
};

using readable_parts_t = datetime_parts_t<dv_date_t, dv_time_t, timezone_t>;
using writable_parts_t = datetime_parts_t<const dv_date_t, const dv_time_t, const dv_ts_tz_t>;

// Runs the readers over the text of a working context. `refused` is raised for elements that the type lacks.
void read_by_model(dt_fmt_parse_ctx_t &ctx, const readable_parts_t &value, const error_at &refused);

// Reads a value that has a date, but no zone, from a whole text.
void read_local_by_model(const dt_fmt_ctx_t &model, const readable_parts_t &value, const char *str,
                         int str_len, const dv_date_t *as_of, const error_at &refused);

// Runs the writers over the buffer of a working context, and ends the text with a NUL when a byte is left for
// it. Stops at the first element that does not fit.
conv_status_t write_by_model(dt_fmt_parse_ctx_t &ctx, const writable_parts_t &value, const error_at &refused);

}  // namespace dv::impl

#endif  // DV_FMT_WALK_H
