// The instructions that kernels may use: which level is in force (kernels_by_level.h).

#ifndef DV_COLUMN_VECTOR_LEVEL_H
#define DV_COLUMN_VECTOR_LEVEL_H

#include <atomic>

#include "../machine.h"
#include "dvtypes/column_record.h"

#if DV_HAS_VECTOR_BYTES
#include "../intrinsics.h"
#endif

namespace dv::impl {

// So many bytes ahead kernels fetch memory: the processor's own fetching ends with a page. A million rows
// take 0.5 to 0.85 of the time without. Nothing is accessed there, so that it may lie behind the column.
inline constexpr int64_t FETCH_AHEAD = 2048;

// Fetches what lies FETCH_AHEAD behind bytes that are read or written.
inline void fetch_ahead(const char *p, int64_t bytes) {
    constexpr int64_t line = 64;
    for (int64_t i = 0; i < bytes; i += line) __builtin_prefetch(p + FETCH_AHEAD + i);
}

extern std::atomic<int> vector_level_in_use;  // a dv_vector_level_e

// Which row of a table of kernels, one a level, is to be used.
inline size_t vector_level() {
    return static_cast<size_t>(vector_level_in_use.load(std::memory_order_relaxed));
}

}  // namespace dv::impl

#endif  // DV_COLUMN_VECTOR_LEVEL_H
