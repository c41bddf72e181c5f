// Keys of several columns for stores: parts that end by themselves.
//
// A part is a byte that tells whether there is a value, where the part may be NULL, and the value: of a fixed
// length as in key_values.h; a NUMBER from its sign on, ended by a byte 0, which is below every digit and
// terminator; bytes with FF behind every 0, ended by 0 0. No value's bytes are the beginning of another's,
// so that parts compare before those behind them do. In descending order all bits of a value are turned.

#include "dvtypes/packed_key.h"

#include <algorithm>

#include "key_values.h"
#include "number_rows.h"

using namespace dv::impl;

namespace {

constexpr uint8_t _escape = 0, _escaped_zero = 0xFF, _end = 0;
constexpr size_t _end_of_bytes = 2;
constexpr int _every_value = DV_COLUMN_LT | DV_COLUMN_EQ | DV_COLUMN_GT;
constexpr size_t _no_value = 0;  // bytes of a value in the key: every value has some

// A value as the caller has it.
struct given_value_t {
    const uint8_t *bytes;
    size_t size;  // of DV_KEY_BYTES
};

// The bytes of a key from a value on, with the bits turned that a descending part turns.
struct key_bytes_t {
    const uint8_t *bytes;
    size_t size;
    uint8_t turned;

    uint8_t operator[](size_t i) const { return bytes[i] ^ turned; }
};

// What was found at the beginning of a key.
struct taken_t {
    size_t key_size = 0;  // bytes in the key
    size_t size = 0;      // of the value
    const char *fault = nullptr;
};

constexpr taken_t fault_(const char *fault) { return {0, 0, fault}; }

constexpr const char *_ends_early = "the key ends within a part";

// ---- values of a fixed length ----

template <typename Value>
struct fixed_t {
    static size_t key_size(const given_value_t & /*value*/) { return Value::key_bytes; }
    static void write(uint8_t *key, const given_value_t &value) { Value::write(key, value.bytes); }

    static taken_t take(const key_bytes_t &key, void *value, size_t room) {
        constexpr size_t size = Value::key_bytes;
        if (key.size < size) return fault_(_ends_early);
        uint8_t bytes[size];
        for (size_t i = 0; i < size; ++i) bytes[i] = key[i];
        typename Value::value_t found;
        Value::read(found, bytes);
        if (const char *const fault = Value::fault(found); fault != nullptr) return fault_(fault);
        if (value != nullptr && room >= sizeof found) memcpy(value, &found, sizeof found);
        return {size, sizeof found};
    }
};

// ---- NUMBER ----

struct packed_number_t {
    static size_t size(const given_value_t &value) {
        return std::min(size_t{*value.bytes}, size_t{NUMBER_SIZE_MAX});
    }
    static size_t key_size(const given_value_t &value) {
        const size_t bytes = size(value);
        return bytes == 0 ? _no_value : bytes + 1;
    }
    static void write(uint8_t *key, const given_value_t &value) {
        const size_t bytes = size(value);
        memcpy(key, value.bytes + 1, bytes);
        key[bytes] = _end;
    }

    static taken_t take(const key_bytes_t &key, void *value, size_t room) {
        number_t found{};
        auto *const bytes = &found.signexp;
        size_t size = 0;
        // The first byte may be any, the end among them.
        for (; size < key.size && (size == 0 || key[size] != _end); ++size) {
            if (size == NUMBER_SIZE_MAX) return fault_("it is too long for a NUMBER");
            bytes[size] = key[size];
        }
        if (size == key.size) return fault_(_ends_early);
        found.size = static_cast<uint8_t>(size);
        if (const char *const fault = number_get_fault(&found); fault != nullptr) return fault_(fault);
        if (value != nullptr && room >= sizeof found) memcpy(value, &found, sizeof found);
        return {size + 1, sizeof found};
    }
};

// ---- texts and bytes ----

// The first place of a byte, or `size`.
size_t find_byte_(const uint8_t *bytes, size_t begin, size_t size, uint8_t byte) {
    if (begin >= size) return size;
    const void *const found = memchr(bytes + begin, byte, size - begin);
    return found == nullptr ? size : static_cast<size_t>(static_cast<const uint8_t *>(found) - bytes);
}

struct packed_bytes_t {
    static size_t key_size(const given_value_t &value) {
        const auto zeros = std::count(value.bytes, value.bytes + value.size, _escape);
        return value.size + static_cast<size_t>(zeros) + _end_of_bytes;
    }
    static void write(uint8_t *key, const given_value_t &value) {
        for (size_t begin = 0; begin < value.size;) {
            const size_t zero = find_byte_(value.bytes, begin, value.size, _escape);
            key = std::copy(value.bytes + begin, value.bytes + zero, key);
            begin = zero + 1;
            if (zero == value.size) break;
            *key++ = _escape;
            *key++ = _escaped_zero;
        }
        *key++ = _escape;
        *key = _end;
    }

