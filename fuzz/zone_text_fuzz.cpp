// Time zones from text. The input is a byte whose lowest bit is a flag, then the text.
//
// Properties: a zone is read or a documented code raised; what was read prints as a text that reads as the
// same zone; the search by name and the reader of offsets agree with the reader of both; an offset that is
// refused leaves the record as it was.

#include "dvtypes/timezone.h"
#include "fuzz_input.h"
#include "raise.h"

using namespace dv::fuzz;
using dv::test::raise_of;

namespace {

constexpr int _zone_codes[] = {0, -5098, -5099, -5103, -5104};
constexpr int _offset_codes[] = {0, -5098, -5099, -5103};

bool is_same_(const timezone_t &x, const timezone_t &y) { return std::memcmp(&x, &y, sizeof x) == 0; }

int parse_(timezone_t &tz, const char *text, size_t size) {
    return raise_of([&] { timezone_parse(&tz, text, static_cast<int>(size)); });
}

void reads_back_(const timezone_t &tz) {
    char text[TZ_NAME_TEXT_SIZE];
    timezone_get_zone_name(&tz, text, sizeof text);
    timezone_t again;
    timezone_init(&again);
    const int code = parse_(again, text, std::strlen(text));
    require(code == 0, text, code);
    require(is_same_(tz, again), text, timezone_get_field(&tz, TZ_FLD_ZONE_ID));
}

void search_agrees_(std::string_view text, int code, const timezone_t &tz) {
    const std::vector<char> name = ended_block(text);
    if (name.size() - 1 != text.size() || text.empty()) return;  // a NUL inside: another name
    const tz_region_t *const region = zonetab_search_region(name.data());
    if (region == nullptr) return;
    require(code == 0 && timezone_get_field(&tz, TZ_FLD_ZONE_ID) == region - region_tab_, "the region found",
            region - region_tab_);
}

void offset_agrees_(std::string_view text, int code, const timezone_t &tz, bool for_parser) {
    const std::vector<char> characters = block(text);
    timezone_t offset;
    std::memset(&offset, 0x5A, sizeof offset);
    const timezone_t before = offset;
    const int status =
        parse_offset_(&offset, characters.data(), static_cast<int>(text.size()), for_parser ? 1 : 0);
    require_one_of(_offset_codes, "a code of offsets", status);
    if (status != 0) require(is_same_(offset, before), "an offset that is refused", status);
    const bool is_offset = timezone_get_field(&tz, TZ_FLD_ZONE_ID) == TZ_ID_OFFSET;  // GMT+0 is a region
    if (status != 0 || !for_parser || code != 0 || !is_offset) return;
    require(is_same_(offset, tz), "the offset read by both", timezone_get_field(&tz, TZ_FLD_UTC_HOUR));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    input_t input(data, size);
    const bool for_parser = (input.byte() & 1) != 0;
    const std::string_view text = input.rest();
    const std::vector<char> characters = block(text);
    timezone_t tz;
    timezone_init(&tz);
    const int code = parse_(tz, characters.data(), text.size());
    require_one_of(_zone_codes, "a code of zones", code);
    if (code == 0) reads_back_(tz);
    search_agrees_(text, code, tz);
    offset_agrees_(text, code, tz, for_parser);
    return 0;
}
