// The part of a text that a message shows.

#ifndef DV_MESSAGE_TEXT_H
#define DV_MESSAGE_TEXT_H

#include <algorithm>
#include <string_view>

#include "dvtypes/datetime_fmt.h"

namespace dv::impl {

// A copy of a text, as long as org_str at most, without a NUL inside.
struct message_text {
    char text[DT_FMT_ORG_STR_SIZE + 1];
    explicit message_text(std::string_view from) {
        const size_t length = std::min({from.size(), from.find('\0'), sizeof text - 1});
        *std::copy_n(from.data(), length, text) = '\0';
    }
};

}  // namespace dv::impl

#endif  // DV_MESSAGE_TEXT_H
