// A compiled model with an allocator of its own, for tests and fuzzers.

#ifndef DV_TEST_COMPILED_MODEL_H
#define DV_TEST_COMPILED_MODEL_H

#include <cstdlib>
#include <string>

#include "datetime_fmt/fmt_token_table.h"
#include "raise.h"

namespace dv::test {

// Compiles a model, or keeps the error of it. Counts the blocks alive: a leak ends the process. The call of
// the allocator with calls_left 0 fails.
struct compiled_model : allocator_t {
    long blocks = 0, calls_left;
    dt_fmt_ctx_t ctx{};
    dv_error_t error{};
    explicit compiled_model(std::string_view model, bool is_reading = false, int type = DV_TYPE_TS_TZ,
                            long calls = -1)
        : allocator_t{
              [](auto self, auto size, auto...) { return give(self, nullptr, size); },
              [](auto self, auto count, auto size, auto...) { return give(self, nullptr, count * size); },
              [](auto self, auto old, auto size, auto...) { return give(self, old, size); },
              [](auto self, auto block, auto...) { take(self, block); },
              [](auto, auto file, auto line) { dv_err_and_jmp(file, line, "", 0, 0, DV_ERR_NO_MEMORY); }},
          calls_left(calls) {
        const int size = model.empty() ? -1 : static_cast<int>(model.size());
        const auto set = [&] { dt_fmt_ctx_set(this, &ctx, model.data(), size, type, is_reading, 3); };
        raise_of(set, &error);
    }
    ~compiled_model() {
        dt_fmt_ctx_reset(this, &ctx);
        if (blocks != 0) std::abort();
    }
    static void *give(allocator_t *self, void *old, size_t size) {
        auto &model = static_cast<compiled_model &>(*self);
        if (model.calls_left-- == 0) return nullptr;
        return old != nullptr ? std::realloc(old, size) : (++model.blocks, std::calloc(1, size));
    }
    static void take(allocator_t *self, void *block) {
        --static_cast<compiled_model &>(*self).blocks;
        std::free(block);
    }
};

// The records of a model in a line, and the predicted length for a type of six fractional digits. "YYYY4l,
// '+'1l 5" is YYYY in lower case, followed by punctuation, then a run. Of each record, in this order:
//
//     YYYY  '+'  "at"  an element, a run of punctuation, a literal
//     4                its width, or the length of its text
//     u l i            letter case: upper, lower, initial capitals
//     s S o O          suffix TH, SP, the ordinals that THSP and SPTH give; "_" for none before a precision
//     0..9             precision of FF; written with a suffix, or where it is not 0
//     f x              FM and FX in force
//     ,                punctuation follows in the model
inline std::string dump(const dt_fmt_ctx_t &ctx) {
    std::string text;
    for (int i = 0; i < ctx.token_cnt; ++i) {
        const dt_fmt_token_info_t &info = ctx.token_infos[i];
        const char quote = info.id == DT_FMT_TOKEN_DQ ? '"' : '\'';
        text += info.token == nullptr
                    ? dv::impl::fmt_tokens_[static_cast<size_t>(info.id)].token
                    : quote + std::string(info.token, static_cast<size_t>(info.token_len)) + quote;
        text += std::to_string(info.token_len) + "uli"[info.case_type];
        if (info.sfx_type + info.fprec != 0) text += "_sSoO"[info.sfx_type] + std::to_string(info.fprec);
        text += std::string(info.is_fill_mode, 'f') + std::string(info.is_exact_mode, 'x');
        text += info.next_token_is_punc != 0 ? ", " : " ";
    }
    return text + std::to_string(dt_fmt_get_predicted_str_len(&ctx, /*fprec=*/6));
}

}  // namespace dv::test

#endif  // DV_TEST_COMPILED_MODEL_H
