// Decimals as text, both ways.
//
// Plain texts, a sign, digits and a point, whose value in units of the scale has at most eighteen digits are
// read here; any other goes through a NUMBER. Texts are written from all digits that a value can have, in two
// copies of a fixed length: what stands in front of the point, and what stands behind it.

#include <algorithm>

#include "../ascii.h"
#include "../digits.h"
#include "../number/plain_text_writer.h"
#include "column_run.h"
#include "decimal_rows.h"
#include "vector_level.h"

namespace dv::impl {

namespace {

// What texts are read into.
struct text_target_t {
    const dv_decimal_column_t *result;
    int scale;
    int64_t end;  // 10^precision, of at most 18 digits
};

// Of a text with so many digits in front of the point: which of sixteen digits its characters are, 0x80 for
// none, and its point.
struct text_shape_t {
    uint8_t source[16];
    uint8_t point[16];
};

// A text by offsets in a vector; both leave rows that they do not take.
struct text_kernels_t {
    uint64_t (*read)(const dv_column_t &texts, int64_t begin, uint64_t rows, const text_target_t &target);
    // In their order, up to the first that it does not take.
    uint64_t (*write)(const dv_decimal_column_t &x, int64_t begin, uint64_t rows, const text_shape_t *shapes,
                      appended_rows_t &texts);
};

}  // namespace

namespace plain {
namespace {

uint64_t read(const dv_column_t & /*texts*/, int64_t /*begin*/, uint64_t rows,
              const text_target_t & /*target*/) {
    return rows;
}
uint64_t write(const dv_decimal_column_t & /*x*/, int64_t /*begin*/, uint64_t rows,
               const text_shape_t * /*shapes*/, appended_rows_t & /*texts*/) {
    return rows;
}

constexpr text_kernels_t kernels = {read, write};

}  // namespace
}  // namespace plain

}  // namespace dv::impl

#define DV_AVX2_KERNELS "decimal_text_kernels.h"
#define DV_AVX512_KERNELS "decimal_text_batch_kernels.h"
#include "kernels_by_level.h"

using namespace dv::impl;

namespace {

constexpr int _kernel_scale_max = 14;  // a digit in front of the point, fifteen in all

const text_kernels_t &kernels_for_(int scale) {
    return scale >= 0 && scale <= _kernel_scale_max ? kernels_in_use() : plain::kernels;
}

// ---- from text ----

// A minus or none, and digits with a point or none.
struct plain_number_t {
    bool negative;
    uint64_t digits;   // as if there were no point
    int64_t count;     // of digits
    int64_t fraction;  // of them behind the point
};

// false: another text, or one of more digits than 64 bits take.
bool read_number_(row_bytes_t text, plain_number_t &number) {
    const char *at = text.begin;
    const char *const end = at + text.size;
    number.negative = at != end && *at == '-';
    if (number.negative) ++at;
    const char *const begin = at;
    if (end - begin > DV_DECIMAL64_PRECISION_MAX + 1) return false;
    const char *point = nullptr;
    number.digits = 0;
    for (; at != end; ++at) {
        if (is_digit(*at)) {
            number.digits = number.digits * 10 + static_cast<uint64_t>(*at - '0');
        } else if (*at == '.' && point == nullptr) {
            point = at;
        } else {
            return false;
        }
    }
    number.count = end - begin - (point != nullptr ? 1 : 0);
    number.fraction = point != nullptr ? end - point - 1 : 0;
    return number.count >= 1 && number.count <= DV_DECIMAL64_PRECISION_MAX;
}

// The digits in units of 10^-scale, rounded half up; false: it takes the longer way.
bool move_point_(const plain_number_t &number, int scale, uint64_t &digits) {
    const int64_t more_digits = scale - number.fraction;
    if (more_digits >= 0) {
        if (more_digits + number.count > DV_DECIMAL64_PRECISION_MAX) return false;
        digits = number.digits * static_cast<uint64_t>(ten_to(more_digits));
        return true;
    }
    if (more_digits < -DV_DECIMAL64_PRECISION_MAX) return false;
    const auto unit = static_cast<uint64_t>(ten_to(-more_digits));
    digits = (number.digits + unit / 2) / unit;
    return true;
}

// The value of plain text; false: of any other.
bool read_plain_(row_bytes_t text, const text_target_t &target, int64_t &value) {
    plain_number_t number;
    uint64_t digits;
    if (!read_number_(text, number) || !move_point_(number, target.scale, digits)) return false;
    value = number.negative ? -static_cast<int64_t>(digits) : static_cast<int64_t>(digits);
    return digits < static_cast<uint64_t>(target.end);
}

struct from_text_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    const dv_decimal_column_t *z;
    text_target_t target;
    const text_kernels_t *kernels;

    explicit from_text_t(const dv_column_t *text, dv_decimal_column_t *to)
        : operand{text},
          result(&to->column),
          z(to),
          target{to, to->scale,
                 static_cast<int64_t>(ten_to(std::min<int>(to->precision, DV_DECIMAL64_PRECISION_MAX)))},
          kernels(&kernels_for_(to->scale)) {}

