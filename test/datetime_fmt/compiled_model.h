// A compiled model with an allocator of its own, for tests and fuzzers.

#ifndef DV_TEST_COMPILED_MODEL_H
#define DV_TEST_COMPILED_MODEL_H

#include <algorithm>
#include <cstdlib>
#include <cstring>
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

// Records and texts, wherever these lie.
inline bool is_same_model(const dt_fmt_ctx_t &x, const dt_fmt_ctx_t &y) {
    const auto is_same_record = [](const dt_fmt_token_info_t &one, dt_fmt_token_info_t other) {
        const bool is_same_text =
            one.token == nullptr || other.token == nullptr
                ? one.token == other.token
                : std::memcmp(one.token, other.token, static_cast<size_t>(one.token_len) + 1) == 0;
        other.token = one.token;
        // The bytes between the members are 0, and count.
        // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
        return is_same_text && std::memcmp(&one, &other, sizeof one) == 0;
    };
    return std::equal(x.token_infos, x.token_infos + x.token_cnt, y.token_infos, y.token_infos + y.token_cnt,
                      is_same_record) &&
           std::memcmp(&x.has_tz_token, &y.has_tz_token, sizeof x - offsetof(dt_fmt_ctx_t, has_tz_token)) ==
               0;
}

}  // namespace dv::test

#endif  // DV_TEST_COMPILED_MODEL_H
