// The rows of the catalogue, without an engine: each is whole, no call fits two of them, and each gives what
// it says, of texts without a NUL behind them, too.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <regex>
#include <set>

#include "number_support.h"
#include "plain_engine.h"
#include "project_file.h"

using namespace dv::impl;
using namespace dv::test;

namespace {

constexpr sql_kind _kinds[] = {SQL_KIND_NUMBER,  SQL_KIND_DATE,    SQL_KIND_TIME,  SQL_KIND_TIMESTAMP,
                               SQL_KIND_ITV_YTM, SQL_KIND_ITV_DTS, SQL_KIND_ROWID, SQL_KIND_TS_TZ,
                               SQL_KIND_INTEGER, SQL_KIND_REAL,    SQL_KIND_TEXT,  SQL_KIND_BLOB};

std::vector<const sql_function *> functions_() {
    std::vector<const sql_function *> rows;
    sql_for_each(catalogue.functions, [&](const sql_function &row) { rows.push_back(&row); });
    return rows;
}

std::vector<const sql_aggregate *> aggregates_() {
    std::vector<const sql_aggregate *> rows;
    sql_for_each(catalogue.aggregates, [&](const sql_aggregate &row) { rows.push_back(&row); });
    return rows;
}

std::string describe_(const sql_signature &signature) {
    std::string text = std::string(signature.name) + "(";
    for (int i = 0; i < sql_param_count(signature); ++i)
        text.append(i == 0 ? "" : ", ").append(sql_kind_name(signature.params[i]));
    return text + ")";
}

// Is there a call, without SQL NULL, that both rows take?
bool overlap_(const sql_signature &x, const sql_signature &y) {
    for (int i = 0; i < sql_param_count(x); ++i) {
        const auto fits_both = [&](sql_kind kind) {
            return sql_accepts(x.params[i], kind) && sql_accepts(y.params[i], kind);
        };
        if (std::ranges::none_of(_kinds, fits_both)) return false;
    }
    return true;
}

template <typename Row>
void expect_no_overlap_(const std::vector<const Row *> &rows) {
    for (size_t i = 0; i < rows.size(); ++i) {
        for (size_t j = i + 1; j < rows.size(); ++j) {
            const sql_signature &x = rows[i]->signature, &y = rows[j]->signature;
            EXPECT_FALSE(sql_is_overload(x, y) && overlap_(x, y)) << describe_(x) << " " << describe_(y);
        }
    }
}

TEST(SqlCatalogue, NoCallFitsTwoRows) {
    expect_no_overlap_(functions_());
    expect_no_overlap_(aggregates_());
    std::set<std::pair<std::string, int>> names;
    for (const sql_function *row : functions_())
        names.emplace(row->signature.name, sql_param_count(row->signature));
    for (const sql_aggregate *row : aggregates_())
        EXPECT_FALSE(names.contains({row->signature.name, sql_param_count(row->signature)}))
            << describe_(row->signature);
    const std::vector<const sql_table *> tables(catalogue.tables.begin(), catalogue.tables.end());
    expect_no_overlap_(tables);
    for (const sql_table *one : tables) {
        for (const sql_table *other : tables) {
            if (strcmp(one->signature.name, other->signature.name) != 0) continue;
            EXPECT_TRUE(sql_is_overload(one->signature, other->signature)) << one->signature.name;
            EXPECT_TRUE(
                std::ranges::equal(one->columns, other->columns, {}, &sql_column::name, &sql_column::name))
                << one->signature.name;
        }
    }
}

void expect_whole_(const sql_signature &signature) {
    const std::string row = describe_(signature), manual = signature.manual;
    EXPECT_TRUE(std::regex_match(signature.name, std::regex("[a-z][a-z0-9_]*"))) << row;
    EXPECT_TRUE(!manual.empty() && manual.size() <= 110 && manual.back() != '.') << row;
    const std::string names = signature.param_names;
    const auto commas = std::ranges::count(names, ',');
    EXPECT_EQ(names.empty() ? 0 : commas + 1, sql_param_count(signature)) << row;
    EXPECT_TRUE(std::regex_match(names, std::regex("|[a-z_]+(, [a-z_]+)*"))) << row;
    for (int i = 0; i < SQL_PARAMS_MAX; ++i) {
        const bool is_behind = i >= sql_param_count(signature);
        EXPECT_TRUE(!is_behind || signature.params[i] == SQL_KIND_NONE) << row;
    }
}

// NULL, BLOB and ANY are no types of results.
bool is_result_(sql_kind kind) {
    return sql_type_of(kind) != nullptr || kind == SQL_KIND_INTEGER || kind == SQL_KIND_REAL ||
           kind == SQL_KIND_TEXT;
}

TEST(SqlCatalogue, EveryRowIsWhole) {
    EXPECT_EQ(sql_param_count(functions_()[0]->signature), 0);
    for (const sql_function *row : functions_()) {
        expect_whole_(row->signature);
        EXPECT_TRUE(is_result_(row->signature.result) && row->body != nullptr) << describe_(row->signature);
        EXPECT_TRUE(row->other_result == SQL_KIND_NONE || is_result_(row->other_result));
        EXPECT_LE(sql_overloads_of(*row, catalogue.functions).count, SQL_OVERLOADS_MAX);
        EXPECT_TRUE(row->keeper == nullptr || row->keeper->argument < sql_param_count(row->signature));
        EXPECT_TRUE(row->column_body == nullptr || sql_type_of(row->signature.result) != nullptr);
    }
    for (const sql_aggregate *row : aggregates_()) {
        expect_whole_(row->signature);
        EXPECT_TRUE(is_result_(row->signature.result)) << describe_(row->signature);
        EXPECT_TRUE(row->step && row->inverse && row->combine && row->value) << describe_(row->signature);
        EXPECT_TRUE(row->state_align > 0 && SQL_STATE_ALIGN_MAX % row->state_align == 0);
        EXPECT_LE(sql_overloads_of(*row, catalogue.aggregates).count, SQL_OVERLOADS_MAX);
    }
    for (const sql_table *table : catalogue.tables) {
        expect_whole_(table->signature);
        EXPECT_FALSE(table->columns.empty());
        for (const sql_column &column : table->columns)
            EXPECT_TRUE(is_result_(column.kind)) << table->signature.name << " " << column.name;
    }
}

// ---- values to call with, some of each kind ----

constexpr const char *_texts[] = {"",
                                  "12.5",
                                  "2024-02-29 13:05:07",
                                  "YYYY-MM-DD HH24:MI:SS",
                                  "+01-06",
                                  "1 2:03:04.5",
                                  "MONTH",
                                  "American",
                                  "SECOND",
                                  "TIMEZONE_REGION",
                                  "Asia/Seoul",
                                  "99.9",
                                  "HALF_EVEN",
                                  "monday",
                                  "DDD",
                                  "AAAAABAACAAAAADAAE",
                                  "13:05:07",
                                  "to_timestamp",
                                  ".,"};
// What a reader that runs on finds behind them, so that it would give something else.
constexpr char _junk[] = "9A/";

sql_value of_kind_(sql_kind kind, const std::vector<int> &bytes) {
    sql_value value{};
    value.kind = kind;
    std::vector<uint8_t> record(bytes.begin(), bytes.end());
    const char *fault = sql_type_of(kind)->decode(value, record.data(), static_cast<int>(record.size()));
    EXPECT_EQ(fault, nullptr) << sql_kind_name(kind) << " " << fault;
    return value;
}

std::vector<sql_value> library_values_(sql_kind kind) {
    const auto value = [&](const std::vector<int> &bytes) { return of_kind_(kind, bytes); };
    switch (kind) {
        case SQL_KIND_NUMBER:
            return {value({0x80}), value({0xC1, 0x82}), value({0x3D, 0x7F, 0x64, 0xF0}), value({0xC0, 0x99})};
        case SQL_KIND_DATE:
            return {value({120, 124, 2, 29, 13, 5, 7, 0}), value({120, 101, 1, 31, 0, 0, 0, 0})};
        case SQL_KIND_TIME:
            return {value({13, 5, 7, 0, 0x0E, 0xE6, 0xB2, 0x80}), value({0, 0, 0, 0, 0, 0, 0, 0})};
        case SQL_KIND_TIMESTAMP:
            return {value({120, 124, 2, 29, 13, 5, 7, 0, 0, 0, 0, 9}),
                    value({120, 101, 1, 31, 0, 0, 0, 0, 0, 0, 0, 0})};
        case SQL_KIND_TS_TZ:
            return {value({120, 124, 2, 29, 13, 5, 7, 0, 0, 0, 0, 9, 109, 0, 0, 0x01, 0x2D}),
                    value({120, 101, 1, 31, 0, 0, 0, 0, 0, 0, 0, 0, 95, 30, 0, 0x02, 0x45})};
        case SQL_KIND_ITV_YTM:
            return {value({0x40, 0, 0, 1, 17}), value({0x40, 0, 0, 0, 10})};
        case SQL_KIND_ITV_DTS:
            return {value({0x40, 0, 0, 1, 0x40, 0, 0, 7, 0x40, 0, 0, 0})};
        default:
            return {value({0, 0, 0, 1, 0, 2, 0, 0, 0, 3, 0, 4})};
    }
}

std::vector<sql_value> texts_(bool ends_in_nul) {
    static const std::vector<std::string> running_on = [] {
        std::vector<std::string> texts;
        for (const std::string text : _texts) texts.push_back(text + _junk);
        return texts;
    }();
    std::vector<sql_value> values;
    for (size_t i = 0; i < std::size(_texts); ++i)
        values.push_back(sql_text_value(ends_in_nul ? _texts[i] : running_on[i].data(),
                                        static_cast<int>(strlen(_texts[i]))));
    return values;
}

std::vector<sql_value> values_(sql_kind kind, bool ends_in_nul) {
    if (kind == SQL_KIND_TEXT) return texts_(ends_in_nul);
    if (kind == SQL_KIND_INTEGER)
        return {sql_integer(1), sql_integer(12), sql_integer(2024), sql_integer(-3), sql_integer(1LL << 40)};
    if (kind != SQL_KIND_ANY) return library_values_(kind);
    std::vector<sql_value> values = {sql_null(), sql_integer(-1), sql_real(1.5)};
    for (const sql_kind each : _kinds) {
        if (sql_type_of(each) != nullptr) values.push_back(library_values_(each)[0]);
    }
    return values;
}

// Calls visit(one, other) with arguments of all combinations of values, of some where there are many: texts
// end in a NUL in the one and run on in the other.
void for_each_call_(const sql_signature &signature, auto visit) {
    constexpr size_t most = 20'000;
    std::vector<std::vector<sql_value>> ended, running;
    size_t count = 1;
    for (int i = 0; i < sql_param_count(signature); ++i) {
        ended.push_back(values_(signature.params[i], /*ends_in_nul=*/true));
        running.push_back(values_(signature.params[i], /*ends_in_nul=*/false));
        count *= ended.back().size();
    }
    size_t stride = count / most + 1;
    while (std::gcd(stride, count) != 1) ++stride;  // so that no value of an argument is always passed over
    for (size_t number = 0; number < count; number += stride) {
        std::vector<sql_value> one, other;
        size_t rest = number;
        for (size_t i = 0; i < ended.size(); ++i) {
            one.push_back(ended[i][rest % ended[i].size()]);
            other.push_back(running[i][rest % ended[i].size()]);
            rest /= ended[i].size();
        }
        visit(one, other);
    }
}

TEST(SqlCatalogue, EveryRowGivesItsResultAndReadsTextsToTheirEndAlone) {
    plain_engine engine;
    const long blocks = engine.blocks();
    for (const sql_function *row : functions_()) {
        int results = 0, others = 0;
        const auto overloads = sql_overloads_of(*row, catalogue.functions);
        for_each_call_(row->signature, [&](const auto &ended, const auto &running) {
            const answer_t one = engine.call(overloads.all(), ended);
            const answer_t other = engine.call(overloads.all(), running);
            const bool is_clock = row->volatility != SQL_IMMUTABLE;
            ASSERT_TRUE(one == other || (is_clock && one.kind == other.kind))
                << describe_(row->signature) << ": " << one.text << " | " << other.text;
            const bool is_other = row->other_result != SQL_KIND_NONE && one.kind == row->other_result;
            const bool is_declared = sql_accepts(row->signature.result, one.kind);
            ASSERT_TRUE(is_declared || is_other || one.kind == SQL_KIND_NULL || one.kind == SQL_KIND_NONE)
                << describe_(row->signature) << " gives " << sql_kind_name(one.kind);
            results += is_declared ? 1 : 0;
            others += is_other ? 1 : 0;
        });
        EXPECT_GT(results, 0) << describe_(row->signature);
        EXPECT_TRUE(row->other_result == SQL_KIND_NONE || others > 0) << describe_(row->signature);
    }
    EXPECT_EQ(engine.blocks(), blocks);
}

// ---- try_ forms ----

// What the plain function gives, and SQL NULL where it fails; each plain function has all its overloads
// there.
TEST(SqlCatalogue, TryGivesNullWhereThePlainFunctionFails) {
    plain_engine engine;
    std::set<std::string> names;
    long failures = 0, results = 0;
    for (const sql_function *row : functions_()) {
        const std::string try_name = std::string("try_") + row->signature.name;
        sql_function tried = *row;
        tried.signature.name = try_name.c_str();
        const auto plain = sql_overloads_of(*row, catalogue.functions);
        const auto forms = sql_overloads_of(tried, catalogue.functions);
        if (forms.count == 0) continue;
        ASSERT_EQ(forms.count, plain.count) << describe_(row->signature);
        names.insert(try_name);
        for_each_call_(row->signature, [&](const auto &args, const auto &) {
            const answer_t want = engine.call(plain.all(), args), got = engine.call(forms.all(), args);
            const bool has_failed = want.kind == SQL_KIND_NONE;
            ASSERT_EQ(got, has_failed ? (answer_t{SQL_KIND_NULL, ""}) : want) << describe_(row->signature);
            ++(has_failed ? failures : results);
        });
    }
    EXPECT_EQ(names.size(), 7u);
    EXPECT_TRUE(failures > 1000 && results > 50) << failures << " " << results;
}

// ---- aggregates ----

// A state that takes rows in and out.
class state_t {
  public:
    explicit state_t(const sql_aggregate &row) : row_(row), words_(row.state_size / sizeof(uint64_t) + 1) {}
    void *get() { return words_.data(); }
    void change(decltype(&sql_aggregate::step) how, const sql_value &value) { (row_.*how)(get(), &value); }
    answer_t value() { return plain_engine().value(row_, get()); }

