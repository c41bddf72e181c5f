// dvtypes/format.hpp: values as arguments of std::format, where the standard library has it. Header only;
// C++20.
//
// Width, fill and alignment are those of a text, which to_string gives: std::format("{:>12}", dv::number(5)).

#ifndef DVTYPES_FORMAT_HPP
#define DVTYPES_FORMAT_HPP

#include <version>

#include "dvtypes/value.hpp"

#ifdef __cpp_lib_format

#include <format>

template <dv::value T>
struct std::formatter<T, char> : std::formatter<std::string_view, char> {
    template <typename Context>
    auto format(const T &x, Context &context) const {
        const std::string text = x.to_string();
        return std::formatter<std::string_view, char>::format(text, context);
    }
};

#endif

#endif  // DVTYPES_FORMAT_HPP
