// Rowids: both text forms against a long-hand reader, and what is wrong with a text, in which order.

#include <gtest/gtest.h>

#include "dvtypes/erowid.h"
#include "dvtypes/nerowid.h"
#include "number_support.h"

using namespace dv::test;

namespace {

using wide_t = __int128;

// Adds up digits from the right, by place values, on top of sum: the result, or the code of what is met.
wide_t read(const char *text, size_t digits, int overflow, wide_t sum = 0) {
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const wide_t max = digits == 3 ? UINT16_MAX : digits == 6 ? UINT32_MAX : UINT64_MAX;
    for (size_t step = 0; step < digits; ++step) {
        const size_t digit = alphabet.find(text[digits - 1 - step]);
        if (digit == alphabet.npos) return -5080;
        sum += static_cast<wide_t>(digit) << 6 * step;
        if (sum > max) return overflow;
    }
    return sum;
}

// The number that a reader of the library gives, or the code that it raises.
template <typename Text, typename Number>
wide_t ours_of(void (*get)(const Text *, Number *), const Text &text, Number number = 0) {
    const int code = raise_of([&] { get(&text, &number); });
    return code != 0 ? code : wide_t{number};
}

void check_reading(const erowid_t &form) {
    const wide_t sgmt = read(form.text, 6, -5081), block = read(form.text + 9, 6, -5081);
    const wide_t file = read(form.text + 6, 3, -5082), row = read(form.text + 15, 3, -5084);
    // Of two fields side by side a bad character comes first, then the field on the left: the greater code.
    const auto first = [](wide_t x, wide_t y) { return x < 0 && y < 0 ? std::max(x, y) : std::min(x, y); };
    const wide_t fault = first(sgmt, block) < 0 ? first(sgmt, block) : first(file, row);
    rowid_t rowid;
    EXPECT_TRUE(ours_of(erowid_get_sgmt, form) == sgmt && ours_of(erowid_get_file, form) == file &&
                ours_of(erowid_get_block, form) == (block == -5081 ? -5083 : block) &&
                ours_of(erowid_get_row, form) == row &&
                raise_of([&] { erowid_get_rowid(&form, &rowid); }) == std::min<wide_t>(fault, 0))
        << std::string(form.text, sizeof form);
}

// Every byte at every position of the texts of random and of the largest numbers, some beside another fault.
TEST(RowidText, ReadsWhatItWritesOrReportsTheFirstFault) {
    number_source source(81);
    for (size_t round = 0; round < size_t{18} * 11 * 256; ++round) {
        rowid_t rowid{UINT32_MAX, UINT32_MAX, UINT16_MAX, UINT16_MAX}, back;
        if (round % 5 != 0) source.fill(&rowid, sizeof rowid);
        erowid_t form;
        erowid_new(&form, rowid.sgmt, rowid.file, rowid.block, rowid.row);
        erowid_get_rowid(&form, &back);
        ASSERT_TRUE(rowid_equals(rowid, back)) << round;
        form.text[round % 18] = static_cast<char>(round / 18);
        check_reading(form);
        form.text[source.pick(0, 17)] = ".=/PQDE"[source.pick(0, 6)];
        check_reading(form);

        const nrowid_t number = source.bits() >> (round & 63), sum = source.bits() >> (round / 8 & 63);
        nerowid_t row_form;
        nerowid_new(&row_form, number);
        ASSERT_TRUE(ours_of(nerowid_get_rowid, row_form) == number) << number;
        row_form.text[round % 11] = static_cast<char>(round / 11);
        ASSERT_TRUE(ours_of(nerowid_get_rowid, row_form, sum) == read(row_form.text, 11, -5080, sum)) << sum;
    }
}

TEST(Rowid, ComparesAndPrints) {
    const rowid_t rowid{~0u, 3, 9, 4};
    for (const rowid_t &other : {rowid_t{~0u, 3, 9, 5}, {~0u, 3, 8, 4}, {~0u, 2, 9, 4}, {1, 3, 9, 4}})
        EXPECT_FALSE(rowid_equals(rowid, other));
    testing::internal::CaptureStdout();
    rowid_print(rowid);
    const std::string want = "Sgmt No : -1, Rel File No : 9, Blk No : 3, Row No : 4\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), want);
}

}  // namespace
