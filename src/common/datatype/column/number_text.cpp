// Text to and from columns of NUMBER, plain and under a model.

#include <algorithm>

#include "../number_fmt/number_fmt_internal.h"
#include "dvtypes/column_number.h"
#include "number_rows.h"

using namespace dv::impl;

namespace {

// ---- from text: `Reader` reads one text, with and without a raise ----

struct plain_reader_t {
    // To the functions for one text a length of 0 is none: they look for a NUL.
    void read(number_t &x, const char *text, int size) const {
        number_from_str(&x, size, size != 0 ? text : "", nullptr);
    }
    int try_to_read(number_t &x, const char *text, int size) const {
        return size != 0 ? number_try_from_str(&x, size, text) : int{ERR_NUMBER_TEXT};
    }
};

struct model_reader_t {
    const number_model_t *model;

    static std::string_view view(const char *text, int size) { return {text, static_cast<size_t>(size)}; }
    void read(number_t &x, const char *text, int size) const {
        number_from_text_under(x, view(text, size), *model);
    }
    int try_to_read(number_t &x, const char *text, int size) const {
        return number_try_from_text_under(x, view(text, size), *model);
    }
};

template <typename Reader>
struct from_text_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    Reader reader;
    number_result_t values{result};

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }

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
    static int size_of_text_(row_bytes_t text) {
        return static_cast<int>(std::min<int64_t>(text.size, INT32_MAX));
    }
};

// ---- to text ----

struct plain_writer_t {
    static constexpr int SIZE_MAX_BY_OFFSETS = NUMBER_NORMAL_TEXT_SIZE;
    void write(const number_t &x, int buf_size, char *str) const {
        number_to_str(&x, buf_size, str, nullptr);
    }
};

struct model_writer_t {
    static constexpr int SIZE_MAX_BY_OFFSETS = NUMBER_FMT_TEXT_SIZE;
    const number_model_t *model;
    void write(const number_t &x, int buf_size, char *str) const {
        number_to_text_under(x, buf_size, str, *model);
    }
};

template <typename Writer>
struct to_text_t {
    const dv_column_t *operand[1];
    dv_column_t *result;
    Writer writer;
    appended_rows_t appended{result};

    uint64_t block(int64_t /*row*/, int /*count*/, const uint64_t &valid) const { return valid; }

    bool row(int64_t row) {
        number_t buffer;
        const number_t *const x = number_at(*operand[0], row, buffer);
        if (x == nullptr) return false;
        if (result->offsets == nullptr) {
            const auto size = static_cast<int>(std::clamp<int64_t>(result->size, 0, INT32_MAX));
            writer.write(*x, size, static_cast<char *>(value_at(*result, row)));
            return true;
        }
        char text[Writer::SIZE_MAX_BY_OFFSETS];
        writer.write(*x, sizeof text, text);
        const size_t length = strlen(text);
        memcpy(appended.append(row, static_cast<int64_t>(length)), text, length);
        return true;
    }

    void no_value(int64_t row) const {
        if (result->offsets != nullptr) appended.append_none(row);
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
    number_model_t model;
    make_reading_model(model_of(fmt, fmt_len), model);
    convert_<from_text_t>(text, result, faults, model_reader_t{&model});
}

extern "C" void number_column_to_text_fmt(const dv_column_t *x, int fmt_len, const char *fmt,
                                          dv_column_t *result, dv_column_faults_t *faults) {
    if (!DV_ASSERT(are_columns(x, result))) return;
    number_model_t model;
    make_number_model(model_of(fmt, fmt_len), model);
    convert_<to_text_t>(x, result, faults, model_writer_t{&model});
}
