// The Arrow C data interface spoken by hand: what other libraries hand over, and what hostile ones might.

#include "dvtypes/column_arrow.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "column_support.h"
#include "dvtypes/interval.h"
#include "dvtypes/rowid.h"

namespace dv::test {
namespace {

// An array as another library would make it.
struct foreign_t {
    std::vector<const void *> buffers;
    ArrowSchema schema{};
    ArrowArray array{};

    foreign_t(const char *format, int64_t length, std::vector<const void *> memory)
        : buffers(std::move(memory)) {
        schema.format = format;
        schema.name = "";
        schema.release = [](ArrowSchema *released) { released->release = nullptr; };
        array.length = length;
        array.null_count = -1;
        array.n_buffers = static_cast<int64_t>(buffers.size());
        array.buffers = buffers.data();
        array.release = [](ArrowArray *released) { released->release = nullptr; };
    }
};

int import_(const foreign_t &from, dv_arrow_type_t &type, dv_column_t &column, dv_error_t *error = nullptr) {
    return raise_of([&] { dv_arrow_import(&from.schema, &from.array, &type, &column); }, error);
}

// ---- types ----

struct type_case {
    const char *format;
    dv_arrow_type_t type;
};
constexpr type_case _types[] = {
    {"i", {DV_ARROW_INT32, 4, 0, 0, 0, nullptr, 0}},
    {"l", {DV_ARROW_INT64, 8, 0, 0, 0, nullptr, 0}},
    {"g", {DV_ARROW_DOUBLE, 8, 0, 0, 0, nullptr, 0}},
    {"d:38,0", {DV_ARROW_DECIMAL, 16, 38, 0, 0, nullptr, 0}},
    {"d:10,-2", {DV_ARROW_DECIMAL, 16, 10, -2, 0, nullptr, 0}},
    {"d:18,2,64", {DV_ARROW_DECIMAL, 8, 18, 2, 0, nullptr, 0}},
    {"tdD", {DV_ARROW_DATE32, 4, 0, 0, 0, nullptr, 0}},
    {"tss:", {DV_ARROW_TIMESTAMP, 8, 0, 0, DV_EPOCH_SECOND, nullptr, 0}},
    {"tsm:", {DV_ARROW_TIMESTAMP, 8, 0, 0, DV_EPOCH_MILLISECOND, nullptr, 0}},
    {"tsu:UTC", {DV_ARROW_TIMESTAMP, 8, 0, 0, DV_EPOCH_MICROSECOND, "UTC", 0}},
    {"tsn:America/New_York", {DV_ARROW_TIMESTAMP, 8, 0, 0, DV_EPOCH_NANOSECOND, "America/New_York", 0}},
    {"u", {DV_ARROW_UTF8, 0, 0, 0, 0, nullptr, 0}},
    {"z", {DV_ARROW_BINARY, 0, 0, 0, 0, nullptr, 0}},
    {"w:5", {DV_ARROW_FIXED_BINARY, 5, 0, 0, 0, nullptr, 0}},
};

std::string describe_(const dv_arrow_type_t &t) {
    return std::to_string(t.kind) + " " + std::to_string(t.bytes) + " " + std::to_string(t.precision) + " " +
           std::to_string(t.scale) + " " + std::to_string(t.unit) + " " + (t.zone != nullptr ? t.zone : "-") +
           " " + std::to_string(t.record);
}

TEST(Arrow, FormatsNameTypesBothWays) {
    const int32_t offsets[] = {0, 3, 3};
    const char bytes[64] = "abc";
    for (const type_case &c : _types) {
        SCOPED_TRACE(c.format);
        const bool is_by_offsets = c.type.bytes == 0;
        const foreign_t from(c.format, 2,
                             is_by_offsets ? std::vector<const void *>{nullptr, offsets, bytes}
                                           : std::vector<const void *>{nullptr, bytes});
        dv_arrow_type_t type;
        dv_column_t column;
        ASSERT_EQ(import_(from, type, column), 0);
        EXPECT_EQ(describe_(type), describe_(c.type));
        EXPECT_EQ(column.values, bytes);
        EXPECT_EQ(column.stride, c.type.bytes);
        EXPECT_EQ(column.size, is_by_offsets ? offsets[2] : c.type.bytes);
        EXPECT_EQ(column.offsets, is_by_offsets ? offsets : nullptr);

        dv_arrow_export_t lent = {};
        ArrowSchema schema;
        ArrowArray array;
        dv_arrow_export(&column, &type, &lent, &schema, &array);
        EXPECT_STREQ(schema.format, c.format);
        EXPECT_EQ(schema.metadata, nullptr);
        EXPECT_EQ(array.n_buffers, from.array.n_buffers);
        for (size_t i = 0; i < from.buffers.size(); ++i) EXPECT_EQ(array.buffers[i], from.buffers[i]);
    }
}

TEST(Arrow, OtherFormatsAreRefused) {
    constexpr const char *formats[] = {"",
                                       "U",
                                       "Z",
                                       "n",
                                       "f",
                                       "ii",
                                       "tdm",
                                       "d:",
                                       "d:0,0",
                                       "d:39,0",
                                       "d:19,0,64",
                                       "d:5",
                                       "d:5,2,32",
                                       "d:5,2,256",
                                       "d:5,128",
                                       "d:5,-85",
                                       "d:5,2x",
                                       "d:5,,2",
                                       "d:99999999999,2",
                                       "ts",
                                       "tsx:",
                                       "tss",
                                       "tsd:",
                                       "w:",
                                       "w:0",
                                       "w:-1",
                                       "w:1x",
                                       "w:9999999999",
                                       "+l",
                                       "+s",
                                       "ttu",
                                       "vu",
                                       "+vl"};
    const char bytes[64] = "";
    for (const char *format : formats) {
        const foreign_t from(format, 1, {nullptr, bytes});
        dv_arrow_type_t type = {};
        dv_column_t column = {};
        EXPECT_EQ(import_(from, type, column), -5123) << format;
        EXPECT_EQ(column.values, nullptr) << format;
    }
}

// ---- memory ----

TEST(Arrow, SlicesAndBitmapsAreSeenInPlace) {
    const int64_t values[20] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19};
    const uint8_t bitmap[] = {0b1010'1010, 0b0000'1111, 0xFF};
    foreign_t from("l", 7, {bitmap, values});
    from.array.offset = 5;
    dv_arrow_type_t type;
    dv_column_t column;
    ASSERT_EQ(import_(from, type, column), 0);
    EXPECT_EQ(column.values, values + 5);
    EXPECT_EQ(column.validity, bitmap);
    EXPECT_EQ(column.first_bit, 5);
    EXPECT_EQ(dv_column_count_valid(&column), 2 + 4);  // bits 5 and 7, 8 to 11