    uint64_t block(int64_t begin, int /*count*/, const uint64_t &valid) const {
        const bool is_by_offsets = operand[0]->offsets != nullptr;
        const uint64_t left = is_by_offsets ? kernels->read(*operand[0], begin, valid, target) : valid;
        return try_rows(begin, left, /*appends=*/false, [&](int64_t row) {
            row_bytes_t text;
            int64_t value;
            if (!find_text_(row, text) || !read_plain_(text, target, value)) return false;
            store_decimal_row(*z, row, value);
            return true;
        });
    }

    bool row(int64_t row) const {
        const row_bytes_t text = text_at(*operand[0], row);
        number_t number;
        // A length of 0 would be none.
        number_from_str(&number, size_of_(text), text.size != 0 ? text.begin : "", nullptr);
        round_and_store_(row, number);
        return true;
    }

    bool try_row(int64_t row, int &code) const {
        const row_bytes_t text = text_at(*operand[0], row);
        number_t number;
        code = text.size != 0 ? number_try_from_str(&number, size_of_(text), text.begin)
                              : int{DV_ERR_NUMBER_TEXT};
        if (code != 0) return false;
        round_and_store_(row, number);
        return true;
    }

    void no_value(int64_t /*row*/) const {}

  private:
    static int size_of_(row_bytes_t text) {
        return static_cast<int>(std::min<int64_t>(text.size, INT32_MAX));
    }

    // text_at() without a raise.
    bool find_text_(int64_t row, row_bytes_t &text) const {
        const dv_column_t &column = *operand[0];
        if (column.offsets != nullptr && !has_bytes(column, row)) return false;
        text = text_at(column, row);
        return true;
    }

    void round_and_store_(int64_t row, number_t &number) const {
        number_force_prec_scale(&number, z->precision, z->scale);
        store_number(*z, row, number);
    }
};

// ---- to text ----

// All digits of a value up to its last one, and zero bytes for copies of a fixed length to run into.
constexpr int _digits_end = 48;   // 43 digits of a value of 128 bits, in two parts of 24 that overlap
constexpr int _copy_narrow = 24;  // no part of a text of 64 bits is longer
constexpr int _copy_wide = 48;

struct digits_t {
    char text[_digits_end + _copy_wide];
    int count;  // significant ones; 1 of zero
};

// The 24 last digits of a number.
void write_24_digits_(char *to, uint64_t number) {
    constexpr uint64_t ten_to_8 = 100'000'000, ten_to_16 = ten_to_8 * ten_to_8;
    const uint64_t rest = number % ten_to_16;
    store_text<uint64_t>(to, eight_digits(static_cast<uint32_t>(number / ten_to_16)));
    store_text<uint64_t>(to + 8, eight_digits(static_cast<uint32_t>(rest / ten_to_8)));
    store_text<uint64_t>(to + 16, eight_digits(static_cast<uint32_t>(rest % ten_to_8)));
}

// 1233 / 2^12 is log10(2), near enough for 128 bits.
int digit_count_(uint128_t magnitude) {
    const auto high = static_cast<uint64_t>(magnitude >> 64), low = static_cast<uint64_t>(magnitude);
    const auto bits = static_cast<int>(high != 0 ? 64 + std::bit_width(high) : std::bit_width(low | 1));
    const int fewer = bits * 1233 >> 12;
    return fewer + (fewer < DECIMAL_DIGITS_MAX + 1 && magnitude >= ten_to(fewer) ? 1 : 0);
}

void write_digits_(digits_t &digits, uint128_t magnitude) {
    constexpr uint64_t ten_to_19 = 10'000'000'000'000'000'000u;
    const auto high = static_cast<uint64_t>(magnitude >> 64), low = static_cast<uint64_t>(magnitude);
    memset(digits.text + _digits_end, 0, _copy_wide);
    if (high == 0) {
        memset(digits.text, '0', _digits_end - 24);
        write_24_digits_(digits.text + _digits_end - 24, low);
    } else {
        // The magnitude is at most 2^127, so that its quotient has no more than 64 bits.
        const quotient_t parts = divide_128_by_64(high, low, ten_to_19);
        write_24_digits_(digits.text + _digits_end - 24, parts.remainder);
        write_24_digits_(digits.text + _digits_end - 24 - 19, parts.quotient);
    }
    digits.count = std::max(digit_count_(magnitude), 1);
}

// Writes the usual scales, 0 to 38; `out` has room for a sign, a point and two copies.
template <int copy>
char *write_usual_(char *out, int128_t value, int scale) {
    digits_t digits;
    write_digits_(digits, magnitude_of(value));
    *out = '-';
    out += value < 0 ? 1 : 0;
    const int integer = std::max(digits.count - scale, 1);
    memcpy(out, digits.text + _digits_end - scale - integer, copy);
    out += integer;
    if (scale == 0) return out;
    *out = '.';
    memcpy(out + 1, digits.text + _digits_end - scale, copy);
    return out + 1 + scale;
}

