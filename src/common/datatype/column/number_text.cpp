// Text to and from columns of NUMBER, plain and under a model.

#include <algorithm>

#include "../number/plain_text.h"
#include "../number/plain_text_writer.h"
#include "../number_fmt/plain_model.h"
#include "../number_fmt/plain_model_writer.h"
#include "dvtypes/column_number.h"
#include "number_text_rows.h"

using namespace dv::impl;

namespace dv::impl::plain {
namespace {

uint64_t read_texts(const dv_column_t &text, int64_t row, int /*count*/, uint64_t valid, records_t to) {
    uint64_t left = valid;
    for (uint64_t rest = valid; rest != 0; rest &= rest - 1) {
        const int i = std::countr_zero(rest);
        row_bytes_t bytes;
        if (!find_text(text, row + i, bytes)) continue;
        if (read_short_plain_text(to[i], bytes.begin, static_cast<size_t>(bytes.size)))
            left ^= rest & (0 - rest);
    }
    return left;
}

uint64_t write_texts(records_t /*from*/, int /*count*/, uint64_t valid, short_texts_t & /*texts*/) {
    return valid;
}

constexpr number_text_kernels_t kernels = {read_texts, write_texts};

}  // namespace
}  // namespace dv::impl::plain

#define DV_AVX2_KERNELS "number_text_avx2_kernels.h"
#define DV_AVX512_KERNELS "number_text_avx512_kernels.h"
#include "kernels_by_level.h"

namespace {

// ---- from text: `Reader` reads one text, with and without a raise ----

struct plain_reader_t {
    static constexpr bool has_kernel = true;

    static bool may_raise() { return false; }  // in try_to_read

    // To the functions for one text a length of 0 is none: they look for a NUL.
    void read(number_t &x, const char *text, int size) const {
        number_from_str(&x, size, size != 0 ? text : "", nullptr);
    }
    int try_to_read(number_t &x, const char *text, int size) const {
        if (read_long_plain_text(x, text, static_cast<size_t>(size))) return 0;
        return size != 0 ? number_try_from_str(&x, size, text) : int{DV_ERR_NUMBER_TEXT};
    }
};

struct model_reader_t {
    static constexpr bool has_kernel = false;
    const number_model_t *model;
    plain_model_t plain_model;

    bool may_raise() const { return model->whole == whole_model_e::NONE && model->pr.in_hexadecimal != 0; }

    static std::string_view view(const char *text, int size) { return {text, static_cast<size_t>(size)}; }
    void read(number_t &x, const char *text, int size) const {
        if (!read_under_plain_model(x, view(text, size), plain_model))
            number_from_text_under(x, view(text, size), *model);
    }
    int try_to_read(number_t &x, const char *text, int size) const {
        if (read_under_plain_model(x, view(text, size), plain_model)) return 0;
        return number_try_from_text_under(x, view(text, size), *model);
    }
};

template <typename Reader>
struct from_text_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    Reader reader;
    number_result_t values{result};

    uint64_t block(int64_t row, int count, const uint64_t &valid) {
        number_block_t buffer;
        const records_t to = values.block_at(row, buffer);
        uint64_t left = valid;
        if constexpr (Reader::has_kernel) left = kernels_in_use().read(*operand[0], row, count, valid, to);
        if (!reader.may_raise()) left = read_(row, left, to);
        return values.keep_block(row, valid, left, buffer);
    }

    bool row(int64_t row) {
        number_t buffer;
        number_t &value = values.place_of(row, buffer);
        const row_bytes_t text = text_at(*operand[0], row);
        reader.read(value, text.begin, size_of_text_(text));
        values.keep(row, value);
        return true;
    }

    bool try_row(int64_t row, int &code) {
        number_t buffer;
        number_t &value = values.place_of(row, buffer);
        const row_bytes_t text = text_at(*operand[0], row);
        code = reader.try_to_read(value, text.begin, size_of_text_(text));
        if (code != 0) return false;
        values.keep(row, value);
        return true;
    }

    void no_value(int64_t row) const { values.store_none(row); }

  private:
    // One by one; what is refused is left.
    uint64_t read_(int64_t row, uint64_t rows, records_t to) const {
        uint64_t left = 0;
        for (; rows != 0; rows &= rows - 1) {
            const int i = std::countr_zero(rows);
            row_bytes_t text;
            const bool is_read = find_text(*operand[0], row + i, text) &&
                                 reader.try_to_read(to[i], text.begin, size_of_text_(text)) == 0;
            if (!is_read) left |= rows & (0 - rows);
        }
        return left;
    }

    static int size_of_text_(row_bytes_t text) {
        return static_cast<int>(std::min<int64_t>(text.size, INT32_MAX));
    }
};

// ---- to text: `Writer` writes one value, and gives the characters of its text ----

struct plain_writer_t {
    static constexpr bool has_kernel = true;
    static constexpr int size_max = NUMBER_NORMAL_TEXT_SIZE;
    size_t write(const number_t &x, int buf_size, char *str) const {
        const size_t length = x.size <= sizeof x ? write_plain_text(x, buf_size, str) : 0;
        if (length != 0) return length;
        number_to_str(&x, buf_size, str, nullptr);
        return strlen(str);
    }
};

struct model_writer_t {
    static constexpr bool has_kernel = false;
    static constexpr int size_max = NUMBER_FMT_TEXT_SIZE;
    static_assert(size_max >= plain_template::TEXT_SIZE_MAX);

    const number_model_t *model;
    plain_template plain_model{*model};

