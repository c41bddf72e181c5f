#include <gtest/gtest.h>

#include "decimal_support.h"

namespace dv::test {
namespace {

// Texts near what is read at once: digits, a point, sometimes what does not belong.
std::string text_(number_source &source) {
    std::string text;
    if (source.pick(0, 3) == 0) text += source.pick(0, 3) == 0 ? '+' : '-';
    const int integer = source.pick(0, 20), fraction = source.pick(0, 12);
    for (int i = 0; i < integer; ++i) text += static_cast<char>('0' + source.pick(0, 9));
    if (source.pick(0, 5) != 0) text += '.';
    for (int i = 0; i < fraction; ++i)
        text += static_cast<char>('0' + (source.pick(0, 2) == 0 ? 5 : source.pick(0, 9)));
    if (!text.empty() && source.pick(0, 15) == 0) {
        constexpr char odd[] = " .-+eEx/:\x01\xB5";
        text[static_cast<size_t>(source.pick(0, static_cast<int>(text.size()) - 1))] =
            odd[source.pick(0, 10)];
    }
    return text;
}

TEST(DecimalColumn, ReadsTextAsNumbersForcedToPrecisionAndScale) {
    number_source source(13);
    for (const decimal_type_t &type : decimal_types) {
        rows_t rows;
        for (long i = 0; i < scaled(5000); ++i) {
            rows.push_back(source.pick(0, 30) == 0 ? std::nullopt : row_t(text_(source)));
        }
        column_case_t columns = {{rows}, {{values_t::text, 40}}, kind_of(type)};
        columns.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
            dv_decimal_column_t z = decimals(*result, type);
            dv_decimal_column_from_text(operands[0], &z, faults);
        };
        columns.single = [&](const std::vector<std::string> &values) -> row_outcome_t {
            number_t x;
            const int code = raise_of([&] {
                number_from_str(&x, 0, values[0].c_str(), nullptr);
                number_force_prec_scale(&x, type.precision, type.scale);
            });
            return code != 0 ? row_outcome_t{code, {}} : decimal_from_number(type, x);
        };
        EXPECT_EQ(column_fault(columns), "") << type.bytes << "," << type.precision << "," << type.scale;
    }
}

TEST(DecimalColumn, WritesAllDigitsOfTheScale) {
    decimal_source source(14);
    for (const decimal_type_t &type : decimal_types) {
        rows_t rows = source.rows(type, scaled(5000));
        for (size_t i = 0; i < rows.size(); ++i) {  // blocks in which all fit a vector
            if (rows[i] && i / 64 % 2 != 0)
                rows[i] = decimal_row(type, decimal_value(*rows[i]) % 1'000'000'000'000'000);
        }
        column_case_t columns = {{rows}, {kind_of(type)}, {values_t::text, DV_DECIMAL_TEXT_MAX}};
        columns.room = static_cast<int64_t>(rows.size()) * DV_DECIMAL_TEXT_MAX;
        columns.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
            const dv_decimal_column_t x = decimals(*operands[0], type);
            dv_decimal_column_to_text(&x, result, faults);
        };
        columns.single = [&](const std::vector<std::string> &values) -> row_outcome_t {
            const big_t value = big_of(decimal_value(values[0]));
            std::string digits = big_t(abs(value)).str();
            const auto fraction = static_cast<size_t>(std::max(type.scale, 0));
            if (digits.size() <= fraction) digits.insert(0, fraction + 1 - digits.size(), '0');
            if (fraction != 0) digits.insert(digits.size() - fraction, ".");
            if (type.scale < 0 && value != 0) digits.append(static_cast<size_t>(-type.scale), '0');
            return {0, (value < 0 ? "-" : "") + digits};
        };
        EXPECT_EQ(column_fault(columns), "") << type.bytes << "," << type.precision << "," << type.scale;
    }
}

TEST(DecimalColumn, FillsTextsToTheLastByte) {
    int64_t values[] = {-123456789012345678, 5, 12345};
    char bytes[21 + 4 + 6];
    int32_t offsets[4];
    dv_decimal_column_t x = {{3, values, 8, nullptr, 0, nullptr, 0}, 8, 18, 2};
    dv_column_t text = {3, bytes, 0, offsets, 0, nullptr, 0};
    int32_t codes[3];
    for (text.size = 0; text.size <= 20 + 4 + 6; ++text.size) {
        dv_column_faults_t faults = {codes, nullptr, 0, 0, 0, 0};
        std::memset(bytes, '#', sizeof bytes);
        dv_decimal_column_to_text(&x, &text, &faults);
        std::string expected;
        for (int i = 0; i < 3; ++i) {
            const std::string all[] = {"-1234567890123456.78", "0.05", "123.45"};
            const bool fits = expected.size() + all[i].size() <= static_cast<size_t>(text.size);
            if (fits) expected += all[i];
            EXPECT_EQ(codes[i], fits ? 0 : -3005);
        }
        EXPECT_EQ(std::string(bytes, static_cast<size_t>(offsets[3])), expected);
        EXPECT_EQ(bytes[text.size], '#');
    }
}

}  // namespace
}  // namespace dv::test
