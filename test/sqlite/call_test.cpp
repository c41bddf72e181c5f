// Calls of SQL functions beside those of the manual, a line of calls.sql each, and what is registered.

#include "manual.h"
#include "sqlite_session.h"

using namespace dv::test;

TEST(SqlCall, GivesWhatItIsNamedForOrAnErrorThatSaysWhatIsExpected) {
    const auto used = sqlite3_memory_used();
    {
        sqlite_session session;
        const auto calls = examples_of("test/sqlite/calls.sql");
        EXPECT_GE(calls.size(), 90u);
        for (const example &call : calls) EXPECT_EQ(session.value(call.sql), call.result) << call.sql;
    }
    EXPECT_EQ(sqlite3_memory_used(), used);
}

TEST(SqlCall, FunctionsAreInnocuousAndButForTheClocksDeterministic) {
    sqlite_session session(":memory:");
    session.rows("CREATE TABLE own AS SELECT name FROM pragma_function_list");
    ASSERT_EQ(session.load(), SQLITE_OK);
    const auto without = [&](const std::string &flag) {
        return session.value(
            "SELECT group_concat(f) FROM (SELECT DISTINCT name || narg AS f FROM pragma_function_list "
            "WHERE name NOT IN (SELECT name FROM own) AND NOT flags & " +
            flag + " ORDER BY f)");
    };
    const std::string changing = "dv_create_text_view1,dv_create_text_view2,dv_drop_text_view1";
    EXPECT_EQ(without("0x200000"), changing);                                      // SQLITE_INNOCUOUS
    EXPECT_EQ(without("0x800"), changing + ",sysdate0,systimestamp0,tz_offset1");  // SQLITE_DETERMINISTIC
    EXPECT_EQ(
        session.value("SELECT group_concat(DISTINCT name) FROM pragma_function_list WHERE flags & 0x80000 "
                      "AND name LIKE 'dv%'"),
        "dv_drop_text_view,dv_create_text_view");  // SQLITE_DIRECTONLY
}
