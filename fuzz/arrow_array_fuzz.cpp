// Hostile structs of the Arrow C data interface: any format, metadata, lengths, counts and pointers that are
// missing. What the interface leaves to trust is kept: texts end, the lengths in the metadata are those of
// what follows, and buffers have the size that format, length and offset ask for, each a block of its own.
// Where that is too large, rows are not read.
//
// Properties: an import raises -5123 and writes nothing, or gives a column over the same memory whose rows an
// operation of its kind can read; what an export of that column says imports as the same column.

#include "dvtypes/column.h"
#include "fuzz_input.h"
#include "raise.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

constexpr int64_t _rows_max = 200;

constexpr const char *_formats[] = {
    "i", "l", "g",   "d:38,2", "d:18,-3", "d:18,2,64", "tdD",  "tss:", "tsm:", "tsu:UTC", "tsn:Z",
    "u", "z", "w:1", "w:12",   "w:23",    "w:8",       "w:20", "w:11", "w:5",  "w:10",    "d:38,127,128"};
constexpr std::string_view _records[] = {"dvtypes.number",
                                         "dvtypes.date",
                                         "dvtypes.time",
                                         "dvtypes.timestamp",
                                         "dvtypes.timestamp_tz",
                                         "dvtypes.interval_ym",
                                         "dvtypes.timestamp_ltz",
                                         "dvtypes.interval_ds",
                                         "dvtypes.rowid",
                                         "dvtypes.numbers",
                                         "other"};

int64_t any_number_(input_t &input) {
    constexpr int64_t numbers[] = {-1, INT64_MIN, INT64_MAX, INT64_MAX / 2, INT64_MAX / 4, INT32_MAX, -2};
    const uint8_t choice = input.byte();
    if (choice < std::size(numbers)) return numbers[choice];
    return choice < 16 ? input.take<int64_t>() : choice % (_rows_max / 2);
}

void put_with_length_(std::vector<char> &bytes, std::string_view part) {
    const auto size = static_cast<int32_t>(part.size());
    const auto *const first = reinterpret_cast<const char *>(&size);
    bytes.insert(bytes.end(), first, first + sizeof size);
    bytes.insert(bytes.end(), part.begin(), part.end());
}

// Pairs; the count of pairs, or a length, may be below 0.
std::vector<char> any_metadata_(input_t &input) {
    std::vector<char> bytes(sizeof(int32_t));
    const uint8_t choice = input.byte();
    const int32_t pairs = choice < 8 ? -choice : choice % 4;
    std::memcpy(bytes.data(), &pairs, sizeof pairs);
    for (int32_t i = 0; i < pairs; ++i) {
        const uint8_t what = input.byte();
        put_with_length_(bytes, what % 4 != 0 ? "ARROW:extension:name" : input.take(what % 24));
        put_with_length_(bytes, what % 8 != 0 ? _records[what % std::size(_records)] : input.take(what % 24));
    }
    if (choice == 8) {
        const int32_t negative = -1;
        const auto *const first = reinterpret_cast<const char *>(&negative);
        std::copy(first, first + sizeof negative, bytes.end() - static_cast<ptrdiff_t>(sizeof negative));
    }
    return bytes;
}

// The struct, with the memory that it names.
struct hostile_array_t {
    std::vector<char> format, metadata, bitmap, values, texts;
    std::vector<int32_t> offsets;
    std::vector<const void *> buffers;
    ArrowSchema schema{}, *no_child = nullptr;
    ArrowArray array{};
    bool has_room = false;  // for the rows

    explicit hostile_array_t(input_t &input) {
        const uint8_t choice = input.byte();
        format = ended_block(choice < 192 ? _formats[choice % std::size(_formats)] : input.take(choice % 24));
        metadata = any_metadata_(input);
        schema.format = input.byte() == 0xFF ? nullptr : format.data();
        schema.metadata = input.byte() % 2 == 0 ? nullptr : metadata.data();
        schema.flags = input.byte();
        array.length = any_number_(input);
        array.offset = any_number_(input);
        array.null_count = any_number_(input);
        take_links_(input);
        make_buffers_(input);
    }
    bool is_by_offsets() const { return format[0] == 'u' || format[0] == 'z'; }

