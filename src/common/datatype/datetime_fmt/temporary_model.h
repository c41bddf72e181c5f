// Format models that live for one call.

#ifndef DV_TEMPORARY_MODEL_H
#define DV_TEMPORARY_MODEL_H

#include <type_traits>

#include "datetime_fmt_internal.h"

namespace dv::impl {

// A model as text, and what it is for.
struct model_text_t {
    const char *fmt;
    int fmt_len;  // 0: up to its NUL
    dv_type_t type;
    bool is_for_reading;
};

// Compiles a model, calls use(model, arg) and releases the model. When compiling or use raises, the next such
// call of the thread releases it, or the end of the thread.
void with_model(const model_text_t &model, void (*use)(const dt_fmt_ctx_t &model, void *arg), void *arg);

// The same for any callable that owns nothing.
template <typename Use>
void with_model(const model_text_t &model, Use &&use) {
    static_assert(std::is_trivially_destructible_v<std::remove_reference_t<Use>>);
    const auto call = [](const dt_fmt_ctx_t &compiled, void *arg) {
        (*static_cast<std::remove_reference_t<Use> *>(arg))(compiled);
    };
    with_model(model, call, &use);
}

// What compiling and releasing it tells: the predicted length of texts, and whether it can be compiled at
// all.
int predicted_length(const model_text_t &model, int fprec);
void check_model(const model_text_t &model);

}  // namespace dv::impl

#endif  // DV_TEMPORARY_MODEL_H
