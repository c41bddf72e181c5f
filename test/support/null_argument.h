// A function called once for each of its pointers, that one NULL and all others sound: what every exported
// function does then, found out from its type alone.

#ifndef DV_TEST_NULL_ARGUMENT_H
#define DV_TEST_NULL_ARGUMENT_H

#include <array>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "name_of.h"
#include "raise.h"

namespace dv::test {

struct null_report_t {
    unsigned long count = 0;
    std::string text;  // of the last assertion
};
inline thread_local null_report_t null_report;

// Every pointer has a block of its own, a valid NUMBER and a record without a NULL in it; an integer is 1.
inline constexpr size_t NULL_ARGUMENT_BLOCK = 512;
using null_argument_block = std::array<uint8_t, NULL_ARGUMENT_BLOCK>;

template <typename T>
T null_argument(bool is_null, null_argument_block &block) {
    if constexpr (std::is_pointer_v<T>) {
        return is_null ? nullptr : reinterpret_cast<T>(block.data());
    } else {
        return static_cast<T>(1);
    }
}

// The assertion of the n-th pointer that must be given: of "date != NULL; ts != NULL" one for each, else the
// same for all.
constexpr std::string_view assertion_of(std::string_view assertions, size_t n) {
    for (size_t end = 0; (end = assertions.find("; ")) != assertions.npos;
         assertions.remove_prefix(end + 2)) {
        if (n-- == 0) return assertions.substr(0, end);
    }
    return assertions;
}

template <typename R, typename... Args, size_t... I>
std::string null_argument_fault(R (*function)(Args...), std::string_view assertions, unsigned optional,
                                std::index_sequence<I...>) {
    constexpr bool is_pointer[] = {std::is_pointer_v<Args>...};
    null_argument_block sound;
    sound.fill(2);
    size_t required = 0;
    for (size_t missing = 0; missing < sizeof...(Args); ++missing) {
        if (!is_pointer[missing] || (optional >> missing & 1) != 0) continue;
        const std::string_view assertion = assertion_of(assertions, required++);
        null_argument_block blocks[] = {((void)I, sound)...};
        bool is_neutral = true;
        null_report = {};
        const int code = raise_of([&] {
            if constexpr (std::is_void_v<R>) {
                function(null_argument<Args>(I == missing, blocks[I])...);
            } else {
                is_neutral = function(null_argument<Args>(I == missing, blocks[I])...) == R{};
            }
        });
        const bool are_kept = ((blocks[I] == sound) && ...);
        if (code == 0 && is_neutral && are_kept && null_report.count == 1 && null_report.text == assertion)
            continue;
        return "argument " + std::to_string(missing) + ": code " + std::to_string(code) + ", " +
               std::to_string(null_report.count) + " assertions (" + null_report.text + ")" +
               (are_kept ? "" : ", operands changed") + (is_neutral ? "" : ", result not neutral");
    }
    return "";
}

// One function: its name, and what is wrong with it given the assertions that it must report and a mask of
// the arguments that may be NULL.
struct null_case_t {
    std::string_view name;
    std::string (*fault)(std::string_view assertions, unsigned optional);
};

template <auto function>
std::string null_case_fault(std::string_view assertions, unsigned optional) {
    const auto indices = []<typename R, typename... Args>(R (*)(Args...)) {
        return std::index_sequence_for<Args...>{};
    };
    dv_assert_set_reporter([](const char *text, const char *, int) {
        ++null_report.count;
        null_report.text = text;
    });
    std::string fault = null_argument_fault(function, assertions, optional, indices(function));
    dv_assert_set_reporter(nullptr);
    return fault;
}

template <auto... functions>
std::vector<null_case_t> null_cases() {
    return {{name_of<functions>(), null_case_fault<functions>}...};
}

}  // namespace dv::test

#endif  // DV_TEST_NULL_ARGUMENT_H
