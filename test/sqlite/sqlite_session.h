// An SQLite database in memory with the extension loaded, and its results as text. The environment variable
// DV_SQLITE_EXTENSION names another file than the one built.

#ifndef DV_TEST_SQLITE_SESSION_H
#define DV_TEST_SQLITE_SESSION_H

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace dv::test {

using row_t = std::vector<std::string>;  // one text per column; SQL NULL is "NULL"

class sqlite_session {
  public:
    sqlite_session() : sqlite_session(":memory:") { check_(load()); }
    // A database without the extension, which may be loaded.
    explicit sqlite_session(const char *file) {
        check_(sqlite3_open(file, &db_));
        check_(sqlite3_enable_load_extension(db_, 1));  // by load_extension() too
    }
    ~sqlite_session() { sqlite3_close(db_); }
    sqlite_session(const sqlite_session &) = delete;
    sqlite_session &operator=(const sqlite_session &) = delete;

    sqlite3 *db() { return db_; }

    // The file of the extension: another one where the environment names it.
    static const char *extension() {
        const char *other = std::getenv("DV_SQLITE_EXTENSION");
        return other != nullptr ? other : DV_SQLITE_EXTENSION;
    }

    // Loads the extension; returns an SQLite code. The message is taken over when it is asked for.
    int load(std::string *message = nullptr) {
        char *text = nullptr;
        const int code = sqlite3_load_extension(db_, extension(), nullptr, &text);
        if (message != nullptr) *message = text == nullptr ? "" : text;
        sqlite3_free(text);
        return code;
    }

    // All rows of a statement. Throws std::runtime_error with SQLite's message.
    std::vector<row_t> rows(const std::string &sql) {
        std::vector<row_t> result;
        sqlite3_stmt *statement = nullptr;
        check_(sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr));
        while (sqlite3_step(statement) == SQLITE_ROW) {
            row_t &row = result.emplace_back();
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, i));
                const auto length = static_cast<size_t>(sqlite3_column_bytes(statement, i));
                const bool is_null = sqlite3_column_type(statement, i) == SQLITE_NULL;
                row.push_back(is_null ? "NULL" : std::string(bytes, bytes + length));
            }
        }
        check_(sqlite3_finalize(statement));
        return result;
    }

    // The first value of a query, or "error: " and SQLite's message.
    std::string value(const std::string &sql) {
        try {
            const std::vector<row_t> result = rows(sql);
            return result.empty() ? "no row" : result[0][0];
        } catch (const std::runtime_error &error) {
            return std::string("error: ") + error.what();
        }
    }

  private:
    void check_(int code) {
        if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(db_));
    }

    sqlite3 *db_ = nullptr;
};

}  // namespace dv::test

#endif  // DV_TEST_SQLITE_SESSION_H
