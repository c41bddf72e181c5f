// A compiled model as one block of memory:
//
//     0                     dt_fmt_ctx_t, its token_infos pointing to what follows
//     40                    dt_fmt_token_info_t of each element, token pointing to its text in the block
//     40 + 40 * elements    the texts of literals and runs, in order, each with its NUL
//
// Records are copied with their padding, which is zero in a compiled model.

#include <climits>
#include <cstddef>

#include "datetime_fmt_internal.h"

using namespace dv::impl;

namespace {

constexpr int64_t _ctx_size = 40;
constexpr int64_t _info_size = 40;

static_assert(sizeof(dt_fmt_ctx_t) == _ctx_size);
static_assert(offsetof(dt_fmt_ctx_t, token_cnt) == 0 && offsetof(dt_fmt_ctx_t, token_infos) == 8);
static_assert(offsetof(dt_fmt_ctx_t, has_tz_token) == 16 && offsetof(dt_fmt_ctx_t, charset) == 20);
static_assert(offsetof(dt_fmt_ctx_t, user_date_ctx) == 24 && offsetof(dt_fmt_ctx_t, nls_date_ctx) == 32);
static_assert(sizeof(dv_nls_date_ctx_t) == 8 && offsetof(dv_nls_date_ctx_t, lang) == 0 &&
              offsetof(dv_nls_date_ctx_t, cal) == 4);

static_assert(sizeof(dt_fmt_token_info_t) == _info_size);
static_assert(offsetof(dt_fmt_token_info_t, id) == 0 && offsetof(dt_fmt_token_info_t, case_type) == 4);
static_assert(offsetof(dt_fmt_token_info_t, sfx_type) == 8 && offsetof(dt_fmt_token_info_t, type) == 12);
static_assert(offsetof(dt_fmt_token_info_t, fprec) == 13 && offsetof(dt_fmt_token_info_t, token_len) == 16);
static_assert(offsetof(dt_fmt_token_info_t, token) == 24 &&
              offsetof(dt_fmt_token_info_t, is_fill_mode) == 32);
static_assert(offsetof(dt_fmt_token_info_t, is_exact_mode) == 33 &&
              offsetof(dt_fmt_token_info_t, next_token_is_punc) == 34);

// Bytes of a record's text without the NUL. A literal may hold NULs, so that its length is what counts.
int64_t text_length_(const dt_fmt_token_info_t &info) { return std::max(info.token_len, 0); }

int64_t offset_of_texts_(const dt_fmt_ctx_t &fmt_ctx) {
    return _ctx_size + _info_size * fmt_token_count(fmt_ctx);
}

void copy_ctx_(const dt_fmt_ctx_t &fmt_ctx, char *buf) {
    dt_fmt_ctx_t copy;
    memcpy(&copy, &fmt_ctx, sizeof copy);
    copy.token_cnt = fmt_token_count(fmt_ctx);
    copy.token_infos = reinterpret_cast<dt_fmt_token_info_t *>(buf + _ctx_size);
    memcpy(buf, &copy, sizeof copy);
}

void copy_info_(const dt_fmt_token_info_t &info, char *to, char *text) {
    dt_fmt_token_info_t copy;
    memcpy(&copy, &info, sizeof copy);
    copy.token = text;
    memcpy(to, &copy, sizeof copy);
}

}  // namespace

extern "C" {

int dt_fmt_ctx_get_serialize_size(const dt_fmt_ctx_t *fmt_ctx) {
    if (!DV_ASSERT(fmt_ctx != NULL)) return 0;
    int64_t size = offset_of_texts_(*fmt_ctx);
    for (int i = 0; i < fmt_token_count(*fmt_ctx); ++i) {
        const dt_fmt_token_info_t &info = fmt_ctx->token_infos[i];
        if (info.token != nullptr) size += text_length_(info) + 1;
    }
    return static_cast<int>(std::min<int64_t>(size, INT_MAX));
}

void dt_fmt_ctx_serialize(const dt_fmt_ctx_t *fmt_ctx, char *buf, int buf_size) {
    if (!DV_ASSERT(fmt_ctx != NULL) || !DV_ASSERT(buf != NULL)) return;

    int64_t offset = _ctx_size;
    if (!DV_ASSERT(offset <= buf_size)) return;
    copy_ctx_(*fmt_ctx, buf);

    offset = offset_of_texts_(*fmt_ctx);
    if (!DV_ASSERT(offset <= buf_size)) return;
    for (int i = 0; i < fmt_token_count(*fmt_ctx); ++i) {
        const dt_fmt_token_info_t &info = fmt_ctx->token_infos[i];
        char *const text = info.token == nullptr ? nullptr : buf + offset;
        if (text != nullptr) offset += text_length_(info) + 1;
        if (!DV_ASSERT(offset <= buf_size)) return;
        copy_info_(info, buf + _ctx_size + _info_size * i, text);
        if (text == nullptr) continue;
        memcpy(text, info.token, static_cast<size_t>(text_length_(info)));
        text[text_length_(info)] = '\0';
    }
}

}  // extern "C"
