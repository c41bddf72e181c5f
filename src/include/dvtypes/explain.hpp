// dvtypes/explain.hpp: what is wrong and where, without an exception. Header only; C++20.
//
// ```cpp
// const char *const text = "1.2.3";
// if (!dv::try_parse<dv::number>(text)) std::cout << dv::explain<dv::number>(text).what() << '\n';
// // Invalid number: the text does not have the form of a number. The text is "1.2.3", wrong at ".3".
// const dv::explanation month = dv::explain<dv::date>("2026-13-01");
// std::cout << month.place() << ": " << month.record().message << '\n';
// // 5: The value 13 of the field "month" is out of range: 1 to 12 is accepted.
// std::cout << dv::explain([] { (void)(dv::number(1) / 0); }).code() << '\n';     // -5070
// ```
//
// What fails by the million is asked for its code alone (try.hpp, column.hpp), and what is shown is
// explained: dv::explain does the operation once more. It takes microseconds, and memory for its sentences.

#ifndef DVTYPES_EXPLAIN_HPP
#define DVTYPES_EXPLAIN_HPP

#include <charconv>

#include "dvtypes/column.hpp"
#include "dvtypes/number_model.hpp"
#include "dvtypes/try.hpp"

namespace dv {

// An error with all that can be told of it. code() is 0, and what() empty, where nothing is wrong.
class explanation : public error {
  public:
    // The place of what is told of the whole text, or of no text.
    static constexpr size_t nowhere = std::string_view::npos;

    // An error as the library tells it, with a sentence of its own.
    explanation(const error &told, std::string sentence, size_t place = nowhere)
        : error(told), sentence_(std::move(sentence)), place_(place) {}

    // The message with its values filled in; behind it the text, what of it is wrong, and what was possible.
    const char *what() const noexcept override { return sentence_.c_str(); }
    // The byte of the text at which it goes wrong, its length where it ends too soon; nowhere: unknown.
    size_t place() const noexcept { return place_; }