  private:
    const sql_aggregate &row_;
    std::vector<uint64_t> words_;
};

// Parts combined are the whole, what is taken out is as if it had never been in, and of no rows there is
// none.
TEST(SqlCatalogue, StatesOfAggregatesCombineAndGoBack) {
    for (const sql_aggregate *row : aggregates_()) {
        SCOPED_TRACE(describe_(row->signature));
        ASSERT_EQ(sql_param_count(row->signature), 1);
        state_t whole(*row), first(*row), second(*row), moved(*row), empty(*row);
        const std::vector<sql_value> values = values_(row->signature.params[0], /*ends_in_nul=*/true);
        for (size_t i = 0; i < 100; ++i) {
            const sql_value &value = values[i % values.size()], &other = values[i * 7 % values.size()];
            whole.change(&sql_aggregate::step, value);
            (i % 3 == 0 ? first : second).change(&sql_aggregate::step, value);
            moved.change(&sql_aggregate::step, other);
            moved.change(&sql_aggregate::step, value);
            moved.change(&sql_aggregate::inverse, other);
        }
        row->combine(first.get(), second.get());
        row->combine(first.get(), empty.get());
        EXPECT_EQ(whole.value().kind, row->signature.result);
        EXPECT_EQ(first.value(), whole.value());
        EXPECT_EQ(moved.value(), whole.value());
        EXPECT_EQ(empty.value().kind, SQL_KIND_NULL);
    }
}

// ---- sources ----

std::vector<std::string> included_by_(const std::filesystem::path &file) {
    std::ifstream source(file);
    std::vector<std::string> names;
    std::smatch found;
    for (std::string line; std::getline(source, line);) {
        if (std::regex_search(line, found, std::regex("^ *# *include *[<\"](.*)[>\"]")))
            names.push_back(found[1]);
    }
    return names;
}

// The catalogue sees public headers and itself, an adapter the catalogue, too; and no name of an engine
// stands in the catalogue.
TEST(SqlCatalogue, KnowsNoEngineAndNoAreaOfTheLibrary) {
    const std::regex standard("[a-z_]+"), of_catalogue("dvtypes/[a-z_]+\\.h|sql_[a-z_]+\\.h"),
        of_sqlite("sqlite_[a-z_]+\\.h|sqlite3ext\\.h");
    for (const char *folder : {"sql", "sqlite"}) {
        int files = 0;
        for (const auto &entry : std::filesystem::directory_iterator(project_file("src/") + folder)) {
            const std::string extension = entry.path().extension();
            if (extension != ".cpp" && extension != ".h") continue;
            ++files;
            for (const std::string &name : included_by_(entry.path())) {
                const bool is_adapters = folder == std::string("sqlite") && std::regex_match(name, of_sqlite);
                EXPECT_TRUE(is_adapters || std::regex_match(name, standard) ||
                            std::regex_match(name, of_catalogue))
                    << entry.path() << " includes " << name;
            }
            std::ifstream source(entry.path());
            const std::string text{std::istreambuf_iterator<char>(source), {}};
            EXPECT_TRUE(folder != std::string("sql") ||
                        !std::regex_search(text, std::regex("[Ss][Qq][Ll]ite")))
                << entry.path();
        }
        EXPECT_GT(files, 5) << folder;
    }
}

}  // namespace
