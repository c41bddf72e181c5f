// dvtypes/column.hpp: columns of values, of spans, members of structs and texts. Header only; C++20.
//
// What columns are and what operations do with rows that fail stands in dvtypes/column_record.h; the
// operations are the functions of dvtypes/column.h. dv::run calls any of them and throws dv::row_error at the
// first row that fails, dv::try_run does all rows and tells what failed:
//
// ```cpp
// dv::texts texts{"12.50", "3.99", "1O"};
// std::vector<dv::number> prices(3), totals(3);
// const auto faults = dv::try_run(number_column_from_text, texts, dv::column(prices));
// std::cout << faults.count() << " failed, the first in row " << faults.first() << '\n';
//                                                                       // 1 failed, the first in row 2
// const dv::number rate("1.19");
// dv::multiply(prices, dv::column<const dv::number>::constant(rate, 3), totals);
// std::cout << totals[0] << ' ' << dv::sum(prices) << '\n';             // 14.875 16.49
//
// const dv::reader<dv::date> german("DD.MM.YYYY");                      // in place of C's compiled model
// dv::texts dates{"29.02.2024", "30.02.2024"};
// std::vector<dv::date> days(2);
// std::cout << dv::try_run(dv_date_column_from_str, dates, german, nullptr, dv::column(days))[1] << '\n';
//                                                                       // -5114
// ```
//
// Columns own nothing: what they describe must live as long. They may be copied, and shared by threads that
// read.

#ifndef DVTYPES_COLUMN_HPP
#define DVTYPES_COLUMN_HPP

#include <cstring>
#include <initializer_list>
#include <memory>
#include <ranges>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "dvtypes/column.h"
#include "dvtypes/error.hpp"
#include "dvtypes/model.hpp"
#include "dvtypes/number.hpp"
#include "dvtypes/rowid.hpp"

namespace dv {

// ---------------------------------------------------------------------------------------------------------
// Columns
// ---------------------------------------------------------------------------------------------------------

// The validity bitmap of a column: bit first + i is 1 where row i has a value. NULL: every row has one.
struct validity {
    uint8_t *bits = nullptr;  // the bitmap
    int64_t first = 0;        // the bit of row 0
};

namespace detail {

// What a pointer to a member gives of the structs of a range: of const structs a const member.
template <typename Range, typename Pointer>
using member_of =
    std::remove_reference_t<decltype(*std::ranges::data(std::declval<Range &>()).*std::declval<Pointer>())>;

// A place in a column or in texts, for loops over their rows.
template <typename Rows>
class row_iterator {
  public:
    using value_type = std::remove_cvref_t<decltype(std::declval<const Rows &>()[0])>;
    using difference_type = int64_t;

    row_iterator() = default;
    row_iterator(const Rows &rows, int64_t row) noexcept : rows_(&rows), row_(row) {}
    decltype(auto) operator*() const noexcept { return (*rows_)[row_]; }
    row_iterator &operator++() noexcept {
        ++row_;
        return *this;
    }
    row_iterator operator++(int) noexcept { return {*rows_, row_++}; }
    friend bool operator==(const row_iterator &x, const row_iterator &y) noexcept { return x.row_ == y.row_; }

  private:
    const Rows *rows_ = nullptr;
    int64_t row_ = 0;
};

// Are there such members, of a range that leaves its structs where they are, for a column of T?
template <typename Range, typename Pointer, typename T>
concept has_member = std::ranges::contiguous_range<Range> && std::ranges::sized_range<Range> &&
    std::ranges::borrowed_range<Range> &&
    std::is_convertible_v<std::add_pointer_t<member_of<Range, Pointer>>, std::add_pointer_t<T>>;

}  // namespace detail

// Values of one type by stride. Of a const type it is an operand alone; a column of T is one of const T, too.
// T is a value of this layer, a record or a machine number: bytes that may be copied as they are.
template <typename T>
class column {
    static_assert(std::is_trivially_copyable_v<T> && std::is_standard_layout_v<T> && !std::is_pointer_v<T>);

