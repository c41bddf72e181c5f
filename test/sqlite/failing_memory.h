// SQLite with an allocator that fails at a chosen call, and whose blocks are not zero, as long as an object
// lives. No connection may be open when it begins or ends.

#ifndef DV_TEST_FAILING_MEMORY_H
#define DV_TEST_FAILING_MEMORY_H

#include <sqlite3.h>

#include <cstring>

namespace dv::test {

class failing_memory {
  public:
    failing_memory() {
        sqlite3_shutdown();
        sqlite3_config(SQLITE_CONFIG_GETMALLOC, &_real);
        sqlite3_mem_methods methods = _real;
        methods.xMalloc = [](int size) {
            void *const block = fails_() ? nullptr : _real.xMalloc(size);
            return block != nullptr ? std::memset(block, 0x5A, static_cast<size_t>(size)) : nullptr;
        };
        methods.xRealloc = [](void *block, int size) {
            return fails_() ? nullptr : _real.xRealloc(block, size);
        };
        sqlite3_config(SQLITE_CONFIG_MALLOC, &methods);
        sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0);  // each allocation is one that may fail
        sqlite3_initialize();
    }
    ~failing_memory() {
        sqlite3_shutdown();
        sqlite3_config(SQLITE_CONFIG_MALLOC, &_real);
        sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 1200, 40);
        sqlite3_initialize();
    }
    failing_memory(const failing_memory &) = delete;
    failing_memory &operator=(const failing_memory &) = delete;

    // The n-th call from now on fails (0: the next one), and those behind it too when it lasts; -1: none.
    void fail_at(long n, bool lasts) {
        _calls_left = n;
        _lasts = lasts;
        _has_failed = false;
    }
    // Whether a call has failed since.
    bool has_failed() const { return _has_failed; }

  private:
    static bool fails_() {
        if (_calls_left < 0) return false;
        if (_calls_left > 0) return --_calls_left, false;
        if (!_lasts) _calls_left = -1;
        return _has_failed = true;
    }

    static inline sqlite3_mem_methods _real{};
    static inline long _calls_left = -1;
    static inline bool _lasts = false, _has_failed = false;
};

}  // namespace dv::test

#endif  // DV_TEST_FAILING_MEMORY_H
