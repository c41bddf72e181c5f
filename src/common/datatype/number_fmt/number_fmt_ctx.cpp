// Models made ready once for many values, in memory of the caller's: what the operations on columns make of a
// model for their rows, with what the model was made for in front.

#include <new>
#include <type_traits>

#include "../error.h"
#include "plain_model.h"
#include "plain_model_writer.h"

using namespace dv::impl;

namespace {

enum purpose_e : uint32_t { UNMADE, WRITING, READING };

struct writing_model_t {
    purpose_e purpose;
    number_model_t model;
    plain_template plain;
};

struct reading_model_t {
    purpose_e purpose;
    number_model_t model;
    plain_model_t plain;
};

template <typename Made>
constexpr bool _is_context =
    sizeof(Made) <= sizeof(number_fmt_ctx_t) && alignof(Made) <= alignof(number_fmt_ctx_t) &&
    std::is_trivially_copyable_v<Made> &&std::is_standard_layout_v<Made> &&offsetof(Made, purpose) == 0;
static_assert(_is_context<writing_model_t> && _is_context<reading_model_t>);

template <typename Made>
const Made &made_in_(const number_fmt_ctx_t &ctx) {
    return *reinterpret_cast<const Made *>(ctx.made);
}

}  // namespace

extern "C" void number_fmt_ctx_set(number_fmt_ctx_t *ctx, int fmt_len, const char *fmt, uchar for_parser) {
    if (!DV_ASSERT(ctx != NULL)) return;
    const std::string_view text = model_of(fmt, fmt_len);
    number_model_t model = {};
    if (for_parser != 0) {
        make_reading_model(text, model);
        *ctx = {};
        new (ctx->made) reading_model_t{READING, model, plain_model_of(text)};
    } else {
        make_number_model(text, model);
        *ctx = {};
        new (ctx->made) writing_model_t{WRITING, model, plain_template(model)};
    }
}

extern "C" int number_to_str_ctx(const number_t *x, int buf_size, char *str, const number_fmt_ctx_t *ctx) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x)) || !DV_ASSERT(number_is_nonnull_ptr(str)) ||
        !DV_ASSERT(ctx != NULL))
        return 0;
    const auto &made = made_in_<writing_model_t>(*ctx);
    if (!DV_ASSERT(made.purpose == WRITING)) return 0;
    if (buf_size > plain_template::TEXT_SIZE_MAX) {
        const size_t length = made.plain.write(*x, str);
        if (length != 0) {
            str[length] = '\0';
            return static_cast<int>(length);
        }
    }
    number_to_text_under(*x, buf_size, str, made.model);
    return static_cast<int>(strlen(str));
}

extern "C" void number_from_str_ctx(number_t *x, int str_len, const char *str, const number_fmt_ctx_t *ctx) {
    if (!DV_ASSERT(number_is_nonnull_ptr(x)) || !DV_ASSERT(number_is_nonnull_ptr(str)) ||
        !DV_ASSERT(ctx != NULL))
        return;
    const auto &made = made_in_<reading_model_t>(*ctx);
    if (!DV_ASSERT(made.purpose == READING)) return;
    const std::string_view text(str, static_cast<size_t>(str_len < 0 ? 0 : str_len));
    if (!read_under_plain_model(*x, text, made.plain)) number_from_text_under(*x, text, made.model);
}
