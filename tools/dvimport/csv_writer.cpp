// A field is quoted where it would not read as itself: with delimiters, quotes and line ends, and empty
// texts, which are not nothing.

#include "csv_writer.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace dv::import {

namespace {

void append_(std::string &line, const csv_field &field, char delimiter) {
    const char special[] = {delimiter, '"', '\n', '\r'};
    const bool is_plain = field.text.find_first_of({special, sizeof special}) == field.text.npos;
    if (field.is_null || (is_plain && !field.text.empty())) {
        line += field.text;
        return;
    }
    line += '"';
    for (const char c : field.text) line.append(c == '"' ? 2 : 1, c);
    line += '"';
}

}  // namespace

csv_writer::csv_writer(const std::string &name, char delimiter)
    : name_(name), delimiter_(delimiter), file_(std::fopen(name.c_str(), "wb")) {
    if (file_ == nullptr) throw std::system_error(errno, std::generic_category(), name);
}

void csv_writer::put(const csv_record &record) {
    std::string line;
    for (const csv_field &field : record.fields) {
        if (&field != &record.fields.front()) line += delimiter_;
        append_(line, field, delimiter_);
    }
    write_(line + "\n");
}

void csv_writer::pad_to(long line) {
    while (line_ < line) write_("\n");
}

void csv_writer::flush() {
    if (std::fflush(file_.get()) != 0) throw std::system_error(errno, std::generic_category(), name_);
}

void csv_writer::write_(const std::string &text) {
    if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size())
        throw std::system_error(errno, std::generic_category(), name_);
    line_ += std::ranges::count(text, '\n');
}

}  // namespace dv::import
