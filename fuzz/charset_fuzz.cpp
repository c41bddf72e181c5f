// Character sets: conversion both ways and change of case. The input is the set, a size of the output, and a
// text.
//
// Properties: nothing is written beside the output; a short output gets the beginning of the long one; the
// units of a text are the units of what they are written as; changing the case never makes a text longer, and
// once more changes nothing, but where bytes are faulty: a letter behind a lead byte may change to one that
// makes a character with it.

#include "dvtypes/base.h"
#include "fuzz_input.h"
#include "raise.h"

using namespace dv::fuzz;

namespace {

using bytes_t = std::vector<char>;

// What the conversion writes into a block of some bytes.
template <typename Convert>
bytes_t converted_(Convert convert, std::string_view text, size_t room) {
    const bytes_t source = block(text);
    bytes_t output(room + 1);  // never of no bytes
    const int written =
        convert(source.data(), static_cast<int>(text.size()), output.data(), static_cast<int>(room));
    require(written >= 0 && static_cast<size_t>(written) <= room, "bytes written", written);
    output.resize(static_cast<size_t>(written));
    return output;
}

template <typename Convert>
bytes_t whole_(Convert convert, std::string_view text, size_t room) {
    const size_t enough = text.size() * 4 + 4;
    const bytes_t whole = converted_(convert, text, enough);
    const bytes_t part = converted_(convert, text, std::min(room, enough));
    require(std::equal(part.begin(), part.end(), whole.begin()), "the beginning of the whole text",
            static_cast<long long>(part.size()));
    return whole;
}

std::string_view view_(const bytes_t &bytes) { return {bytes.data(), bytes.size()}; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    input_t input(data, size);
    const charset_info_t &set = _charset_info[input.byte() % DVSTR_CHARSET_MAX];
    const size_t room = input.byte();
    const std::string_view text = input.rest();

    const auto to_units = [&](const char *src, int src_len, char *dst, int dst_size) {
        return set.to_ucs2(&set, src, src_len, reinterpret_cast<uint8_t *>(dst), dst_size);
    };
    const auto from_units = [&](const char *src, int src_len, char *dst, int dst_size) {
        return set.from_ucs2(&set, reinterpret_cast<const uint8_t *>(src), src_len, dst, dst_size);
    };
    const bytes_t units = whole_(to_units, text, room);
    const bytes_t written = whole_(from_units, view_(units), room);
    require(whole_(to_units, view_(written), room) == units, "the units of a text",
            static_cast<long long>(units.size()));
    whole_(from_units, text, room);  // any bytes as units

    for (const auto to : {DVSTR_CASE_LOWER, DVSTR_CASE_UPPER, DVSTR_CASE_INITCAP}) {
        const auto change = [&](const char *src, int src_len, char *dst, int dst_size) {
            return set.to_case(&set, to, src, src_len, dst, dst_size);
        };
        require(whole_(change, text, room).size() <= text.size(), "no longer text", to);
        if (to == DVSTR_CASE_INITCAP) continue;
        const bytes_t changed = whole_(change, view_(written), room);
        require(whole_(change, view_(changed), room) == changed, "no change", to);
    }
    return 0;
}
