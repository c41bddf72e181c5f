// Packed keys: any bytes as a key, read by any parts. The first byte tells how many parts, one byte each its
// type, order and place of NULL; the rest is the key.
//
// Properties: a part is refused and nothing moves, or its value packs to the bytes that were read; the range
// of values equal to it holds the key, those of values below and above it do not; nothing is read or written
// beside its memory.

#include <algorithm>
#include <vector>

#include "dvtypes/packed_key.h"
#include "fuzz_input.h"
#include "raise.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

using bytes_t = std::vector<uint8_t>;

struct key_memory {
    bytes_t bytes;
    dv_key_t key;

    key_memory(const bytes_t &prefix, size_t room) : bytes(prefix), key{} {
        bytes.resize(prefix.size() + room);
        bytes.shrink_to_fit();
        key = {bytes.data(), prefix.size(), bytes.size()};
    }
    bytes_t text() const { return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(key.size)}; }
};

bool is_in_(const bytes_t &key, const key_memory &from, const key_memory &to) {
    return from.text() <= key && (to.key.size == 0 || key < to.text());
}

void check_ranges_(const dv_key_part_t &part, const void *value, size_t size, const bytes_t &prefix,
                   const bytes_t &key) {
    const size_t room = key.size() - prefix.size();
    for (int relation = DV_COLUMN_LT; relation <= 7; ++relation) {
        const bool is_allowed = value == nullptr ? relation == DV_COLUMN_EQ || relation == DV_COLUMN_NE
                                                 : relation != DV_COLUMN_NE;
        if (!is_allowed) continue;
        key_memory from(prefix, room), to(prefix, room);
        const bool has_range = dv_key_range(&part, relation, value, size, &from.key, &to.key) != 0;
        const bool is_wanted = (relation & DV_COLUMN_EQ) != 0;
        require((has_range && is_in_(key, from, to)) == is_wanted, "a range", relation);
    }
}

// Reads the next part; false: it is refused.
bool check_part_(const dv_key_part_t &part, dv_key_rest_t &rest, bytes_t &prefix) {
    const dv_key_rest_t before = rest;
    int64_t size = 0;
    if (dv_key_take(&rest, &part, nullptr, 0, &size) != nullptr) {
        require(rest.bytes == before.bytes && rest.size == before.size, "a refused part stays", size);
        return false;
    }
    bytes_t value(static_cast<size_t>(std::max<int64_t>(size, 1)));
    rest = before;
    require(dv_key_take(&rest, &part, value.data(), value.size(), &size) == nullptr, "a part, again", size);
    const void *const given = size < 0 ? nullptr : value.data();
    const auto length = static_cast<size_t>(std::max<int64_t>(size, 0));

    bytes_t whole = prefix;
    whole.insert(whole.end(), before.bytes, rest.bytes);
    key_memory again(prefix, whole.size() - prefix.size());
    const int code = raise_of([&] { dv_key_append(&again.key, &part, given, length); });
    require(code == 0 && again.text() == whole, "a part packed again", code);
    check_ranges_(part, given, length, prefix, whole);
    prefix = whole;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    input_t input(data, size);
    std::vector<dv_key_part_t> parts(1 + input.byte() % 4u);
    for (dv_key_part_t &part : parts) {
        const int choice = input.byte();
        part = {nullptr, choice % DV_KEY_TYPES, choice / DV_KEY_TYPES % 2, choice / DV_KEY_TYPES / 2 % 3};
    }
    const std::string_view text = input.rest();
    const bytes_t key(text.begin(), text.end());
    dv_key_rest_t rest = {key.data(), key.size()};
    bytes_t prefix;
    for (const dv_key_part_t &part : parts) {
        if (!check_part_(part, rest, prefix)) break;
    }
    return 0;
}
