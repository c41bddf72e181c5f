// dvtypes/try.hpp: reading and arithmetic without exceptions. Header only; C++20.
//
// ```cpp
// const dv::reader<dv::date> read("DD.MM.YYYY");
// for (const char *text : {"29.02.2024", "29.02.2023"}) {
//     if (const auto day = dv::try_parse<dv::date>(text, read))
//         std::cout << *day << '\n';                               // 2024-02-29 00:00:00
//     else
//         std::cout << day.error() << '\n';                        // dvtypes:-5114
// }
// const auto ratio = dv::try_div(dv::number(1), 0);
// std::cout << ratio.error().message() << '\n';                     // A number is divided by zero.
// const dv::timestamp skipped(2026, 3, 29, 2, 30);
// const auto dawn = dv::try_make<dv::timestamp_tz>(skipped, dv::zone("Europe/Berlin"));
// std::cout << dawn.code() << '\n';                                // -5110
// ```
//
// The results are those of the operators, readers and constructors, the codes those that they throw.

#ifndef DVTYPES_TRY_HPP
#define DVTYPES_TRY_HPP

#include "dvtypes/result.hpp"
#include "dvtypes/value.hpp"

namespace dv {

namespace detail {

// x with operation(its record) done, in place: a record that has just been written in pieces is slow to copy.
// The operation raises, or returns the code of its error.
template <typename Value, typename Operation>
result<Value> attempt_on(const Value &x, const Operation &operation) noexcept {
    result<Value> done(x);
    auto &record = Value::record_of(done.value_);
    if constexpr (std::same_as<decltype(operation(record)), int>) {
        done.code_ = operation(record);
    } else {
        const auto call = [&] { operation(record); };
        done.code_ = protect(call, nullptr);
    }
    return done;
}

}  // namespace detail

// What reads values of a type: reader<Value>, number_reader.
template <typename Reader, typename Value>
concept reader_of = std::same_as<typename Reader::value_type, Value> &&
    requires(const Reader &reader, typename Value::record_type &record, const detail::text_argument &text) {
    reader.read(record, text);
};

// A text as Value(text) reads it, or as a reader does: reader<Value> or number_reader.
template <value Value>
result<Value> try_parse(std::string_view text) noexcept {
    static constexpr Value zero;
    const detail::text_argument argument(text);
    return detail::attempt_on(zero, [&](auto &record) {
        if constexpr (requires { Value::raising::try_read(record, argument); }) {
            return Value::raising::try_read(record, argument);
        } else {
            Value::raising::read(record, argument);
        }
    });
}
template <value Value, reader_of<Value> Reader>
result<Value> try_parse(std::string_view text, const Reader &reader) noexcept {
    static constexpr Value zero;
    const detail::text_argument argument(text);
    return detail::attempt_on(zero, [&](auto &record) { reader.read(record, argument); });
}

// Value(arguments...): of the fields of a date, time_of_day or timestamp, of a local time and its zone for a
// timestamp_tz or timestamp_ltz.
template <value Value, typename... Arguments>
requires requires(typename Value::record_type &record, const Arguments &...arguments) {
    Value::raising::make(record, arguments...);
}
result<Value> try_make(const Arguments &...arguments) noexcept {
    static constexpr Value zero;
    return detail::attempt_on(zero, [&](auto &record) { Value::raising::make(record, arguments...); });
}

// x + y, x - y, x * y, x / y, x % y where the result is of x's type: of numbers, of intervals and numbers, of
// datetimes and intervals. The difference of two datetimes never fails.
template <value X, typename Y>
requires requires(typename X::record_type &record, const Y &y) { X::raising::add(record, y); }
result<X> try_add(const X &x, const Y &y) noexcept {
    return detail::attempt_on(x, [&](auto &record) { X::raising::add(record, y); });
}
template <value X, typename Y>
requires requires(typename X::record_type &record, const Y &y) { X::raising::sub(record, y); }
result<X> try_sub(const X &x, const Y &y) noexcept {
    return detail::attempt_on(x, [&](auto &record) { X::raising::sub(record, y); });
}
template <value X, typename Y>
requires requires(typename X::record_type &record, const Y &y) { X::raising::mul(record, y); }
result<X> try_mul(const X &x, const Y &y) noexcept {
    return detail::attempt_on(x, [&](auto &record) { X::raising::mul(record, y); });
}
template <value X, typename Y>
requires requires(typename X::record_type &record, const Y &y) { X::raising::div(record, y); }
result<X> try_div(const X &x, const Y &y) noexcept {
    return detail::attempt_on(x, [&](auto &record) { X::raising::div(record, y); });
}
template <value X, typename Y>
requires requires(typename X::record_type &record, const Y &y) { X::raising::mod(record, y); }
result<X> try_mod(const X &x, const Y &y) noexcept {
    return detail::attempt_on(x, [&](auto &record) { X::raising::mod(record, y); });
}

}  // namespace dv

#endif  // DVTYPES_TRY_HPP
