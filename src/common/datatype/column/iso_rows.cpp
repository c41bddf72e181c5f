// Texts of the ISO shape, many at a time: the shapes, and the kernels of each level.

#include "iso_rows.h"

#include "../digits.h"
#include "dvtypes/iso.h"
#include "vector_level.h"

namespace dv::impl {
namespace {

struct iso_kernels_t {
    iso_read_t *read;
    iso_write_t *write;
};

}  // namespace

namespace plain {
namespace {

uint64_t read_rows(const iso_reading_t &, const dv_column_t &, const dv_column_t &, int64_t, int,
                   uint64_t valid) {
    return valid;
}
uint64_t write_rows(const iso_writing_t &, const dv_column_t &, text_result_t &, int64_t, int,
                    uint64_t valid) {
    return valid;
}

constexpr iso_kernels_t kernels = {read_rows, write_rows};

}  // namespace
}  // namespace plain
}  // namespace dv::impl

#define DV_AVX2_KERNELS "iso_avx2_kernels.h"
#include "kernels_by_level.h"

using namespace dv::impl;

namespace {

constexpr char _digits[ISO_TEXT_SIZE] = "0000 00 00 00 00 00 000000000";
constexpr int _character_places[] = {4, 7, 10, 13, 16, 19};
static_assert(std::size(_character_places) == std::size(iso_model_t{}.characters));

// "2024-02-29 13:05:00.500000000"
constexpr iso_model_t _iso_model = {true, true, FRACTION_DIGITS, {'-', '-', ' ', ':', ':', '.'}};

void put_characters_(char *to, const iso_model_t &model) {
    memcpy(to, _digits, ISO_TEXT_SIZE);
    for (size_t i = 0; i < std::size(_character_places); ++i) to[_character_places[i]] = model.characters[i];
}

constexpr uint32_t _with_fraction = ((1u << 9) - 1) << (ISO_CLOCK_LENGTH + 2);  // of 1 to 9 digits

}  // namespace

iso_reading_t dv::impl::iso_reading(const iso_model_t &model, bool has_fraction) {
    iso_reading_t shape{};
    put_characters_(shape.characters, model);
    put_characters_(shape.other_characters, model);
    shape.has_fraction = has_fraction;
    shape.lengths = 1u << ISO_DATE_LENGTH;
    if (model.has_clock) shape.lengths |= 1u << ISO_CLOCK_LENGTH;
    if (model.has_fraction && has_fraction) shape.lengths |= _with_fraction;
    return shape;
}

// Between date and time a T may stand, and the time may end behind the hour or the minute.
iso_reading_t dv::impl::iso_reading(bool has_fraction) {
    iso_reading_t shape = iso_reading(_iso_model, has_fraction);
    shape.other_characters[ISO_DATE_LENGTH] = 'T';
    shape.lengths |= 1u << 13 | 1u << 16;
    return shape;
}

iso_writing_t dv::impl::iso_writing(const iso_model_t &model) {
    iso_writing_t shape{};
    put_characters_(shape.characters, model);
    shape.length = model.has_clock ? ISO_CLOCK_LENGTH : ISO_DATE_LENGTH;
    if (model.has_fraction) shape.length += 1 + model.fraction_digits;
    memset(shape.characters + ISO_CLOCK_LENGTH + 1, 0, FRACTION_DIGITS);
    return shape;
}

iso_writing_t dv::impl::iso_writing(bool has_fraction) {
    iso_model_t model = _iso_model;
    model.has_fraction = has_fraction;
    return iso_writing(model);
}

iso_read_t *dv::impl::iso_reader() { return kernels_in_use().read; }
iso_write_t *dv::impl::iso_writer() { return kernels_in_use().write; }
