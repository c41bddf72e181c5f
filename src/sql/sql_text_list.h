// Lists in messages: "DAY, HOUR, MINUTE or SECOND", in a text of bounded length.

#ifndef DV_SQL_TEXT_LIST_H
#define DV_SQL_TEXT_LIST_H

#include <algorithm>
#include <cstring>

#include "sql_call.h"

namespace dv::impl {

// What does not fit is cut.
class sql_text_list {
  public:
    void append(const char *text) {
        const size_t length = std::min(strlen(text), SQL_FAILURE_SIZE - 1 - length_);
        memcpy(text_ + length_, text, length);
        length_ += length;
        text_[length_] = '\0';
    }

    // Item i of `count`, with what stands between it and the one before, and an ending.
    void append_item(size_t i, size_t count, const char *item, const char *ending) {
        append(i == 0 ? "" : i + 1 < count ? ", " : " or ");
        append(item);
        append(ending);
    }

    const char *text() const { return text_; }

  private:
    char text_[SQL_FAILURE_SIZE] = "";
    size_t length_ = 0;
};

}  // namespace dv::impl

#endif  // DV_SQL_TEXT_LIST_H
