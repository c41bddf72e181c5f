// Values converted many at once are what the SQL functions give, and what these refuse is left to them.

#include "conversion.h"

#include <random>

#include "../sqlite/sqlite_session.h"
#include "number_support.h"

using namespace dv::import;
using namespace dv::test;

namespace {

struct conversion_case {
    const char *columns;             // a field, as --columns has it
    std::vector<std::string> texts;  // which are changed a little
    int known;                       // in a hundred of those texts that have a value, at least
};

// Texts that no column takes, or takes only as the functions see it: with NULs, long, at the calendar's ends,
// at gaps and folds of zones.
const std::vector<std::string> _hostile = {std::string("1\0", 2),
                                           std::string(5000, ' ') + "1",
                                           std::string(5000, '0') + "1",
                                           "9999-12-31 23:59:59.999999999",
                                           "-4713-01-01",
                                           "0001-01-01 00:00:00 +05:00",
                                           "-0044-03-15 12:00:00 Europe/Rome",
                                           "9999-12-31 20:00:00 -09:00",
                                           "1582-10-10",
                                           "2024-03-31 02:30:00 Europe/Berlin",
                                           "2024-10-27 02:30:00 Europe/Berlin CET",
                                           "1E125",
                                           "1E-131",
                                           "\xC3\xA9",
                                           " ",
                                           "\""};

const std::vector<std::string> _iso = {"2024-02-29 13:05:00.123456789", "1996-02-29",
                                       "2024-02-29T23:59:59.9999", "2024-10-27 02:30:00 Europe/Paris CEST",
                                       "1912-01-01 12:00 +09:00"};
const std::vector<std::string> _day_first = {"29.02.2024", "31.12.1999", "1.1.2000"};
const std::vector<std::string> _amounts = {"1,234.50", "0.05", "-999,990.99", "12"};
const std::vector<std::string> _german = {"1.234,50", "0,05", "-9.990,9", "12", " 7,5 ", "-,5"};

const conversion_case _cases[] = {
    {"c NUMBER", {"12.50", "-1E+20", " 7 ", ".5", "123456789012345678901234567890123456789012"}, 95},
    {"c NUMBER(10,2)", {"12.505", "99999999.995", "-0.005", "1E9"}, 95},
    {"c NUMBER(5,-2)", {"1250", "-9999950", "49", "12345.678"}, 95},
    {"c NUMBER(38,127)", {"1E-100", "0", "-1E-127"}, 95},
    {"c NUMBER 'FM999,990.00'", _amounts, 95},
    {"c NUMBER(6,1) 'FM999,990.00'", _amounts, 95},
    {"c NUMBER(6,1) 'FM9G999D99' ',.'", _german, 50},
    {"c NUMBER 'FM9G999D99' ', '", {"1 234,50", "0,05", " 7,5 ", "1 2,5"}, 50},
    {"c NUMBER 'FM9G999D99' '\xC2\xB7,'",
     {"1,234\xC2\xB7"
      "50",
      "7"},
     0},
    {"c DATE", _iso, 90},
    {"c DATE 'DD.MM.YYYY'", _day_first, 90},
    {"c DATE 'DD.MM.YYYY AD'", {"15.03.0044 BC", "15.03.2044 AD"}, 10},
    {"c DATE 'DD.MM.RR'", {"29.02.24", "31.12.99"}, 90},
    {"c DATE 'DD.MM'", {"29.02", "31.12"}, 0},
    {"c DATE 'DD MONTH YYYY' 'RUSSIAN'",
     {"31 \u041C\u0410\u0420\u0422 2024", "1 \u0430\u043F\u0440 1999"},
     90},
    {"c TIMESTAMP", _iso, 90},
    {"c TIMESTAMP(3)", _iso, 90},
    {"c TIMESTAMP(0) 'DD.MM.YYYY HH24:MI:SS.FF'", {"29.02.2024 23:59:59.5", "31.12.1999 0:0:0.49"}, 90},
    {"c 'TIMESTAMP WITH TIME ZONE'", _iso, 90},
    {"c 'TIMESTAMP(1) WITH TIME ZONE'", _iso, 90},
    {"c TIMESTAMP WITH TIME ZONE 'DD.MM.YYYY HH24:MI TZR'",
     {"29.02.2024 13:05 Asia/Seoul", "31.03.2024 01:59 Europe/Berlin", "01.01.2000 0:00 -07:30"},
     90},
    {"c TIMESTAMP WITH TIME ZONE 'DD.MM.YYYY HH24:MI TZD'", {"26.10.2025 02:30 CEST"}, 0},
};

class Conversion : public testing::Test {
  protected:
    // One of the texts, mostly with one or two characters changed, taken out or put in.
    std::string text_(const std::vector<std::string> &texts) {
        constexpr std::string_view marks("0123456789.,-+ :/TZeE\0\x80", 23);
        std::string text = texts[random_() % texts.size()];
        for (auto left = random_() % 3; left > 0 && !text.empty(); --left) {
            const size_t at = random_() % text.size();
            text.replace(at, random_() % 2, random_() % 4, marks[random_() % marks.size()]);
        }
        return text;
    }

