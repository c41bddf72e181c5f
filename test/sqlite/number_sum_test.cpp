// dv_sum and dv_avg against big integers: any order, any cancellation, any window frame, one rounding.

#include <algorithm>
#include <optional>

#include "decimal_reference.h"
#include "sqlite_session.h"

using namespace dv::test;

namespace {

using texts_t = std::vector<std::string>;

// Values over the whole range, most of them with a partner that cancels them.
texts_t cancelling_values_(std::mt19937_64 &random, int count) {
    texts_t values;
    while (static_cast<int>(values.size()) < count) {
        std::string text = random_decimal(random, -130, 124);
        values.push_back(text);
        if (random() % 8 == 0) continue;
        values.push_back(text[0] == '-' ? text.substr(1) : "-" + text);
    }
    std::ranges::shuffle(values, random);
    return values;
}

// Table t(id, v).
void fill_(sqlite_session &session, const texts_t &values) {
    session.run("DROP TABLE IF EXISTS t");
    session.run("CREATE TABLE t(id INTEGER PRIMARY KEY, v NUMBER)");
    for (size_t i = 0; i < values.size(); ++i) {
        const std::string number = values[i] == "NULL" ? "NULL" : "to_number('" + values[i] + "')";
        session.run("INSERT INTO t VALUES (" + std::to_string(i) + ", " + number + ")");
    }
}

struct reference_t {
    big_t sum = 0;
    int count = 0;
};

reference_t reference_of_(std::span<const std::string> values) {
    reference_t reference;
    for (const std::string &text : values) {
        if (text == "NULL") continue;
        reference.sum += big_from_text(text);
        ++reference.count;
    }
    return reference;
}

void expect_sum_and_average_(const row_t &got, const reference_t &want) {
    if (want.count == 0) {
        EXPECT_EQ(got, (row_t{"NULL", "NULL"}));
        return;
    }
    EXPECT_EQ(big_from_text(got[0]), rounded_to_38(want.sum)) << got[0];
    EXPECT_EQ(big_from_text(got[1]), rounded_to_38(want.sum / want.count)) << got[1];
}

constexpr const char *_both = "SELECT dv_text(dv_sum(v)), dv_text(dv_avg(v)) FROM ";

}  // namespace

TEST(SqlNumberSum, IsExactInAnyOrder) {
    sqlite_session session;
    std::mt19937_64 random(17);
    for (int round = 0; round < 40; ++round) {
        const texts_t values = cancelling_values_(random, 1 + 5 * round);
        fill_(session, values);
        const reference_t want = reference_of_(values);
        for (const char *order : {"id", "v", "v DESC"}) {
            SCOPED_TRACE(order);
            const std::string rows = std::string("(SELECT v FROM t ORDER BY ") + order + " LIMIT -1)";
            expect_sum_and_average_(session.rows(_both + rows)[0], want);
        }
    }
}

TEST(SqlNumberSum, FollowsMovingFrames) {
    struct frame_case {
        const char *frame;
        int first, last;  // rows from the current one
    };
    constexpr int far = 1000;
    constexpr frame_case frames[] = {
        {"ROWS BETWEEN 3 PRECEDING AND 2 FOLLOWING", -3, 2},
        {"ROWS BETWEEN 5 PRECEDING AND 4 PRECEDING", -5, -4},  // empty at first
        {"ROWS BETWEEN UNBOUNDED PRECEDING AND CURRENT ROW", -far, 0},
        {"ROWS BETWEEN CURRENT ROW AND UNBOUNDED FOLLOWING", 0, far},
    };
    sqlite_session session;
    std::mt19937_64 random(19);
    texts_t values = cancelling_values_(random, 150);
    for (int i = 0; i < 20; ++i) values[random() % values.size()] = "NULL";
    fill_(session, values);
    const int size = static_cast<int>(values.size());
    for (const frame_case &c : frames) {
        SCOPED_TRACE(c.frame);
        const auto got =
            session.rows(std::string("SELECT dv_text(dv_sum(v) OVER w), dv_text(dv_avg(v) OVER w) FROM t "
                                     "WINDOW w AS (ORDER BY id ") +
                         c.frame + ")");
        for (int i = 0; i < size; ++i) {
            const int first = std::clamp(i + c.first, 0, size);
            const int last = std::clamp(i + c.last + 1, first, size);
            const auto frame =
                std::span(values).subspan(static_cast<size_t>(first), static_cast<size_t>(last - first));
            expect_sum_and_average_(got[static_cast<size_t>(i)], reference_of_(frame));
        }
    }
}

TEST(SqlNumberSum, CarriesOverManyRows) {
    sqlite_session session;
    const auto of_rows = [&](int count, const std::string &value, const char *aggregate) {
        return session.value("WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM r LIMIT " +
                             std::to_string(count) + ") SELECT dv_text(" + aggregate + "(" + value +
                             ")) FROM r");
    };
    const std::string nines = "9.9999999999999999999999999999999999999";  // 38 digits
    const std::string greatest = "to_number('" + nines + "E125')";
    EXPECT_EQ(big_from_text(of_rows(200'000, "to_number('" + nines + "')", "dv_sum")),
              rounded_to_38(200'000 * big_from_text(nines)));
    EXPECT_EQ(of_rows(200'000, greatest, "dv_avg"), nines + "E+125");
    EXPECT_EQ(of_rows(200'000, "dv_neg(" + greatest + ")", "dv_avg"), "-" + nines + "E+125");
    EXPECT_EQ(of_rows(100'001, "CASE i % 2 WHEN 0 THEN 1e100 ELSE -1e100 END", "dv_sum"), "-1E+100");
    EXPECT_EQ(of_rows(100'000, "0.1", "dv_sum"), "10000");
    EXPECT_EQ(of_rows(3, "9223372036854775807", "dv_sum"), "27670116110564327421");
}

TEST(SqlNumberSum, RangeCountsForTheResultOnly) {
    sqlite_session session;
    const auto sum = [&](const char *values) {
        return session.value(std::string("SELECT dv_text(dv_sum(to_number(column1))) FROM (VALUES ") +
                             values + ")");
    };
    EXPECT_EQ(sum("('9E125'), ('9E125'), ('-9E125'), ('-8E125')"), "1E+125");
    EXPECT_TRUE(sum("('9E125'), ('9E125')").ends_with("(dv-5068)"));
    EXPECT_TRUE(sum("('-9E125'), ('-1E125')").ends_with("(dv-5068)"));
    EXPECT_TRUE(sum("('9.9999999999999999999999999999999999999E125'), ('6E87')").ends_with("(dv-5068)"));
    EXPECT_EQ(sum("('9.9999999999999999999999999999999999999E125'), ('4E87')"),
              "9.9999999999999999999999999999999999999E+125");
    EXPECT_EQ(sum("('1.00000000000000000000000000000000001E-130'), ('1E-130')"),
              "2.00000000000000000000000000000000001E-130");
    EXPECT_TRUE(sum("('1.5E-130'), ('-1E-130')").ends_with("(dv-5069)"));
    EXPECT_EQ(sum("('1.5E-130'), ('-1.5E-130')"), "0");
}
