// An SQLite database in memory with the extension loaded, and its results as text.

#ifndef DV_TEST_SQLITE_SESSION_H
#define DV_TEST_SQLITE_SESSION_H

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace dv::test {

using blob_t = std::vector<uint8_t>;
using row_t = std::vector<std::string>;  // one text per column; SQL NULL is "NULL"

inline std::string hex(const blob_t &blob) {
    std::string text;
    for (const uint8_t byte : blob) {
        char digits[3];
        snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return "x'" + text + "'";
}

class sqlite_session {
  public:
    sqlite_session() {
        check_(sqlite3_open(":memory:", &db_));
        check_(sqlite3_db_config(db_, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 1, nullptr));
        char *message = nullptr;
        if (sqlite3_load_extension(db_, DV_SQLITE_EXTENSION, nullptr, &message) != SQLITE_OK) {
            throw std::runtime_error(message);
        }
    }
    ~sqlite_session() { sqlite3_close(db_); }
    sqlite_session(const sqlite_session &) = delete;
    sqlite_session &operator=(const sqlite_session &) = delete;

    // All rows of a statement; every ? is bound to the BLOB. Throws std::runtime_error with SQLite's message.
    std::vector<row_t> rows(const std::string &sql, const blob_t &argument = {}) {
        sqlite3_stmt *statement = nullptr;
        check_(sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr));
        for (int i = 1; i <= sqlite3_bind_parameter_count(statement); ++i) {
            sqlite3_bind_blob(statement, i,
                              argument.empty() ? "" : static_cast<const void *>(argument.data()),
                              static_cast<int>(argument.size()), SQLITE_STATIC);
        }
        std::vector<row_t> result;
        while (sqlite3_step(statement) == SQLITE_ROW) result.push_back(row_of_(statement));
        check_(sqlite3_finalize(statement));
        return result;
    }

    void run(const std::string &sql) { rows(sql); }

    // The one value of a query, or "error: " and SQLite's message.
    std::string value(const std::string &sql, const blob_t &argument = {}) {
        try {
            const std::vector<row_t> result = rows(sql, argument);
            return result.size() == 1 && result[0].size() == 1 ? result[0][0] : "not one value";
        } catch (const std::runtime_error &error) {
            return std::string("error: ") + error.what();
        }
    }

    // The first column of all rows.
    std::vector<std::string> column(const std::string &sql) {
        std::vector<std::string> result;
        for (const row_t &row : rows(sql)) result.push_back(row[0]);
        return result;
    }

    // No text or BLOB may be longer from now on.
    void limit_length(int bytes) { sqlite3_limit(db_, SQLITE_LIMIT_LENGTH, bytes); }

  private:
    static row_t row_of_(sqlite3_stmt *statement) {
        row_t row;
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const int type = sqlite3_column_type(statement, i);
            const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, i));
            const auto length = static_cast<size_t>(sqlite3_column_bytes(statement, i));
            row.push_back(type == SQLITE_NULL ? "NULL" : std::string(bytes == nullptr ? "" : bytes, length));
        }
        return row;
    }

    void check_(int code) {
        if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(db_));
    }

    sqlite3 *db_ = nullptr;
};

}  // namespace dv::test

#endif  // DV_TEST_SQLITE_SESSION_H
