// dvtypes/number_sum.hpp: exact sums of numbers. Header only; C++20.
//
// ```cpp
// dv::number_sum sum;
// for (const char *text : {"1E37", "0.004", "-1E37", "0.004"}) sum += dv::number(text);
// std::cout << sum.value() << ' ' << sum.average(4) << '\n';       // .008 .002
// ```
//
// No addition rounds (dvtypes/number_sum.h), so the order of the terms does not matter, what was added can be
// taken out again, and sums of parts merge into the sum of the whole: a group of a query, a moving window,
// the parts of several threads. A chain of + of numbers rounds at every step that has more than 38 digits.

#ifndef DVTYPES_NUMBER_SUM_HPP
#define DVTYPES_NUMBER_SUM_HPP

#include "dvtypes/number.hpp"
#include "dvtypes/number_sum.h"

namespace dv {

// A sum that grows; 312 bytes. Copying one copies its bytes.
class number_sum {
  public:
    // Adds a term, takes one out.
    number_sum &operator+=(const number &x) noexcept {
        number_sum_add(&sum_, &x.record());
        return *this;
    }
    number_sum &operator-=(const number &x) noexcept {
        number_sum_sub(&sum_, &x.record());
        return *this;
    }
    // Adds the terms of another sum.
    number_sum &operator+=(const number_sum &other) noexcept {
        number_sum_merge(&sum_, &other.sum_);
        return *this;
    }

    // The sum, rounded half up to 38 digits once. Throws -5068, -5069.
    number value() const { return average(1); }
    // The sum over a count of terms, which is 1 or more, rounded once. Throws -5068, -5069.
    number average(int64_t count) const {
        return detail::changed(number(), [&](number_t &x) { number_sum_quotient(&sum_, count, &x); });
    }

  private:
    number_sum_t sum_{};
};

}  // namespace dv

#endif  // DVTYPES_NUMBER_SUM_HPP
