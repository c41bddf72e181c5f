// The system allocator: libc's heap. The caller's place is of no use to it but in a raise.

#include <cstdlib>

#include "dvtypes/base.h"

namespace {

void *heap_malloc_(allocator_t *, size_t size, const char *, int) { return std::malloc(size); }

void *heap_calloc_(allocator_t *, size_t count, size_t size, const char *, int) {
    return std::calloc(count, size);
}

void *heap_realloc_(allocator_t *, void *block, size_t size, const char *, int) {
    return std::realloc(block, size);
}

void heap_free_(allocator_t *, void *block, const char *, int) { std::free(block); }

void heap_throw_(allocator_t *, const char *src_file, int line) {
    dv_err_and_jmp(src_file, line, "heap_throw_", 0, 0, DV_ERR_NO_MEMORY);
}

constinit allocator_t _heap = {heap_malloc_, heap_calloc_, heap_realloc_, heap_free_, heap_throw_};

}  // namespace

allocator_t *_system_allocator = &_heap;