  public:
    // Values side by side: of a vector, an array, a span.
    template <typename Range, typename = std::enable_if_t<std::is_constructible_v<std::span<T>, Range>>>
    column(Range &&values, validity rows = {}) noexcept : column(std::span<T>(values), sizeof(T), rows) {}
    // A member of each of some structs: dv::column(orders, &order::price); of structs that are const it is an
    // operand alone.
    template <typename Range, typename Row, typename Member>
    requires detail::has_member<Range, Member Row::*, T> column(Range &&rows, Member Row::*member,
                                                                validity given = {})
    noexcept
        : column(std::ranges::empty(rows) ? nullptr : &(std::ranges::data(rows)->*member),
                 static_cast<int64_t>(std::ranges::size(rows)), sizeof(std::ranges::range_value_t<Range>),
                 given) {}
    // Values `stride` bytes apart.
    column(T *values, int64_t count, int64_t stride, validity rows = {}) noexcept : record_{} {
        record_.count = count;
        record_.values = const_cast<std::remove_const_t<T> *>(values);
        record_.stride = stride;
        record_.validity = rows.bits;
        record_.first_bit = rows.first;
    }
    // The same column, for reading alone.
    column(const column<std::remove_const_t<T>> &other) noexcept requires std::is_const_v<T>
        : record_(other.record()) {}
    // The same value in every row; it must outlive the column.
    static column constant(T &value, int64_t count) noexcept { return column(&value, count, 0); }

    // How many rows there are.
    int64_t size() const noexcept { return record_.count; }
    // The value of row i; it means nothing where the row has none.
    T &operator[](int64_t i) const noexcept {
        return *reinterpret_cast<T *>(static_cast<char *>(record_.values) + i * record_.stride);
    }
    // Its rows, for loops; as long as it lives.
    detail::row_iterator<column> begin() const noexcept { return {*this, 0}; }
    detail::row_iterator<column> end() const noexcept { return {*this, size()}; }
    // As C has it.
    const dv_column_t &record() const noexcept { return record_; }

  private:
    column(std::span<T> values, int64_t stride, validity rows) noexcept
        : column(values.data(), static_cast<int64_t>(values.size()), stride, rows) {}

    dv_column_t record_;
};

// Columns of what a range holds, and of the members of its structs, without naming T.
template <typename Range>
column(Range &&, validity = {}) -> column<std::remove_reference_t<std::ranges::range_reference_t<Range>>>;
// The same, of a member of each.
template <typename Range, typename Row, typename Member>
column(Range &&, Member Row::*, validity = {}) -> column<detail::member_of<Range, Member Row::*>>;

// Texts of many rows one behind the other, with their offsets: the memory of a column of texts.
class texts {
  public:
    // No rows.
    texts() = default;
    // The texts of some rows.
    texts(std::initializer_list<std::string_view> rows) {
        for (const std::string_view row : rows) push_back(row);
    }
    // Those of a range of strings.
    template <std::ranges::input_range Range>
    requires(std::convertible_to<std::ranges::range_reference_t<Range>, std::string_view> &&
             !std::same_as<std::remove_cvref_t<Range>, texts>)
        // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): the requirement leaves the others alone
        explicit texts(Range &&rows) {
        for (const std::string_view row : rows) push_back(row);
    }
    // Room for the result of an operation: `rows` texts of `bytes` bytes in all.
    static texts room(size_t rows, size_t bytes) {
        texts result;
        result.offsets_.resize(rows + 1);
        result.bytes_.resize(bytes);
        return result;
    }

    // Appends a row. At most 2^31 bytes in all.
    void push_back(std::string_view row) {
        bytes_ += row;
        offsets_.push_back(static_cast<int32_t>(bytes_.size()));
    }
    // No rows, the memory kept.
    void clear() noexcept {
        bytes_.clear();
        offsets_.assign(1, 0);
    }
    // How many rows there are.
    size_t size() const noexcept { return offsets_.size() - 1; }
    // The text of row i.
    template <integer Row>
    std::string_view operator[](Row i) const noexcept {
        const int32_t *const begin = offsets_.data() + i;
        return std::string_view(bytes_).substr(static_cast<size_t>(begin[0]),
                                               static_cast<size_t>(begin[1] - begin[0]));
    }
    // Its rows, for loops; until a row is appended.
    detail::row_iterator<texts> begin() const noexcept { return {*this, 0}; }
    detail::row_iterator<texts> end() const noexcept { return {*this, static_cast<int64_t>(size())}; }
    // As C has it, until a row is appended.
    dv_column_t record() noexcept {
        dv_column_t column{};
        column.count = static_cast<int64_t>(size());
        column.values = bytes_.data();
        column.offsets = offsets_.data();
        column.size = static_cast<int64_t>(bytes_.size());
        return column;
    }

