// The extension as a file, and the dvsql launcher as a user starts it.

#include <dlfcn.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "sqlite_session.h"

using namespace dv::test;
namespace fs = std::filesystem;

namespace {

struct output_t {
    std::string text;
    int status;
};

output_t run_(const std::string &command) {
    output_t output{"", -1};
    FILE *pipe = popen(("{ " + command + "; } 2>&1").c_str(), "r");
    if (pipe == nullptr) return output;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) output.text += static_cast<char>(c);
    output.status = WEXITSTATUS(pclose(pipe));
    return output;
}

fs::path launcher_() { return fs::path(DV_SQLITE_EXTENSION).parent_path().parent_path() / "bin" / "dvsql"; }

// A folder that goes away, with an executable sqlite3 of the given shell text in it.
class fake_sqlite3 {
  public:
    explicit fake_sqlite3(const std::string &script) {
        std::string name = (fs::temp_directory_path() / "dvsql_XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("mkdtemp");
        folder_ = name;
        std::ofstream(folder_ / "sqlite3") << "#!/bin/sh\n" << script << "\n";
        fs::permissions(folder_ / "sqlite3", fs::perms::owner_all);
    }
    ~fake_sqlite3() { fs::remove_all(folder_); }
    fake_sqlite3(const fake_sqlite3 &) = delete;
    fake_sqlite3 &operator=(const fake_sqlite3 &) = delete;

    output_t launch(const std::string &arguments) const {
        return run_("PATH='" + folder_.string() + "':$PATH '" + launcher_().string() + "' " + arguments);
    }

  private:
    fs::path folder_;
};

// A program without the sanitizers' runtime cannot load a file that needs it.
constexpr bool _sanitized =
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    true;
#elif defined(__has_feature)
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) ||
    __has_feature(undefined_behavior_sanitizer);
#else
    false;
#endif

}  // namespace

TEST(SqlExtension, ExportsItsEntryPointAlone) {
    void *extension = dlopen(DV_SQLITE_EXTENSION, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(extension, nullptr) << dlerror();
    EXPECT_NE(dlsym(extension, "sqlite3_dvsqlite_init"), nullptr);
    for (const char *name :
         {"number_add", "dv_protect", "dv_err_and_jmp", "_number_roundmode", "sqlite3_api"}) {
        EXPECT_EQ(dlsym(extension, name), nullptr) << name;
    }
    dlclose(extension);
}

TEST(SqlExtension, FunctionsServeIndexesViewsAndConstraints) {
    sqlite_session session;
    session.run("PRAGMA trusted_schema = OFF");  // a schema may then call innocuous functions only
    session.run("CREATE TABLE t(a NUMBER CHECK (dv_cmp(a, 0) > 0), b AS (dv_round(a, 1)))");
    session.run("CREATE INDEX t_half ON t(dv_div(a, 2))");
    session.run("CREATE VIEW v AS SELECT dv_text(b) AS b, dump(a) AS d FROM t");
    session.run("INSERT INTO t VALUES (to_number('2.25')), (to_number('12'))");
    EXPECT_EQ(session.column("SELECT b FROM v ORDER BY d"), (std::vector<std::string>{"12", "2.3"}));
    EXPECT_EQ(session.value("SELECT dv_text(a) FROM t WHERE dv_div(a, 2) = to_number(6)"), "12");
    EXPECT_EQ(session.value("INSERT INTO t VALUES (to_number(-1))"),
              "error: CHECK constraint failed: dv_cmp(a, 0) > 0");
}

TEST(SqlExtension, ChecksOfTheManualKeepOtherValuesOut) {
    sqlite_session session;
    session.run(
        "CREATE TABLE t(a NUMBER CHECK (a = to_number(a)), b NUMBER CHECK (b = dv_cast_number(b, 5, 2)))");
    session.run("INSERT INTO t VALUES (to_number('1e9'), to_number('123.45')), (NULL, NULL)");
    for (const char *values : {"(5, NULL)", "('5', NULL)", "(0.5, NULL)", "(x'01', NULL)", "(x'', NULL)",
                               "(NULL, 1)", "(NULL, to_number('1.234'))", "(NULL, to_number(1000))"}) {
        EXPECT_TRUE(session.value(std::string("INSERT INTO t VALUES ") + values).starts_with("error: "))
            << values;
    }
}

TEST(Dvsql, PassesArgumentsAndInputToTheShell) {
    if (_sanitized) GTEST_SKIP() << "the sqlite3 shell has no sanitizer runtime";
    if (run_("command -v sqlite3").status != 0) GTEST_SKIP() << "the sqlite3 shell is not installed";
    const std::string dvsql = "'" + launcher_().string() + "' ";
    const output_t argument = run_(dvsql + "-csv :memory: 'SELECT dv_text(dv_div(1, 8)), 2'");
    EXPECT_EQ(argument.text, ".125,2\n");
    EXPECT_EQ(argument.status, 0);
    EXPECT_EQ(run_("echo \"SELECT dump(to_number('-128'));\" | " + dvsql).text,
              "type=1 length=4 bytes=3d:7f:64:f0\n");
    const output_t failure = run_(dvsql + ":memory: 'SELECT dv_div(1, 0)'");
    EXPECT_TRUE(failure.text.find("(dv-5070)") != std::string::npos) << failure.text;
    EXPECT_NE(failure.status, 0);
}

TEST(Dvsql, RefusesAnOldOrMissingShell) {
    for (const char *version : {"3.39.4 2022-09-29", "3.7.17 2013", "2.8.17"}) {
        const output_t old = fake_sqlite3(std::string("echo '") + version + "'").launch("");
        EXPECT_TRUE(old.text.starts_with("dvsql: sqlite3 3.40 or later is needed"))
            << version << ": " << old.text;
        EXPECT_EQ(old.status, 1) << version;
    }
    for (const char *version : {"3.40.0 2022-11-16", "3.100.1 2031", "4.0.0 2040"}) {
        const output_t recent = fake_sqlite3(std::string("[ \"$1\" = --version ] && echo '") + version +
                                             "' && exit\nshift 2; echo \"got $*\"")
                                    .launch("a b");
        EXPECT_EQ(recent.text, "got a b\n") << version;
    }
    const output_t missing = run_("PATH=/nonexistent /bin/sh '" + launcher_().string() + "'");
    EXPECT_NE(missing.status, 0) << missing.text;
}
