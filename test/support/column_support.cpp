#include "column_support.h"

#include <algorithm>
#include <set>

namespace dv::test {

namespace {

int64_t width_of_(values_t values) {
    return values.kind == values_t::number ? int64_t{sizeof(number_t)} : values.width;
}

std::string hex_(const std::string &bytes) {
    static const char digits[] = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        text += digits[static_cast<unsigned char>(c) >> 4];
        text += digits[static_cast<unsigned char>(c) & 15];
        text += ' ';
    }
    return text;
}

std::string describe_(const row_t &row) { return row ? "\"" + *row + "\" " + hex_(*row) : "no value"; }

std::string row_fault_(const column_case_t &c, size_t i, const row_outcome_t &got,
                       const row_outcome_t &wanted) {
    std::string operands;
    for (const rows_t &rows : c.operands) operands += "\n  operand " + describe_(rows[i]);
    return "row " + std::to_string(i) + operands + "\n  result  " + describe_(got.value) + " code " +
           std::to_string(got.code) + "\n  alone   " + describe_(wanted.value) + " code " +
           std::to_string(wanted.code) + "\n";
}

// The first rows of a run that differ from what each gave alone.
std::string rows_fault_(const column_case_t &c, const std::vector<row_outcome_t> &wanted,
                        const test_column &result, const std::vector<int32_t> &codes) {
    std::string faults;
    int shown = 0;
    for (size_t i = 0; i < wanted.size() && shown < 5; ++i) {
        const row_outcome_t got = {codes[i], result.row(static_cast<int64_t>(i))};
        if (got.value == wanted[i].value && got.code == wanted[i].code) continue;
        ++shown;
        faults += row_fault_(c, i, got, wanted[i]);
    }
    return faults;
}

void shuffle_(rows_t &rows, number_source &source) {
    for (size_t i = rows.size(); i > 1; --i) std::swap(rows[i - 1], rows[source.bits() % i]);
}

// What the bitmap and the counts of failures tell wrongly.
std::string count_fault_(const std::vector<row_outcome_t> &wanted, const dv_column_faults_t &faults) {
    int64_t failures = 0, first = -1;
    for (size_t i = 0; i < wanted.size(); ++i) {
        const bool fails = wanted[i].code != 0;
        if (fails && failures++ == 0) first = static_cast<int64_t>(i);
        if (((faults.rows[i / 8] >> i % 8 & 1) != 0) != fails)
            return "bitmap of failures, row " + std::to_string(i) + "\n";
    }
    const int code = first < 0 ? 0 : wanted[static_cast<size_t>(first)].code;
    if (faults.count == failures && faults.first == first && faults.code == code) return "";
    return "failures " + std::to_string(faults.count) + " from row " + std::to_string(faults.first) +
           " code " + std::to_string(faults.code) + ", wanted " + std::to_string(failures) + " from " +
           std::to_string(first) + " code " + std::to_string(code) + "\n";
}

std::vector<row_outcome_t> alone_(const column_case_t &c) {
    std::vector<row_outcome_t> outcomes(c.operands.front().size());
    for (size_t i = 0; i < outcomes.size(); ++i) {
        std::vector<std::string> values;
        for (const rows_t &rows : c.operands) {
            if (rows[i]) values.push_back(*rows[i]);
        }
        if (values.size() == c.operands.size()) outcomes[i] = c.single(values);
    }
    return outcomes;
}

// What rows that gave these alone give in a shape: by offsets a NUMBER has no more bytes than a record.
std::vector<row_outcome_t> wanted_in_(const column_case_t &c, std::vector<row_outcome_t> wanted,
                                      shape_t operands, shape_t result) {
    constexpr size_t size_max = sizeof(number_t) - 1;
    for (size_t i = 0; i < wanted.size(); ++i) {
        for (size_t j = 0; j < c.operands.size() && operands.by_offsets; ++j) {
            const row_t &row = c.operands[j][i];
            if (c.kinds[j].kind == values_t::number && row && row->size() > size_max)
                wanted[i] = {-5120, std::nullopt};
        }
        row_t &value = wanted[i].value;
        if (c.result.kind == values_t::number && result.by_offsets && value && value->size() > size_max)
            value->resize(size_max);
    }
    return wanted;
}

std::string run_fault_(const column_case_t &c, const std::vector<row_outcome_t> &wanted, shape_t operands,
                       shape_t result) {
    std::vector<std::unique_ptr<test_column>> columns;
    std::vector<dv_column_t *> pointers;
    for (size_t i = 0; i < c.operands.size(); ++i) {
        columns.push_back(std::make_unique<test_column>(c.operands[i], c.kinds[i], operands));
        pointers.push_back(columns.back()->get());
    }
    test_column out(static_cast<int64_t>(wanted.size()), c.result, result, c.room);
    std::vector<int32_t> codes(wanted.size() + 1, 12345);
    std::vector<uint8_t> failed(wanted.size() / 8 + 2, 0xA5);
    dv_column_faults_t faults = {codes.data(), failed.data(), 0, 0, 0, 0};
    c.run(pointers.data(), out.get(), &faults);

    std::string fault = rows_fault_(c, wanted, out, codes) + count_fault_(wanted, faults);
    if (codes.back() != 12345) fault += "a code behind the last row was written\n";
    if (!out.intact()) fault += "bytes beside the result were written\n";
    for (const auto &column : columns) {
        if (!column->intact()) fault += "bytes beside an operand were written\n";
    }
    return fault;
}

}  // namespace