  private:
    std::string bytes_;
    std::vector<int32_t> offsets_ = std::vector<int32_t>(1);
};

// ---------------------------------------------------------------------------------------------------------
// Failures
// ---------------------------------------------------------------------------------------------------------

// What the first failing row raised.
class row_error : public error {
  public:
    // Of a raise that was caught, and the row that raised.
    row_error(const dv_error_t &record, int64_t row) : error(record), row_(row) {}
    // The row, -1 where it is not the fault of a row.
    int64_t row() const noexcept { return row_; }

  private:
    int64_t row_;
};

// The codes of the rows that failed. The results in those rows mean nothing; a number is then one that
// is_null().
class [[nodiscard]] row_faults {
  public:
    // For an operation on so many rows.
    explicit row_faults(int64_t rows) : codes_(static_cast<size_t>(rows)) { told_.codes = codes_.data(); }
    // Moves; the codes stay where they are.
    row_faults(row_faults &&) noexcept = default;
    // Moves; the codes stay where they are.
    row_faults &operator=(row_faults &&) noexcept = default;

    // How many rows failed, and the first of them, -1 for none.
    int64_t count() const noexcept { return told_.count; }
    int64_t first() const noexcept { return told_.first; }
    // The code of row i, 0 where it did not fail.
    int operator[](int64_t i) const noexcept { return codes_[static_cast<size_t>(i)]; }
    // As C has it.
    dv_column_faults_t *record() noexcept { return &told_; }

  private:
    std::vector<int32_t> codes_;
    dv_column_faults_t told_{};
};

namespace detail {

// An argument of an operation as C takes it: a column by the address of its record, an array by that of its
// first element, others as they are.
template <typename T>
struct column_argument {
    explicit column_argument(T given) : value(given) {}
    const T &get() noexcept { return value; }
    int64_t rows() const noexcept { return -1; }
    T value;
};
template <typename T>
struct column_argument<column<T>> {
    using record_t = std::conditional_t<std::is_const_v<T>, const dv_column_t, dv_column_t>;
    explicit column_argument(const column<T> &given) : record(given.record()) {}
    record_t *get() noexcept { return &record; }
    int64_t rows() const noexcept { return record.count; }
    dv_column_t record;
};
template <>
struct column_argument<texts> {
    explicit column_argument(texts &given) : record(given.record()) {}
    dv_column_t *get() noexcept { return &record; }
    int64_t rows() const noexcept { return record.count; }
    dv_column_t record;
};

// Of readers and writers their compiled model.
template <typename Model>
struct model_argument {
    explicit model_argument(const Model &given) : context(given.context()) {}
    const dt_fmt_ctx_t *get() noexcept { return context; }
    int64_t rows() const noexcept { return -1; }
    const dt_fmt_ctx_t *context;
};
template <typename Value>
struct column_argument<reader<Value>> : model_argument<reader<Value>> {
    using model_argument<reader<Value>>::model_argument;
};
template <typename Value>
struct column_argument<writer<Value>> : model_argument<writer<Value>> {
    using model_argument<writer<Value>>::model_argument;
};

// Does an operation take these arguments in front of the failures?
template <typename Operation, typename... Arguments>
concept takes = requires(Operation operation, column_argument<std::decay_t<Arguments>> &...given,
                         dv_column_faults_t *faults) {
    operation(given.get()..., faults);
};

// How many rows the columns of a call have; C only asserts that it is the same for all.
template <typename... Given>
int64_t rows_of(const Given &...each) {
    const int64_t rows = std::max({each.rows()...});
    if (((each.rows() >= 0 && each.rows() != rows) || ...))
        throw std::invalid_argument("dv::run: columns of different counts");
    return rows;
}

}  // namespace detail

// Calls an operation of dvtypes/column.h with its arguments in front of the failures: columns, texts, a
// dv::reader or dv::writer where C takes a compiled model, others as C takes them. Throws row_error at the
// first row that fails; the rows in front of it are done.
// Throws std::invalid_argument where columns have different counts. That a result is no column of a const
// type is checked by the compiler, but not that values are of the types that the operation says: to it, as in
// C, a column is one whatever it holds. add, multiply and the like are for numbers alone.
template <typename... Parameters, typename... Arguments>
requires detail::takes<void (*)(Parameters...), Arguments...>
void run(void (*operation)(Parameters...), Arguments &&...arguments) {
    dv_column_faults_t faults{};
    faults.raises = 1;
    faults.first = -1;
    dv_error_t raised;
    std::tuple<detail::column_argument<std::decay_t<Arguments>>...> given{arguments...};
    std::apply([](const auto &...each) { detail::rows_of(each...); }, given);
    const auto call = [&] { std::apply([&](auto &...each) { operation(each.get()..., &faults); }, given); };
    if (detail::protect(call, &raised) != 0) throw row_error(raised, faults.first);
}

// The same, but every row is done that can be, and what failed is told. Throws dv::error where an error is
// not that of a row, such as a model that is none.
template <typename... Parameters, typename... Arguments>
requires detail::takes<void (*)(Parameters...), Arguments...> row_faults
try_run(void (*operation)(Parameters...), Arguments &&...arguments) {
    std::tuple<detail::column_argument<std::decay_t<Arguments>>...> given{arguments...};
    const int64_t rows = std::apply([](const auto &...each) { return detail::rows_of(each...); }, given);
    row_faults faults(rows);
    guarded([&] { std::apply([&](auto &...each) { operation(each.get()..., faults.record()); }, given); });
    return faults;
}

// ---------------------------------------------------------------------------------------------------------
// Numbers
// ---------------------------------------------------------------------------------------------------------

// result = x + y, x - y, x * y, x / y, row by row, in place where the result is an operand. Throw row_error.
inline void add(const column<const number> &x, const column<const number> &y, const column<number> &result) {
    run(number_column_add, x, y, result);
}
inline void subtract(const column<const number> &x, const column<const number> &y,
                     const column<number> &result) {
    run(number_column_sub, x, y, result);
}
inline void multiply(const column<const number> &x, const column<const number> &y,
                     const column<number> &result) {
    run(number_column_mul, x, y, result);
}
inline void divide(const column<const number> &x, const column<const number> &y,
                   const column<number> &result) {
    run(number_column_div, x, y, result);
}

// An exact sum with the count of its terms, of any values: number_total_t with the memory that it needs.
class total {
  public:
    // Of no values.
    total() = default;
    // The same sum and count in memory of its own.
    total(const total &other) : total() { merge(other); }
    // Takes the memory of the other one, which is empty then.
    total(total &&other) noexcept : record_(other.record_), memory_(std::move(other.memory_)) {
        other.record_ = {};
    }
    // Becomes the other one, by copy or by move.
    total &operator=(total other) noexcept {
        std::swap(record_, other.record_);
        std::swap(memory_, other.memory_);
        return *this;
    }
    // Releases its memory.
    ~total() = default;