    // The buffer has size_max bytes, whatever its size is told to be.
    size_t write(const number_t &x, int buf_size, char *str) const {
        const size_t length = plain_model.write(x, str);
        if (length != 0 && length < static_cast<size_t>(buf_size)) {
            str[length] = '\0';
            return length;
        }
        number_to_text_under(x, buf_size, str, *model);
        return strlen(str);
    }
};

// Not inline: of a copy of a size that they know to be small compilers make a string instruction, which takes
// thirty cycles to begin.
[[gnu::noinline]] void copy_text_(char *to, const char *text, int64_t length) {
    memcpy(to, text, static_cast<size_t>(length));
}

// Sixteen bytes where there is room for them, else as many as the text has.
inline void put_short_text_(char *to, const char *text, int64_t length, bool has_room) {
    if (has_room) {
        memcpy(to, text, SHORT_TEXT_SIZE);
    } else {
        copy_text_(to, text, length);
    }
}

template <typename Writer>
struct to_text_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    Writer writer;
    appended_rows_t appended{result};

    uint64_t block(int64_t row, int count, const uint64_t &valid) {
        number_block_t buffer;
        short_texts_t texts;
        const records_t numbers = records_at(*operand[0], row, count, buffer);
        uint64_t left = valid;
        if constexpr (Writer::has_kernel) left = kernels_in_use().write(numbers, count, valid, texts);
        return result->offsets != nullptr ? append_(row, valid, left, texts, numbers)
                                          : left | put_(row, valid & ~left, texts);
    }

    bool row(int64_t row) {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x == nullptr) return false;
        char text[Writer::size_max];
        const auto length = static_cast<int64_t>(writer.write(*x, size_with_nul_(), text));
        if (result->offsets != nullptr) {
            copy_text_(appended.append(row, length), text, length);
        } else {
            const int64_t shown = length < result->size ? length + 1 : length;
            copy_text_(static_cast<char *>(value_at(*result, row)), text, shown);
        }
        return true;
    }

    void no_value(int64_t row) const {
        if (result->offsets != nullptr) appended.append_none(row);
    }

  private:
    // What a buffer would have to be for texts as long as the rows of the result.
    int size_with_nul_() const {
        if (result->offsets != nullptr) return Writer::size_max;
        return static_cast<int>(std::clamp<int64_t>(result->size, 0, Writer::size_max - 1)) + 1;
    }

    // Texts to their rows by stride; returns those that are too long.
    uint64_t put_(int64_t row, uint64_t rows, const short_texts_t &texts) const {
        const bool has_room = result->size >= SHORT_TEXT_SIZE;
        uint64_t left = 0;
        for (; rows != 0; rows &= rows - 1) {
            const int i = std::countr_zero(rows);
            const int64_t length = texts.length[i];
            if (length > result->size) {
                left |= rows & (0 - rows);
                continue;
            }
            auto *const to = static_cast<char *>(value_at(*result, row + i));
            put_short_text_(to, texts.text[i], length, has_room);
            if (length < result->size) to[length] = '\0';
        }
        return left;
    }

    // Texts by offsets, in the order of their rows; returns those from the first on that may raise.
    uint64_t append_(int64_t row, uint64_t valid, uint64_t left, const short_texts_t &texts,
                     records_t numbers) {
        for (uint64_t rest = valid; rest != 0; rest &= rest - 1) {
            const int i = std::countr_zero(rest);
            const bool is_done = (left >> i & 1) == 0 ? append_short_(row + i, texts.text[i], texts.length[i])
                                                      : append_any_(row + i, numbers[i]);
            if (!is_done) return rest;
        }
        return 0;
    }

    bool append_short_(int64_t row, const char *text, int64_t length) {
        if (!appended.has_room(length)) return false;
        const bool has_room = appended.has_room(SHORT_TEXT_SIZE);
        put_short_text_(appended.append(row, length), text, length, has_room);
        return true;
    }

    // Where there is room for the longest text, it is written where it goes, and without a raise.
    bool append_any_(int64_t row, const number_t &x) {
        if (!number_is_valid_ptr(&x) || x.size == 0 || !appended.has_room(Writer::size_max)) return false;
        char *const to = appended.next_place();
        appended.append(row, static_cast<int64_t>(writer.write(x, Writer::size_max, to)));
        return true;
    }
};

template <template <typename> typename Operation, typename Worker>
void convert_(const dv_column_t *operand, dv_column_t *result, dv_column_faults_t *faults, Worker worker) {
    Operation<Worker> operation = {{operand}, result, worker};
    column_run(operation, result->count, faults);
}

}  // namespace

extern "C" void number_column_from_text(const dv_column_t *text, dv_column_t *result,
                                        dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(text, result))) convert_<from_text_t>(text, result, faults, plain_reader_t{});
}

extern "C" void number_column_to_text(const dv_column_t *x, dv_column_t *result, dv_column_faults_t *faults) {
    if (DV_ASSERT(are_columns(x, result))) convert_<to_text_t>(x, result, faults, plain_writer_t{});
}

extern "C" void number_column_from_text_fmt(const dv_column_t *text, int fmt_len, const char *fmt,
                                            dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(text, result))) return;
    const std::string_view model_text = model_of(fmt, fmt_len);
    number_model_t model;
    make_reading_model(model_text, model);
    convert_<from_text_t>(text, result, faults, model_reader_t{&model, plain_model_of(model_text)});
}

extern "C" void number_column_to_text_fmt(const dv_column_t *x, int fmt_len, const char *fmt,
                                          dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, result))) return;
    number_model_t model;
    make_number_model(model_of(fmt, fmt_len), model);
    convert_<to_text_t>(x, result, faults, model_writer_t{&model});
}
