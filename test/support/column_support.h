// Columns for tests: rows as byte strings, laid out in any shape among guard bytes, and the one comparison
// that every operation on columns must stand: row by row what the function for one value gives, at every
// vector level, in every shape, with the same failures.

#ifndef DV_TEST_COLUMN_SUPPORT_H
#define DV_TEST_COLUMN_SUPPORT_H

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "dvtypes/column_record.h"
#include "number_support.h"

namespace dv::test {

// The values of a column. NUMBERs stand without their size byte, as they do by offsets; no value: NULL. One
// whose size byte tells more than a record has is so long, with zeros behind the record.
using row_t = std::optional<std::string>;
using rows_t = std::vector<row_t>;

row_t row_of(const number_t &x);
number_t number_of(const std::string &row);

// What a column's values are made of.
struct values_t {
    enum kind_t { number, text, fixed } kind;
    int64_t width;  // fixed: bytes of a value; text by stride: bytes of the longest; number: not used
};

// How a column lies. By offsets, `gap` is not used.
struct shape_t {
    bool by_offsets = false;
    int gap = 0;         // bytes between two values by stride
    int first_bit = -1;  // of the bitmap; -1: none
};

// Every byte in the places of a record that decide its way: beside NUMBERs of few and of many digits and of
// either sign, those in which the size, the sign with the exponent, the first, second, middle or last digit
// is any other byte. In random order, so that kernels find them among those that they know.
rows_t numbers_with_any_byte(number_source &source,
                             std::initializer_list<int> digit_counts = {1, 3, 4, 7, 8, 9, 16, 20});

// NUMBERs without those that are longer than a record, which no row by offsets is.
rows_t no_longer_than_records(rows_t numbers);

class test_column {
  public:
    // An operand. Rows without a value need a bitmap, or are NUMBERs, or texts by offsets.
    test_column(const rows_t &rows, values_t values, shape_t shape);
    // A result with room for `room` bytes where it is by offsets.
    test_column(int64_t count, values_t values, shape_t shape, int64_t room);

    dv_column_t *get() { return &column_; }
    row_t row(int64_t row) const;  // as the column has it now
    bool intact() const;           // the guard bytes around all its arrays

  private:
    void allocate(int64_t count, int64_t bytes);
    void store_by_stride(int64_t row, const row_t &bytes);
    void set_bit(int64_t bit, bool is_set);

    values_t values_kind_;
    shape_t shape_;
    dv_column_t column_{};
    std::unique_ptr<guarded> values_, offsets_, validity_;
};

// What an operation makes of one row: its code, or the value.
struct row_outcome_t {
    int code = 0;
    row_t value;
};

// That of a function that makes a NUMBER: fn(x), where x is `from` at first.
template <typename F>
row_outcome_t number_outcome(const number_t &from, F &&fn) {
    number_t x = from;
    const int code = raise_of([&] { fn(&x); });
    return code != 0 ? row_outcome_t{code, std::nullopt} : row_outcome_t{0, row_of(x)};
}

struct column_case_t {
    std::vector<rows_t> operands;  // all of the same count
    std::vector<values_t> kinds;   // of the operands
    values_t result;
    int64_t room = 0;  // of a result by offsets
    std::function<void(dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults)> run =
        {};
    std::function<row_outcome_t(const std::vector<std::string> &values)> single =
        {};  // all operands have a value
};

// Runs the case at every level of this machine in several shapes; "", or the first rows that differ.
std::string column_fault(const column_case_t &c);

// The levels of this machine, lowest first; the one in use when it began is set again in the end.
class each_level {
  public:
    each_level() : before_(dv_vector_level()) {}
    ~each_level() { dv_vector_set_level(before_); }
    each_level(const each_level &) = delete;
    each_level &operator=(const each_level &) = delete;
    bool next() {
        if (level_ >= before_) return false;
        dv_vector_set_level(static_cast<dv_vector_level_e>(++level_));
        return true;
    }

  private:
    dv_vector_level_e before_;
    int level_ = -1;
};

}  // namespace dv::test

#endif  // DV_TEST_COLUMN_SUPPORT_H