    // Stores the bytes where there is a place for them; how many there are is told by a first call without.
    static taken_t copy(const key_bytes_t &key, uint8_t *to) {
        taken_t taken;
        for (size_t begin = 0;;) {
            const size_t escape = find_byte_(key.bytes, begin, key.size, _escape ^ key.turned);
            if (escape + 1 >= key.size) return fault_(_ends_early);
            const bool is_end = key[escape + 1] == _end;
            if (!is_end && key[escape + 1] != _escaped_zero) return fault_("a byte 0 is not escaped");
            const size_t end = escape + (is_end ? 0 : 1);  // a zero that is escaped belongs to the value
            for (size_t i = begin; to != nullptr && i < end; ++i) *to++ = key[i];
            taken.size += end - begin;
            begin = taken.key_size = escape + 2;
            if (is_end) return taken;
        }
    }
    static taken_t take(const key_bytes_t &key, void *value, size_t room) {
        const taken_t taken = copy(key, nullptr);
        if (taken.fault == nullptr && value != nullptr && room >= taken.size)
            copy(key, static_cast<uint8_t *>(value));
        return taken;
    }
};

// ---- parts ----

struct packed_type_t {
    size_t (*key_size)(const given_value_t &value);
    void (*write)(uint8_t *key, const given_value_t &value);
    // Writes a value that is sound and has room.
    taken_t (*take)(const key_bytes_t &key, void *value, size_t room);
};

template <typename Kind>
constexpr packed_type_t kind_ = {Kind::key_size, Kind::write, Kind::take};
constexpr std::array _types =
    key_types<packed_type_t>(kind_<packed_number_t>, kind_<packed_bytes_t>,
                             []<typename Value>(Value) -> packed_type_t { return kind_<fixed_t<Value>>; });

const packed_type_t &type_of_(const dv_key_part_t &part) { return _types[static_cast<size_t>(part.type)]; }

bool may_be_null(const dv_key_part_t &part) { return part.nulls != DV_KEY_NOT_NULL; }
uint8_t null_byte_(const dv_key_part_t &part) { return part.nulls == DV_KEY_NULLS_LAST; }
uint8_t turned_(const dv_key_part_t &part) { return part.order == DV_KEY_DESCENDING ? 0xFF : 0; }

// Bytes of a value in the key; _no_value: it is NULL.
size_t value_size_(const dv_key_part_t &part, const given_value_t &value) {
    return value.bytes == nullptr ? _no_value : type_of_(part).key_size(value);
}

// Writes a part whose value has `size` bytes in the key, and returns the bytes of the part.
size_t write_part_(const dv_key_part_t &part, const given_value_t &value, size_t size, uint8_t *key) {
    const size_t front = may_be_null(part) ? 1 : 0;
    if (front != 0) key[0] = size == _no_value ? null_byte_(part) : null_byte_(part) ^ 1;
    if (size == _no_value) return front;
    type_of_(part).write(key + front, value);
    if (const uint8_t turned = turned_(part); turned != 0) {
        for (size_t i = front; i < front + size; ++i) key[i] ^= turned;
    }
    return front + size;
}

bool has_room_(const dv_key_t &key, const dv_key_part_t &part, size_t value_size) {
    return key.size <= key.room && value_size + may_be_null(part) <= key.room - key.size;
}

void append_(dv_key_t &key, const dv_key_part_t &part, const given_value_t &value, size_t value_size) {
    key.size += write_part_(part, value, value_size, key.bytes + key.size);
}

const char *take_part_(dv_key_rest_t &rest, const dv_key_part_t &part, void *value, size_t room,
                       int64_t &size) {
    const size_t front = may_be_null(part) ? 1 : 0;
    if (rest.size < front) return _ends_early;
    if (front != 0 && rest.bytes[0] > 1) return "the first byte of a part tells neither NULL nor a value";
    const bool is_null = front != 0 && rest.bytes[0] == null_byte_(part);
    taken_t taken;
    if (!is_null) {
        const key_bytes_t key = {rest.bytes + front, rest.size - front, turned_(part)};
        taken = type_of_(part).take(key, value, room);
        if (taken.fault != nullptr) return taken.fault;
        size = static_cast<int64_t>(taken.size);
        if (value != nullptr && room < taken.size) return "there is no room for the value";
    }
    rest.bytes += front + taken.key_size;
    rest.size -= front + taken.key_size;
    return nullptr;
}

// ---- ranges ----

bool is_key_range(const dv_key_part_t &part, int relation, bool is_null) {
    if (is_null) return may_be_null(part) && (relation == DV_COLUMN_EQ || relation == DV_COLUMN_NE);
    return relation >= DV_COLUMN_LT && relation <= _every_value && relation != DV_COLUMN_NE;
}

// How keys stand to the one of the value.
int relation_of_keys_(const dv_key_part_t &part, int relation, bool is_null) {
    if (is_null) return relation == DV_COLUMN_NE ? _every_value : relation;
    if (part.order != DV_KEY_DESCENDING) return relation;
    const int below = (relation & DV_COLUMN_LT) != 0 ? DV_COLUMN_GT : 0;
    const int above = (relation & DV_COLUMN_GT) != 0 ? DV_COLUMN_LT : 0;
    return (relation & DV_COLUMN_EQ) | below | above;
}

// Whether nothing lies above the value at the end of a key, but what lies above all values.
bool is_last_value_(const dv_key_t &key, size_t value_size) {
    const uint8_t *const end = key.bytes + key.size;
    return std::all_of(end - value_size, end, [](uint8_t byte) { return byte == 0xFF; });
}

// Makes a key the beginning of all that have a value in the part behind the first `prefix` bytes.
void cut_to_values_(dv_key_t &key, size_t prefix, const dv_key_part_t &part) {
    key.size = prefix;
    if (may_be_null(part)) key.bytes[key.size++] = null_byte_(part) ^ 1;
}

// ---- columns ----

// Parts of a key and where the keys go. A row has a key whatever its columns have.
struct pack_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    const dv_key_part_t *parts;
    int count;
    appended_rows_t keys{result};

