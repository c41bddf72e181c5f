// Operations of vector files: a name, and what makes the call. Most are made from the library's function
// itself.
//
// Each parameter takes one input. A record that the call may write is listed behind "=" as the call left it
// (a NUMBER not after a raise, where it is unspecified), and then the value that the call returned.

#ifndef DV_TEST_VECTOR_BIND_H
#define DV_TEST_VECTOR_BIND_H

#include <algorithm>
#include <bit>
#include <cstddef>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <utility>

#include "bytes.h"
#include "name_of.h"
#include "vector_call.h"

namespace dv::test {

namespace vector_bind {

// An integer, or a record.
template <typename T>
T read_more(vector_call &call) {
    if constexpr (std::is_pointer_v<T>) {
        return call.record<std::remove_const_t<std::remove_pointer_t<T>>>();
    } else {
        return static_cast<T>(call.integer());
    }
}

// Floating-point numbers stand as their bits, a long double as its value in the ten bytes of the extended
// format.
template <typename T>
T read_float(vector_call &call) {
    if constexpr (std::is_same_v<T, float>) return std::bit_cast<float>(impl::load_be32(call.bytes(4)));
    if constexpr (std::is_same_v<T, double>) return std::bit_cast<double>(impl::load_be64(call.bytes(8)));
    if constexpr (std::is_same_v<T, long double>) return call.extended_float();
}

template <typename T>
void put_value(vector_call &call, T value) {
    if constexpr (std::is_same_v<T, float>) {
        call.put_bits(std::bit_cast<uint32_t>(value));
    } else if constexpr (std::is_same_v<T, double>) {
        call.put_bits(std::bit_cast<uint64_t>(value));
    } else if constexpr (std::is_same_v<T, long double>) {
        call.put_extended_float(value);
    } else if constexpr (std::is_same_v<T, uint64_t>) {
        call.put_word(std::to_string(value));
    } else if constexpr (std::is_convertible_v<T, const char *>) {
        call.put_text(value);
    } else {
        call.put(value);
    }
}

inline constexpr size_t NO_RESULT = SIZE_MAX;

// The result of a call takes no input, but null makes its pointer NULL, and _ says that what follows is
// another's.
template <typename T>
T *result_memory(vector_call &call) {
    if (call.takes("null")) return nullptr;
    call.takes("_");
    return static_cast<T *>(call.memory(sizeof(T)));
}

// Argument I. An int behind a text is the text's length.
template <typename Parameters, size_t I, size_t Result>
auto read_argument(vector_call &call, int &length) {
    using type = std::tuple_element_t<I, Parameters>;
    using value_type = std::remove_cv_t<std::remove_pointer_t<type>>;
    if constexpr (std::is_same_v<type, const char *>) {
        constexpr size_t next = std::min(I + 1, std::tuple_size_v<Parameters> - 1);
        constexpr bool has_length = std::is_same_v<std::tuple_element_t<next, Parameters>, int>;
        const vector_text text = has_length ? call.text() : call.ended_text();
        length = text.size;
        return text.data;
    } else if constexpr (std::is_pointer_v<type> && (I == Result || std::is_arithmetic_v<value_type>)) {
        return static_cast<type>(result_memory<value_type>(call));
    } else if constexpr (std::is_pointer_v<type>) {
        return static_cast<type>(call.record<value_type>());
    } else if constexpr (std::is_floating_point_v<type>) {
        return read_float<type>(call);
    } else {
        if constexpr (I > 0) {
            if constexpr (std::is_same_v<std::tuple_element_t<I - 1, Parameters>, const char *>)
                return length;
        }
        return static_cast<type>(call.integer());
    }
}

// Lists what the call left in an argument.
template <typename T>
void put_left(vector_call &call, T argument, bool has_returned) {
    using value_type = std::remove_pointer_t<T>;
    if constexpr (std::is_pointer_v<T> && !std::is_const_v<value_type>) {
        if (argument == nullptr) return;
        if constexpr (std::is_arithmetic_v<value_type>) {
            if (has_returned) put_value(call, *argument);
        } else if constexpr (std::is_same_v<value_type, number_t>) {
            if (has_returned)
                call.put_bytes(argument, std::min(argument->size + size_t{1}, sizeof *argument));
        } else {
            call.put_bytes(argument, sizeof *argument);
        }
    }
}

template <size_t Result, typename R, typename... P, size_t... I>
void make_call(vector_call &call, R (*function)(P...), std::index_sequence<I...>) {
    int length = 0;
    // Braces read the inputs in order.
    std::tuple<P...> arguments{read_argument<std::tuple<P...>, I, Result>(call, length)...};
    std::conditional_t<std::is_void_v<R>, int, R> returned{};
    const bool has_returned = call.run([&] {
        if constexpr (std::is_void_v<R>) {
            std::apply(function, arguments);
        } else {
            returned = std::apply(function, arguments);
        }
    });
    (put_left(call, std::get<I>(arguments), has_returned), ...);
    if constexpr (!std::is_void_v<R>) {
        if (has_returned) put_value(call, returned);
    }
}

template <size_t Result, typename R, typename... P>
void make_call(vector_call &call, R (*function)(P...)) {
    make_call<Result>(call, function, std::index_sequence_for<P...>{});
}

}  // namespace vector_bind

// Every record that may be written is an input too.
template <auto Function>
void in_place(vector_call &call) {
    vector_bind::make_call<vector_bind::NO_RESULT>(call, Function);
}

// Parameter Result is the result alone, zeros before the call.
template <auto Function, size_t Result = 0>
void into(vector_call &call) {
    vector_bind::make_call<Result>(call, Function);
}

// All operations by their names, which are mostly those of functions.
class vector_operations {
  public:
    using run_t = void (*)(vector_call &);
    void add(std::string_view name, run_t run) { runs_[name] = run; }
    template <auto... Functions>
    void add_in_place() {
        (add(name_of<Functions>(), in_place<Functions>), ...);
    }
    template <auto... Functions>
    void add_into() {
        (add(name_of<Functions>(), into<Functions>), ...);
    }
    template <auto... Functions>
    void add_into_second() {
        (add(name_of<Functions>(), into<Functions, 1>), ...);
    }
    run_t find(std::string_view name) const {
        const auto found = runs_.find(name);
        return found == runs_.end() ? nullptr : found->second;
    }

  private:
    std::unordered_map<std::string_view, run_t> runs_;
};

// By area.
void add_number_operations(vector_operations &all);
void add_number_text_operations(vector_operations &all);
void add_datetime_operations(vector_operations &all);
void add_datetime_model_operations(vector_operations &all);
void add_datetime_element_operations(vector_operations &all);
void add_zone_operations(vector_operations &all);
void add_iso_operations(vector_operations &all);
void add_key_operations(vector_operations &all);
void add_catalogue_operations(vector_operations &all);

}  // namespace dv::test

#endif  // DV_TEST_VECTOR_BIND_H