  private:
    // Children, dictionaries and releases that make an array another kind of thing, or none.
    void take_links_(input_t &input) {
        const uint8_t choice = input.byte();
        schema.release = choice == 1 ? nullptr : [](ArrowSchema *released) { released->release = nullptr; };
        array.release = choice == 2 ? nullptr : [](ArrowArray *released) { released->release = nullptr; };
        schema.dictionary = choice == 3 ? &schema : nullptr;
        array.dictionary = choice == 4 ? &array : nullptr;
        schema.n_children = choice == 5 ? any_number_(input) : 0;
        schema.children = &no_child;
        array.n_children = choice == 6 ? any_number_(input) : 0;
    }
    // As many bytes as rows [offset, offset + length) need, if they are few enough.
    void make_buffers_(input_t &input) {
        const uint8_t choice = input.byte();
        has_room =
            array.length >= 0 && array.offset >= 0 && array.length <= _rows_max && array.offset <= _rows_max;
        const int64_t rows = has_room ? array.length + array.offset : 0;
        fill_(input, bitmap, static_cast<size_t>(rows + 7) / 8);
        buffers = {choice % 8 == 1 || !has_room ? nullptr : bitmap.data(), nullptr, nullptr};
        if (is_by_offsets()) {
            make_offsets_(input, rows);
            if (has_room) buffers[1] = offsets.data();
            buffers[2] = texts.data();
        } else {
            fill_(input, values, static_cast<size_t>(rows) * value_size_());
            if (value_size_() != 0) buffers[1] = values.data();
        }
        if (choice % 16 == 2) buffers[1] = nullptr;
        if (choice % 16 == 3) buffers[2] = nullptr;
        if (choice % 32 == 4 && is_by_offsets() && buffers[1] != nullptr)
            buffers[1] = static_cast<const char *>(buffers[1]) + 2;
        array.n_buffers = choice % 16 == 5 ? any_number_(input) : is_by_offsets() ? 3 : 2;
        array.buffers = choice % 32 == 6 ? nullptr : buffers.data();
    }
    // The last of them tells how long the texts are.
    void make_offsets_(input_t &input, int64_t rows) {
        const uint8_t choice = input.byte();
        int32_t end = 0;
        for (int64_t i = 0; i <= rows; ++i) {
            end = choice % 4 == 1 ? input.take<int32_t>() : end + input.byte() % 40;
            offsets.push_back(end);
        }
        if (choice % 4 == 1) offsets.back() = choice % 8 == 1 ? -1 : choice;
        offsets.shrink_to_fit();
        fill_(input, texts, offsets.back() < 0 ? 0 : static_cast<size_t>(offsets.back()));
    }
    // Bytes that the format says a value has, or more for a format that is none; 0: too many.
    size_t value_size_() const {
        const std::string_view text = format.data();
        if (text == "i" || text == "tdD") return 4;
        if (text.starts_with("w:")) {
            const long size = std::atol(text.data() + 2);
            return size > 1 << 12 ? 0 : static_cast<size_t>(std::max(size, 1L));
        }
        return text.starts_with("d:") && !text.ends_with(",64") ? 16 : 8;
    }
    static void fill_(input_t &input, std::vector<char> &bytes, size_t size) {
        bytes.resize(size);
        const std::string_view given = input.take(size);
        std::copy(given.begin(), given.end(), bytes.begin());
        bytes.shrink_to_fit();
    }
};

// A result of values of any type of columns, by stride.
struct result_t {
    std::vector<char> values, validity;
    dv_column_t column{};
    dv_column_faults_t faults{};

    explicit result_t(int64_t count)
        : values(static_cast<size_t>(count) * DV_DATETIME_TEXT_MAX),
          validity(static_cast<size_t>(count + 7) / 8) {
        column.count = count;
        column.stride = column.size = DV_DATETIME_TEXT_MAX;
        column.values = values.data();
        column.validity = reinterpret_cast<uint8_t *>(validity.data());
    }
};

void read_record_(const dv_column_t &column, dv_type_t type, result_t &result) {
    switch (type) {
        case DV_TYPE_NUMBER:
            return number_column_to_text(&column, &result.column, &result.faults);
        case DV_TYPE_DATE:
            return dv_date_column_to_iso(&column, &result.column, &result.faults);
        case DV_TYPE_TIMESTAMP:
            return dv_timestamp_column_to_iso(&column, &result.column, &result.faults);
        case DV_TYPE_TS_TZ:
            return dv_timestamp_column_from_ts_tz(&column, &result.column, &result.faults);
        default:
            for (int64_t i = 0; i < column.count; ++i)
                std::memcpy(result.values.data(),
                            static_cast<const char *>(column.values) + i * column.stride,
                            static_cast<size_t>(column.stride));
    }
}

