// Regions of time zones that texts name, or nearly name.

#ifndef DV_SQL_REGION_H
#define DV_SQL_REGION_H

#include <string_view>

#include "dvtypes/timezone.h"
#include "sql_text_list.h"

namespace dv::impl {

// A region, and where a text names it.
struct named_region {
    const tz_region_t *region;  // NULL: none
    std::string_view name;
};

// The first region that a text names.
named_region sql_find_region(std::string_view text);

// Appends the regions whose names or cities are nearest to a word of the text: " Near to it is Asia/Seoul."
// False, and nothing, where none is.
bool sql_append_near_regions(sql_text_list &list, std::string_view text);

}  // namespace dv::impl

#endif  // DV_SQL_REGION_H
