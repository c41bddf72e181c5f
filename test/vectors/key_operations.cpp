// Packed keys. A part is three words, the enumerators of its type, order and place of NULL without their
// prefix; its value stands as in the operations of its type, a row identifier as its four numbers, a double
// and an integer of 128 bits as bytes, null for SQL NULL.

#include <algorithm>
#include <iterator>

#include "bytes.h"
#include "dvtypes/packed_key.h"
#include "dvtypes/rowid.h"
#include "vector_bind.h"

using namespace dv::test;

namespace {

constexpr size_t _room = 256;

__extension__ using uint128_t = unsigned __int128;

// A value as dv_key_append takes it.
struct value_t {
    const void *data;
    size_t size;
};

// Each reads an input and writes a value as an output.
struct value_type {
    const char *name;
    value_t (*read)(vector_call &call);
    void (*put)(vector_call &call, const uint8_t *value, size_t size);
};

template <typename Record>
value_t read_record_(vector_call &call) {
    return {call.record<Record>(), 0};
}

value_t kept_(vector_call &call, const auto &value) {
    void *const kept = call.memory(sizeof value);
    std::memcpy(kept, &value, sizeof value);
    return {kept, sizeof value};
}

template <typename Integer>
value_t read_integer_(vector_call &call) {
    return kept_(call, static_cast<Integer>(call.integer()));
}

value_t read_double_(vector_call &call) { return kept_(call, dv::impl::load_be64(call.bytes(8))); }

value_t read_int128_(vector_call &call) {
    const uint8_t *const bytes = call.bytes(16);
    return kept_(call, uint128_t{dv::impl::load_be64(bytes)} << 64 | dv::impl::load_be64(bytes + 8));
}

value_t read_rowid_(vector_call &call) {
    rowid_t rowid{};
    rowid.sgmt = static_cast<uint32_t>(call.integer());
    rowid.file = static_cast<uint16_t>(call.integer());
    rowid.block = static_cast<uint32_t>(call.integer());
    rowid.row = static_cast<uint16_t>(call.integer());
    return kept_(call, rowid);
}

value_t read_text_(vector_call &call) {
    const vector_text text = call.text();
    return {text.data, static_cast<size_t>(text.size)};
}

void put_number_(vector_call &call, const uint8_t *value, size_t /*size*/) {
    call.put_bytes(value, value[0] + size_t{1});
}

void put_record_(vector_call &call, const uint8_t *value, size_t size) { call.put_bytes(value, size); }

template <typename Value>
Value value_of_(const uint8_t *bytes) {
    Value value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

template <typename Integer>
void put_integer_(vector_call &call, const uint8_t *value, size_t /*size*/) {
    call.put(value_of_<Integer>(value));
}

void put_double_(vector_call &call, const uint8_t *value, size_t /*size*/) {
    call.put_bits(value_of_<uint64_t>(value));
}

void put_int128_(vector_call &call, const uint8_t *value, size_t /*size*/) {
    uint8_t bytes[16];
    const auto number = value_of_<uint128_t>(value);
    dv::impl::store_be64(bytes, static_cast<uint64_t>(number >> 64));
    dv::impl::store_be64(bytes + 8, static_cast<uint64_t>(number));
    call.put_bytes(bytes, sizeof bytes);
}

void put_rowid_(vector_call &call, const uint8_t *value, size_t /*size*/) {
    const auto rowid = value_of_<rowid_t>(value);
    for (const uint32_t number : {rowid.sgmt, uint32_t{rowid.file}, rowid.block, uint32_t{rowid.row}})
        call.put(int64_t{number});
}

void put_text_(vector_call &call, const uint8_t *value, size_t size) {
    call.put_text({reinterpret_cast<const char *>(value), size});
}

constexpr value_type _types[DV_KEY_TYPES] = {
    // by dv_key_type_e
    {"NUMBER", read_record_<number_t>, put_number_},
    {"DATE", read_record_<dv_date_t>, put_record_},
    {"TIME", read_record_<dv_time_t>, put_record_},
    {"TIMESTAMP", read_record_<dv_timestamp_t>, put_record_},
    {"TS_TZ", read_record_<dv_ts_tz_t>, put_record_},
    {"TS_LTZ", read_record_<dv_ts_ltz_t>, put_record_},
    {"ITV_YTM", read_record_<dv_itv_ytm_t>, put_record_},
    {"ITV_DTS", read_record_<dv_itv_dts_t>, put_record_},
    {"ROWID", read_rowid_, put_rowid_},
    {"INT32", read_integer_<int32_t>, put_integer_<int32_t>},
    {"INT64", read_integer_<int64_t>, put_integer_<int64_t>},
    {"INT128", read_int128_, put_int128_},
    {"DOUBLE", read_double_, put_double_},
    {"BYTES", read_text_, put_text_},
};

// The index of a word among names.
int32_t index_of_(vector_call &call, std::initializer_list<std::string_view> names) {
    const std::string_view word = call.word();
    const auto found = std::find(names.begin(), names.end(), word);
    if (found == names.end()) call.fail("no such word: " + std::string(word));
    return found == names.end() ? 0 : static_cast<int32_t>(found - names.begin());
}

dv_key_part_t read_part_(vector_call &call) {
    dv_key_part_t part{};
    const std::string_view name = call.word();
    const auto *const type = std::find_if(std::begin(_types), std::end(_types),
                                          [&](const value_type &t) { return t.name == name; });
    if (type == std::end(_types)) call.fail("no such type: " + std::string(name));
    part.type = type == std::end(_types) ? 0 : static_cast<int32_t>(type - _types);
    part.order = index_of_(call, {"ASCENDING", "DESCENDING"});
    part.nulls = index_of_(call, {"NULLS_FIRST", "NULLS_LAST", "NOT_NULL"});
    return part;
}

value_t read_value_(vector_call &call, const dv_key_part_t &part) {
    return call.takes("null") ? value_t{nullptr, 0} : _types[part.type].read(call);
}

// A key that holds some bytes, with room behind them.
dv_key_t key_of_(vector_call &call, vector_text bytes) {
    const auto size = static_cast<size_t>(bytes.size);
    dv_key_t key = {static_cast<uint8_t *>(call.memory(size + _room)), size, size + _room};
    std::memcpy(key.bytes, bytes.data, size);
    return key;
}

void append_(vector_call &call) {
    const dv_key_part_t part = read_part_(call);
    const value_t value = read_value_(call, part);
    dv_key_t key = key_of_(call, {"", 0});
    call.run([&] { dv_key_append(&key, &part, value.data, value.size); });
    call.put_bytes(key.bytes, key.size);
}

// The value, and how many bytes are left behind it; or what is wrong.
void take_(vector_call &call) {
    const dv_key_part_t part = read_part_(call);
    const vector_text key = call.fenced_bytes();
    dv_key_rest_t rest = {reinterpret_cast<const uint8_t *>(key.data), static_cast<size_t>(key.size)};
    auto *const value = static_cast<uint8_t *>(call.memory(_room));
    int64_t size = 0;
    if (const char *const fault = dv_key_take(&rest, &part, value, _room, &size); fault != nullptr) {
        call.put_text(fault);
        return;
    }
    if (size < 0) {
        call.put_word("null");
    } else {
        _types[part.type].put(call, value, static_cast<size_t>(size));
    }
    call.put(static_cast<int64_t>(rest.size));
}

void end_of_prefix_(vector_call &call) {
    dv_key_t key = key_of_(call, call.fenced_bytes());
    dv_key_end_of_prefix(&key);
    call.put_bytes(key.bytes, key.size);
}

// The parts in front, the relation, the part and its value: from and to, or 0.
void range_(vector_call &call) {
    const vector_text prefix = call.fenced_bytes();
    const auto relation = static_cast<int>(call.integer());
    const dv_key_part_t part = read_part_(call);
    const value_t value = read_value_(call, part);
    dv_key_t from = key_of_(call, prefix), to = key_of_(call, prefix);
    int has_range = 0;
    call.run([&] { has_range = dv_key_range(&part, relation, value.data, value.size, &from, &to); });
    if (has_range == 0) {
        call.put(0);
        return;
    }
    call.put_bytes(from.bytes, from.size);
    call.put_bytes(to.bytes, to.size);
}

}  // namespace

void dv::test::add_key_operations(vector_operations &all) {
    all.add("dv_key_append", append_);
    all.add("dv_key_take", take_);
    all.add("dv_key_end_of_prefix", end_of_prefix_);
    all.add("dv_key_range", range_);
}