    // False: the row's column has no value.
    static bool find_value(const dv_key_part_t &part, int64_t row, number_t &buffer, given_value_t &value) {
        const dv_column_t &column = *part.column;
        value = {};
        if (valid_rows(column, row, 1) == 0) return false;
        if (part.type == DV_KEY_NUMBER) {
            value.bytes = reinterpret_cast<const uint8_t *>(number_at(column, row, buffer));
        } else if (column.offsets != nullptr) {
            const row_bytes_t bytes = bytes_by_offsets(column, row);
            value = {reinterpret_cast<const uint8_t *>(bytes.begin), static_cast<size_t>(bytes.size)};
        } else {
            value.bytes = static_cast<const uint8_t *>(value_at(column, row));
            if (part.type == DV_KEY_BYTES) value.size = static_cast<size_t>(column.size);
        }
        return value.bytes != nullptr;
    }

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }
    bool row(int64_t row) {
        dv_key_t key = {reinterpret_cast<uint8_t *>(keys.next_place()), 0, room()};
        number_t buffer;
        bool is_full = false;
        for (int i = 0; i < count; ++i) {
            given_value_t value;
            const bool has_value = find_value(parts[i], row, buffer, value);
            const size_t size = has_value ? value_size_(parts[i], value) : _no_value;
            if (size == _no_value && !may_be_null(parts[i])) return false;
            // A row that turns out to have no key needs no room.
            is_full = is_full || !has_room_(key, parts[i], size);
            if (!is_full) append_(key, parts[i], value, size);
        }
        if (is_full) raise(DV_ERR_TEXT_BUFFER_SIZE);
        keys.append(row, static_cast<int64_t>(key.size));
        return true;
    }
    void no_value(int64_t row) const { keys.append_none(row); }

    size_t room() const {
        const int64_t end = std::min<int64_t>(result->size, INT32_MAX);
        return end < keys.end ? 0 : static_cast<size_t>(end - keys.end);
    }
};

