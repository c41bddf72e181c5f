// Loading records into a table, in one transaction.

#ifndef DV_IMPORT_LOADER_H
#define DV_IMPORT_LOADER_H

#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

#include "column.h"
#include "conversion.h"
#include "csv_reader.h"
#include "csv_writer.h"

namespace dv::import {

struct options {
    std::string file;
    std::string table;
    std::string database;
    std::vector<column> columns;
    std::string errors;   // the table for what is refused; empty: it is shown
    std::string rejects;  // the file for records that are refused; empty: none
    long skip = 0;        // lines at the beginning
    char delimiter = ',';
    bool is_bulk = true;  // values are converted many at once where that gives the same; false: one by one
};

// Makes the tables that are not there, and inserts each record. A record is refused when it has another
// number of fields, when one of its texts has no value of its column's type, or when the table does not take
// it, or when it is not UTF-8; what is wrong with it goes into the errors table and the record into the file
// of rejects, and the others are loaded. Nothing is in the database before commit() has returned. All
// functions throw std::runtime_error for what ends the whole: a database or a file that cannot be opened or
// written, a table without such columns, a model that is none.
class loader {
  public:
    explicit loader(const options &what);

    void skip(const csv_record &record);  // of the lines that are passed over
    void take(const csv_record &record);
    void commit();

    long loaded() const { return loaded_; }
    long refused() const { return refused_; }

  private:
    struct close_database {
        void operator()(sqlite3 *db) const { sqlite3_close_v2(db); }
    };
    struct finalize {
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    using statement_t = std::unique_ptr<sqlite3_stmt, finalize>;

    // A record that waits, with its texts.
    struct kept_record {
        csv_record record;
        std::string texts;
    };

    // An INSERT of one record, and of all that may wait; NULL where there is none.
    struct insertion {
        bool is_of_values;  // it takes what conversions_ give; else texts alone
        statement_t one, many;
    };

    // What is wrong with a record.
    struct fault {
        long line;
        const column *of;        // NULL: the record as a whole
        const csv_field *field;  // NULL: none of its fields
        int code;                // 0: it has none
        std::string message;
    };

    void open_();
    void make_tables_();
    void prepare_statements_();
    insertion prepare_insertion_(bool is_of_values);
    bool refers_to_itself_();
    void check_model_(const column &of, sqlite3_stmt *value);
    statement_t prepare_(const std::string &sql);
    void run_(const std::string &sql);
    [[noreturn]] void fail_() const;
    void bind_(sqlite3_stmt *statement, int place, const column &of, const csv_field &field);
    // Binds the i-th record that waits to the parameters from `place` on; returns the place behind them.
    int bind_waiting_(const insertion &into, sqlite3_stmt *statement, int place, size_t i);
    void load_waiting_();
    bool load_together_(const insertion &into);
    void convert_(size_t count);
    bool is_ready_(size_t i) const;
    void check_transaction_() const;
    void load_(size_t i);
    void refuse_(sqlite3_stmt *statement, const csv_record &record);
    bool refuse_form_(const csv_record &record);
    void reject_(const csv_record &record);
    bool refuse_field_(const csv_record &record, size_t i);
    void put_(const fault &what);

    const options &what_;
    std::unique_ptr<sqlite3, close_database> db_;
    std::unique_ptr<csv_writer> rejects_;
    statement_t insert_error_;
    insertion of_texts_{}, of_values_{};
    std::vector<statement_t> values_;                       // by column: its value alone
    std::vector<std::unique_ptr<conversion>> conversions_;  // by column: NULL where there is none
    std::vector<kept_record> waiting_;                      // of which the first waiting_count_ wait
    size_t waiting_count_ = 0;
    long loaded_ = 0, refused_ = 0;
};

}  // namespace dv::import

#endif  // DV_IMPORT_LOADER_H
