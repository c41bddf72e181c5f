// Records as rows of test columns, and the twin property of operations on values of a fixed width.

#ifndef DV_TEST_DATETIME_ROWS_H
#define DV_TEST_DATETIME_ROWS_H

#include "../timestamp/zoned_support.h"
#include "column_support.h"

namespace dv::test {

template <typename T>
std::string bytes_of(const T &value) {
    return std::string(reinterpret_cast<const char *>(&value), sizeof value);
}
template <typename T>
T value_of(const std::string &bytes) {
    T value{};
    std::memcpy(&value, bytes.data(), std::min(bytes.size(), sizeof value));
    return value;
}

// Values of a type; of texts the widest by stride.
inline constexpr int64_t TEXT_WIDTH = 90;
template <typename T>
constexpr values_t kind_of() {
    if constexpr (std::is_same_v<T, std::string>) return {values_t::text, TEXT_WIDTH};
    return {values_t::fixed, sizeof(T)};
}

// What a call that returns a value, or raises, makes of a row.
template <typename Call>
row_outcome_t outcome_of(const Call &call) {
    decltype(call()) value{};
    const int code = raise_of([&] { value = call(); });
    return code != 0 ? row_outcome_t{code, std::nullopt} : row_outcome_t{0, bytes_of(value)};
}

// Rows made by make(), some without a value.
template <typename Make>
rows_t rows_made(size_t count, number_source &source, const Make &make) {
    rows_t rows;
    while (rows.size() < count) {
        const auto value = make();
        rows.push_back(source.pick(0, 20) == 0 ? row_t() : bytes_of(value));
    }
    return rows;
}

// Any bytes; in most records they are those of a timestamp but for one.
template <typename Record>
Record hostile(Record record, number_source &source) {
    if (source.pick(0, 3) == 0) {
        source.fill(&record, sizeof record);
    } else {
        source.fill(reinterpret_cast<uint8_t *>(&record) + source.pick(0, sizeof record - 1), 1);
    }
    return record;
}

// Timestamps of all centuries, most of the last ones, some at the ends of their fields, some hostile. No year
// is 0, which asserts.
inline dv_timestamp_t any_timestamp(number_source &source) {
    dv_timestamp_t ts = random_timestamp(source);
    if (source.pick(0, 1) != 0) {
        const dv_date_t recent = make_date(source.pick(1890, 2060), source.pick(1, 12), source.pick(1, 28),
                                           source.pick(0, 23), source.pick(0, 59), source.pick(0, 59));
        std::memcpy(&ts, &recent, sizeof recent);
        if (source.pick(0, 3) == 0) ts.day = static_cast<uint8_t>(source.pick(28, 31));
    }
    if (source.pick(0, 60) == 0) {  // about the days that do not exist
        const dv_date_t reform = make_date(1582, source.pick(9, 11), source.pick(1, 31), ts.hour);
        std::memcpy(&ts, &reform, sizeof reform);
    }
    if (source.pick(0, 9) == 0) ts = hostile(ts, source);
    const dv_date_t date = date_of(ts);
    if (dv_date_get_field(&date, DT_FMT_UNIT_YEAR) == 0) ts.year = 101;
    return ts;
}

template <typename Record>
Record any_record(number_source &source) {
    const dv_timestamp_t ts = any_timestamp(source);
    Record record{};
    std::memcpy(&record, &ts, std::min(sizeof record, sizeof ts));
    return record;
}

// Makes every other row a date of our time but for one byte: in turn every byte in every place of it.
template <typename Record>
rows_t with_any_byte(rows_t rows) {
    constexpr size_t bytes = std::min(sizeof(Record), sizeof(dv_timestamp_t));
    dv_timestamp_t usual{};
    const dv_date_t date = make_date(2024, 2, 29, 23, 59, 58);
    std::memcpy(&usual, &date, sizeof date);
    for (size_t i = 1; i < rows.size(); i += 2) {
        if (!rows[i]) continue;
        const size_t turn = i / 2 % (bytes * 256);
        reinterpret_cast<uint8_t *>(&usual)[turn / 256] ^= static_cast<uint8_t>(turn);
        rows[i]->replace(0, bytes, reinterpret_cast<const char *>(&usual), bytes);
        reinterpret_cast<uint8_t *>(&usual)[turn / 256] ^= static_cast<uint8_t>(turn);
    }
    return rows;
}

// A zone by its number, which may be none; its offset is one that it may have.
inline timezone_t any_zone(number_source &source) {
    const int id = source.pick(0, 5) == 0 ? TZ_ID_OFFSET : source.pick(0, TZ_ID_MAX - 1);
    return {static_cast<uint8_t>(100 + source.pick(-12, 14)),
            static_cast<uint8_t>(15 * source.pick(0, 3)),
            0,
            {static_cast<uint8_t>(id >> 8), static_cast<uint8_t>(id)}};
}
template <>
inline dv_ts_tz_t any_record(number_source &source) {
    return {any_timestamp(source), any_zone(source)};
}

// Runs an operation of fixed width: run(operands, result, faults) on columns against single(values...).
template <typename... Operands, typename Run, typename Single, size_t... I>
std::string each_row_fault_(std::vector<rows_t> rows, const Run &run, const Single &single,
                            std::index_sequence<I...>) {
    using result_t = decltype(single(std::declval<Operands>()...));
    column_case_t columns = {std::move(rows), {kind_of<Operands>()...}, kind_of<result_t>()};
    columns.run = run;
    columns.single = [&](const std::vector<std::string> &values) {
        return outcome_of([&] { return single(value_of<Operands>(values[I])...); });
    };
    return column_fault(columns);
}
template <typename... Operands, typename Run, typename Single>
std::string each_row_fault(std::vector<rows_t> rows, const Run &run, const Single &single) {
    return each_row_fault_<Operands...>(std::move(rows), run, single, std::index_sequence_for<Operands...>());
}

}  // namespace dv::test

#endif  // DV_TEST_DATETIME_ROWS_H