    uint8_t copied[2] = {0xFF, 0xFF};
    dv_column_copy_validity(&column, copied);
    EXPECT_EQ(copied[0], 0b0111'1101);
    EXPECT_EQ(copied[1], 0xFF);

    // The bitmap begins in the middle of a byte, which an export with values from the first on cannot have.
    dv_arrow_export_t lent = {};
    ArrowSchema schema;
    ArrowArray array;
    const auto export_it = [&] { dv_arrow_export(&column, &type, &lent, &schema, &array); };
    EXPECT_EQ(raise_of(export_it), -5123);
    column.validity = copied;
    column.first_bit = 0;
    ASSERT_EQ(raise_of(export_it), 0);
    EXPECT_EQ(array.length, 7);
    EXPECT_EQ(array.offset, 0);
    EXPECT_EQ(array.null_count, 1);
    EXPECT_EQ(array.buffers[0], copied);
    EXPECT_EQ(array.buffers[1], values + 5);

    from.array.null_count = 0;
    ASSERT_EQ(import_(from, type, column), 0);
    EXPECT_EQ(column.validity, nullptr);
}

TEST(Arrow, SlicesOfTextsKeepTheirOffsets) {
    const int32_t offsets[] = {2, 4, 4, 9, 10};
    const char bytes[] = "..one twothree";
    foreign_t from("u", 2, {nullptr, offsets, bytes});
    from.array.offset = 2;
    dv_arrow_type_t type;
    dv_column_t column;
    ASSERT_EQ(import_(from, type, column), 0);
    EXPECT_EQ(column.offsets, offsets + 2);
    EXPECT_EQ(column.size, 10);
    EXPECT_EQ(column.values, bytes);

    foreign_t empty("u", 0, {nullptr, nullptr, nullptr});
    ASSERT_EQ(import_(empty, type, column), 0);
    EXPECT_NE(column.offsets, nullptr);
    EXPECT_EQ(column.count, 0);
}

struct hostile_case {
    const char *what;
    std::function<void(foreign_t &)> spoil;
};

TEST(Arrow, StructsThatContradictThemselvesAreRefused) {
    alignas(8) const int32_t offsets[] = {0, 1, 2, -3};
    static const char bytes[64] = "";
    static const uint8_t bitmap[] = {0xFF};
    static ArrowSchema other_schema = {};
    static ArrowArray other_array = {};
    const hostile_case cases[] = {
        {"released schema", [](foreign_t &f) { f.schema.release = nullptr; }},
        {"released array", [](foreign_t &f) { f.array.release = nullptr; }},
        {"no format", [](foreign_t &f) { f.schema.format = nullptr; }},
        {"dictionary", [](foreign_t &f) { f.schema.dictionary = &other_schema; }},
        {"dictionary of the array", [](foreign_t &f) { f.array.dictionary = &other_array; }},
        {"children", [](foreign_t &f) { f.schema.n_children = 1; }},
        {"fewer children than none", [](foreign_t &f) { f.array.n_children = -1; }},
        {"no list of buffers", [](foreign_t &f) { f.array.buffers = nullptr; }},
        {"a buffer too few", [](foreign_t &f) { --f.array.n_buffers; }},
        {"a buffer too many", [](foreign_t &f) { ++f.array.n_buffers; }},
        {"negative length", [](foreign_t &f) { f.array.length = -1; }},
        {"negative offset", [](foreign_t &f) { f.array.offset = -1; }},
        {"offset too large", [](foreign_t &f) { f.array.offset = INT64_MAX; }},
        {"bytes too many", [](foreign_t &f) { f.array.length = INT64_MAX / 4; }},
        {"nulls below -1", [](foreign_t &f) { f.array.null_count = -2; }},
        {"nulls above the length", [](foreign_t &f) { f.array.null_count = 3; }},
        {"nulls without a bitmap", [](foreign_t &f) { f.array.null_count = 1, f.buffers[0] = nullptr; }},
        {"no values", [](foreign_t &f) { f.buffers.back() = nullptr; }},
        {"no second buffer", [](foreign_t &f) { f.buffers[1] = nullptr; }},
    };
    for (const char *format : {"l", "u"}) {
        for (const hostile_case &c : cases) {
            foreign_t from(format, 2, {bitmap, bytes});
            if (*format == 'u') from = foreign_t(format, 2, {bitmap, offsets, bytes});
            from.array.buffers = from.buffers.data();
            c.spoil(from);
            dv_arrow_type_t type = {};
            dv_column_t column = {};
            EXPECT_EQ(import_(from, type, column), -5123) << format << ": " << c.what;
            EXPECT_EQ(type.kind, 0) << "written all the same";
        }
    }
    dv_arrow_type_t type;
    dv_column_t column;
    const foreign_t backwards("u", 3, {nullptr, offsets, bytes});
    EXPECT_EQ(import_(backwards, type, column), -5123);
    const foreign_t unaligned("u", 1, {nullptr, reinterpret_cast<const char *>(offsets) + 1, bytes});
    EXPECT_EQ(import_(unaligned, type, column), -5123);
}

// ---- records ----

struct record_case {
    const char *extension;
    dv_type_t record;
    int bytes;
};
constexpr record_case _records[] = {
    {"dvtypes.number", DV_TYPE_NUMBER, 23},      {"dvtypes.date", DV_TYPE_DATE, 8},
    {"dvtypes.time", DV_TYPE_TIME, 8},           {"dvtypes.timestamp", DV_TYPE_TIMESTAMP, 12},
    {"dvtypes.timestamp_tz", DV_TYPE_TS_TZ, 17}, {"dvtypes.timestamp_ltz", DV_TYPE_TS_LTZ, 12},
    {"dvtypes.interval_ym", DV_TYPE_ITV_YTM, 5}, {"dvtypes.interval_ds", DV_TYPE_ITV_DTS, 12},
    {"dvtypes.rowid", DV_TYPE_ROWID, 12},
};

// Metadata as the interface has it, by the test's own hand.
std::string metadata_(const std::vector<std::string> &texts) {
    std::string bytes;
    const auto put = [&bytes](size_t number) {
        const auto n = static_cast<int32_t>(number);
        bytes.append(reinterpret_cast<const char *>(&n), sizeof n);
    };
    put(texts.size() / 2);
    for (const std::string &text : texts) {
        put(text.size());
        bytes += text;
    }
    return bytes;
}

TEST(Arrow, RecordsTravelUnderTheirNames) {
    const char memory[64] = "";
    for (const record_case &c : _records) {
        SCOPED_TRACE(c.extension);
        dv_column_t column = {2, const_cast<char *>(memory), c.bytes, nullptr, 0, nullptr, 0};
        dv_arrow_type_t type = {};
        type.kind = DV_ARROW_RECORD;
        type.record = c.record;
        dv_arrow_export_t lent = {};
        lent.name = "x";
        ArrowSchema schema;
        ArrowArray array;
        dv_arrow_export(&column, &type, &lent, &schema, &array);
        EXPECT_EQ(schema.format, "w:" + std::to_string(c.bytes));
        const std::string wanted = metadata_({"ARROW:extension:name", c.extension});
        EXPECT_EQ(std::string(schema.metadata, wanted.size()), wanted);

        dv_column_t again;
        type = {};
        dv_arrow_import(&schema, &array, &type, &again);
        EXPECT_EQ(type.kind, DV_ARROW_RECORD);
        EXPECT_EQ(type.record, c.record);
        EXPECT_EQ(again.values, memory);
        EXPECT_EQ(again.stride, c.bytes);
        schema.release(&schema);
        EXPECT_EQ(raise_of([&] { dv_arrow_import(&schema, &array, &type, &again); }), -5123);
    }
}

TEST(Arrow, NumbersByOffsetsAreBinary) {
    int32_t offsets[] = {0, 2, 2};
    char bytes[] = "\xC1\x81";
    const dv_column_t column = {2, bytes, 0, offsets, 2, nullptr, 0};
    dv_arrow_type_t type = {};
    type.kind = DV_ARROW_RECORD;
    type.record = DV_TYPE_NUMBER;
    dv_arrow_export_t lent = {};
    ArrowSchema schema;
    ArrowArray array;
    dv_arrow_export(&column, &type, &lent, &schema, &array);
    EXPECT_STREQ(schema.format, "z");
    dv_column_t again;
    dv_arrow_import(&schema, &array, &type, &again);
    EXPECT_EQ(type.record, DV_TYPE_NUMBER);
    EXPECT_EQ(again.offsets, offsets);

    type.record = DV_TYPE_DATE;
    EXPECT_EQ(raise_of([&] { dv_arrow_export(&column, &type, &lent, &schema, &array); }), -5123);
}

TEST(Arrow, ExtensionsOfOthersAreBytesAndDamagedMetadataIsRefused) {
    const char memory[64] = "";
    dv_arrow_type_t type;
    dv_column_t column;
    foreign_t from("w:16", 1, {nullptr, memory});
    const std::string uuid =
        "." + metadata_({"key", "", "ARROW:extension:name", "arrow.uuid", "more", "text"});
    from.schema.metadata = uuid.data() + 1;  // at an odd address
    ASSERT_EQ(import_(from, type, column), 0);
    EXPECT_EQ(type.kind, DV_ARROW_FIXED_BINARY);

    const std::string date = metadata_({"ARROW:extension:name", "dvtypes.date"});
    from.schema.metadata = date.data();
    EXPECT_EQ(import_(from, type, column), -5123) << "a DATE has 8 bytes";

    constexpr int32_t damaged[][2] = {{-1, 0}, {1, -1}};
    for (const auto &numbers : damaged) {
        from.schema.metadata = reinterpret_cast<const char *>(numbers);
        EXPECT_EQ(import_(from, type, column), -5123);
    }
}

TEST(Arrow, ColumnsWithGapsAreNoArrays) {
    int64_t values[8] = {};
    dv_arrow_type_t type = {};
    type.kind = DV_ARROW_INT64;
    dv_arrow_export_t lent = {};
    ArrowSchema schema;
    ArrowArray array;
    dv_column_t column = {2, values, 16, nullptr, 0, nullptr, 0};
    const auto export_it = [&] { dv_arrow_export(&column, &type, &lent, &schema, &array); };
    EXPECT_EQ(raise_of(export_it), -5123);
    column.stride = 0;
    EXPECT_EQ(raise_of(export_it), -5123);
    column.stride = 8;
    EXPECT_EQ(raise_of(export_it), 0);
    type.kind = DV_ARROW_UTF8;
    EXPECT_EQ(raise_of(export_it), -5123);
    const std::string zone(200, 'x');
    type.kind = DV_ARROW_TIMESTAMP;
    type.zone = zone.c_str();
    EXPECT_EQ(raise_of(export_it), -5123);
    type = {};
    EXPECT_EQ(raise_of(export_it), -5123);
}

TEST(Arrow, CallersReleaseTheirOwn) {
    static int released;
    released = 0;
    int64_t value = 7;
    const dv_column_t column = {1, &value, 8, nullptr, 0, nullptr, 0};
    dv_arrow_type_t type = {};
    type.kind = DV_ARROW_INT64;
    dv_arrow_export_t lent = {};
    lent.private_data = &value;
    lent.release_array = [](ArrowArray *array) {
        released += *static_cast<int64_t *>(array->private_data) == 7 ? 1 : 0;
        array->release = nullptr;
    };
    ArrowSchema schema;
    ArrowArray array;
    dv_arrow_export(&column, &type, &lent, &schema, &array);
    array.release(&array);
    schema.release(&schema);
    EXPECT_EQ(released, 1);
    EXPECT_EQ(array.release, nullptr);
    EXPECT_EQ(schema.release, nullptr);
}

}  // namespace
}  // namespace dv::test