row_t row_of(const number_t &x) {
    if (x.size == 0) return std::nullopt;
    std::string row(reinterpret_cast<const char *>(&x.signexp), std::min<size_t>(x.size, sizeof x - 1));
    row.resize(x.size);
    return row;
}

number_t number_of(const std::string &row) {
    number_t x{};
    x.size = static_cast<uint8_t>(row.size());
    std::memcpy(&x.signexp, row.data(), std::min(row.size(), sizeof x - 1));
    return x;
}

rows_t numbers_with_any_byte(number_source &source, std::initializer_list<int> digit_counts) {
    rows_t rows;
    for (const int count : digit_counts) {
        for (const bool is_negative : {false, true}) {
            number_t x = source.with_digits(2 * count - 1, source.pick(-3, 16));
            if (((x.signexp & 0x80) == 0) != is_negative) number_negate(&x);
            const int last = x.size - (is_negative ? 1 : 0);
            const std::set<int> places = {0, 1, 2, std::min(3, last), 1 + last / 2, last};
            for (const int place : places) {
                for (int byte = 0; byte < 256; ++byte) {
                    number_t changed = source.with_stray_bytes(x);
                    reinterpret_cast<uint8_t *>(&changed)[place] = static_cast<uint8_t>(byte);
                    rows.push_back(row_of(changed));
                }
            }
        }
    }
    shuffle_(rows, source);
    return rows;
}

rows_t no_longer_than_records(rows_t numbers) {
    for (row_t &row : numbers) {
        if (row && row->size() >= sizeof(number_t)) row = std::nullopt;
    }
    return numbers;
}

test_column::test_column(const rows_t &rows, values_t values, shape_t shape)
    : values_kind_(values), shape_(shape) {
    if (values.kind == values_t::fixed) shape_.by_offsets = false;
    int64_t bytes = 0;
    for (const row_t &row : rows) bytes += row ? static_cast<int64_t>(row->size()) : 0;
    allocate(static_cast<int64_t>(rows.size()), bytes);
    auto *const target = static_cast<char *>(column_.values);
    int64_t end = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (shape_.by_offsets) {
            const std::string bytes_of_row = rows[i].value_or("");
            end += static_cast<int64_t>(bytes_of_row.copy(target + end, bytes_of_row.size()));
            column_.offsets[i + 1] = static_cast<int32_t>(end);
        } else {
            store_by_stride(static_cast<int64_t>(i), rows[i]);
        }
        if (column_.validity != nullptr)
            set_bit(static_cast<int64_t>(i) + column_.first_bit, rows[i].has_value());
    }
}

void test_column::store_by_stride(int64_t row, const row_t &bytes) {
    char *value = static_cast<char *>(column_.values) + row * column_.stride;
    const bool is_number = values_kind_.kind == values_t::number;
    std::memset(value, is_number || !bytes ? 0xCC : 0, static_cast<size_t>(width_of_(values_kind_)));
    const std::string stored = bytes.value_or("");
    if (is_number) *value++ = static_cast<char>(stored.size());
    stored.copy(value, is_number ? sizeof(number_t) - 1 : stored.size());
}

