// Values of every type that keys have, as byte strings, and their order without keys.

#ifndef DV_TEST_KEY_SUPPORT_H
#define DV_TEST_KEY_SUPPORT_H

#include <span>

#include "column_support.h"
#include "dvtypes/packed_key.h"

namespace dv::test {

struct key_type {
    const char *name;
    dv_key_type_e type;
    int64_t width;  // bytes of a value in a column by stride; 0: a NUMBER
    int (*order)(const std::string &x, const std::string &y);
    // A valid value, often equal or near to another: a record as callers have it (a NUMBER without its size),
    // of DV_KEY_BYTES any number of bytes.
    std::string (*any)(number_source &source);
};

// By dv_key_type_e.
std::span<const key_type> key_types();

// The order of two rows of a part: below 0, 0 or above.
int key_order(const key_type &type, int order, int nulls, const row_t &x, const row_t &y);

// The same of rows of several columns; the first differing part decides.
using key_parts = std::vector<dv_key_part_t>;
int key_order(const key_parts &parts, const rows_t &x, const rows_t &y);

// Whether a row's value stands so to another one, as dv_key_range has it.
bool is_related(const dv_key_part_t &part, const row_t &found, int relation, const row_t &value);

// Parts of any types, orders and places of NULL.
key_parts any_key_parts(number_source &source, size_t count);
row_t any_key_value(const dv_key_part_t &part, number_source &source);  // now and then NULL, where it may be
rows_t any_key_row(const key_parts &parts, number_source &source);

// What dv_key_append is given: a NUMBER gets its size again.
std::string record_of_key(const dv_key_part_t &part, const std::string &value);

// The packed key of the first columns of a row: as many as there are.
std::string packed_key(const key_parts &parts, const rows_t &row);

// The bounds of dv_key_range behind a prefix; none: the range is empty.
struct key_bounds {
    std::string from, to;  // to: empty for no end
    bool contain(const std::string &key) const { return from <= key && (to.empty() || key < to); }
};
std::optional<key_bounds> key_range(const dv_key_part_t &part, int relation, const row_t &value,
                                    const std::string &prefix);

// For messages: the parts, and the values of a row as bytes.
std::string describe(const key_parts &parts, const rows_t &row);

}  // namespace dv::test

#endif  // DV_TEST_KEY_SUPPORT_H
