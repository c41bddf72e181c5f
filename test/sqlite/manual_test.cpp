// The examples of the manuals, with memory and without.

#include "manual.h"
#include <algorithm>

#include "failing_memory.h"
#include "sqlite_session.h"

using namespace dv::test;

class SqlManual : public testing::TestWithParam<const char *> {};

TEST_P(SqlManual, ExamplesGiveWhatTheySay) {
    sqlite_session session;
    const auto examples = examples_of(GetParam());
    EXPECT_GE(examples.size(), 7);
    for (const auto &[sql, result, has_result] : examples) {
        const std::string got = session.value(sql);
        EXPECT_TRUE(has_result ? got == result : !got.starts_with("error: ")) << sql << "\n"
                                                                              << got << "\n"
                                                                              << result;
    }
}

// But of those that only the triggers of text views call.
TEST(SqlManualIndex, HasAnExampleOfEveryFunction) {
    sqlite_session session, without(":memory:");
    std::string text;
    for (const example &each : examples_of("docs/sql.md")) text += each.sql;
    const std::string list =
        "SELECT DISTINCT name || '(' FROM pragma_function_list WHERE name NOT LIKE 'dv\\_column\\_%' "
        "ESCAPE '\\' ORDER BY 1";
    const auto known = without.rows(list);
    for (const row_t &row : session.rows(list)) {
        const bool is_new = !std::ranges::binary_search(known, row);
        EXPECT_TRUE(!is_new || text.find(row[0]) != text.npos) << row[0];
    }
}

// Whichever allocation fails, a statement gives its result or SQLITE_NOMEM, nothing is lost, and the next one
// gives its result.
TEST_P(SqlManual, ExamplesSurviveEveryAllocationThatFails) {
    failing_memory memory;
    const auto unused = sqlite3_memory_used();
    long failures = 0;
    {
        sqlite_session session;
        for (const auto &[sql, result, has_result] : examples_of(GetParam())) {
            session.value(sql);  // what the connection keeps is there
            if (!has_result || sql.find("_text_view(") != sql.npos) continue;  // it changes the database
            const auto used = sqlite3_memory_used();
            for (long n = 0;; ++n) {
                memory.fail_at(n, /*lasts=*/n % 2 == 0);
                const std::string got = session.value(sql);
                const bool has_failed = memory.has_failed();
                memory.fail_at(-1, /*lasts=*/false);
                if (!has_failed) break;
                ++failures;
                EXPECT_TRUE(got == result || got == "error: out of memory") << n << " " << sql << " " << got;
                EXPECT_EQ(sqlite3_memory_used(), used) << n << " " << sql;
            }
            EXPECT_EQ(session.value(sql), result) << sql;
        }
    }
    EXPECT_EQ(sqlite3_memory_used(), unused);
    EXPECT_GT(failures, 100);
}

INSTANTIATE_TEST_SUITE_P(Documents, SqlManual,
                         testing::Values("docs/sql.md", "docs/datetime-models.md", "docs/error-codes.md",
                                         "docs/zones.md", "docs/languages.md"));
