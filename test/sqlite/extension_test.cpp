// The extension as a file and in a schema, and the dvsql launcher as a user starts it.

#include "shell_output.h"
#include "sqlite_session.h"

using namespace dv::test;

TEST(SqlExtension, ExportsItsEntryPointAlone) {
    EXPECT_EQ(shell_output("nm -D --defined-only -j '" DV_SQLITE_EXTENSION "'"), "sqlite3_dvsqlite_init\n0");
}

TEST(SqlExtension, FunctionsServeIndexesViewsAndConstraints) {
    sqlite_session session;
    session.rows("PRAGMA trusted_schema = OFF");  // a schema may then call innocuous functions only
    session.rows("CREATE TABLE t(a NUMBER CHECK (a = dv_cast_number(a, 5, 2)), b AS (dv_round(a, 1)))");
    session.rows("CREATE INDEX t_half ON t(dv_div(a, 2))");
    session.rows("CREATE VIEW v AS SELECT dv_text(b) AS b FROM t WHERE dv_div(a, 2) = to_number(6)");
    session.rows("INSERT INTO t VALUES (to_number('2.25')), (to_number('12.00')), (NULL)");
    EXPECT_EQ(session.value("SELECT b FROM v"), "12");
    for (const std::string value :
         {"5", "'5'", "0.5", "x''", "x'01'", "to_number('1.234')", "to_number(1000)"})
        EXPECT_TRUE(session.value("INSERT INTO t VALUES (" + value + ")").starts_with("error: ")) << value;
}

TEST(Dvsql, PassesArgumentsAndInputToTheShell) {
    if (*DV_TEST_EMULATOR != '\0') GTEST_SKIP() << "the machine's shell is of another processor";
    if (!shell_output("command -v sqlite3").ends_with("\n0")) GTEST_SKIP() << "there is no sqlite3 shell";
    // The shell cannot load an extension that needs the runtime of a sanitizer.
    if (shell_output("nm -D '" DV_SQLITE_EXTENSION "' | grep -c '__[a-z]*san_'") != "0\n1") GTEST_SKIP();
    const std::string dvsql = "\"$(dirname '" DV_SQLITE_EXTENSION "')/../bin/dvsql\" ";
    const std::string argument = shell_output(dvsql + "-csv :memory: 'SELECT dv_text(dv_div(1, 8)), 2'");
    EXPECT_EQ(argument, ".125,2\n0");
    EXPECT_EQ(shell_output("echo 'SELECT dv_text(dv_neg(1));' | " + dvsql), "-1\n0");
    EXPECT_TRUE(shell_output(dvsql + ":memory: 'SELECT dv_div(1, 0)'").ends_with("(dv-5070)\n1"));
}
