// dvtypes/number_model.hpp: numbers as text under format models. Header only; C++20.
//
// ```cpp
// const dv::number_reader read("999,999,990.99");
// const dv::number_writer write("FM$999,990.00");
// std::cout << write(read("1,234.5") * 2) << '\n';                 // $2,469.00
// ```
//
// docs/number-models.md describes the models. Readers and writers hold the model's text in themselves: they
// can be copied and moved, and serve any number of threads.

#ifndef DVTYPES_NUMBER_MODEL_HPP
#define DVTYPES_NUMBER_MODEL_HPP

#include <array>

#include "dvtypes/number.hpp"
#include "dvtypes/number_fmt.h"

namespace dv {

namespace detail {

class number_model {
  public:
    // Throws -5075 and -3006 for what is no model.
    explicit number_model(std::string_view text) : length_(static_cast<int>(std::min(text.size(), size))) {
        const text_argument argument(text);
        guarded([&] { number_format_check(argument.data, argument.length); });
        std::memcpy(text_.data(), text.data(), static_cast<size_t>(length_));
    }

    const char *data() const noexcept { return text_.data(); }
    int length() const noexcept { return length_; }

  private:
    static constexpr size_t size = NUMBER_FMT_MAX;
    std::array<char, size> text_{};
    int length_;
};

}  // namespace detail

// A model for reading. Under RN numbers cannot be read: -5075.
class number_reader {
  public:
    // What it reads or writes.
    using value_type = number;

    // Throws -5075 and -3006 for what is no model.
    explicit number_reader(std::string_view model) : model_(model) {}

    // Reads a text. Throws -5074 for what the model does not have, -5068, -5069.
    number operator()(std::string_view text) const {
        number_t record{};
        const detail::text_argument argument(text);
        guarded([&] { read(record, argument); });
        return number::of_valid(record);
    }

    // Raises: for guarded and attempt.
    void read(number_t &x, const detail::text_argument &text) const {
        number_from_str_fmt(&x, text.length, text.data, model_.length(), model_.data());
    }

  private:
    detail::number_model model_;
};

// A model for writing; a value with too many digits for it is a run of "#".
class number_writer {
  public:
    // What it reads or writes.
    using value_type = number;

    // Throws -5075 and -3006 for what is no model.
    explicit number_writer(std::string_view model) : model_(model) {}

    // The text of a value.
    std::string operator()(const number &x) const {
        char text[NUMBER_FMT_TEXT_SIZE];
        guarded([&] { number_to_str_fmt(&x.record(), sizeof text, text, model_.length(), model_.data()); });
        return text;
    }

  private:
    detail::number_model model_;
};

}  // namespace dv

#endif  // DVTYPES_NUMBER_MODEL_HPP
