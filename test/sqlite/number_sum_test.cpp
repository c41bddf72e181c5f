// dv_sum and dv_avg against big integers: any order, any cancellation, any window frame, one rounding.

#include <algorithm>

#include "decimal_reference.h"
#include "sqlite_session.h"

using namespace dv::test;

namespace {

// A table t(id, v) of NULLs and of values over the whole range, most of them with a partner that cancels
// them.
std::vector<std::string> fill_(sqlite_session &session, std::mt19937_64 &random, size_t count) {
    std::vector<std::string> values(count / 8, "NULL");
    while (values.size() < count) {
        const std::string text = random_decimal(random, -130, 124);
        values.push_back(text);
        if (random() % 8 != 0 && values.size() < count)
            values.push_back(text[0] == '-' ? text.substr(1) : "-" + text);
    }
    std::ranges::shuffle(values, random);
    session.rows("CREATE TABLE t(id INTEGER PRIMARY KEY, v NUMBER)");
    for (const std::string &text : values)
        session.rows("INSERT INTO t(v) VALUES (to_number(nullif('" + text + "', 'NULL')))");
    return values;
}

// Compares the texts of a sum and an average.
void expect_exact_(const row_t &got, std::span<const std::string> values) {
    big_t sum = 0;
    int count = 0;
    for (const std::string &text : values) {
        sum += text == "NULL" ? big_t(0) : big_from_text(text);
        count += text == "NULL" ? 0 : 1;
    }
    ASSERT_EQ(got[0] == "NULL" && got[1] == "NULL", count == 0) << got[0] << " " << got[1];
    if (count == 0) return;
    EXPECT_EQ(big_from_text(got[0]), rounded_to_38(sum)) << got[0];
    EXPECT_EQ(big_from_text(got[1]), rounded_to_38(sum / count)) << got[1];
}

}  // namespace

TEST(SqlNumberSum, IsExactInAnyOrderAndMovingFrame) {
    const std::tuple<std::string, int, int> frames[] = {
        {"3 PRECEDING AND 2 FOLLOWING)", -3, 2}, {"5 PRECEDING AND 4 PRECEDING)", -5, -4},  // empty at first
    };
    std::mt19937_64 random(19);
    for (const int size : {1, 2, 20, 21, 150}) {
        sqlite_session session;
        const auto values = fill_(session, random, static_cast<size_t>(size));
        for (const std::string order : {"id", "v", "v DESC"}) {
            const std::string rows = "(SELECT v FROM t ORDER BY " + order + " LIMIT -1)";
            expect_exact_(session.rows("SELECT dv_text(dv_sum(v)), dv_text(dv_avg(v)) FROM " + rows)[0],
                          values);
        }
        for (const auto &[frame, first, last] : frames) {
            const auto rows = session.rows(
                "SELECT dv_text(dv_sum(v) OVER w), dv_text(dv_avg(v) OVER w) FROM t WINDOW w AS (ORDER BY id "
                "ROWS BETWEEN " +
                frame);
            for (int i = 0; i < size; ++i) {
                const int begin = std::clamp(i + first, 0, size);
                const int end = std::clamp(i + last + 1, begin, size);
                expect_exact_(rows[static_cast<size_t>(i)], {values.begin() + begin, values.begin() + end});
            }
        }
    }
}
