// Hostile columns: of the shape that their members tell, since no function can find out the lengths of its
// caller's arrays, and with any bytes, offsets, bitmaps and failures asked for.
//
// All columns of a call have one count of rows, or now and then another. A row by stride has room for every
// record; offsets run forward in small steps, or anywhere. A result may be the first operand.

#ifndef DV_FUZZ_HOSTILE_COLUMN_H
#define DV_FUZZ_HOSTILE_COLUMN_H

#include <deque>

#include "dvtypes/column.h"
#include "fuzz_input.h"
#include "raise.h"

namespace dv::fuzz {

class hostile_columns {
  public:
    // Each array in a block of its own length.
    explicit hostile_columns(input_t &input) : input_(input), count_(input.byte() % _count_more) {}

    dv_column_t *operand() {
        columns_.push_back(column_());
        return &columns_.back();
    }
    dv_column_t *result() {
        const bool is_in_place = !columns_.empty() && input_.byte() % 4 == 0 && columns_.front().stride != 0;
        columns_.push_back(is_in_place ? dv_column_t{columns_.front()} : column_());
        dv_column_t &result = columns_.back();
        if (result.stride == 0 && result.offsets == nullptr) result = by_stride_(_row_size);
        return &result;
    }
    dv_column_faults_t *faults() {
        if (input_.byte() % 8 == 0) return nullptr;
        faults_ = {};
        const uint8_t wanted = input_.byte();
        const auto rows = static_cast<size_t>(longest_count_);
        if ((wanted & 1) != 0) faults_.codes = reinterpret_cast<int32_t *>(block_(rows * sizeof(int32_t)));
        if ((wanted & 2) != 0) faults_.rows = reinterpret_cast<uint8_t *>(block_((rows + 7) / 8));
        faults_.raises = (wanted & 12) == 12;
        return &faults_;
    }
    dv_key_part_t *key_part() {
        dv_column_t *const column = operand();
        if (column->offsets == nullptr) column->size = input_.byte() % (_row_size + 1);
        parts_.push_back(
            {column, int8_t(input_.byte()) % (DV_KEY_TYPES + 1), input_.byte() & 1, input_.byte() & 1});
        return &parts_.back();
    }
    // Of any type and scale, or of none.
    dv_decimal_column_t *decimals(bool is_result) {
        const uint8_t choice = input_.byte();
        const bool is_in_place =
            is_result && !decimals_.empty() && choice % 4 == 0 && decimals_.front().column.stride != 0;
        const int64_t stride = !is_result && choice % 8 == 1 ? 0 : 16 + choice % 5;
        const dv_column_t column = is_in_place ? decimals_.front().column : by_stride_(stride);
        const int bytes = choice < 120 ? 8 : choice < 240 ? 16 : choice;
        const auto any = [this] { return static_cast<int8_t>(input_.byte()); };
        decimals_.push_back({column, bytes, 1 + any() % 20, choice % 3 == 0 ? any() : any() % 20});
        return &decimals_.back();
    }
    // Made by its functions, with memory beside it or without.
    number_total_t *total() {
        totals_.push_back({});
        number_total_t &total = totals_.back();
        if (input_.byte() % 4 == 0)
            number_total_attach(&total, DV_TOTAL_MEMORY_MAX, block_(DV_TOTAL_MEMORY_MAX));
        for (int terms = input_.byte() % 4; terms > 0; --terms) {
            const auto x = input_.take<number_t>();
            dv::test::raise_of([&] { number_total_add(&total, &x); });
        }
        return &total;
    }
    number_totals_t *totals() {
        const auto stride = static_cast<int64_t>(sizeof(number_total_t) + 8 * (input_.byte() % 3));
        groups_ = {input_.byte() % 5, nullptr, stride};
        std::vector<char> &bytes = blocks_.emplace_back(static_cast<size_t>(groups_.count * stride) + 1);
        groups_.totals = reinterpret_cast<number_total_t *>(bytes.data());
        return &groups_;
    }
    const int32_t *groups() {
        auto *const groups = reinterpret_cast<int32_t *>(
            block_(static_cast<size_t>(std::max(longest_count_, count_)) * sizeof(int32_t)));
        for (int64_t i = 0; i < longest_count_; ++i) groups[i] %= 7;
        return groups;
    }
    static constexpr int64_t bitmap_size = 24;  // of the rows of a call

  private:
    static constexpr int _count_more = 150, _row_size = 64;

    char *block_(size_t size) {
        std::vector<char> &bytes = blocks_.emplace_back(size);
        const std::string_view given = input_.take(size);
        std::copy(given.begin(), given.end(), bytes.begin());
        bytes.shrink_to_fit();
        return bytes.data();
    }
    int64_t rows_() {
        const int64_t count = input_.byte() == 0xFE ? input_.byte() % _count_more : count_;
        longest_count_ = std::max(longest_count_, count);
        return count;
    }
    dv_column_t by_stride_(int64_t stride) {
        dv_column_t column{};
        column.count = rows_();
        column.stride = stride;
        column.size = input_.byte() % (_row_size + 1);
        const int64_t rows = stride == 0 ? 1 : column.count;
        column.values = block_(static_cast<size_t>(rows * std::max<int64_t>(stride, _row_size)));
        add_bitmap_(column);
        return column;
    }
    dv_column_t by_offsets_() {
        dv_column_t column{};
        column.count = rows_();
        column.size = input_.byte() * 4;
        column.values = block_(static_cast<size_t>(column.size));
        column.offsets =
            reinterpret_cast<int32_t *>(block_((static_cast<size_t>(column.count) + 1) * sizeof(int32_t)));
        if (input_.byte() % 4 != 0) make_forward_(column);
        add_bitmap_(column);
        return column;
    }
    static void make_forward_(dv_column_t &column) {
        int32_t end = 0;
        for (int64_t i = 0; i <= column.count; ++i) {
            end += static_cast<int32_t>(static_cast<uint32_t>(column.offsets[i]) % 24);
            column.offsets[i] = end;
        }
    }
    void add_bitmap_(dv_column_t &column) {
        const uint8_t choice = input_.byte();
        if (choice % 4 == 0) return;
        column.first_bit = choice % 70;
        column.validity =
            reinterpret_cast<uint8_t *>(block_(static_cast<size_t>(column.first_bit + column.count + 7) / 8));
    }
    dv_column_t column_() {
        const uint8_t shape = input_.byte();
        if (shape % 4 == 0) return by_stride_(0);
        return shape % 4 == 1 ? by_offsets_() : by_stride_(_row_size + shape % 16);
    }

    input_t &input_;
    int64_t count_, longest_count_ = 0;
    std::deque<std::vector<char>> blocks_{};
    std::deque<dv_column_t> columns_{};
    std::deque<dv_key_part_t> parts_{};
    std::deque<dv_decimal_column_t> decimals_{};
    std::deque<number_total_t> totals_{};
    number_totals_t groups_{};
    dv_column_faults_t faults_{};
};

}  // namespace dv::fuzz

#endif  // DV_FUZZ_HOSTILE_COLUMN_H
