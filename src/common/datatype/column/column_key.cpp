// Sort keys: the bytes of values in a form whose unsigned bytewise order is that of the values.
//
// Values of a fixed length are those of key_values.h. A NUMBER is filled up with zeros, which come before
// every digit and every terminator.

#include "dvtypes/column_key.h"

#include <algorithm>
#include <array>

#include "key_values.h"
#include "number_rows.h"

using namespace dv::impl;

namespace {

constexpr int _number_bytes = NUMBER_SIZE_MAX;

// Ones in the first `size` bytes, for each size of a record; the bytes behind a record's own are none.
constexpr auto _record_masks = [] {
    std::array<std::array<uint8_t, NUMBER_SIZE_MAX>, NUMBER_SIZE_MAX + 1> masks{};
    for (size_t size = 0; size < masks.size(); ++size) std::fill_n(masks[size].begin(), size, uint8_t{0xFF});
    return masks;
}();

// Copies eight bytes from `at` on under a mask.
void copy_masked_(uint8_t *to, const uint8_t *from, const uint8_t *mask, size_t at) {
    uint64_t word, kept;
    memcpy(&word, from + at, sizeof word);
    memcpy(&kept, mask + at, sizeof kept);
    word &= kept;
    memcpy(to + at, &word, sizeof word);
}

void write_number_(uint8_t *key, const number_t &x) {
    const auto &mask = _record_masks[x.size < NUMBER_SIZE_MAX ? x.size : size_t{NUMBER_SIZE_MAX}];
    for (const size_t at : {size_t{0}, size_t{8}, mask.size() - 8})
        copy_masked_(key, &x.signexp, mask.data(), at);
}

// ---- parts ----

struct part_t {
    const dv_column_t *operand[1];
    dv_column_t *result;  // none
    uint8_t *keys;        // the part's place in the first key
    size_t key_width;     // of whole keys
    int bytes;            // of a value in the key
    bool descending;
    uint8_t null_byte;

    uint8_t *key(int64_t row) const { return keys + static_cast<size_t>(row) * key_width; }
    void finish(uint8_t *at) const {
        at[0] = null_byte ^ 1;
        if (!descending) return;
        for (int i = 1; i <= bytes; ++i) at[i] = static_cast<uint8_t>(~at[i]);
    }
    void no_value(int64_t row) const {
        key(row)[0] = null_byte;
        memset(key(row) + 1, 0, static_cast<size_t>(bytes));
    }
};

struct number_part_t : part_t {
    uint64_t block(int64_t row, int count, uint64_t &valid) const {
        if (operand[0]->offsets != nullptr) return valid;
        for (int i = 0; i < count; ++i) {
            const auto &x = *static_cast<const number_t *>(value_at(*operand[0], row + i));
            if (x.size == 0) valid &= ~(uint64_t{1} << i);
            write_number_(key(row + i) + 1, x);
            finish(key(row + i));
        }
        return 0;
    }
    bool row(int64_t row) const {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x == nullptr) return false;
        write_number_(key(row) + 1, *x);
        finish(key(row));
        return true;
    }
};

template <typename Writer>
struct fixed_part_t : part_t {
    uint64_t block(int64_t row, int count, const uint64_t & /*valid*/) const {
        for (int i = 0; i < count; ++i) {
            Writer::write(key(row + i) + 1, value_at(*operand[0], row + i));
            finish(key(row + i));
        }
        return 0;
    }
    bool row(int64_t /*row*/) const { return true; }
};

struct bytes_part_t : part_t {
    uint64_t block(int64_t row, int count, const uint64_t & /*valid*/) const {
        for (int i = 0; i < count; ++i) {
            memcpy(key(row + i) + 1, value_at(*operand[0], row + i), static_cast<size_t>(bytes));
            finish(key(row + i));
        }
        return 0;
    }
    bool row(int64_t /*row*/) const { return true; }
};

template <typename Part>
void write_part_(const part_t &part, dv_column_faults_t *faults) {
    Part operation = {part};
    column_run(operation, part.operand[0]->count, faults);
}

struct key_type_t {
    int bytes;  // of a value in the key; 0: as many as the column says
    void (*write)(const part_t &part, dv_column_faults_t *faults);
};

constexpr std::array _key_types =
    key_types<key_type_t>({_number_bytes, write_part_<number_part_t>}, {0, write_part_<bytes_part_t>},
                          []<typename Writer>(Writer) -> key_type_t {
                              return {Writer::key_bytes, write_part_<fixed_part_t<Writer>>};
                          });

const key_type_t &type_of_(const dv_key_part_t &part) { return _key_types[static_cast<size_t>(part.type)]; }

bool is_key_part(const dv_key_part_t *part) {
    if (!has_key_type(part) || !are_columns(part->column)) return false;
    if (part->type == DV_KEY_BYTES && part->column->size < 0) return false;
    return part->type == DV_KEY_NUMBER || part->column->offsets == nullptr;
}

int value_bytes_(const dv_key_part_t &part) {
    const int bytes = type_of_(part).bytes;
    return bytes != 0 ? bytes : static_cast<int>(part.column->size);
}

}  // namespace

extern "C" size_t dv_key_size(const dv_key_part_t *part) {
    if (!DV_ASSERT(is_key_part(part))) return 0;
    return 1 + static_cast<size_t>(value_bytes_(*part));
}

extern "C" void dv_column_write_keys(const dv_key_part_t *part, void *keys, size_t width,
                                     dv_column_faults_t *faults) {
    if (!DV_ASSERT(keys != NULL) || !DV_ASSERT(is_key_part(part))) return;
    const auto null_byte = static_cast<uint8_t>(part->nulls == DV_KEY_NULLS_LAST);
    const part_t written = {{part->column},
                            nullptr,
                            static_cast<uint8_t *>(keys),
                            width,
                            value_bytes_(*part),
                            part->order == DV_KEY_DESCENDING,
                            null_byte};
    type_of_(*part).write(written, faults);
}