    // Adds one number, all values of a column, or what another total holds. Throw dv::error.
    void add(const number &x) {
        grow_until([&] { return number_total_add(&record_, &x.record()); });
    }
    void add(const column<const number> &x) {
        grow_until([&] { return number_column_sum(&x.record(), nullptr, &record_, nullptr); });
    }
    void merge(const total &other) {
        grow_until([&] { return number_total_merge(&record_, &other.record_); });
    }

    // The same as add.
    total &operator+=(const number &x) {
        add(x);
        return *this;
    }

    // How many values were added.
    int64_t count() const noexcept { return record_.count; }
    // The sum, 0 of no values; their average, rounded once, which takes one value at least (-5070). Throw
    // dv::error beyond the range.
    number sum() const { return count() == 0 ? number(0) : rounded(number_total_sum); }
    number average() const { return rounded(number_total_average); }

    // The bytes of the total for other machines, and the total of such bytes. Throws dv::error (-5121) where
    // they are those of none; bytes that were cut or changed may be those of another.
    std::vector<uint8_t> pack() const {
        std::vector<uint8_t> bytes(DV_TOTAL_PACKED_MAX);
        bytes.resize(static_cast<size_t>(number_total_pack(&record_, DV_TOTAL_PACKED_MAX, bytes.data())));
        return bytes;
    }
    static total unpack(std::span<const uint8_t> bytes) {
        total result;
        const uint8_t none = 0;  // an empty span may have no address
        const uint8_t *const from = bytes.empty() ? &none : bytes.data();
        result.grow_until(
            [&] { return number_total_unpack(&result.record_, static_cast<int64_t>(bytes.size()), from); });
        return result;
    }

  private:
    template <typename Operation>
    void grow_until(const Operation &operation) {
        while (const int64_t wanted = guarded([&] { return operation(); })) {
            auto memory = std::make_unique<uint64_t[]>(static_cast<size_t>(wanted) / sizeof(uint64_t));
            number_total_attach(&record_, wanted, memory.get());
            memory_ = std::move(memory);
        }
    }
    number rounded(void (*round)(const number_total_t *, number_t *)) const {
        number_t x = number().record();
        guarded([&] { round(&record_, &x); });
        return x.size == 0 ? throw error(-5070) : number::of_valid(x);
    }

