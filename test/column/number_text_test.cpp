#include <gtest/gtest.h>

#include "column_support.h"
#include "dvtypes/column_number.h"
#include "dvtypes/number_fmt.h"

namespace dv::test {
namespace {

constexpr values_t _numbers = {values_t::number, 0};

std::string text_of_(const number_t &x) {
    char text[NUMBER_NORMAL_TEXT_SIZE];
    number_to_str(&x, sizeof text, text, nullptr);
    return text;
}

// Up to sixteen characters: amounts, and digits with a point anywhere.
std::string short_text_(number_source &source) {
    std::string text = source.pick(0, 2) == 0 ? "-" : "";
    const int digits = source.pick(1, 16);
    for (int i = 0; i < digits; ++i)
        text += static_cast<char>(source.pick(0, 4) == 0 ? '0' : source.pick('0', '9'));
    if (source.pick(0, 3) != 0)
        text.insert(static_cast<size_t>(source.pick(0, static_cast<int>(text.size()))), ".");
    return text;
}

// With a character changed, put in or left out.
std::string spoiled_(number_source &source, std::string text) {
    static constexpr std::string_view any = "0123456789....--++eE ,xX/:\xFF";
    const char c = any[static_cast<size_t>(source.pick(0, static_cast<int>(any.size()) - 1))];
    const auto place = static_cast<size_t>(source.pick(0, static_cast<int>(text.size())));
    if (source.pick(0, 1) == 0 || place == text.size()) return text.insert(place, 1, c);
    if (source.pick(0, 1) == 0) return text.erase(place, 1);
    text[place] = c;
    return text;
}

rows_t random_texts_(uint64_t seed) {
    number_source source(seed);
    rows_t rows;
    for (long i = 0; i < scaled(100'000); ++i) {
        std::string text = source.pick(0, 3) == 0 ? text_of_(source.any()) : short_text_(source);
        while (source.pick(0, 9) == 0) text = spoiled_(source, text);
        rows.push_back(source.pick(0, 20) == 0 ? std::nullopt : row_t(text));
    }
    rows.insert(rows.end(), {"", "-", ".", "-.", "0", "-0", "1.", ".5", "1.2.3", "12-3", "--1"});
    return rows;
}

values_t texts_like_(const rows_t &rows) {
    int64_t width = 0;
    for (const row_t &row : rows) width = std::max(width, static_cast<int64_t>(row.value_or("").size()));
    return {values_t::text, width};
}

TEST(NumberColumn, ReadsTextsAsTheFunctionForOneText) {
    const rows_t texts = random_texts_(1);
    column_case_t c = {{texts}, {texts_like_(texts)}, _numbers};
    c.room = static_cast<int64_t>(texts.size()) * 22;
    c.run = [](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
        number_column_from_text(operands[0], result, faults);
    };
    c.single = [](const std::vector<std::string> &values) {
        return number_outcome({}, [&](number_t *x) {
            number_from_str(x, static_cast<int>(values[0].size()), values[0].c_str(), nullptr);
        });
    };
    EXPECT_EQ(column_fault(c), "");
}

rows_t random_numbers_(uint64_t seed) {
    number_source source(seed);
    rows_t rows;
    for (long i = 0; i < scaled(60'000); ++i) {
        number_t x = source.any();
        if (source.pick(0, 1) == 0) {
            const std::string text = short_text_(source);
            if (number_try_from_str(&x, static_cast<int>(text.size()), text.c_str()) != 0) continue;
        }
        rows.push_back(source.pick(0, 20) == 0 ? std::nullopt : row_of(x));
    }
    for (const number_t *x : {_number_zero, _number_posinf, _number_negzero, _number_max, _number_min})
        rows.push_back(row_of(*x));
    return rows;
}

// Writing: `single` writes one value into `size` bytes.
template <typename Columns, typename Single>
std::string writing_fault_(const rows_t &numbers, int size, Columns columns, Single single) {
    column_case_t c = {{numbers}, {_numbers}, {values_t::text, size}};
    c.room = static_cast<int64_t>(numbers.size()) * size;
    c.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
        columns(operands[0], result, faults);
    };
    c.single = [&](const std::vector<std::string> &values) {
        const number_t x = number_of(values[0]);
        std::string text(static_cast<size_t>(size), '\0');
        const int code = raise_of([&] { single(&x, size, text.data()); });
        return code != 0 ? row_outcome_t{code, std::nullopt} : row_outcome_t{0, text.c_str()};
    };
    return column_fault(c);
}

TEST(NumberColumn, WritesTextsAsTheFunctionForOneText) {
    const auto single = [](const number_t *x, int size, char *str) { number_to_str(x, size, str, nullptr); };
    rows_t numbers = random_numbers_(2);
    number_source source(8);
    const assertion_watch quiet;
    for (const row_t &row : numbers_with_any_byte(source)) numbers.push_back(row);
    EXPECT_EQ(writing_fault_(numbers, NUMBER_NORMAL_TEXT_SIZE, number_column_to_text, single), "");
}

// A NUL needs no room in a row.
TEST(NumberColumn, ShortensTextsToTheirStride) {
    const rows_t numbers = random_numbers_(3);
    for (const int size : {0, 1, 2, 5, 16, 17, 18, 40, 49, 50}) {
        const size_t count = std::min<size_t>(numbers.size(), 2000);
        test_column x({numbers.begin(), numbers.begin() + static_cast<long>(count)}, _numbers, {false, 0, 0});
        for (each_level levels; levels.next();) {
            test_column texts(static_cast<int64_t>(count), {values_t::text, size}, {false, 3, 0}, 0);
            std::vector<int32_t> codes(count);
            dv_column_faults_t faults = {codes.data(), nullptr, 0, 0, 0, 0};
            number_column_to_text(x.get(), texts.get(), &faults);
            EXPECT_TRUE(texts.intact());
            for (size_t i = 0; i < count; ++i) {
                if (!numbers[i]) continue;
                const number_t value = number_of(*numbers[i]);
                char alone[64] = "";
                const int code = raise_of([&] { number_to_str(&value, size + 1, alone, nullptr); });
                ASSERT_EQ(codes[i], code) << describe(value) << " in " << size;
                const row_t wanted = code == 0 ? row_t(alone) : std::nullopt;
                ASSERT_EQ(texts.row(static_cast<int64_t>(i)), wanted) << describe(value) << " in " << size;
            }
        }
    }
}

constexpr const char *_models[] = {"999,999,990.00",
                                   "FM9990.09",
                                   "FM999,999,990.00",
                                   "9.9",
                                   "FM9.9",
                                   "FM.99",
                                   ".0",
                                   "0,009.990",
                                   "FM9,999,",
                                   "9G999D99",
                                   "FM09.",
                                   "9",
                                   "000000",
                                   "999,999,999",
                                   "S099",
                                   "$9,999.99PR",
                                   "TM9",
                                   "tme",
                                   "9.99EEEE",
                                   "XXXX",
                                   "RN",
                                   "FMRN",
                                   "FM99C",
                                   "9,9,9,9,9.9"};

TEST(NumberColumn, WritesUnderModelsAsTheFunctionForOneText) {
    rows_t numbers = random_numbers_(4);
    numbers.resize(numbers.size() / 30);
    number_source source(7);
    const assertion_watch quiet;
    for (const row_t &row : numbers_with_any_byte(source, {1, 2, 5})) numbers.push_back(row);
    for (const char *model : _models) {
        const auto length = static_cast<int>(strlen(model));
        const auto columns = [&](const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
            number_column_to_text_fmt(x, length, model, result, faults);
        };
        const auto single = [&](const number_t *x, int size, char *str) {
            number_to_str_fmt(x, size, str, length, model);
        };
        EXPECT_EQ(writing_fault_(numbers, NUMBER_FMT_TEXT_SIZE, columns, single), "") << model;
    }
}

// Texts written under the model, some of them spoiled.
rows_t texts_under_(std::string_view model, uint64_t seed) {
    number_source source(seed);
    rows_t rows;
    for (long i = 0; i < scaled(3'000); ++i) {
        number_t x;
        number_from_double(&x, source.pick(-1'000'000, 1'000'000) / 100.0);
        char text[NUMBER_FMT_TEXT_SIZE];
        number_to_str_fmt(&x, sizeof text, text, static_cast<int>(model.size()), model.data());
        std::string row = text;
        while (source.pick(0, 3) == 0) row = spoiled_(source, row);
        rows.push_back(source.pick(0, 20) == 0 ? std::nullopt : row_t(row));
    }
    rows.emplace_back("");
    return rows;
}

TEST(NumberColumn, ReadsUnderModelsAsTheFunctionForOneText) {
    for (const char *model : _models) {
        if (strstr(model, "RN") != nullptr) continue;
        const auto length = static_cast<int>(strlen(model));
        const rows_t texts = texts_under_(model, 5);
        column_case_t c = {{texts}, {texts_like_(texts)}, _numbers};
        c.room = static_cast<int64_t>(texts.size()) * 22;
        c.run = [&](dv_column_t *const *operands, dv_column_t *result, dv_column_faults_t *faults) {
            number_column_from_text_fmt(operands[0], length, model, result, faults);
        };
        c.single = [&](const std::vector<std::string> &values) {
            return number_outcome({}, [&](number_t *x) {
                const std::string &text = values[0];
                number_from_str_fmt(x, static_cast<int>(text.size()), text.c_str(), length, model);
            });
        };
        EXPECT_EQ(column_fault(c), "") << model;
    }
}

// Offsets of any value: a row has the bytes that they give it, or -5120.
TEST(NumberColumn, BelievesNoOffsets) {
    number_source source(6);
    // Digits in front of the column and behind it, which no row may show.
    constexpr std::string_view around = "12.5-3.758.25199.9917.0000000.21";
    const std::string digits = std::string(around) + std::string(around) + std::string(around);
    char *const text = const_cast<char *>(digits.data()) + around.size();
    constexpr int rows = 64;
    for (long round = 0; round < scaled(200); ++round) {
        std::vector<int32_t> offsets(rows + 1);
        for (int32_t &offset : offsets) offset = source.pick(-2, 34);
        for (const int32_t extreme : {INT32_MIN, INT32_MAX, -1})
            offsets[static_cast<size_t>(source.pick(0, rows))] = extreme;
        dv_column_t texts = {rows, text, 0, offsets.data(), 32, nullptr, 0};
        for (each_level levels; levels.next();) {
            std::vector<number_t> values(rows);
            std::vector<int32_t> codes(rows);
            dv_column_t numbers = {rows, values.data(), sizeof(number_t), nullptr, 0, nullptr, 0};
            dv_column_faults_t faults = {codes.data(), nullptr, 0, 0, 0, 0};
            number_column_from_text(&texts, &numbers, &faults);
            for (size_t i = 0; i < rows; ++i) {
                const int32_t begin = offsets[i], end = offsets[i + 1];
                number_t alone{};
                int code = -5120;
                if (begin >= 0 && begin <= end && end <= 32)
                    code = begin == end ? -5074 : number_try_from_str(&alone, end - begin, text + begin);
                ASSERT_EQ(codes[i], code) << begin << " to " << end;
                ASSERT_EQ(values[i], code == 0 ? alone : number_t{}) << begin << " to " << end;
            }
        }
    }
}

// A text of the caller, and a raise that no row has caused.
TEST(NumberColumn, RaisesForWhatIsNoModel) {
    number_t x = *_number_one;
    char text[32];
    dv_column_t numbers = {1, &x, sizeof x, nullptr, 0, nullptr, 0};
    dv_column_t texts = {1, text, sizeof text, nullptr, sizeof text, nullptr, 0};
    dv_column_faults_t faults{};
    EXPECT_EQ(raise_of([&] { number_column_to_text_fmt(&numbers, 2, "9Q", &texts, &faults); }), -5075);
    EXPECT_EQ(raise_of([&] { number_column_from_text_fmt(&texts, 2, "9Q", &numbers, &faults); }), -5075);
    EXPECT_EQ(raise_of([&] { number_column_from_text_fmt(&texts, 2, "RN", &numbers, &faults); }), -3006);
    EXPECT_EQ(raise_of([&] { number_column_from_text_fmt(&texts, 4, "FMRN", &numbers, &faults); }), -5075);
}

// A run that raises: the codes of number_from_str, the rows in front of it done.
TEST(NumberColumn, RaisesWhatTheFunctionForOneTextRaises) {
    char text[] = "17x";
    int32_t offsets[] = {0, 1, 2, 3};
    number_t values[3];
    dv_column_t texts = {3, text, 0, offsets, 3, nullptr, 0};
    dv_column_t numbers = {3, values, sizeof *values, nullptr, 0, nullptr, 0};
    dv_column_faults_t faults{};
    faults.raises = 1;
    dv_error_t error;
    struct call_t {
        dv_column_t *texts, *numbers;
        dv_column_faults_t *faults;
    } call = {&texts, &numbers, &faults};
    const auto run = [](void *arg) {
        const auto &c = *static_cast<call_t *>(arg);
        number_column_from_text(c.texts, c.numbers, c.faults);
    };
    EXPECT_EQ(dv_protect(run, &call, &error), -5074);
    EXPECT_STREQ(error.function, "number_from_str");
    EXPECT_EQ(faults.first, 2);
    EXPECT_EQ(values[1], num("7"));
}

}  // namespace
}  // namespace dv::test
