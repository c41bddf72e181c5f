// libcsv takes the text apart; lines are counted here.

#include "csv_reader.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace dv::import {

namespace {

// How many line ends a text has, CRLF counted once.
long line_ends_(std::string_view text) {
    const auto is_end = [&](size_t at) {
        return text[at] == '\n' ? at == 0 || text[at - 1] != '\r' : text[at] == '\r';
    };
    if (text.find('\n') == text.npos && text.find('\r') == text.npos) return 0;
    long count = 0;
    for (size_t i = 0; i < text.size(); ++i) count += is_end(i) ? 1 : 0;
    return count;
}

constexpr unsigned char _options = CSV_REPALL_NL | CSV_EMPTY_IS_NULL;

int is_no_space_(unsigned char) { return 0; }

}  // namespace

csv_reader::csv_reader(char delimiter, std::function<void(const csv_record &)> take)
    : take_(std::move(take)) {
    if (csv_init(&parser_, _options) != 0) throw std::runtime_error("libcsv cannot be used");
    csv_set_delim(&parser_, static_cast<unsigned char>(delimiter));
    csv_set_space_func(&parser_, is_no_space_);  // blanks belong to their field
}

csv_reader::~csv_reader() { csv_free(&parser_); }

void csv_reader::feed(std::string_view piece) {
    const size_t taken = csv_parse(
        &parser_, piece.data(), piece.size(),
        [](void *text, size_t size, void *self) {
            static_cast<csv_reader *>(self)->add_field_(static_cast<const char *>(text), size);
        },
        [](int by, void *self) { static_cast<csv_reader *>(self)->end_line_(by); }, this);
    if (taken != piece.size()) throw std::runtime_error(csv_strerror(csv_error(&parser_)));
}

void csv_reader::finish() {
    csv_set_opts(&parser_, _options | CSV_STRICT | CSV_STRICT_FINI);  // of a quote that never ends
    const int code = csv_fini(
        &parser_,
        [](void *text, size_t size, void *self) {
            static_cast<csv_reader *>(self)->add_field_(static_cast<const char *>(text), size);
        },
        [](int by, void *self) { static_cast<csv_reader *>(self)->end_line_(by); }, this);
    if (code != 0)
        throw std::runtime_error("line " + std::to_string(line_) + ": the quote of a field does not end");
}

void csv_reader::add_field_(const char *text, size_t size) {
    was_carriage_return_ = false;
    places_.push_back({texts_.size(), size, text == nullptr});
    if (text == nullptr) return;
    texts_.append(text, size);
    lines_ += line_ends_({text, size});
}

// `by` is the character that ended the line, or -1 for the end of the file.
void csv_reader::end_line_(int by) {
    const bool is_of_pair = by == '\n' && was_carriage_return_ && places_.empty();
    was_carriage_return_ = by == '\r';
    if (is_of_pair) return;
    if (!places_.empty()) give_();
    line_ += lines_ + 1;
    lines_ = 0;
    places_.clear();
    texts_.clear();
}

void csv_reader::give_() {
    record_.line = line_;
    record_.fields.resize(places_.size());
    std::ranges::transform(places_, record_.fields.begin(), [this](const place &of) {
        return csv_field{std::string_view(texts_).substr(of.begin, of.size), of.is_null};
    });
    take_(record_);
}

}  // namespace dv::import
