// Format models that live for one call.
//
// A model of usual length is compiled into a block on the stack, so that nothing is left behind however a
// raise unwinds. What does not fit there comes from the system allocator; a recovery point of our own
// releases it and sends the error on. A host's base library without recovery points is served too: there, a
// raise under an unusually long model leaves its memory behind.

#include "temporary_model.h"

#include <cstring>

// The only symbols that the library asks for and can do without.
extern "C" {
[[gnu::weak]] int dv_protect(void (*body)(void *arg), void *arg, dv_error_t *error);
[[gnu::weak]] void dv_rethrow(const dv_error_t *error);
}

using namespace dv::impl;

namespace {

// Gives memory from its block until that is used up, then from the system allocator.
struct block_allocator_t : allocator_t {
    static constexpr size_t SIZE = 4096;
    size_t used = 0;
    alignas(max_align_t) char block[SIZE];

    bool owns(const void *p) const {
        const auto *byte = static_cast<const char *>(p);
        return byte >= block && byte < block + SIZE;
    }
};

block_allocator_t &block_of_(allocator_t *self) { return *static_cast<block_allocator_t *>(self); }

size_t rounded_(size_t size) {
    return (size + alignof(max_align_t) - 1) / alignof(max_align_t) * alignof(max_align_t);
}

void *malloc_(allocator_t *self, size_t size, const char *src_file, int line) {
    block_allocator_t &here = block_of_(self);
    if (size > here.SIZE - here.used || rounded_(size) > here.SIZE - here.used) {
        return _system_allocator->malloc(_system_allocator, size, src_file, line);
    }
    void *const p = here.block + here.used;
    here.used += rounded_(size);
    return p;
}

void *calloc_(allocator_t *self, size_t count, size_t size, const char *src_file, int line) {
    size_t bytes;
    if (__builtin_mul_overflow(count, size, &bytes)) return nullptr;
    void *const p = malloc_(self, bytes, src_file, line);
    return p != nullptr ? memset(p, 0, bytes) : nullptr;
}

// A block of the stack does not tell its size: as much is copied as may belong to it.
void *realloc_(allocator_t *self, void *p, size_t size, const char *src_file, int line) {
    const block_allocator_t &here = block_of_(self);
    if (!here.owns(p)) return _system_allocator->realloc(_system_allocator, p, size, src_file, line);
    void *const moved = malloc_(self, size, src_file, line);
    if (moved == nullptr) return nullptr;
    const auto behind = static_cast<size_t>(here.block + here.SIZE - static_cast<const char *>(p));
    return memmove(moved, p, size < behind ? size : behind);
}

void free_(allocator_t *self, void *p, const char *src_file, int line) {
    if (!block_of_(self).owns(p)) _system_allocator->free(_system_allocator, p, src_file, line);
}

void throw_(allocator_t *, const char *src_file, int line) {
    _system_allocator->throw_(_system_allocator, src_file, line);
}

struct call_t {
    const model_text_t &text;
    void (*use)(const dt_fmt_ctx_t &model, void *arg);
    void *arg;
    allocator_t *allocator;
    dt_fmt_ctx_t model;
};

void compile_and_use_(void *arg) {
    auto &call = *static_cast<call_t *>(arg);
    const model_text_t &text = call.text;
    dt_fmt_ctx_set(call.allocator, &call.model, text.fmt, text.fmt_len, text.type,
                   text.is_for_reading ? 1 : 0, DVSTR_CHARSET_MSWIN949);
    call.use(call.model, call.arg);
}

}  // namespace

void dv::impl::with_model(const model_text_t &model, void (*use)(const dt_fmt_ctx_t &model, void *arg),
                          void *arg) {
    block_allocator_t allocator;
    static_cast<allocator_t &>(allocator) = {malloc_, calloc_, realloc_, free_, throw_};
    call_t call = {model, use, arg, &allocator, {}};
    dv_error_t error;
    int code = 0;
    if (dv_protect != nullptr && dv_rethrow != nullptr) {
        code = dv_protect(compile_and_use_, &call, &error);
    } else {
        compile_and_use_(&call);
    }
    dt_fmt_ctx_reset(&allocator, &call.model);
    if (code != 0) dv_rethrow(&error);
}

int dv::impl::predicted_length(const model_text_t &model, int fprec) {
    int length = 0;
    with_model(model, [&](const dt_fmt_ctx_t &compiled) {
        length = dt_fmt_get_predicted_str_len(&compiled, fprec);
    });
    return length;
}

void dv::impl::check_model(const model_text_t &model) {
    with_model(model, [](const dt_fmt_ctx_t &) {});
}
