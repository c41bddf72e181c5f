// A compiled datetime model: its making, its settings, its end, and how long the texts get that it writes.
//
// The context counts a record only when it is complete, so that what a raise leaves can be released. A host's
// throw_ must not return. Should it do so all the same, the model ends where there is no room for more
// records, and a literal or run without memory for its text is an empty one.

#include <climits>

#include "datetime_fmt_internal.h"

using namespace dv::impl;

namespace {

constexpr const char *_file = base_name(__FILE__);

constexpr size_t _first_capacity = 12;  // records
constexpr size_t _capacity_step = 5;

int model_length_(const char *fmt, int fmt_len) {
    return fmt_len != 0 ? fmt_len : static_cast<int>(strnlen(fmt, INT_MAX));
}

// False: no memory, and throw_ returned.
bool allocate_records_(allocator_t *alloc, dt_fmt_ctx_t &fmt_ctx) {
    void *const block = alloc->calloc(alloc, _first_capacity, sizeof(dt_fmt_token_info_t), _file, __LINE__);
    if (block == nullptr) alloc->throw_(alloc, _file, __LINE__);
    fmt_ctx.token_infos = static_cast<dt_fmt_token_info_t *>(block);
    return block != nullptr;
}

bool grow_records_(allocator_t *alloc, dt_fmt_ctx_t &fmt_ctx, size_t capacity) {
    void *const block =
        alloc->realloc(alloc, fmt_ctx.token_infos, capacity * sizeof(dt_fmt_token_info_t), _file, __LINE__);
    if (block == nullptr) {
        alloc->throw_(alloc, _file, __LINE__);
        return false;
    }
    fmt_ctx.token_infos = static_cast<dt_fmt_token_info_t *>(block);
    return true;
}

// The error of an element that values of the type do not have, or 0.
int refusal_(dv_type_t type, const dt_fmt_token_info_t &info) {
    const bool is_zone = info.type == DT_FMT_TYPE_TZ;
    switch (type) {
        case DV_TYPE_DATE:
            return is_zone || info.id == DT_FMT_TOKEN_FF ? DV_ERR_MODEL_FOR_DATE : 0;
        case DV_TYPE_TIME:
            return is_zone || info.type == DT_FMT_TYPE_DATE ? DV_ERR_MODEL_FOR_TIME : 0;
        case DV_TYPE_TIMESTAMP:
            return is_zone ? DV_ERR_MODEL_FOR_TIME : 0;
        default:
            return 0;
    }
}

// Counts the record that was read, with the state behind it.
void count_record_(dt_fmt_ctx_t &fmt_ctx, dt_fmt_token_info_t &info, dt_fmt_unit_t update_flag) {
    info.is_fill_mode = (update_flag & DT_FMT_UNIT_FM) != 0;
    info.is_exact_mode = (update_flag & DT_FMT_UNIT_FX) != 0;
    if (info.type == DT_FMT_TYPE_TZ) fmt_ctx.has_tz_token = 1;
    ++fmt_ctx.token_cnt;
}

constexpr int64_t _spelled_width = 12;  // taken for a number in words, whatever it is

int64_t predicted_number_(const dt_fmt_token_info_t &info, int fprec) {
    int64_t width = info.token_len;
    if (info.id == DT_FMT_TOKEN_FF) width = info.fprec != 0 ? info.fprec : fprec;
    if (info.id == DT_FMT_TOKEN_SYYYY) width += 1;
    switch (info.sfx_type) {
        case DT_FMT_SUFFIX_NONE:
            return width;
        case DT_FMT_SUFFIX_TH:
            return width + 2;
        default:
            return _spelled_width;
    }
}

int64_t predicted_zone_(const dt_fmt_token_info_t &info) {
    switch (info.id) {
        case DT_FMT_TOKEN_TZH:
            return int64_t{info.token_len} + 1;
        case DT_FMT_TOKEN_TZM:
        case DT_FMT_TOKEN_TZR:
            return info.token_len;
        default:
            return 0;
    }
}

int64_t predicted_(const dt_fmt_token_info_t &info, int fprec) {
    switch (info.type) {
        case DT_FMT_TYPE_PUNC:
            return info.token_len;
        case DT_FMT_TYPE_DATE:
        case DT_FMT_TYPE_TIME:
            return predicted_number_(info, fprec);
        case DT_FMT_TYPE_TZ:
            return predicted_zone_(info);
        default:
            return 0;
    }
}

// Whatever dv_nls_parse stores.
union setting_t {
    dv_nls_date_lang_t lang;
    dv_nls_date_cal_t cal;
    dv_nls_sort_ctx_t sort;
};

}  // namespace