void test_column::set_bit(int64_t bit, bool is_set) {
    const int mask = 1 << bit % 8, others = column_.validity[bit / 8] & ~mask;
    column_.validity[bit / 8] = static_cast<uint8_t>(is_set ? others | mask : others);
}

test_column::test_column(int64_t count, values_t values, shape_t shape, int64_t room)
    : values_kind_(values), shape_(shape) {
    if (values.kind == values_t::fixed) shape_.by_offsets = false;
    allocate(count, room);
}

// Arrays of just the lengths that they need, filled with bytes that are no value.
void test_column::allocate(int64_t count, int64_t bytes) {
    column_.count = count;
    column_.stride = shape_.by_offsets ? 0 : width_of_(values_kind_) + shape_.gap;
    column_.size = shape_.by_offsets ? bytes : values_kind_.width;
    // Behind the last value by stride there is no gap.
    const int64_t size =
        shape_.by_offsets ? bytes : std::max<int64_t>(0, count * column_.stride - shape_.gap);
    const auto filled = [](int64_t length) {
        const std::string content(static_cast<size_t>(length), '\xA5');
        return std::make_unique<guarded>(content.size(), content.data());
    };
    values_ = filled(size);
    column_.values = values_->text();
    if (shape_.by_offsets) {
        offsets_ = filled((count + 1) * int64_t{sizeof(int32_t)});
        column_.offsets = reinterpret_cast<int32_t *>(offsets_->text());
        column_.offsets[0] = 0;
    }
    if (shape_.first_bit >= 0) {
        column_.first_bit = shape_.first_bit;
        validity_ = filled((shape_.first_bit + count + 7) / 8);
        column_.validity = reinterpret_cast<uint8_t *>(validity_->text());
    }
}

row_t test_column::row(int64_t row) const {
    const int64_t bit = column_.first_bit + row;
    if (column_.validity != nullptr && (column_.validity[bit / 8] >> bit % 8 & 1) == 0) return std::nullopt;
    const char *const values = static_cast<const char *>(column_.values);
    if (shape_.by_offsets) {
        const int32_t begin = column_.offsets[row], end = column_.offsets[row + 1];
        if (begin < 0 || end < begin || end > column_.size) return "broken offsets";
        if (values_kind_.kind == values_t::number && begin == end) return std::nullopt;
        return std::string(values + begin, static_cast<size_t>(end - begin));
    }
    const char *const value = values + row * column_.stride;
    if (values_kind_.kind == values_t::number) return row_of(*reinterpret_cast<const number_t *>(value));
    const auto width = static_cast<size_t>(values_kind_.width);
    return std::string(value, values_kind_.kind == values_t::text ? strnlen(value, width) : width);
}

bool test_column::intact() const {
    const auto is_intact = [](const auto &block) { return block == nullptr || block->intact(); };
    return is_intact(values_) && is_intact(offsets_) && is_intact(validity_);
}

std::string column_fault(const column_case_t &c) {
    static constexpr struct {
        const char *name;
        shape_t operands, result;
    } shapes[] = {
        {"records side by side", {false, 0, 0}, {false, 0, 0}},
        {"records in rows of a table", {false, 9, 3}, {false, 17, 13}},
        {"by offsets", {true, 0, 5}, {true, 0, 1}},
        {"by offsets to by stride", {true, 0, 64}, {false, 1, 0}},
        {"by stride to by offsets", {false, 2, 0}, {true, 0, 7}},
    };
    const std::vector<row_outcome_t> alone = alone_(c);
    for (each_level levels; levels.next();) {
        for (const auto &shape : shapes) {
            const std::vector<row_outcome_t> wanted = wanted_in_(c, alone, shape.operands, shape.result);
            const std::string fault = run_fault_(c, wanted, shape.operands, shape.result);
            if (!fault.empty())
                return "level " + std::to_string(dv_vector_level()) + ", " + shape.name + ":\n" + fault;
        }
    }
    return "";
}

}  // namespace dv::test
