// Exported functions that are given NULL for one of their pointers after the other.

#ifndef DV_TEST_NULL_POINTERS_H
#define DV_TEST_NULL_POINTERS_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "raise.h"

namespace dv::test {

// What a function says of its pointers, in their order: the name of one that must be given ("ts", whose
// assertion is "ts != NULL"), the whole condition where that says more ("number_is_valid_ptr(num)"), or ""
// for one that may be NULL.
using pointer_names = std::vector<std::string>;

class null_pointer_watch {
  public:
    null_pointer_watch() {
        reported_().clear();
        dv_assert_set_reporter([](const char *condition, const char *, int) { reported_() = condition; });
    }
    ~null_pointer_watch() { dv_assert_set_reporter(nullptr); }
    null_pointer_watch(const null_pointer_watch &) = delete;
    null_pointer_watch &operator=(const null_pointer_watch &) = delete;
    const std::string &reported() const { return reported_(); }

  private:
    static std::string &reported_() {
        static std::string text;
        return text;
    }
};

// Calls function with each pointer that must be given as NULL: its assertion is reported, the result is the
// neutral one, nothing is raised, and what the other pointers lead to stays as it was.
template <typename Result, typename... Args>
void expect_nothing_without_pointers(
    const char *name, Result (*function)(Args...), const pointer_names &names,
    std::type_identity_t<std::conditional_t<std::is_void_v<Result>, int, Result>> neutral = {}) {
    constexpr bool is_pointer[] = {std::is_pointer_v<Args>...};
    ASSERT_EQ(static_cast<size_t>(std::count(std::begin(is_pointer), std::end(is_pointer), true)),
              names.size())
        << name;
    for (size_t i = 0, pointer = 0; i < sizeof...(Args); ++i) {
        if (!is_pointer[i]) continue;
        const std::string &wanted = names[pointer++];
        if (wanted.empty()) continue;
        unsigned char blocks[sizeof...(Args)][512], before[sizeof...(Args)][512];
        std::memset(blocks, 2, sizeof blocks);  // a valid NUMBER, too
        std::memset(before, 2, sizeof before);
        const auto argument = [&]<typename Arg>(size_t at, std::type_identity<Arg>) -> Arg {
            if constexpr (std::is_pointer_v<Arg>)
                return at == i ? nullptr : reinterpret_cast<Arg>(blocks[at]);
            else
                return Arg(1);
        };
        const null_pointer_watch watch;
        const int code = [&]<size_t... At>(std::index_sequence<At...>) {
            return raise_of([&] {
                if constexpr (std::is_void_v<Result>) {
                    function(argument(At, std::type_identity<Args>())...);
                } else {
                    EXPECT_EQ(function(argument(At, std::type_identity<Args>())...), neutral) << name;
                }
            });
        }
        (std::index_sequence_for<Args...>());
        EXPECT_EQ(code, 0) << name << " without its argument " << i + 1;
        EXPECT_EQ(watch.reported(), wanted.find('(') == std::string::npos ? wanted + " != NULL" : wanted)
            << name << " without its argument " << i + 1;
        EXPECT_EQ(std::memcmp(blocks, before, sizeof blocks), 0)
            << name << " without its argument " << i + 1 << " wrote to another";
    }
}

}  // namespace dv::test

#endif  // DV_TEST_NULL_POINTERS_H
