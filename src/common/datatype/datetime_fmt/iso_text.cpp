// Texts under models of the ISO shape: telling it, writing, reading.
//
// A date is one word of text, "0000-00-", and two digits; a time of day one word, "00:00:00". Writing puts
// the pairs of digits where they belong. Reading takes the word apart by an exclusive or with what the model
// asks for, which leaves the values of digits, and 0 for the characters between them.

#include "iso_text.h"

#include "../digits.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// The shape
// ---------------------------------------------------------------------------------------------------------

// Which parts a model has; a fraction only behind a time of day. A part has three numbers and two characters
// between them.
template <bool HasDate, bool HasClock, bool HasFraction>
struct iso_shape_t {
    static constexpr bool has_date = HasDate, has_clock = HasClock, has_fraction = HasFraction;
    static constexpr bool has_both = HasDate && HasClock;
    // indices of elements, then of characters
    static constexpr int clock_at = HasDate ? 6 : 0, fraction_at = clock_at + 5;
    static constexpr int date_width = HasDate ? 10 : 0;
    static constexpr int clock_begin = date_width + (has_both ? 1 : 0);
    static constexpr int whole_width = clock_begin + (HasClock ? 8 : 0);  // without the fraction
};

// Both write a year AD alike, and read one without a sign alike; other years are for the walk.
bool is_year_(const dt_fmt_token_info_t &element) {
    return element.id == DT_FMT_TOKEN_YYYY || element.id == DT_FMT_TOKEN_SYYYY;
}

// Calls run(iso_shape_t) for the shape that a model has if it has one at all, told by its length.
template <typename Run>
bool with_shape_(const dt_fmt_ctx_t &model, Run run) {
    if (model.token_infos == nullptr || model.has_tz_token) return false;
    switch (model.token_cnt) {
        case 5:
            if (!is_year_(*model.token_infos)) return run(iso_shape_t<false, true, false>());
            return run(iso_shape_t<true, false, false>());
        case 7:
            return run(iso_shape_t<false, true, true>());
        case 11:
            return run(iso_shape_t<true, true, false>());
        case 13:
            return run(iso_shape_t<true, true, true>());
        default:
            return false;
    }
}

using record_t = dt_fmt_token_info_t;

// 0 for the record of a plain number. What only the other direction looks at does not matter.
struct writing_t {
    static uint32_t is_other(const record_t &element, dt_fmt_token_id_e id) {
        return static_cast<uint32_t>(element.id ^ id) | static_cast<uint32_t>(element.sfx_type) |
               element.is_fill_mode;
    }
};
struct reading_t {
    static uint32_t is_other(const record_t &element, dt_fmt_token_id_e id) {
        return static_cast<uint32_t>(element.id ^ id) | element.is_exact_mode;
    }
};

// Only literals and punctuation have a text.
bool is_character_(const record_t &element) { return element.token_len == 1 && element.token != nullptr; }

template <typename Direction>
bool is_part_(const record_t *part, dt_fmt_token_id_e first, dt_fmt_token_id_e second,
              dt_fmt_token_id_e third) {
    const uint32_t is_other = Direction::is_other(part[0], first) | Direction::is_other(part[2], second) |
                              Direction::is_other(part[4], third);
    return is_other == 0 && is_character_(part[1]) && is_character_(part[3]);
}

template <typename Direction, typename Shape>
bool is_of_shape_(const record_t *elements, Shape shape) {
    if constexpr (shape.has_date) {
        const auto year = elements->id == DT_FMT_TOKEN_SYYYY ? DT_FMT_TOKEN_SYYYY : DT_FMT_TOKEN_YYYY;
        if (!is_part_<Direction>(elements, year, DT_FMT_TOKEN_MM, DT_FMT_TOKEN_DD)) return false;
    }
    if constexpr (shape.has_clock) {
        const record_t *const clock = elements + shape.clock_at;
        if (!is_part_<Direction>(clock, DT_FMT_TOKEN_HH24, DT_FMT_TOKEN_MI, DT_FMT_TOKEN_SS)) return false;
    }
    if constexpr (shape.has_both) {
        if (!is_character_(elements[shape.clock_at - 1])) return false;
    }
    if constexpr (shape.has_fraction) {
        const record_t *const fraction = elements + shape.fraction_at;
        return is_character_(fraction[0]) && Direction::is_other(fraction[1], DT_FMT_TOKEN_FF) == 0;
    }
    return true;
}