    // The value of a text by the SQL functions, as it is stored; nothing where it is refused.
    std::string by_sql_(sqlite3_stmt *statement, const std::string &text) {
        sqlite3_bind_text(statement, 1, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
        std::string stored;
        if (sqlite3_step(statement) == SQLITE_ROW)
            stored.assign(static_cast<const char *>(sqlite3_column_blob(statement, 0)),
                          static_cast<size_t>(sqlite3_column_bytes(statement, 0)));
        sqlite3_reset(statement);
        return stored;
    }

    void compare_(conversion &of, sqlite3_stmt *statement, const std::vector<std::string> &texts) {
        of.clear();
        for (const std::string &text : texts) of.add(text);
        of.convert();
        for (size_t i = 0; i < texts.size(); ++i) {
            const auto stored = of.stored(i);
            EXPECT_EQ(of.is_known(i), texts[i].empty() || !stored.empty());
            if (texts[i].empty()) continue;
            const std::string expected = by_sql_(statement, texts[i]);
            valued_ += expected.empty() ? 0 : 1;
            known_ += stored.empty() ? 0 : 1;
            if (stored.empty()) continue;
            ASSERT_EQ(testing::PrintToString(std::string(stored.begin(), stored.end())),
                      testing::PrintToString(expected))
                << testing::PrintToString(texts[i]);
        }
    }

    sqlite_session session_;
    std::minstd_rand random_{20};
    long valued_ = 0, known_ = 0;
};

TEST_F(Conversion, GivesWhatTheSqlFunctionsStore) {
    for (const conversion_case &each : _cases) {
        SCOPED_TRACE(each.columns);
        const std::vector<column> columns = parse_columns(each.columns);
        const auto of = conversion::of(columns[0]);
        ASSERT_TRUE(of != nullptr);
        sqlite3_stmt *statement = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(session_.db(), ("SELECT " + columns[0].value_of("?")).c_str(), -1,
                                     &statement, nullptr),
                  SQLITE_OK);
        valued_ = known_ = 0;
        for (long round = 0; round < scaled(20); ++round) {
            std::vector<std::string> texts;
            for (auto left = random_() % 300; left > 0; --left)
                texts.push_back(text_(random_() % 16 == 0 ? _hostile : each.texts));
            ASSERT_NO_FATAL_FAILURE(compare_(*of, statement, texts));
        }
        EXPECT_EQ(known_ > 0, each.known > 0);
        EXPECT_GE(known_ * 100, valued_ * each.known) << known_ << " of " << valued_;
        sqlite3_finalize(statement);
    }
}

TEST_F(Conversion, IsNoneWhereACallHasNoBodyOverColumns) {
    for (const char *columns : {"c TEXT", "c INTERVAL DAY TO SECOND", "c TIME", "-", "c DATE 'YYYY YYYY'",
                                "c DATE 'DD' 'KLINGON'", "c DATE 'DD' '' NOT NULL"}) {
        const bool is_plain = std::string_view(columns).ends_with("NULL");
        EXPECT_EQ(conversion::of(parse_columns(columns)[0]) != nullptr, is_plain) << columns;
    }
}

}  // namespace