    number_total_t record_{};
    std::unique_ptr<uint64_t[]> memory_;
};

// The exact sum of all values, rounded once; 0 where there is none.
inline number sum(const column<const number> &x) {
    total all;
    all.add(x);
    return all.count() == 0 ? number() : all.sum();
}

// ---------------------------------------------------------------------------------------------------------
// Order
// ---------------------------------------------------------------------------------------------------------

namespace detail {

template <typename T, typename... Types>
consteval int place_among() {
    int place = 0;
    (void)((std::same_as<T, Types> || (++place, false)) || ...);
    return place;
}

// The sort key of values of a type: these are in the order of dv_key_type_e.
template <typename T>
inline constexpr int key_type =
    place_among<T, number, date, time_of_day, timestamp, timestamp_tz, timestamp_ltz, interval_ym,
                interval_ds, rowid, int32_t, int64_t, int128, double>();

}  // namespace detail

// A column by whose values rows are sorted, which must live as long; of the type of its values, where C takes
// that on trust.
template <typename T>
dv_key_part_t order_by(const column<T> &values, dv_key_order_e order = DV_KEY_ASCENDING,
                       dv_key_nulls_e nulls = DV_KEY_NULLS_LAST) noexcept {
    constexpr int type = detail::key_type<std::remove_const_t<T>>;
    static_assert(type < DV_KEY_BYTES, "dv::order_by: values of this type have no sort key");
    return {&values.record(), static_cast<dv_key_type_e>(type), order, nulls};
}
template <typename T>
dv_key_part_t order_by(const column<T> &&, dv_key_order_e = {},
                       dv_key_nulls_e = {}) = delete;  // would be gone

// The numbers of the rows in the order of their keys: of one column, or of several, the first one before the
// second. Throws std::invalid_argument where columns have different counts.
inline std::vector<int64_t> sorted_rows(std::span<const dv_key_part_t> parts) {
    size_t width = 0;
    for (const dv_key_part_t &part : parts) width += dv_key_size(&part);
    const int64_t count = parts.empty() ? 0 : parts.front().column->count;
    for (const dv_key_part_t &part : parts) {
        if (part.column->count != count)
            throw std::invalid_argument("dv::sorted_rows: columns of different counts");
    }
    std::vector<uint8_t> keys(static_cast<size_t>(count) * width + 1);
    std::vector<uint64_t> scratch(dv_sort_scratch_size(count, width) / sizeof(uint64_t) + 1);
    std::vector<int64_t> rows(static_cast<size_t>(count));
    size_t place = 0;
    for (const dv_key_part_t &part : parts) {
        guarded([&] { dv_column_write_keys(&part, keys.data() + place, width, nullptr); });
        place += dv_key_size(&part);
    }
    if (count > 0) dv_sort_keys(keys.data(), width, count, rows.data(), scratch.data());
    return rows;
}
inline std::vector<int64_t> sorted_rows(std::initializer_list<dv_key_part_t> parts) {
    return sorted_rows(std::span(parts.begin(), parts.size()));
}

// Values in the order of rows: result[i] becomes values[rows[i]]. All are in arrays, vectors or spans; the
// result is another one than the values. Which values come is no processor foresees, so that the next ones
// are fetched ahead. Throws std::invalid_argument where there is not a result a row, or a row is none of the
// values.
template <std::ranges::contiguous_range Values, std::ranges::contiguous_range Result>
void take(const Values &values, std::span<const int64_t> rows, Result &&result) {
    constexpr size_t ahead = 24;
    const auto *const from = std::ranges::data(values);
    const size_t count = std::ranges::size(values);
    bool is_sound = std::ranges::size(result) == rows.size();
    for (const int64_t row : rows) is_sound &= static_cast<size_t>(row) < count;
    if (!is_sound) throw std::invalid_argument("dv::take: not a result a row, or a row that is no value's");
    auto *to = std::ranges::data(result);
    for (size_t i = 0; i < rows.size(); ++i) {
        if (i + ahead < rows.size()) {
            const auto *const next = reinterpret_cast<const char *>(from + rows[i + ahead]);
            __builtin_prefetch(next);
            __builtin_prefetch(next + sizeof *from - 1);
        }
        *to++ = from[rows[i]];
    }
}

}  // namespace dv

#endif  // DVTYPES_COLUMN_HPP
