// Loading the extension: whole or not at all, again, beside running statements, without memory.

#include "failing_memory.h"
#include "sqlite_session.h"

using namespace dv::test;

namespace {

const std::string _loader = std::string("SELECT load_extension('") + sqlite_session::extension() + "')";

// How many names of the connection begin as the extension's, or are its: functions and tables.
std::string names_(sqlite_session &session) {
    return session.value(
        R"(SELECT count(*) || ' ' || (SELECT count(*) FROM pragma_module_list WHERE name GLOB 'dv_*')
        FROM pragma_function_list WHERE name GLOB 'dv_*' OR name GLOB 'to_*' OR name IN ('dump', 'last_day'))");
}

void answer_(sqlite3_context *context, int, sqlite3_value **) { sqlite3_result_int(context, 42); }

int register_(sqlite_session &session, const char *name, int arity) {
    return sqlite3_create_function(session.db(), name, arity, SQLITE_UTF16, nullptr, answer_, nullptr,
                                   nullptr);
}

// What works when the extension is there.
void expect_works_(sqlite_session &session) {
    EXPECT_EQ(session.value("SELECT dv_text(dv_sum(dv_add(to_number('1.5'), 1)))"), "2.5");
    EXPECT_EQ(session.value("SELECT dv_text(to_timestamp_tz('2024-02-29 00:00:00 +09:00'))"),
              "2024-02-29 00:00:00.000000000 +09:00");
    EXPECT_EQ(session.value("SELECT name FROM dv_types WHERE code = 5"), "DATE");
}

}  // namespace

TEST(SqlLoad, LeavesWhatTheApplicationHasAndSaysSo) {
    for (const auto &[name, arity] : {std::pair{"TO_DATE", 2}, {"dv_rowid_row", 1}, {"dv_avg", 1}}) {
        sqlite_session session(":memory:");
        const std::string before = names_(session);
        ASSERT_EQ(register_(session, name, arity), SQLITE_OK);
        const std::string with_its_own = names_(session);
        std::string message;
        EXPECT_EQ(session.load(&message), SQLITE_ERROR);
        const std::string want = std::string(name) + "/" + std::to_string(arity) + " is already in use";
        EXPECT_EQ(sqlite3_stricmp(message.c_str(), ("error during initialization: dvtypes: " + want).c_str()),
                  0)
            << message;
        EXPECT_EQ(names_(session), with_its_own);
        EXPECT_EQ(session.value(std::string("SELECT ") + name + (arity == 1 ? "(1)" : "(1, 2)")), "42");
        EXPECT_TRUE(session.value("SELECT dv_add(1, 2)").starts_with("error: no such function"));
        register_(session, name, arity);
        sqlite3_create_function(session.db(), name, arity, SQLITE_UTF16, nullptr, nullptr, nullptr, nullptr);
        EXPECT_EQ(names_(session), before);
        EXPECT_EQ(session.load(), SQLITE_OK);
        expect_works_(session);
    }
}

TEST(SqlLoad, TakesNoOffenceAtOtherArgumentsOfAName) {
    sqlite_session session(":memory:");
    register_(session, "to_date", 7);
    register_(session, "dv_add", -1);
    register_(session, "dv_types", 2);  // a table's
    EXPECT_EQ(session.load(), SQLITE_OK);
    expect_works_(session);
    EXPECT_EQ(session.value("SELECT to_date(1, 2, 3, 4, 5, 6, 7) + dv_add(1)"), "84");
}

// Beside running statements, from SQL too.
TEST(SqlLoad, AgainChangesNothing) {
    sqlite_session session(":memory:");
    sqlite3_stmt *running = nullptr;
    sqlite3_prepare_v2(session.db(), "VALUES (1), (2)", -1, &running, nullptr);
    sqlite3_step(running);
    EXPECT_EQ(session.load(), SQLITE_OK);
    const std::string names = names_(session);
    EXPECT_EQ(session.load(), SQLITE_OK);
    EXPECT_EQ(session.value(_loader), "NULL");
    sqlite3_finalize(running);
    sqlite3_prepare_v2(session.db(), "SELECT dv_text(dv_round(column1)) FROM (VALUES (1.5), (2))", -1,
                       &running, nullptr);
    sqlite3_step(running);
    EXPECT_EQ(session.load(), SQLITE_OK);
    EXPECT_EQ(sqlite3_step(running), SQLITE_ROW);
    EXPECT_STREQ(reinterpret_cast<const char *>(sqlite3_column_text(running, 0)), "2");
    sqlite3_finalize(running);
    EXPECT_EQ(names_(session), names);
    expect_works_(session);
}

// In C a failed load takes everything back; in a statement, which keeps functions from being removed, what is
// left works. The next load succeeds either way, and nothing is leaked. (SQLite itself may have no memory to
// remember the file: everything is there then.)
TEST(SqlLoad, SurvivesEveryAllocationThatFails) {
    failing_memory memory;
    std::string before, whole;
    for (const bool from_sql : {false, true}) {
        bool is_done = false;
        for (long n = 0; !is_done; ++n) {
            const auto used = sqlite3_memory_used();
            {
                sqlite_session session(":memory:");
                if (before.empty()) before = names_(session);
                session.value("SELECT 1 FROM pragma_function_list, pragma_module_list");
                memory.fail_at(n, /*lasts=*/n % 2 == 0);
                const bool is_loaded =
                    from_sql ? session.value(_loader) == "NULL" : session.load() == SQLITE_OK;
                is_done = !memory.has_failed();
                memory.fail_at(-1, /*lasts=*/false);
                const std::string names = names_(session);
                EXPECT_TRUE(is_loaded || !is_done) << n;
                EXPECT_EQ(session.load(), SQLITE_OK) << n;
                if (whole.empty()) whole = names_(session);
                EXPECT_TRUE(names == whole || (!is_loaded && (from_sql || names == before)))
                    << n << " " << names;
                expect_works_(session);
            }
            ASSERT_EQ(sqlite3_memory_used(), used) << n;
        }
    }
}
