// Records of a CSV file, with the lines that they begin in.

#ifndef DV_CSV_READER_H
#define DV_CSV_READER_H

#include <csv.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace dv::import {

struct csv_field {
    std::string_view text;
    bool is_null;  // empty and not quoted
};

struct csv_record {
    long line;  // the first is 1
    std::vector<csv_field> fields;
};

// Takes a file in pieces of any size and calls `take` for each record; lines without anything are passed
// over. Fields are as RFC 4180 has them: quoted ones may hold the delimiter, line ends, and quotes written
// twice. A quote behind the beginning of a field is a character. Line ends are LF, CRLF or CR.
class csv_reader {
  public:
    csv_reader(char delimiter, std::function<void(const csv_record &)> take);
    ~csv_reader();
    csv_reader(const csv_reader &) = delete;
    csv_reader &operator=(const csv_reader &) = delete;

    void feed(std::string_view piece);
    // Throws std::runtime_error for a quote that never ends, naming the line of its record.
    void finish();

  private:
    void add_field_(const char *text, size_t size);
    void end_line_(int by);
    void give_();

    struct place {
        size_t begin, size;
        bool is_null;
    };

    csv_parser parser_;
    std::function<void(const csv_record &)> take_;
    std::string texts_;          // of the record
    std::vector<place> places_;  // of its fields in texts_
    csv_record record_;
    long line_ = 1;   // where the record begins
    long lines_ = 0;  // ends of lines inside its fields
    bool was_carriage_return_ = false;
};

}  // namespace dv::import

#endif  // DV_CSV_READER_H
