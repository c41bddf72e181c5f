// A total in long hand: the sum as one integer in units of 10^-336, the lowest digit that a product of two
// NUMBERs can have, and what it packs to.

#ifndef DV_TEST_TWIN_TOTAL_H
#define DV_TEST_TWIN_TOTAL_H

#include <string>

#include "dvtypes/column_sum.h"
#include "number_support.h"

namespace dv::test {

class twin_total {
  public:
    void add(const number_t &x, int sign = 1);
    void add_product(const number_t &x, const number_t &y);
    void add(const twin_total &other);

    int64_t count() const { return count_; }
    std::string packed() const;

  private:
    using integer_t = boost::multiprecision::cpp_int;
    void add_(const integer_t &digits, int exponent);

    integer_t sum_ = 0;
    int64_t count_ = 0;
};

std::string packed(const number_total_t &total);

// Makes a call that returns the bytes of memory that the total needs, with such memory if it asks for it.
template <typename F>
void with_memory(number_total_t &total, std::unique_ptr<uint64_t[]> &memory, F &&call) {
    const int64_t size = call();
    if (size == 0) return;
    auto larger = std::make_unique<uint64_t[]>(static_cast<size_t>(size) / sizeof(uint64_t));
    number_total_attach(&total, size, larger.get());
    memory = std::move(larger);
    if (call() != 0) total.count = -1;  // which no test expects
}

}  // namespace dv::test

#endif  // DV_TEST_TWIN_TOTAL_H