// Every row, by an operation on values of the kind.
void read_rows_(const dv_column_t &column, const dv_arrow_type_t &type) {
    result_t result(column.count);
    dv_column_t *const to = &result.column;
    dv_column_faults_t *const faults = &result.faults;
    switch (type.kind) {
        case DV_ARROW_INT32:
            return number_column_from_int32(&column, to, faults);
        case DV_ARROW_INT64:
            return number_column_from_int64(&column, to, faults);
        case DV_ARROW_DOUBLE:
            return number_column_from_double(&column, to, faults);
        case DV_ARROW_DECIMAL: {
            const dv_decimal_column_t decimals = dv_arrow_decimals(&column, &type);
            dv_decimal_sum_t sum{};
            dv_decimal_column_sum(&decimals, &sum);
            return dv_decimal_column_to_number(&decimals, to, faults);
        }
        case DV_ARROW_DATE32:
            return dv_date_column_from_epoch_day(&column, to, faults);
        case DV_ARROW_TIMESTAMP:
            return dv_timestamp_column_from_epoch(&column, type.unit, to, faults);
        case DV_ARROW_UTF8:
        case DV_ARROW_BINARY:
        case DV_ARROW_FIXED_BINARY:
            return number_column_from_text(&column, to, faults);
        case DV_ARROW_RECORD:
            return read_record_(column, type.record, result);
    }
    require(false, "a kind", type.kind);
}

bool same_(const dv_arrow_type_t &x, const dv_arrow_type_t &y) {
    const bool same_zone = (x.zone == nullptr) == (y.zone == nullptr) &&
                           (x.zone == nullptr || std::string_view(x.zone) == y.zone);
    return x.kind == y.kind && x.bytes == y.bytes && x.precision == y.precision && x.scale == y.scale &&
           x.unit == y.unit && x.record == y.record && same_zone;
}

void go_back_(const dv_column_t &column, const dv_arrow_type_t &type) {
    dv_arrow_export_t lent{};
    ArrowSchema schema;
    ArrowArray array;
    const int code = raise_of([&] { dv_arrow_export(&column, &type, &lent, &schema, &array); });
    const bool has_bytes_of_bits = column.validity == nullptr || column.first_bit % 8 == 0;
    const bool fits = type.zone == nullptr || strlen(type.zone) < DV_ARROW_FORMAT_MAX - strlen("tsu:");
    if (code != 0) return require(code == -5123 && (!has_bytes_of_bits || !fits), "export", code);
    dv_arrow_type_t type_back;
    dv_column_t back;
    const int code_back = raise_of([&] { dv_arrow_import(&schema, &array, &type_back, &back); });
    require(code_back == 0, "import of an export", code_back);
    require(same_(type, type_back), "the type of an export", type_back.kind);
    require(back.count == column.count && back.values == column.values && back.stride == column.stride,
            "the values of an export", back.count);
    require(dv_column_count_valid(&back) == dv_column_count_valid(&column), "the bits of an export",
            dv_column_count_valid(&back));
    array.release(&array);
    schema.release(&schema);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    input_t input(data, size);
    const hostile_array_t x(input);
    dv_arrow_type_t type{};
    dv_column_t column{};
    column.count = -7;
    const int code = raise_of([&] { dv_arrow_import(&x.schema, &x.array, &type, &column); });
    if (code != 0) {
        require(code == -5123, "import", code);
        require(type.kind == 0 && column.count == -7 && column.values == nullptr, "nothing written", code);
        return 0;
    }
    require(column.count == x.array.length, "the count", column.count);
    const bool is_by_offsets = type.bytes == 0;
    require(is_by_offsets == (column.offsets != nullptr), "the layout", type.bytes);
    if (!x.has_room) return 0;
    const assertion_watch quiet;  // of records that are none
    const int read = raise_of([&] { read_rows_(column, type); });
    require(read == 0, "an operation", read);
    go_back_(column, type);
    return 0;
}
