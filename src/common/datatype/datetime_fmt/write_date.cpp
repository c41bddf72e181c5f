// Writing the elements of a date.
//
// A word is a name in the context's language or a spelled year; a number is a count, of which some elements
// write the last digits alone. The compiler checks that no element is without one of them.

#include "../nls/nls_internal.h"
#include "calendar_week.h"
#include "fmt_write.h"
#include "spell_number.h"

using namespace dv::impl;

namespace {

// ---------------------------------------------------------------------------------------------------------
// Words
// ---------------------------------------------------------------------------------------------------------

void spell_cardinal_(char *&end, int value) {
    char words[SPELLED_TEXT_SIZE];
    end = std::copy_n(words, spell_number(words, value, /*is_ordinal=*/false), end);
}

// As one number where the year of the century is below 11, else as two: NINETEEN NINETY-NINE.
conv_status_t put_spelled_year_(dt_fmt_parse_ctx_t &ctx, int year, bool is_signed) {
    char words[2 * SPELLED_TEXT_SIZE];
    char *end = words;
    if (is_signed) *end++ = year < 1 ? '-' : ' ';
    const int magnitude = year < 0 ? -year : year;
    const int century = magnitude / 100, rest = magnitude % 100;
    if (rest < 11) {
        spell_cardinal_(end, magnitude);
    } else {
        if (century > 0) {
            spell_cardinal_(end, century);
            *end++ = ' ';
        }
        spell_cardinal_(end, rest);
    }
    return put_words(ctx, {words, static_cast<size_t>(end - words)});
}

int month_index_(const calendar_day_t &d) { return d.month - 1; }
int weekday_index_(const calendar_day_t &d) { return weekday(day_number(d)); }
int era_index_(const calendar_day_t &d) { return d.year < 0 ? 2 : 0; }
int dotted_era_index_(const calendar_day_t &d) { return era_index_(d) + 1; }

// An element whose word is a name: the list that it comes from, its index there, and the width of its column
// in the context's language.
struct name_element_t {
    char *(*get)(dt_fmt_parse_ctx_t *ctx, int idx, int kase);
    const nls_date_lang_val_t *const *lists;  // the same, by language and case
    int count;
    int (*index)(const calendar_day_t &d);
    int nls_pad_widths_t::*width;  // or nullptr
};

constexpr int _roman_month_width = 4;

constexpr auto _name_elements = [] {
    constexpr int eras = 4, months = MONTHS_PER_YEAR, days = DAYS_PER_WEEK;
    std::array<name_element_t, FMT_TOKEN_IDS_END> elements{};
    elements[DT_FMT_TOKEN_AD] = {nls_date_lang_get_std_adbc, std_adbc_tab_, eras, era_index_, nullptr};
    elements[DT_FMT_TOKEN_AD_P] = {nls_date_lang_get_std_adbc, std_adbc_tab_, eras, dotted_era_index_,
                                   nullptr};
    elements[DT_FMT_TOKEN_BC] = elements[DT_FMT_TOKEN_AD];
    elements[DT_FMT_TOKEN_BC_P] = elements[DT_FMT_TOKEN_AD_P];
    elements[DT_FMT_TOKEN_MON] = {nls_date_lang_get_abb_month, abb_month_tab_, months, month_index_,
                                  &nls_pad_widths_t::abb_month};
    elements[DT_FMT_TOKEN_MONTH] = {nls_date_lang_get_std_month, std_month_tab_, months, month_index_,
                                    &nls_pad_widths_t::std_month};
    elements[DT_FMT_TOKEN_RM] = {nls_date_lang_get_rom_month, rm_month_tab_, months, month_index_, nullptr};
    elements[DT_FMT_TOKEN_DAY] = {nls_date_lang_get_std_day, std_day_tab_, days, weekday_index_,
                                  &nls_pad_widths_t::std_day};
    elements[DT_FMT_TOKEN_DY] = {nls_date_lang_get_abb_day, abb_day_tab_, days, weekday_index_,
                                 &nls_pad_widths_t::abb_day};
    return elements;
}();

int width_of_(const name_element_t &element, int32_t id, int32_t lang) {
    if (id == DT_FMT_TOKEN_RM) return _roman_month_width;
    if (element.width == nullptr || !dv_nls_date_lang_is_valid(lang)) return 0;
    return NLS_PAD_WIDTHS[lang].*element.width;
}

// nullptr: there is no such name.
const nls_date_lang_val_t *name_of_(const dt_fmt_parse_ctx_t &ctx, const name_element_t &element, int idx) {
    const int32_t kase = ctx.cur_token_info->case_type;
    const nls_date_lang_val_t *const *const cases = nls_cases(element.lists, ctx.fmt_ctx->nls_date_ctx.lang);
    if (cases == nullptr || !is_letter_case(kase) || idx < 0 || idx >= element.count) return nullptr;
    return &cases[kase][idx];
}

// Writes a name where it belongs, without the way through the working context. False: nothing is written,
// since there is not room for the longest text that the name can be, or no such character set.
bool put_name_in_place_(dt_fmt_parse_ctx_t &ctx, const nls_date_lang_val_t &name, int width) {
    constexpr int bytes_max = 4;  // of a character
    const int longest = std::max(name.len / 2 * bytes_max, width);
    const dvstr_charset_t charset = ctx.fmt_ctx->charset;
    if (room_of(ctx) < longest || !is_charset(charset)) return false;
    char *const to = ctx.str + ctx.str_idx;
    const int size = nls_name(to, std::min(longest, NLS_NAME_BYTES_MAX), name, charset);
    const int blanks = ctx.cur_token_info->is_fill_mode ? 0 : std::max(width - size, 0);
    for (int i = 0; i < blanks; ++i) to[size + i] = ' ';
    ctx.str_idx += size + blanks;
    return true;
}

conv_status_t dv_date_write_str_val_(dt_fmt_parse_ctx_t &ctx, const calendar_day_t &d) {
    const int32_t id = ctx.cur_token_info->id;
    if (id == DT_FMT_TOKEN_YEAR || id == DT_FMT_TOKEN_SYEAR) {
        return put_spelled_year_(ctx, d.year, id == DT_FMT_TOKEN_SYEAR);
    }
    const name_element_t &element = _name_elements[static_cast<size_t>(id)];
    if (element.get == nullptr) raise(DV_ERR_MODEL_FOR_DATE);
    const int idx = element.index(d), width = width_of_(element, id, ctx.fmt_ctx->nls_date_ctx.lang);
    const nls_date_lang_val_t *name = name_of_(ctx, element, idx);
    if (name != nullptr && put_name_in_place_(ctx, *name, width)) return CONV_STATUS_WHOLE;
    const char *write_str = element.get(&ctx, idx, ctx.cur_token_info->case_type);
    DV_ASSERT(write_str != NULL);
    return put_name(ctx, write_str, width);
}

// ---------------------------------------------------------------------------------------------------------
// Numbers
// ---------------------------------------------------------------------------------------------------------

constexpr int weeks_(int days) { return (days + DAYS_PER_WEEK - 1) / DAYS_PER_WEEK; }

int year_(const calendar_day_t &d) { return d.year < 0 ? -d.year : d.year; }
int signed_year_(const calendar_day_t &d) { return d.year; }
int iso_year_(const calendar_day_t &d) { return iso_week_of(d).year; }
int iso_week_(const calendar_day_t &d) { return iso_week_of(d).week; }
int century_(const calendar_day_t &d) { return year_(d) / 100 + (year_(d) % 100 != 0 ? 1 : 0); }
int quarter_(const calendar_day_t &d) { return (d.month + 2) / 3; }
int month_(const calendar_day_t &d) { return d.month; }
int day_(const calendar_day_t &d) { return d.day; }
int weekday_from_sunday_(const calendar_day_t &d) { return (weekday_index_(d) + 1) % DAYS_PER_WEEK + 1; }
int day_of_year_(const calendar_day_t &d) { return day_of_year(d); }
int week_of_year_(const calendar_day_t &d) { return weeks_(day_of_year(d)); }
int week_of_month_(const calendar_day_t &d) { return weeks_(d.day); }

using count_t = int(const calendar_day_t &d);

// The last digits of a number, with its sign.
template <count_t *Count, int Modulus>
int last_digits_(const calendar_day_t &d) {
    return Count(d) % Modulus;
}

// What a numeric element counts. Whether it counts anything is a truth value of its own: under sanitizers no
// compiler takes the comparison of a template's address for a constant.
struct number_element_t {
    count_t *count = nullptr;
    bool is_given = false;
    constexpr number_element_t() = default;
    constexpr number_element_t(count_t *counter) : count(counter), is_given(true) {}
};

constexpr auto _numbers = [] {
    std::array<number_element_t, FMT_TOKEN_IDS_END> numbers{};
    numbers[DT_FMT_TOKEN_CC] = numbers[DT_FMT_TOKEN_SCC] = century_;
    numbers[DT_FMT_TOKEN_IYYY] = last_digits_<iso_year_, 10'000>;
    numbers[DT_FMT_TOKEN_IYY] = last_digits_<iso_year_, 1000>;
    numbers[DT_FMT_TOKEN_IY] = last_digits_<iso_year_, 100>;
    numbers[DT_FMT_TOKEN_I] = last_digits_<iso_year_, 10>;
    numbers[DT_FMT_TOKEN_SYYYY] = last_digits_<signed_year_, 10'000>;
    numbers[DT_FMT_TOKEN_YYYY] = numbers[DT_FMT_TOKEN_RRRR] = last_digits_<year_, 10'000>;
    numbers[DT_FMT_TOKEN_YYY] = last_digits_<year_, 1000>;
    numbers[DT_FMT_TOKEN_YY] = numbers[DT_FMT_TOKEN_RR] = last_digits_<year_, 100>;
    numbers[DT_FMT_TOKEN_Y] = last_digits_<year_, 10>;
    numbers[DT_FMT_TOKEN_Q] = quarter_;
    numbers[DT_FMT_TOKEN_MM] = month_;
    numbers[DT_FMT_TOKEN_WW] = week_of_year_;
    numbers[DT_FMT_TOKEN_W] = week_of_month_;
    numbers[DT_FMT_TOKEN_IW] = iso_week_;
    numbers[DT_FMT_TOKEN_DDD] = day_of_year_;
    numbers[DT_FMT_TOKEN_DD] = day_;
    numbers[DT_FMT_TOKEN_D] = weekday_from_sunday_;
    return numbers;
}();

int dv_date_write_num_val_(size_t id, const calendar_day_t &d) {
    if (id == DT_FMT_TOKEN_J) raise(DV_ERR_J_NOT_WRITABLE);
    const number_element_t &number = _numbers[id];
    if (!number.is_given) raise(DV_ERR_MODEL_FOR_DATE);
    return number.count(d);
}

// Every element of a date has its word or number.
static_assert(all_elements([](const dt_fmt_token_t &element) { return element.type == DT_FMT_TYPE_DATE; },
                           [](size_t id) {
                               if (!fmt_tokens_[id].is_str_fmt)
                                   return _numbers[id].is_given || id == DT_FMT_TOKEN_J;
                               return _name_elements[id].count != 0 || id == DT_FMT_TOKEN_YEAR ||
                                      id == DT_FMT_TOKEN_SYEAR;
                           }));

}  // namespace

extern "C" conv_status_t dt_fmt_write_date(dt_fmt_parse_ctx_t *parse_ctx, const dv_date_t *date) {
    if (!has_element(parse_ctx) || !is_given(date)) return CONV_STATUS_WHOLE;
    if (room_of(*parse_ctx) < 1) return CONV_STATUS_CUT;
    const dt_fmt_token_t *element = current_keyword(*parse_ctx);
    if (element == NULL || element->type != DT_FMT_TYPE_DATE) raise(DV_ERR_MODEL_FOR_DATE);
    const calendar_day_t d = date_calendar_day(*date);
    if (element->is_str_fmt) return dv_date_write_str_val_(*parse_ctx, d);
    const auto id = static_cast<size_t>(parse_ctx->cur_token_info->id);
    return put_number(*parse_ctx, dv_date_write_num_val_(id, d), MIN_DIGITS[id]);
}