template <typename Parts, typename Shape>
bool has_parts_(const Parts &value, Shape shape) {
    return (!shape.has_date || value.date != nullptr) && (!shape.has_clock || value.time != nullptr) &&
           (!shape.has_fraction || value.has_fraction);
}

// The characters of a part in a text word, with NULs for the digits.
uint64_t characters_(const record_t *part, int first_at, int second_at) {
    const auto at = [](const record_t &element, int place) {
        return uint64_t{static_cast<uint8_t>(*element.token)} << 8 * place;
    };
    return at(part[1], first_at) | at(part[3], second_at);
}
uint64_t date_characters_(const record_t *part) { return characters_(part, 4, 7); }
uint64_t clock_characters_(const record_t *part) { return characters_(part, 2, 5); }

// Is every byte of a word at most that of `limits`, which are below 0x80? A byte that carries into the next
// one has its own top bit set.
constexpr bool is_within_(uint64_t word, uint64_t limits) {
    constexpr uint64_t top_bits = 0x80'80'80'80'80'80'80'80;
    return ((word | (word + (~top_bits - limits))) & top_bits) == 0;
}

// ---------------------------------------------------------------------------------------------------------
// Writing
// ---------------------------------------------------------------------------------------------------------

// Is every field up to the second a pair of digits, or for a year two? Not so BC.
bool is_writable_(const dv_date_t &date) {
    constexpr uint64_t excess = DATE_YEAR_EXCESS | DATE_YEAR_EXCESS << 8;
    const uint64_t fields = load_text<uint64_t>(reinterpret_cast<const char *>(&date)) - excess;
    return is_within_(fields & ~uint64_t{0} >> 8, 0x63'63'63'63'63'63'63'63);
}
bool is_writable_(const dv_time_t &time) { return time.hour < 100 && time.minute < 100 && time.second < 100; }

uint64_t pair_(size_t field) { return load_text<uint16_t>(&DIGIT_PAIRS[2 * field]); }
uint64_t year_pair_(size_t field) { return pair_(field - DATE_YEAR_EXCESS); }

void put_date_(char *to, const dv_date_t &date, uint64_t characters) {
    const uint64_t year = year_pair_(date.century) | year_pair_(date.year) << 16;
    store_text<uint64_t>(to, characters | year | pair_(date.month) << 40);
    store_text<uint16_t>(to + 8, pair_(date.day));
}

void put_clock_(char *to, const dv_time_t &time, uint64_t characters) {
    const uint64_t hour_and_minute = pair_(time.hour) | pair_(time.minute) << 24;
    store_text<uint64_t>(to, characters | hour_and_minute | pair_(time.second) << 48);
}

// The first digits of the fraction.
void put_fraction_(char *to, uint32_t nanoseconds, int digit_count) {
    uint64_t digits = eight_digits(nanoseconds / 10);
    if (digit_count >= 8) {
        store_text<uint64_t>(to, digits);
        if (digit_count == FRACTION_DIGITS) to[8] = static_cast<char>('0' + nanoseconds % 10);
        return;
    }
    if (digit_count & 4) {
        store_text<uint32_t>(to, digits);
        digits >>= 32;
        to += 4;
    }
    if (digit_count & 2) {
        store_text<uint16_t>(to, digits);
        digits >>= 16;
        to += 2;
    }
    if (digit_count & 1) *to = static_cast<char>(digits);
}

template <typename Shape>
bool write_(const record_t *elements, const writable_parts_t &value, char *str, int str_len, Shape shape) {
    if (!has_parts_(value, shape) || !is_of_shape_<writing_t>(elements, shape)) return false;
    if (shape.has_date ? !is_writable_(*value.date) : !is_writable_(*value.time)) return false;
    int length = shape.whole_width;
    if (length >= str_len) return false;
    if constexpr (shape.has_fraction) {
        const record_t *const fraction = elements + shape.fraction_at;
        const uint32_t nanoseconds = time_nanoseconds(*value.time);
        const int digit_count = fraction_precision(fraction[1], value.fprec);
        if (digit_count < 1 || digit_count > FRACTION_DIGITS || nanoseconds >= NSEC_PER_SEC) return false;
        if (length + 1 + digit_count >= str_len) return false;
        str[length] = *fraction->token;
        put_fraction_(str + length + 1, nanoseconds, digit_count);
        length += 1 + digit_count;
    }
    if constexpr (shape.has_date) put_date_(str, *value.date, date_characters_(elements));
    if constexpr (shape.has_both) str[shape.date_width] = *elements[shape.clock_at - 1].token;
    if constexpr (shape.has_clock) {
        put_clock_(str + shape.clock_begin, *value.time, clock_characters_(elements + shape.clock_at));
    }
    str[length] = '\0';
    return true;
}

// ---------------------------------------------------------------------------------------------------------
// Reading
// ---------------------------------------------------------------------------------------------------------

// Values of digits side by side to values of pairs, each at the place of its first digit.
constexpr uint64_t pairs_of_(uint64_t digits) { return digits * 10 + (digits >> 8); }
constexpr uint32_t pair_at_(uint64_t pairs, int place) { return pairs >> 8 * place & 0xFF; }

struct iso_fields_t {
    uint32_t century, year, month, day, hour, minute, second, nanoseconds;
};

// A day that the calendar of 1582 may lack is for the walk.
bool take_date_(iso_fields_t &f, const char *text, uint64_t characters) {
    const uint64_t digits = load_text<uint64_t>(text) ^ (characters | 0x00'30'30'00'30'30'30'30);
    const uint64_t day_digits = load_text<uint16_t>(text + 8) ^ 0x30'30;
    if (!is_within_(digits, 0x00'09'09'00'09'09'09'09) || !is_within_(day_digits, 0x09'09)) return false;
    const uint64_t pairs = pairs_of_(digits);
    f.century = pair_at_(pairs, 0);
    f.year = pair_at_(pairs, 2);
    f.month = pair_at_(pairs, 5);
    f.day = pair_at_(pairs_of_(day_digits), 0);
    const auto year = static_cast<int>(f.century * YEARS_PER_CENTURY + f.year);
    if (year == 0 || year == GREGORIAN_YEAR || f.day == 0) return false;
    return static_cast<int>(f.day) <= month_length(year, static_cast<int>(f.month));
}

bool take_clock_(iso_fields_t &f, const char *text, uint64_t characters) {
    const uint64_t digits = load_text<uint64_t>(text) ^ (characters | 0x30'30'00'30'30'00'30'30);
    if (!is_within_(digits, 0x09'09'00'09'09'00'09'09)) return false;
    const uint64_t pairs = pairs_of_(digits);
    f.hour = pair_at_(pairs, 0);
    f.minute = pair_at_(pairs, 3);
    f.second = pair_at_(pairs, 6);
    return f.hour < HOURS_PER_DAY && f.minute < MINUTES_PER_HOUR && f.second < SEC_PER_MINUTE;
}

// One to nine digits, behind at least eight characters: the last eight are loaded, what is before the
// fraction shifted out.
bool take_fraction_(iso_fields_t &f, const char *text, int digit_count) {
    const auto first = static_cast<uint32_t>(*text - '0');
    if (first > 9) return false;
    const int strange_bits = digit_count < 8 ? 64 - 8 * digit_count : 0;
    const uint64_t last_eight = load_text<uint64_t>(text + digit_count - 8) ^ 0x30'30'30'30'30'30'30'30;
    const uint64_t digits = last_eight >> strange_bits << strange_bits;
    if (!is_within_(digits, 0x09'09'09'09'09'09'09'09)) return false;
    f.nanoseconds = number_of_digits(digits) * fraction_unit(digit_count);
    if (digit_count == FRACTION_DIGITS) f.nanoseconds += first * fraction_unit(1);
    return true;
}

// The time of day may be left out behind a date, and so may the fraction.
template <typename Shape>
bool take_(iso_fields_t &f, const record_t *elements, const char *text, int length, Shape shape) {
    if constexpr (shape.has_date) {
        if (length < shape.date_width || !take_date_(f, text, date_characters_(elements))) return false;
        if (length == shape.date_width) return true;
    }
    if (!shape.has_clock || length < shape.whole_width) return false;
    if (shape.has_both && text[shape.date_width] != *elements[shape.clock_at - 1].token) return false;
    if constexpr (shape.has_clock) {
        const uint64_t characters = clock_characters_(elements + shape.clock_at);
        if (!take_clock_(f, text + shape.clock_begin, characters)) return false;
    }
    if (length == shape.whole_width) return true;
    if constexpr (shape.has_fraction) {
        const int digit_count = length - shape.whole_width - 1;
        if (digit_count < 1 || digit_count > FRACTION_DIGITS) return false;
        if (text[shape.whole_width] != *elements[shape.fraction_at].token) return false;
        return take_fraction_(f, text + shape.whole_width + 1, digit_count);
    }
    return false;
}

// What the text does not give is 0, but for the date, which is then the present's and for the walk.
template <typename Shape>
bool read_(const record_t *elements, const readable_parts_t &value, const char *str, int str_len,
           Shape shape) {
    if (!has_parts_(value, shape) || shape.has_date != (value.date != nullptr)) return false;
    iso_fields_t f{};
    if (!is_of_shape_<reading_t>(elements, shape) || !take_(f, elements, str, str_len, shape)) return false;
    if constexpr (shape.has_date) {
        date_set_century_day(*value.date, static_cast<int>(f.century), static_cast<int>(f.year),
                             static_cast<int>(f.month), static_cast<int>(f.day));
    }
    value.time->hour = static_cast<uint8_t>(f.hour);
    value.time->minute = static_cast<uint8_t>(f.minute);
    value.time->second = static_cast<uint8_t>(f.second);
    value.time->dummy = 0;
    if (value.has_fraction) time_set_nanoseconds(*value.time, f.nanoseconds);
    return true;
}

// ---------------------------------------------------------------------------------------------------------
// The shape as data
// ---------------------------------------------------------------------------------------------------------

template <typename Direction>
bool find_(const dt_fmt_ctx_t &model, bool type_has_fraction, int fprec, iso_model_t &found) {
    return with_shape_(model, [&]<typename Shape>(Shape) {
        constexpr Shape shape;
        const record_t *const elements = model.token_infos;
        if (!shape.has_date || (shape.has_fraction && !type_has_fraction)) return false;
        if (!is_of_shape_<Direction>(elements, shape)) return false;
        found = {shape.has_clock, shape.has_fraction, 0, {}};
        constexpr int count = shape.has_fraction ? 6 : shape.has_clock ? 5 : 2;
        for (int i = 0; i < count; ++i) {
            found.characters[i] = *elements[2 * i + 1].token;
            if (found.characters[i] == '\0') return false;  // a text would end there
        }
        if (shape.has_fraction)
            found.fraction_digits = fraction_precision(elements[shape.fraction_at + 1], fprec);
        return true;
    });
}

}  // namespace

bool dv::impl::find_iso_reading(const dt_fmt_ctx_t &model, bool type_has_fraction, iso_model_t &found) {
    return find_<reading_t>(model, type_has_fraction, FRACTION_DIGITS, found);
}

bool dv::impl::find_iso_writing(const dt_fmt_ctx_t &model, bool type_has_fraction, int fprec,
                                iso_model_t &found) {
    if (!find_<writing_t>(model, type_has_fraction, fprec, found)) return false;
    return !found.has_fraction || (found.fraction_digits >= 1 && found.fraction_digits <= FRACTION_DIGITS);
}

bool dv::impl::write_iso_text(const dt_fmt_ctx_t &model, const writable_parts_t &value, char *str,
                              int str_len) {
    return with_shape_(model,
                       [&](auto shape) { return write_(model.token_infos, value, str, str_len, shape); });
}

bool dv::impl::read_iso_text(const dt_fmt_ctx_t &model, const readable_parts_t &value, const char *str,
                             int str_len) {
    return with_shape_(model,
                       [&](auto shape) { return read_(model.token_infos, value, str, str_len, shape); });
}