bool are_packable(const dv_key_part_t *parts, int count, const dv_column_t *result) {
    if (!given(parts) || count < 1 || !are_columns(result) || result->offsets == nullptr) return false;
    return std::all_of(parts, parts + count, [&](const dv_key_part_t &part) {
        if (!has_key_type(&part) || !are_columns(result, part.column)) return false;
        const bool has_size = part.type == DV_KEY_BYTES;
        if (has_size && part.column->offsets == nullptr) return part.column->size >= 0;
        return has_size || part.type == DV_KEY_NUMBER || part.column->offsets == nullptr;
    });
}

given_value_t value_of_(const void *value, size_t size) {
    return {static_cast<const uint8_t *>(value), size};
}

}  // namespace

extern "C" void dv_key_append(dv_key_t *key, const dv_key_part_t *part, const void *value, size_t size) {
    if (!DV_ASSERT(key != NULL) || !DV_ASSERT(has_key_type(part))) return;
    const given_value_t given_value = value_of_(value, size);
    const size_t value_size = value_size_(*part, given_value);
    const bool is_null = value_size == _no_value;
    if (!DV_ASSERT(may_be_null(*part) || !is_null)) return;
    if (!has_room_(*key, *part, value_size)) raise(DV_ERR_TEXT_BUFFER_SIZE);
    append_(*key, *part, given_value, value_size);
}

extern "C" const char *dv_key_take(dv_key_rest_t *rest, const dv_key_part_t *part, void *value, size_t room,
                                   int64_t *size) {
    if (!DV_ASSERT(rest != NULL) || !DV_ASSERT(size != NULL) || !DV_ASSERT(has_key_type(part)))
        return nullptr;
    *size = -1;
    return take_part_(*rest, *part, value, room, *size);
}

extern "C" void dv_key_end_of_prefix(dv_key_t *key) {
    if (!DV_ASSERT(key != NULL)) return;
    while (key->size > 0 && key->bytes[key->size - 1] == 0xFF) --key->size;
    if (key->size > 0) ++key->bytes[key->size - 1];
}

extern "C" int dv_key_range(const dv_key_part_t *part, int relation, const void *value, size_t size,
                            dv_key_t *from, dv_key_t *to) {
    if (!DV_ASSERT(from != NULL) || !DV_ASSERT(to != NULL) || !DV_ASSERT(has_key_type(part))) return 0;
    const given_value_t given_value = value_of_(value, size);
    const size_t value_size = value_size_(*part, given_value);
    const size_t from_prefix = from->size, to_prefix = to->size;
    const bool is_null = value_size == _no_value;
    if (!DV_ASSERT(is_key_range(*part, relation, is_null))) return 0;
    if (!has_room_(*from, *part, value_size) || !has_room_(*to, *part, value_size))
        raise(DV_ERR_TEXT_BUFFER_SIZE);

    const int keys = relation_of_keys_(*part, relation, is_null);
    append_(*from, *part, given_value, value_size);
    if (keys == DV_COLUMN_GT && is_last_value_(*from, value_size)) {
        from->size = from_prefix;
        return 0;
    }
    append_(*to, *part, given_value, value_size);
    if (keys == DV_COLUMN_GT) dv_key_end_of_prefix(from);
    if ((keys & DV_COLUMN_LT) != 0) cut_to_values_(*from, from_prefix, *part);
    if ((keys & DV_COLUMN_GT) != 0) cut_to_values_(*to, to_prefix, *part);
    if (keys != DV_COLUMN_LT) dv_key_end_of_prefix(to);
    return 1;
}

extern "C" void dv_column_pack_keys(const dv_key_part_t *parts, int count, dv_column_t *result,
                                    dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_packable(parts, count, result))) return;
    const dv_column_t every_row = {result->count, nullptr, 0, nullptr, 0, nullptr, 0};
    pack_t operation = {{&every_row}, result, parts, count};
    column_run(operation, result->count, faults);
}
