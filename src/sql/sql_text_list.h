// Lists in messages: "DAY, HOUR, MINUTE or SECOND", in a text of bounded length.

#ifndef DV_SQL_TEXT_LIST_H
#define DV_SQL_TEXT_LIST_H

#include <cstring>
#include <string_view>

#include "sql_call.h"

namespace dv::impl {

// How many bytes of a text, of at most so many, end behind a character.
inline size_t sql_cut(std::string_view text, size_t most) {
    if (text.size() <= most) return text.size();
    while (most > 0 && (text[most] & 0xC0) == 0x80) --most;  // inside a character
    return most;
}

// What does not fit is cut.
class sql_text_list {
  public:
    void append(std::string_view text) {
        const size_t length = sql_cut(text, SQL_FAILURE_SIZE - 1 - length_);
        memcpy(text_ + length_, text.data(), length);
        length_ += length;
        text_[length_] = '\0';
    }

    // Item i of `count`, with what stands between it and the one before, and an ending.
    void append_item(size_t i, size_t count, const char *item, const char *ending) {
        append(i == 0 ? "" : i + 1 < count ? ", " : " or ");
        append(item);
        append(ending);
    }

    // Makes the letter at a place, of ASCII, a capital.
    void capitalise(size_t place) { text_[place] = static_cast<char>(text_[place] & ~0x20); }

    const char *text() const { return text_; }
    size_t length() const { return length_; }

  private:
    char text_[SQL_FAILURE_SIZE] = "";
    size_t length_ = 0;
};

}  // namespace dv::impl

#endif  // DV_SQL_TEXT_LIST_H