  private:
    std::string sentence_;
    size_t place_;
};

namespace detail {

// What body() raises or throws; of code 0: nothing.
template <typename Body>
error error_of(const Body &body) {
    dv_error_t record{};
    try {
        if (protect(body, &record) == 0) record = {};
    } catch (const error &caught) {
        return caught;
    }
    return error(record);
}

// In quotes, the beginning of a long one.
inline std::string quoted(std::string_view text) {
    constexpr size_t longest = 100;
    if (text.size() <= longest) return '"' + std::string(text) + '"';
    size_t end = longest;
    while (end > 0 && (text[end] & 0xC0) == 0x80) --end;  // behind a whole character
    return '"' + std::string(text.substr(0, end)) + "...\"";
}

// ---- places

// Of the only place in a text where some other text is.
inline size_t only_place_of(std::string_view part, std::string_view text) {
    const size_t place = text.find(part);
    if (place == text.npos || part.empty() || text.find(part, place + 1) != text.npos) return text.npos;
    return place;
}

// Where the text begins that an error shows, which is cut where it is long.
inline size_t place_of_rest(const error &told, std::string_view text) {
    const std::string_view rest = told.argument(1);
    return told.argument(2) == text ? text.size() - rest.size() : only_place_of(rest, text);
}

// Where a text has the digits of a field's value, if once.
inline size_t place_of_value(const error &told, std::string_view text) {
    constexpr std::string_view digits = "0123456789";
    const std::string_view value = told.argument(1);
    long wanted = 0, found = 0;
    std::from_chars(value.data(), value.data() + value.size(), wanted);
    size_t place = text.npos;
    for (size_t begin = 0, end = 0; (begin = text.find_first_of(digits, end)) != text.npos;) {
        end = std::min(text.find_first_not_of(digits, begin), text.size());
        const bool is_read = std::from_chars(text.data() + begin, text.data() + end, found).ec == std::errc();
        if (!is_read || found != std::abs(wanted)) continue;
        if (place != text.npos) return text.npos;
        place = begin;
    }
    return place;
}

// Behind the longest beginning of a number's text that reads, or would with some digits more. Of long texts
// only the first bytes are tried.
template <typename Reads>
size_t place_in_number(std::string_view text, const Reads &reads) {
    constexpr size_t longest = 128;
    for (size_t length = std::min(text.size(), longest);; --length) {
        for (const char *behind : {"", "0", "00", "000"}) {
            const std::string trial = std::string(text.substr(0, length)) + behind;
            if (!trial.empty() && reads(trial)) return length;
        }
        if (length == 0) return text.npos;
    }
}

template <typename Reads>
size_t place_of(const error &told, std::string_view text, const Reads &reads) {
    switch (told.code()) {
        case -5074:
            return place_in_number(text, reads);
        case -5113:
            return told.argument_count() == 3 ? place_of_rest(told, text) : text.npos;
        case -5114:
            return told.argument_count() == 4 ? place_of_value(told, text) : text.npos;
        default:
            return text.npos;
    }
}

// ---- sentences

inline std::string sentence_of(const error &told, std::string_view text, size_t place) {
    std::string sentence = told.record().message;
    if (told.code() == 0 || told.code() == -5113) return sentence;  // says both
    if (text.empty()) return sentence + " The text is empty.";
    sentence += " The text is " + quoted(text);
    if (place < text.size()) sentence += ", wrong at " + quoted(text.substr(place));
    if (place == text.size()) sentence += ", which ends too soon";
    return sentence + '.';
}

inline std::string offset_text(const timezone_t &zone) {
    timezone_t fixed = zone;
    fixed.zone_id[0] = TZ_ID_OFFSET >> 8;
    fixed.zone_id[1] = TZ_ID_OFFSET & 0xFF;
    return dv::zone(fixed).name();
}

// " In Europe/Paris clocks were set forward from ... to ..."; nothing outside of gaps.
inline std::string gap_sentence(const timestamp &local, const zone &zone) {
    const local_times times(local, zone);
    if (!times.is_skipped()) return {};
    return " In " + zone.name() + " clocks were set forward from " + times.begin().date().to_string() +
           " to " + times.end().date().to_string() + '.';
}

// "The UTC offset +05:00 is not in force in Asia/Seoul at that local time, but +09:00."
inline std::string offset_sentence(const timestamp &local, const zone &zone, std::string_view offset) {
    tz_local_times_t times;
    timezone_get_local_times(&zone.record(), &date_part(local.record()), &times);
    std::string possible = offset_text(times.after);
    if (times.count == 2) possible += " or " + offset_text(times.before);
    return "The UTC offset " + std::string(offset) + " is not in force in " + zone.name() +
           " at that local time, but " + possible + '.';
}

// The parts of a text such as "2026-03-29 02:30 Europe/Paris +02:00".
struct zoned_text {
    std::string_view local, region, behind;
};

inline zoned_text divide(std::string_view text) {
    for (size_t begin = text.find(' '), end = 0; begin != text.npos; begin = text.find(' ', end)) {
        begin = std::min(text.find_first_not_of(' ', begin), text.size());
        end = std::min(text.find(' ', begin), text.size());
        const std::string word(text.substr(begin, end - begin));
        if (word.empty() || zonetab_search_region(word.c_str()) == nullptr) continue;
        const size_t next = std::min(text.find_first_not_of(' ', end), text.size());
        return {text.substr(0, begin), text.substr(begin, end - begin), text.substr(next)};
    }
    return {};
}

// Of -5110: where the gap is, or that there is none but an offset that contradicts the region.
inline std::string zoned_sentence(const error &told, std::string_view text) {
    std::string plain = sentence_of(told, text, text.npos);
    if (told.code() != -5110) return plain;
    const zoned_text parts = divide(text);
    const size_t end = parts.local.find_last_not_of(' ');
    const auto local = try_parse<timestamp>(parts.local.substr(0, end == parts.local.npos ? 0 : end + 1));
    if (parts.region.empty() || !local) return plain;
    const dv::zone zone(parts.region);
    const std::string gap = gap_sentence(*local, zone);
    if (!gap.empty()) return plain + gap;
    const bool is_offset = parts.behind.starts_with('+') || parts.behind.starts_with('-');
    return is_offset ? offset_sentence(*local, zone, parts.behind) : plain;
}

}  // namespace detail

// The whole error of what body() raises or throws: of any functions of the library, and of operators. What
// runs here must not own anything, as for guarded.
template <typename Body>
requires std::invocable<Body &> error explain(Body &&body) {
    return detail::error_of([&] { (void)body(); });
}

// What is wrong with a text that try_parse refuses.
template <value Value>
explanation explain(std::string_view text) {
    const detail::text_argument argument(text);
    typename Value::record_type record{};
    const error told = detail::error_of([&] { Value::raising::read(record, argument); });
    const size_t place = detail::place_of(
        told, text, [](const std::string &trial) { return try_parse<Value>(trial).code() != -5074; });
    if constexpr (std::same_as<Value, timestamp_tz> || std::same_as<Value, timestamp_ltz>) {
        if (told.code() == -5110) return {told, detail::zoned_sentence(told, text)};
    }
    return {told, detail::sentence_of(told, text, place), place};
}
template <value Value, reader_of<Value> Reader>
explanation explain(std::string_view text, const Reader &reader) {
    const detail::text_argument argument(text);
    typename Value::record_type record{};
    const error told = detail::error_of([&] { reader.read(record, argument); });
    const size_t place = detail::place_of(told, text, [&](const std::string &trial) {
        return try_parse<Value>(trial, reader).code() != -5074;
    });
    return {told, detail::sentence_of(told, text, place), place};
}

// What is wrong with arguments that try_make refuses; of a local time in a gap, where that is.
template <value Value, typename... Arguments>
requires requires(typename Value::record_type &record, const Arguments &...arguments) {
    Value::raising::make(record, arguments...);
}
explanation explain(const Arguments &...arguments) {
    typename Value::record_type record{};
    const error told = detail::error_of([&] { Value::raising::make(record, arguments...); });
    std::string sentence = told.record().message;
    if constexpr (std::invocable<decltype(detail::gap_sentence), const Arguments &...>) {
        if (told.code() == -5110) sentence += detail::gap_sentence(arguments...);
    }
    return {told, std::move(sentence)};
}

namespace detail {

// An argument of an operation on columns, for one of its rows.
template <typename T>
struct row_argument {
    row_argument(T whole, int64_t /*row*/) : value(whole) {}
    T get() const noexcept { return value; }
    T value;
};
template <>
struct row_argument<const dv_column_t *> {
    row_argument(const dv_column_t *whole, int64_t row) noexcept : record(*whole) {
        record.count = 1;
        record.first_bit += row;
        if (record.offsets != nullptr)
            record.offsets += row;
        else
            record.values = static_cast<char *>(record.values) + row * record.stride;
    }
    const dv_column_t *get() const noexcept { return &record; }
    dv_column_t record;
};
// Of a result: memory like its own.
template <>
struct row_argument<dv_column_t *> {
    row_argument(const dv_column_t *whole, int64_t /*row*/) : record(*whole) {
        constexpr int64_t room_min = 64;
        const int64_t room = whole->offsets != nullptr ? whole->size : whole->stride;
        memory.resize(static_cast<size_t>(std::max(room, room_min)));
        record.count = 1;
        record.values = memory.data();
        record.validity = nullptr;
        if (whole->offsets != nullptr) record.offsets = offsets;
    }
    row_argument(const row_argument &) = delete;
    row_argument &operator=(const row_argument &) = delete;
    dv_column_t *get() noexcept { return &record; }
    dv_column_t record;
    std::vector<char> memory;
    int32_t offsets[2] = {};
};

// Is a parameter something else than memory, beside columns, that an operation writes to?
template <typename Parameter>
concept explained_parameter =
    !std::is_pointer_v<Parameter> || std::same_as<Parameter, dv_column_t *> ||
    std::same_as<Parameter, dv_column_faults_t *> || std::is_const_v<std::remove_pointer_t<Parameter>>;

}  // namespace detail

// Why a row of run or try_run failed: the operation is done on that row alone, and writes nothing. code() is
// 0 where it does not fail, as where the result was written over the operand. Operations that give bitmaps or
// states have none.
template <typename... Parameters, typename... Arguments>
requires(detail::takes<void (*)(Parameters...), Arguments...> &&... &&detail::explained_parameter<Parameters>)
    row_error explain_row(int64_t row, void (*operation)(Parameters...), Arguments &&...arguments) {
    std::tuple<detail::column_argument<std::decay_t<Arguments>>...> given{arguments...};
    const int64_t rows = std::apply([](const auto &...each) { return detail::rows_of(each...); }, given);
    if (row < 0 || row >= rows) throw std::out_of_range("dv::explain_row: no such row");
    dv_column_faults_t faults{};
    faults.raises = 1;
    const auto call = [&](auto &&...one) {
        return detail::error_of([&] { operation(one.get()..., &faults); });
    };
    const auto on_row = [&]<size_t... I>(std::index_sequence<I...>) {
        using parameters = std::tuple<Parameters...>;
        return call(
            detail::row_argument<std::tuple_element_t<I, parameters>>(std::get<I>(given).get(), row)...);
    };
    return row_error(on_row(std::index_sequence_for<Arguments...>()).record(), row);
}

}  // namespace dv

#endif  // DVTYPES_EXPLAIN_HPP
