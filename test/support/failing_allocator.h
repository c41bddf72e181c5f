// An allocator in the place of the system's while it lives: counts, and fails at a chosen call.

#ifndef DV_TEST_FAILING_ALLOCATOR_H
#define DV_TEST_FAILING_ALLOCATOR_H

#include <cstdlib>

#include "dvtypes/datetime.h"

namespace dv::test {

class failing_allocator : allocator_t {
  public:
    failing_allocator()
        : allocator_t{
              [](auto self, auto size, auto...) { return give_(self, nullptr, size); },
              [](auto self, auto count, auto size, auto...) { return give_(self, nullptr, count * size); },
              [](auto self, auto old, auto size, auto...) { return give_(self, old, size); },
              [](auto self, auto block, auto...) {
                  static_cast<failing_allocator *>(self)->blocks_ -= block != nullptr;
                  std::free(block);
              },
              [](auto, auto file, auto line) { dv_err_and_jmp(file, line, "", 0, 0, DV_ERR_NO_MEMORY); }},
          system_(_system_allocator) {
        _system_allocator = this;
    }
    ~failing_allocator() {
        lost();
        _system_allocator = system_;
    }
    failing_allocator(const failing_allocator &) = delete;
    failing_allocator &operator=(const failing_allocator &) = delete;

    long given = 0;  // blocks, ever

    // Blocks alive.
    long blocks() const { return blocks_; }
    // Those behind the next call under a model as text, which releases what one that raised had taken.
    long lost() {
        const long calls_left = calls_left_;
        calls_left_ = -1;
        dv_date_check_format("YYYY", 4);
        calls_left_ = calls_left;
        return blocks_;
    }

    // The n-th call from now on fails (0: the next one), and those behind it too when it lasts; -1: none.
    void fail_at(long n, bool lasts) {
        calls_left_ = n;
        lasts_ = lasts;
        has_failed_ = false;
    }
    // Whether a call has failed since.
    bool has_failed() const { return has_failed_; }

  private:
    bool fails_() {
        if (calls_left_ != 0) {
            calls_left_ -= calls_left_ > 0;
            return false;
        }
        if (!lasts_) calls_left_ = -1;
        return has_failed_ = true;
    }
    static void *give_(allocator_t *self, void *old, size_t size) {
        auto &here = static_cast<failing_allocator &>(*self);
        if (here.fails_()) return nullptr;
        ++here.given;
        here.blocks_ += old == nullptr;
        return old == nullptr ? std::calloc(1, size) : std::realloc(old, size);
    }

    allocator_t *system_;
    long blocks_ = 0, calls_left_ = -1;
    bool lasts_ = false, has_failed_ = false;
};

}  // namespace dv::test

#endif  // DV_TEST_FAILING_ALLOCATOR_H
