// Names of months, days, eras and meridians in the session's language and character set.
//
// Seven kinds of names, one row each: its index table and the length of its lists. A name is stored as UCS-2
// and converted each time it is fetched; bench/nls shows what that costs beside a table of converted names.

#include "../error.h"
#include "dvtypes/datetime_fmt.h"
#include "nls_internal.h"

using namespace dv::impl;

static_assert(NLS_NAME_BYTES_MAX + 1 == DT_FMT_TMP_BUF_SIZE);

namespace {

struct name_kind_t {
    const nls_date_lang_val_t *const *lists;  // an index table
    int name_count;
    const char *bound;  // of the index, as it is reported
};
constexpr name_kind_t _std_month = {std_month_tab_, 12, "idx < 12"};
constexpr name_kind_t _abb_month = {abb_month_tab_, 12, "idx < 12"};
constexpr name_kind_t _rom_month = {rm_month_tab_, 12, "idx < 12"};
constexpr name_kind_t _std_day = {std_day_tab_, 7, "idx < 7"};
constexpr name_kind_t _abb_day = {abb_day_tab_, 7, "idx < 7"};
constexpr name_kind_t _std_adbc = {std_adbc_tab_, 4, "idx < 4"};
constexpr name_kind_t _std_ampm = {std_ampm_tab_, 4, "idx < 4"};

// The name, or NULL when there is none, after the assertions.
const nls_date_lang_val_t *find_(const name_kind_t &kind, dv_nls_date_lang_t lang, int idx, int kase) {
    const bool is_below = idx < kind.name_count;
    const nls_date_lang_val_t *const *const cases = nls_cases(kind.lists, lang);
    DV_ASSERT(idx >= 0);
    if (!is_below) assert_failed(kind.bound);
    if (cases == nullptr) assert_failed("dv_nls_date_lang_is_valid (lang)");
    if (idx < 0 || !is_below || cases == nullptr || !is_letter_case(kase)) return nullptr;
    return cases[kase] + idx;
}

char *fetch_(dt_fmt_parse_ctx_t *parse_ctx, const name_kind_t &kind, int idx, int kase) {
    if (!DV_ASSERT(parse_ctx != NULL) || !DV_ASSERT(parse_ctx->fmt_ctx != NULL)) return nullptr;
    const dt_fmt_ctx_t &fmt_ctx = *parse_ctx->fmt_ctx;
    const nls_date_lang_val_t *const name = find_(kind, fmt_ctx.nls_date_ctx.lang, idx, kase);
    char *const text = parse_ctx->tmp_buf;
    const int size = name != nullptr ? nls_name(text, NLS_NAME_BYTES_MAX, *name, fmt_ctx.charset) : 0;
    text[size] = '\0';
    return text;
}

}  // namespace

extern "C" {

char *nls_date_lang_get_std_month(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase) {
    return fetch_(parse_ctx, _std_month, idx, kase);
}

char *nls_date_lang_get_abb_month(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase) {
    return fetch_(parse_ctx, _abb_month, idx, kase);
}

char *nls_date_lang_get_rom_month(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase) {
    return fetch_(parse_ctx, _rom_month, idx, kase);
}

char *nls_date_lang_get_std_day(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase) {
    return fetch_(parse_ctx, _std_day, idx, kase);
}

char *nls_date_lang_get_abb_day(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase) {
    return fetch_(parse_ctx, _abb_day, idx, kase);
}

char *nls_date_lang_get_std_adbc(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase) {
    return fetch_(parse_ctx, _std_adbc, idx, kase);
}

char *nls_date_lang_get_std_ampm(dt_fmt_parse_ctx_t *parse_ctx, int idx, int kase) {
    return fetch_(parse_ctx, _std_ampm, idx, kase);
}

}  // extern "C"