char *write_other_(char *out, int128_t value, int scale) {
    digits_t digits;
    write_digits_(digits, magnitude_of(value));
    const char *const first = digits.text + _digits_end - digits.count;
    const auto put_zeros = [&out](int count) {
        memset(out, '0', static_cast<size_t>(count));
        out += count;
    };
    const auto put_digits = [&out](const char *from, int count) {
        memcpy(out, from, static_cast<size_t>(count));
        out += count;
    };
    if (value < 0) *out++ = '-';
    if (scale <= 0) {
        put_digits(first, digits.count);
        put_zeros(value != 0 ? -scale : 0);
        return out;
    }
    const int integer = std::max(digits.count - scale, 0);
    put_digits(first, integer);
    if (integer == 0) *out++ = '0';
    *out++ = '.';
    const int fraction = digits.count - integer;
    put_zeros(scale - fraction);
    put_digits(first + integer, fraction);
    return out;
}

constexpr int64_t _room_narrow = 1 + 2 * _copy_narrow + 1, _room_wide = 1 + 2 * _copy_wide + 1;
constexpr int64_t _text_room = std::max<int64_t>(_room_wide, DV_DECIMAL_TEXT_MAX);

// Any value; `out` has _text_room bytes.
char *write_any_(char *out, const dv_decimal_column_t &x, int64_t row) {
    const int128_t value = load_decimal(x, row);
    const bool is_usual = x.scale >= 0 && x.scale <= DECIMAL_DIGITS_MAX;
    return is_usual ? write_usual_<_copy_wide>(out, value, x.scale) : write_other_(out, value, x.scale);
}

struct to_text_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    const dv_decimal_column_t *x;
    appended_rows_t appended;
    const text_kernels_t *kernels;
    text_shape_t shapes[16];  // of the scale, for the kernel

    explicit to_text_t(const dv_decimal_column_t *from, dv_column_t *text)
        : operand{&from->column},
          result(text),
          x(from),
          appended{text},
          kernels(&kernels_for_(from->scale)),
          shapes{} {
        if (from->scale < 0 || from->scale > _kernel_scale_max) return;
        for (int integer = 1; integer < 16; ++integer) make_shape_(shapes[integer], integer, from->scale);
    }

    // Texts of the usual scales by offsets, as long as there is room for copies.
    uint64_t block(int64_t begin, int /*count*/, const uint64_t &valid) {
        if (result->offsets == nullptr || x->bytes != sizeof(int64_t) || x->scale < 0 ||
            x->scale > DV_DECIMAL64_PRECISION_MAX)
            return valid;
        uint64_t left = valid;
        while ((left = kernels->write(*x, begin, left, shapes, appended)) != 0) {
            if (!try_to_append_(begin + std::countr_zero(left))) return left;
            left &= left - 1;
        }
        return 0;
    }

    bool row(int64_t row) {
        char text[_text_room];
        const int64_t length = write_any_(text, *x, row) - text;
        if (result->offsets != nullptr) {
            memcpy(appended.append(row, length), text, static_cast<size_t>(length));
            return true;
        }
        if (length > result->size) raise(DV_ERR_TEXT_BUFFER_SIZE);
        char *const place = static_cast<char *>(value_at(*result, row));
        memcpy(place, text, static_cast<size_t>(length));
        if (length < result->size) place[length] = '\0';
        return true;
    }

    void no_value(int64_t row) const {
        if (result->offsets != nullptr) appended.append_none(row);
    }

  private:
    static void make_shape_(text_shape_t &shape, int integer, int scale) {
        for (int i = 0; i < 16; ++i) {
            const bool is_point = scale > 0 && i == integer;
            const int digit = 16 - scale - integer + i - (i > integer ? 1 : 0);
            const bool is_digit = !is_point && digit >= 0 && digit < 16;
            shape.source[i] = is_digit ? static_cast<uint8_t>(digit) : uint8_t{0x80};
            shape.point[i] = is_point ? '.' : 0;
        }
    }

    bool try_to_append_(int64_t row) {
        if (appended.end + _room_narrow > std::min<int64_t>(result->size, INT32_MAX)) return false;
        char *const out = static_cast<char *>(result->values) + appended.end;
        int64_t value;
        memcpy(&value, value_at(x->column, row), sizeof value);
        appended.end += write_usual_<_copy_narrow>(out, value, x->scale) - out;
        result->offsets[row + 1] = static_cast<int32_t>(appended.end);
        return true;
    }
};

}  // namespace

extern "C" void dv_decimal_column_from_text(const dv_column_t *text, dv_decimal_column_t *result,
                                            dv_column_faults_t *faults) {
    if (!DV_ASSERT(is_decimal_beside(text, result))) return;
    from_text_t operation(text, result);
    column_run(operation, text->count, faults);
}

extern "C" void dv_decimal_column_to_text(const dv_decimal_column_t *x, dv_column_t *text,
                                          dv_column_faults_t *faults) {
    if (!DV_ASSERT(is_decimal_beside(text, x))) return;
    to_text_t operation(x, text);
    column_run(operation, text->count, faults);
}
