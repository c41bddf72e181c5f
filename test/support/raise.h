// Calls into the library under a recovery point, over any way of unwinding.

#ifndef DV_TEST_RAISE_H
#define DV_TEST_RAISE_H

#include <memory>
#include <type_traits>

#include "dvtypes/base.h"

namespace dv::test {

// Runs fn() and returns the code it raised, 0 when it returned. fn must own nothing with a destructor.
template <typename F>
int raise_of(F &&fn, dv_error_t *error = nullptr) {
    using function_t = std::remove_reference_t<F>;
    const auto call = [](void *arg) { (*static_cast<function_t *>(arg))(); };
    return dv_protect(call, const_cast<void *>(static_cast<const void *>(std::addressof(fn))), error);
}

// Counts the assertions of this thread that fail while it lives, and keeps them off standard error.
class assertion_watch {
  public:
    assertion_watch() : start_(dv_assert_count()) {
        dv_assert_set_reporter([](const char *, const char *, int) {});
    }
    ~assertion_watch() { dv_assert_set_reporter(nullptr); }
    assertion_watch(const assertion_watch &) = delete;
    assertion_watch &operator=(const assertion_watch &) = delete;
    unsigned long count() const { return dv_assert_count() - start_; }

  private:
    unsigned long start_;
};

}  // namespace dv::test

#endif  // DV_TEST_RAISE_H