extern "C" {

void dt_parse_ctx_init(dt_fmt_parse_ctx_t *parse_ctx, const dt_fmt_ctx_t *fmt_ctx, char *str, int str_len,
                       const char *fmt, int fmt_len, uchar is_from_str) {
    if (!DV_ASSERT(parse_ctx != NULL)) return;
    memset(parse_ctx, 0, sizeof *parse_ctx);
    parse_ctx->fmt_ctx = fmt_ctx;
    parse_ctx->str = str;
    parse_ctx->str_len = str_len;
    parse_ctx->fmt = fmt;
    parse_ctx->fmt_len = fmt_len;
    parse_ctx->is_from_str = is_from_str;
    if (is_from_str == 0 || str == nullptr || str_len <= 0) return;
    memcpy(parse_ctx->org_str, str, std::min(static_cast<size_t>(str_len), sizeof parse_ctx->org_str));
}

void dt_fmt_ctx_set(allocator_t *alloc, dt_fmt_ctx_t *fmt_ctx, const char *fmt, int fmt_len, dv_type_t type,
                    uchar is_from_str, dvstr_charset_t charset) {
    if (!DV_ASSERT(alloc != NULL) || !DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(fmt != NULL)) return;
    memset(fmt_ctx, 0, sizeof *fmt_ctx);
    fmt_ctx->charset = charset;
    fmt_ctx->user_date_ctx = {DV_NLS_DATE_LANG_INVALID, DV_NLS_DATE_CAL_INVALID};
    fmt_ctx->nls_date_ctx = {DV_NLS_DATE_LANG_KOREAN, DV_NLS_DATE_CAL_GREGORIAN};

    dt_fmt_parse_ctx_t parse_ctx;
    dt_parse_ctx_init(&parse_ctx, fmt_ctx, nullptr, 0, fmt, model_length_(fmt, fmt_len), is_from_str);
    size_t capacity = _first_capacity;
    if (!allocate_records_(alloc, *fmt_ctx)) return;
    while (parse_ctx.fmt_idx < parse_ctx.fmt_len) {
        dt_fmt_token_info_t &info = fmt_ctx->token_infos[fmt_ctx->token_cnt];
        memset(&info, 0, sizeof info);
        parse_ctx.cur_token_info = &info;
        dt_fmt_parse_token(alloc, &parse_ctx);
        const int error = refusal_(type, info);  // 0 for literals and runs, the records that own something
        if (error != 0) raise(error);
        count_record_(*fmt_ctx, info, parse_ctx.update_flag);

        if (static_cast<size_t>(fmt_ctx->token_cnt) < capacity) continue;
        capacity += _capacity_step;
        if (!grow_records_(alloc, *fmt_ctx, capacity)) return;
    }
}

void dt_fmt_ctx_set_user_nls(allocator_t * /*alloc*/, dt_fmt_ctx_t *fmt_ctx, const char *nls, int nls_len) {
    if (!DV_ASSERT(fmt_ctx != NULL) || nls == nullptr || nls_len <= 0 || nls[0] == '\0') return;

    char text[DV_NLS_TEXT_MAX + 1] = {};
    memcpy(text, nls, static_cast<size_t>(std::min<int>(nls_len, DV_NLS_TEXT_MAX)));
    dv_nls_param_t param = DV_NLS_PARAM_MAX;
    setting_t setting{};
    dv_nls_parse(text, &param, &setting);
    switch (param) {
        case DV_NLS_PARAM_DATE_LANG:
            fmt_ctx->user_date_ctx.lang = setting.lang;
            break;
        case DV_NLS_PARAM_DATE_CAL:
            fmt_ctx->user_date_ctx.cal = setting.cal;
            break;
        default:
            raise(DV_ERR_NLS_SETTING);
    }
    fmt_ctx->nls_date_ctx = fmt_ctx->user_date_ctx;
}

void dt_fmt_ctx_reset(allocator_t *alloc, dt_fmt_ctx_t *fmt_ctx) {
    if (!DV_ASSERT(alloc != NULL) || !DV_ASSERT(fmt_ctx != NULL)) return;
    for (int i = 0; i < fmt_token_count(*fmt_ctx); ++i) {
        char *const text = fmt_ctx->token_infos[i].token;
        if (text != nullptr) alloc->free(alloc, text, _file, __LINE__);
    }
    if (fmt_ctx->token_infos != nullptr) alloc->free(alloc, fmt_ctx->token_infos, _file, __LINE__);
    fmt_ctx->token_infos = nullptr;
    fmt_ctx->token_cnt = 0;
}

int dt_fmt_get_predicted_str_len(const dt_fmt_ctx_t *fmt_ctx, int fprec) {
    if (!DV_ASSERT(fmt_ctx != NULL)) return 0;
    int64_t length = 0;  // below 2^31 records of below 2^32 each
    for (int i = 0; i < fmt_token_count(*fmt_ctx); ++i) length += predicted_(fmt_ctx->token_infos[i], fprec);
    return static_cast<int>(std::clamp<int64_t>(length, 0, INT_MAX));
}

}  // extern "C"
