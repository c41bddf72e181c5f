// Models of fixed places, told from their elements.

#include "fixed_model.h"

#include "../digits.h"

namespace dv::impl {

namespace {

// As in usual_element.h: a blank in front of a field stands for itself where a digit follows.
bool is_between_fields_(const dt_fmt_token_info_t *element, const dt_fmt_token_info_t *end) {
    return element + 1 < end && element[1].type <= DT_FMT_TYPE_TIME;
}

bool is_plain_(const dt_fmt_token_info_t &element) {
    return element.type == DT_FMT_TYPE_PUNC ||
           (element.sfx_type == DT_FMT_SUFFIX_NONE && !element.is_fill_mode);
}

}  // namespace

bool fixed_model_t::add_field_(size_t byte, uint8_t excess) {
    if (length_ + 2 > LENGTH_MAX) return false;
    fields_[field_count_++] = {static_cast<uint8_t>(length_), static_cast<uint8_t>(byte), excess};
    length_ += 2;
    return true;
}

bool fixed_model_t::add_element_(const dt_fmt_token_info_t &element) {
    if (element.type == DT_FMT_TYPE_PUNC) {
        const std::string_view text = text_of(element);
        if (text.size() != 1 || text[0] == '\0' || length_ + 1 > LENGTH_MAX) return false;
        places_[character_count_++] = static_cast<uint8_t>(length_);
        characters_[length_++] = text[0];
        return true;
    }
    switch (element.id) {
        case DT_FMT_TOKEN_YYYY:
            return add_field_(offsetof(dv_date_t, century), DATE_YEAR_EXCESS) &&
                   add_field_(offsetof(dv_date_t, year), DATE_YEAR_EXCESS);
        case DT_FMT_TOKEN_MM:
            return add_field_(offsetof(dv_date_t, month));
        case DT_FMT_TOKEN_DD:
            return add_field_(offsetof(dv_date_t, day));
        case DT_FMT_TOKEN_HH24:
            return add_field_(offsetof(dv_date_t, hour));
        case DT_FMT_TOKEN_MI:
            return add_field_(offsetof(dv_date_t, minute));
        case DT_FMT_TOKEN_SS:
            return add_field_(offsetof(dv_date_t, second));
        default:
            return false;
    }
}

fixed_model_t fixed_model_t::for_reading(const dt_fmt_ctx_t &model, int fprec) {
    fixed_model_t fixed;
    if (fprec > FRACTION_DIGITS || model.has_tz_token != 0) return fixed;
    const dt_fmt_token_info_t *const end = model.token_infos + fmt_token_count(model);
    for (const dt_fmt_token_info_t *element = model.token_infos; element < end; ++element) {
        const bool is_taken = element->type != DT_FMT_TYPE_PUNC || is_between_fields_(element, end);
        if (!is_taken || !fixed.add_element_(*element)) return {};
    }
    return fixed;
}

fixed_model_t fixed_model_t::for_writing(const dt_fmt_ctx_t &model, int fprec) {
    fixed_model_t fixed;
    if (fprec > FRACTION_DIGITS) return fixed;
    for (int i = 0; i < fmt_token_count(model); ++i) {
        if (!is_plain_(model.token_infos[i]) || !fixed.add_element_(model.token_infos[i])) return {};
    }
    return fixed;
}

bool fixed_model_t::read(const row_bytes_t &text, dv_date_t &date) const {
    if (length_ == 0 || text.size != length_) return false;
    bool is_refused = false;
    for (int i = 0; i < character_count_; ++i) {
        is_refused |= text.begin[places_[i]] != characters_[places_[i]];
    }
    auto *const record = reinterpret_cast<uint8_t *>(&date);
    for (int i = 0; i < field_count_; ++i) {
        const field_t &field = fields_[i];
        const auto tens = static_cast<uint32_t>(text.begin[field.at] - '0'),
                   ones = static_cast<uint32_t>(text.begin[field.at + 1] - '0');
        is_refused |= tens > 9 || ones > 9;
        record[field.byte] = static_cast<uint8_t>(tens * 10 + ones + field.excess);
    }
    const calendar_day_t day = {date_year(date), date.month, date.day};
    return !is_refused && is_plain_date(day, date.hour, date.minute, date.second);
}

bool fixed_model_t::write(const dv_date_t &date, char *text) const {
    if (length_ == 0 || date.month == 0) return false;  // a month of 0 may be a value that is NULL
    memcpy(text, characters_, sizeof characters_);
    const auto *const record = reinterpret_cast<const uint8_t *>(&date);
    for (int i = 0; i < field_count_; ++i) {
        const uint32_t number = uint32_t{record[fields_[i].byte]} - fields_[i].excess;
        if (number > 99) return false;
        store_text<uint16_t>(text + fields_[i].at, digit_pair(number));
    }
    return true;
}

}  // namespace dv::impl
