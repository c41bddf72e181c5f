// Records written as CSV again, so that they can be corrected and read.

#ifndef DV_CSV_WRITER_H
#define DV_CSV_WRITER_H

#include <cstdio>
#include <memory>
#include <string>

#include "csv_reader.h"

namespace dv::import {

// Writes a file as csv_reader reads it. All functions throw std::system_error where that cannot be done.
class csv_writer {
  public:
    csv_writer(const std::string &name, char delimiter);

    void put(const csv_record &record);
    void pad_to(long line);  // with empty lines, so that the next record begins at this line
    void flush();

  private:
    struct close_file {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };
    void write_(const std::string &text);

    std::string name_;
    char delimiter_;
    std::unique_ptr<std::FILE, close_file> file_;
    long line_ = 1;  // that is written next
};

}  // namespace dv::import

#endif  // DV_CSV_WRITER_H
