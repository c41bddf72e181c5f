// Format models that live for one call.
//
// A model of usual length is compiled into a block on the stack, so that nothing is left behind however a
// raise unwinds. What does not fit there comes from the system allocator, in chunks that the thread keeps in
// a list: they are released when the call returns, and after a raise by the thread's next such call, or when
// the thread ends. So no recovery point is needed, and a host's base library may unwind as it likes.

#include "temporary_model.h"

#include <pthread.h>

#include <cstring>

using namespace dv::impl;

namespace {

// In front of its bytes. The newest first, which are those of the innermost call.
struct alignas(max_align_t) chunk_t {
    chunk_t *previous, *next;
    allocator_t *owner;
    uintptr_t frame;  // where on the stack its call is
};

thread_local chunk_t *_chunks = nullptr;

void link_(chunk_t *chunk) {
    (chunk->previous != nullptr ? chunk->previous->next : _chunks) = chunk;
    if (chunk->next != nullptr) chunk->next->previous = chunk;
}

// Releases those of a call and of calls further in, which have ended: the stack grows downwards. Calls
// further out may be under way, since a host's assertion action may call the library.
void release_chunks_(uintptr_t frame) {
    while (_chunks != nullptr && _chunks->frame <= frame) {
        chunk_t *const chunk = _chunks;
        _chunks = chunk->next;
        if (_chunks != nullptr) _chunks->previous = nullptr;
        chunk->owner->free(chunk->owner, chunk, __FILE_NAME__, __LINE__);
    }
}

// Has the chunks released when the thread ends. Where the process has no key left, the last raise's remain.
pthread_key_t _key;
bool _has_key = false;

void make_key_() {
    _has_key = pthread_key_create(&_key, [](void *) { release_chunks_(UINTPTR_MAX); }) == 0;
}

void release_when_thread_ends_() {
    static pthread_once_t once = PTHREAD_ONCE_INIT;
    pthread_once(&once, make_key_);
    if (_has_key) pthread_setspecific(_key, &_chunks);
}

// Threads must not call into a library that is no longer loaded.
[[gnu::destructor]] void delete_key_() {
    if (_has_key) pthread_key_delete(_key);
}

// Gives memory from its block until that is used up, then chunks.
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
uintptr_t frame_of_(const allocator_t *self) { return reinterpret_cast<uintptr_t>(self); }

size_t rounded_(size_t size) {
    return (size + alignof(max_align_t) - 1) / alignof(max_align_t) * alignof(max_align_t);
}

void *new_chunk_(allocator_t *self, size_t size, const char *src_file, int line) {
    allocator_t *const owner = _system_allocator;
    size_t bytes;
    if (__builtin_add_overflow(size, sizeof(chunk_t), &bytes)) return nullptr;
    auto *const chunk = static_cast<chunk_t *>(owner->malloc(owner, bytes, src_file, line));
    if (chunk == nullptr) return nullptr;
    if (_chunks == nullptr) release_when_thread_ends_();
    *chunk = {nullptr, _chunks, owner, frame_of_(self)};
    link_(chunk);
    return chunk + 1;
}

void *malloc_(allocator_t *self, size_t size, const char *src_file, int line) {
    block_allocator_t &here = block_of_(self);
    if (size > here.SIZE - here.used || rounded_(size) > here.SIZE - here.used) {
        return new_chunk_(self, size, src_file, line);
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
    if (here.owns(p)) {
        void *const moved = malloc_(self, size, src_file, line);
        if (moved == nullptr) return nullptr;
        const auto behind = static_cast<size_t>(here.block + here.SIZE - static_cast<const char *>(p));
        return memmove(moved, p, size < behind ? size : behind);
    }
    auto *chunk = static_cast<chunk_t *>(p) - 1;
    size_t bytes;
    if (__builtin_add_overflow(size, sizeof(chunk_t), &bytes)) return nullptr;
    chunk = static_cast<chunk_t *>(chunk->owner->realloc(chunk->owner, chunk, bytes, src_file, line));
    if (chunk == nullptr) return nullptr;
    link_(chunk);
    return chunk + 1;
}

// All of it is released when the call ends.
void free_(allocator_t *, void *, const char *, int) {}

void throw_(allocator_t *, const char *src_file, int line) {
    _system_allocator->throw_(_system_allocator, src_file, line);
}

}  // namespace

void dv::impl::with_model(const model_text_t &text, void (*use)(const dt_fmt_ctx_t &model, void *arg),
                          void *arg) {
    block_allocator_t allocator;
    static_cast<allocator_t &>(allocator) = {malloc_, calloc_, realloc_, free_, throw_};
    release_chunks_(frame_of_(&allocator));  // of a call that raised
    dt_fmt_ctx_t model = {};
    dt_fmt_ctx_set(&allocator, &model, text.fmt, text.fmt_len, text.type, text.is_for_reading ? 1 : 0,
                   DVSTR_CHARSET_MSWIN949);
    use(model, arg);
    release_chunks_(frame_of_(&allocator));
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
