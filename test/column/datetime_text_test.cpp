#include <gtest/gtest.h>

#include "../datetime_fmt/compiled_model.h"
#include "datetime_rows.h"
#include "dvtypes/column_datetime_text.h"
#include "dvtypes/iso.h"

namespace dv::test {
namespace {

using columns_t = dv_column_t *const *;

// ---- texts to read: ISO texts of values, most of them as they are

void spoil_(std::string &text, number_source &source) {
    if (text.empty()) return;
    const auto at = static_cast<size_t>(source.pick(0, static_cast<int>(text.size()) - 1));
    switch (source.pick(0, 3)) {
        case 0:
            text.resize(at);
            return;
        case 1:
            text.insert(at, 1, "0 :-.T9"[source.pick(0, 6)]);
            return;
        case 2:
            text[at] = static_cast<char>(source.pick(1, 255));
            return;
        default:
            text[at] = static_cast<char>(text[at] ^ 1 << source.pick(0, 7));
            return;
    }
}

// With a fraction of any length, or none.
std::string iso_text_(number_source &source) {
    char buffer[DV_ISO_TIMESTAMP_SIZE] = "";
    const dv_timestamp_t ts = any_timestamp(source);
    raise_of([&] { dv_timestamp_to_iso(&ts, buffer, sizeof buffer); });
    std::string text = buffer;
    const size_t lengths[] = {text.size(), text.size(), 10, 13, 16, 19, 21, 23, 26, 28};
    text.resize(std::min(text.size(), lengths[source.pick(0, std::size(lengths) - 1)]));
    if (text.size() > 10 && source.pick(0, 3) == 0) text[10] = 'T';
    if (source.pick(0, 5) == 0) spoil_(text, source);
    return text;
}

rows_t iso_texts_(number_source &source, long count) {
    rows_t rows;
    while (rows.size() < static_cast<size_t>(scaled(count))) {
        const std::string text = iso_text_(source);
        // a text by stride ends at a NUL
        rows.push_back(source.pick(0, 20) == 0 ? row_t() : text.substr(0, text.find('\0')));
    }
    return rows;
}

// run(operands, result, faults) against read(record, text, length).
template <typename Record, typename Run, typename Read>
std::string reading_fault_(const rows_t &texts, const Run &run, const Read &read) {
    column_case_t columns = {{texts}, {kind_of<std::string>()}, kind_of<Record>()};
    columns.run = run;
    columns.single = [&](const std::vector<std::string> &values) {
        const guarded text(values[0].size(), values[0].data());
        return outcome_of([&] {
            Record record{};
            read(record, text.text(), static_cast<int>(values[0].size()));
            return record;
        });
    };
    return column_fault(columns);
}

// write(record, buffer, size) returns a length, or below 0.
template <typename Record, typename Run, typename Write>
std::string writing_fault_(const rows_t &records, const Run &run, const Write &write) {
    column_case_t columns = {{records}, {kind_of<Record>()}, kind_of<std::string>()};
    columns.room = static_cast<int64_t>(records.size()) * TEXT_WIDTH;
    columns.run = run;
    columns.single = [&](const std::vector<std::string> &values) {
        const auto record = value_of<Record>(values[0]);
        char text[TEXT_WIDTH + 1] = "";
        const int code = raise_of([&] { write(record, text, sizeof text); });
        return code != 0 ? row_outcome_t{code, std::nullopt} : row_outcome_t{0, text};
    };
    return column_fault(columns);
}

// ---- ISO texts

template <typename Record, auto Columns, auto Single>
void expect_iso_read_(const rows_t &texts) {
    const auto run = [](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        Columns(x[0], result, faults);
    };
    const auto read = [](Record &record, const char *text, int length) { Single(&record, text, length); };
    EXPECT_EQ(reading_fault_<Record>(texts, run, read), "");
}

TEST(IsoColumn, ReadsAsTheFunctionsForOneValue) {
    number_source source(1);
    const rows_t texts = iso_texts_(source, 50'000);
    expect_iso_read_<dv_timestamp_t, dv_timestamp_column_from_iso, dv_timestamp_from_iso>(texts);
    expect_iso_read_<dv_date_t, dv_date_column_from_iso, dv_date_from_iso>(texts);
    rows_t zoned = iso_texts_(source, 5'000);
    for (row_t &row : zoned) {
        constexpr const char *zones[] = {"", "Z", "+09:00", " -05:30", " Europe/Paris", " Asia/Seoul KST"};
        if (row) *row += zones[source.pick(0, std::size(zones) - 1)];
    }
    expect_iso_read_<dv_ts_tz_t, dv_ts_tz_column_from_iso, dv_ts_tz_from_iso>(zoned);
}

// Records of zeros and of the year 0 among them.
template <typename Record>
rows_t records_(number_source &source, long count) {
    return with_any_byte<Record>(rows_made(static_cast<size_t>(scaled(count)), source, [&] {
        auto record = any_record<Record>(source);
        if (source.pick(0, 30) == 0) record = Record{};
        if (source.pick(0, 30) == 0) std::memset(&record, 100, 2);
        return record;
    }));
}

template <typename Record, auto Columns, auto Single>
void expect_iso_written_(number_source &source, long count) {
    const assertion_watch quiet;
    const rows_t records = records_<Record>(source, count);
    const auto run = [](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        Columns(x[0], result, faults);
    };
    EXPECT_EQ(
        writing_fault_<Record>(
            records, run, [](const Record &record, char *text, int size) { Single(&record, text, size); }),
        "");
}

TEST(IsoColumn, WritesAsTheFunctionsForOneValue) {
    number_source source(2);
    expect_iso_written_<dv_timestamp_t, dv_timestamp_column_to_iso, dv_timestamp_to_iso>(source, 50'000);
    expect_iso_written_<dv_date_t, dv_date_column_to_iso, dv_date_to_iso>(source, 50'000);
    expect_iso_written_<dv_ts_tz_t, dv_ts_tz_column_to_iso, dv_ts_tz_to_iso>(source, 5'000);
}

// ---- compiled models

// Of the ISO shape, nearly so, and others.
constexpr std::string_view _models[] = {"YYYY-MM-DD HH24:MI:SS.FF9",
                                        "YYYY-MM-DD HH24:MI:SS.FF",
                                        "YYYY-MM-DD HH24:MI:SS.FF3",
                                        "SYYYY-MM-DD\"T\"HH24:MI:SS.FF6",
                                        "YYYY-MM-DD HH24:MI:SS",
                                        "YYYY-MM-DD",
                                        "HH24:MI:SS.FF9",
                                        "YYYY/MM/DD HH24.MI.SS,FF9",
                                        "YYYYMMDDHH24MISS",
                                        "DD-MON-RR HH12:MI AM",
                                        "FMYYYY-MM-DD HH24:MI:SS.FF9",
                                        "FXYYYY-MM-DD HH24:MI:SS.FF9",
                                        {"YYYY-MM-DD\"\0\"HH24:MI:SS", 23}};

constexpr dv_date_t _as_of = {120, 126, 11, 22, 0, 0, 0, 0};

TEST(TextColumn, ReadsTimestampsUnderModels) {
    number_source source(3);
    for (const std::string_view model : _models) {
        SCOPED_TRACE(std::string(model));
        const compiled_model compiled(model, /*is_reading=*/true, DV_TYPE_TIMESTAMP);
        const rows_t texts = iso_texts_(source, model == _models[0] ? 30'000 : 4'000);
        for (const int fprec : {9, 2, 10}) {
            const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
                dv_timestamp_column_from_str(x[0], &compiled.ctx, fprec, &_as_of, result, faults);
            };
            const auto read = [&](dv_timestamp_t &ts, const char *text, int length) {
                dv_timestamp_from_str_as_of(&ts, length == 0 ? "" : text, length, &compiled.ctx, fprec,
                                            &_as_of);
            };
            EXPECT_EQ(reading_fault_<dv_timestamp_t>(texts, run, read), "") << fprec;
            if (model != _models[0]) break;
        }
    }
}

TEST(TextColumn, ReadsDatesUnderModels) {
    number_source source(4);
    for (const char *const model : {"YYYY-MM-DD", "YYYY-MM-DD HH24:MI:SS", "YYYY-MM"}) {
        SCOPED_TRACE(model);
        const compiled_model compiled(model, /*is_reading=*/true, DV_TYPE_DATE);
        const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
            dv_date_column_from_str(x[0], &compiled.ctx, NULL, result, faults);
        };
        const auto read = [&](dv_date_t &date, const char *text, int length) {
            dv_date_from_str(&date, length == 0 ? "" : text, length, &compiled.ctx);
        };
        EXPECT_EQ(reading_fault_<dv_date_t>(iso_texts_(source, 10'000), run, read), "");
    }
}

// Texts that a model writes, and some of them spoiled.
rows_t texts_under_(std::string_view model, number_source &source) {
    const compiled_model writing(model, /*is_reading=*/false, DV_TYPE_TIMESTAMP);
    rows_t rows;
    while (rows.size() < static_cast<size_t>(scaled(6'000))) {
        char text[64] = "";
        const dv_timestamp_t ts = any_timestamp(source);
        raise_of([&] { dv_timestamp_to_str(&ts, text, sizeof text, &writing.ctx, 9); });
        std::string row = text;
        if (source.pick(0, 3) == 0) spoil_(row, source);
        rows.push_back(row.substr(0, row.find('\0')));
    }
    return rows;
}

// Everything in the same places, and models that come close to it.
constexpr std::string_view _fixed_models[] = {
    "DD.MM.YYYY HH24:MI:SS",     "MM/DD/YYYY", "YYYYMMDDHH24MISS",     "HH24:MI",
    "SS MI\"x\"HH24 DD YYYY MM", "DD.MM.",     "FMDD.MM.YYYY HH24:MI", "FXDD.MM.YYYY HH24:MI:SS",
    "DD.MM.YYYY HH24:MI:SS.FF3"};

TEST(TextColumn, ReadsTextsWithEverythingInTheSamePlaces) {
    number_source source(8);
    for (const std::string_view model : _fixed_models) {
        SCOPED_TRACE(std::string(model));
        const compiled_model compiled(model, /*is_reading=*/true, DV_TYPE_TIMESTAMP);
        const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
            dv_timestamp_column_from_str(x[0], &compiled.ctx, 9, &_as_of, result, faults);
        };
        const auto read = [&](dv_timestamp_t &ts, const char *text, int length) {
            dv_timestamp_from_str_as_of(&ts, length == 0 ? "" : text, length, &compiled.ctx, 9, &_as_of);
        };
        EXPECT_EQ(reading_fault_<dv_timestamp_t>(texts_under_(model, source), run, read), "");
    }
    const compiled_model of_dates(_fixed_models[0], /*is_reading=*/true, DV_TYPE_DATE);
    const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_date_column_from_str(x[0], &of_dates.ctx, &_as_of, result, faults);
    };
    const auto read = [&](dv_date_t &date, const char *text, int length) {
        dv_date_from_str_as_of(&date, length == 0 ? "" : text, length, &of_dates.ctx, &_as_of);
    };
    EXPECT_EQ(reading_fault_<dv_date_t>(texts_under_(_fixed_models[0], source), run, read), "");
}

TEST(TextColumn, WritesTextsWithEverythingInTheSamePlaces) {
    number_source source(9);
    const assertion_watch quiet;
    constexpr std::string_view long_model = "YYYY-MM-DD YYYY-MM-DD YYYY-MM-DD YYYY",
                               words = "DDth Ddspth YYYY";
    std::vector<std::string_view> models(std::begin(_fixed_models), std::end(_fixed_models));
    models.insert(models.end(), {long_model, words});
    for (const std::string_view model : models) {
        SCOPED_TRACE(std::string(model));
        const compiled_model compiled(model, /*is_reading=*/false, DV_TYPE_TIMESTAMP);
        const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
            dv_timestamp_column_to_str(x[0], &compiled.ctx, 9, result, faults);
        };
        const auto write = [&](const dv_timestamp_t &ts, char *text, int size) {
            dv_timestamp_to_str(&ts, text, size, &compiled.ctx, 9);
        };
        EXPECT_EQ(writing_fault_<dv_timestamp_t>(records_<dv_timestamp_t>(source, 6'000), run, write), "");
    }
    const compiled_model of_dates(_fixed_models[0], /*is_reading=*/false, DV_TYPE_DATE);
    const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_date_column_to_str(x[0], &of_dates.ctx, result, faults);
    };
    const auto write = [&](const dv_date_t &date, char *text, int size) {
        dv_date_to_str(&date, text, size, &of_dates.ctx);
    };
    EXPECT_EQ(writing_fault_<dv_date_t>(records_<dv_date_t>(source, 6'000), run, write), "");
}

TEST(TextColumn, ReadsZonedTimestampsUnderModels) {
    number_source source(5);
    const timezone_t session = zone_of("Europe/Paris");
    const compiled_model compiled("YYYY-MM-DD HH24:MI:SS.FF9", /*is_reading=*/true, DV_TYPE_TS_TZ);
    const rows_t texts = iso_texts_(source, 5'000);
    const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_ts_tz_column_from_str(x[0], &compiled.ctx, 9, &session, &_as_of, result, faults);
    };
    const auto read = [&](dv_ts_tz_t &ts_tz, const char *text, int length) {
        dv_ts_tz_from_str_as_of(&ts_tz, length == 0 ? "" : text, length, &compiled.ctx, 9, &session, &_as_of);
    };
    EXPECT_EQ(reading_fault_<dv_ts_tz_t>(texts, run, read), "");
    const auto run_local = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_ts_ltz_column_from_str(x[0], &compiled.ctx, 9, &session, NULL, result, faults);
    };
    const auto read_local = [&](dv_ts_ltz_t &ts_ltz, const char *text, int length) {
        timezone_t zone = session;
        dv_ts_ltz_from_str(&ts_ltz, length == 0 ? "" : text, length, &compiled.ctx, 9, &zone);
    };
    EXPECT_EQ(reading_fault_<dv_ts_ltz_t>(texts, run_local, read_local), "");
}

TEST(TextColumn, WritesUnderModels) {
    number_source source(6);
    const assertion_watch quiet;
    for (const std::string_view model : _models) {
        SCOPED_TRACE(std::string(model));
        const compiled_model compiled(model, /*is_reading=*/false, DV_TYPE_TIMESTAMP);
        const rows_t records = records_<dv_timestamp_t>(source, model == _models[0] ? 30'000 : 4'000);
        for (const int fprec :
             {4, 10}) {  // the second is refused where the model has a fraction of the type's
            const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
                dv_timestamp_column_to_str(x[0], &compiled.ctx, fprec, result, faults);
            };
            const auto write = [&](const dv_timestamp_t &ts, char *text, int size) {
                dv_timestamp_to_str(&ts, text, size, &compiled.ctx, fprec);
            };
            EXPECT_EQ(writing_fault_<dv_timestamp_t>(records, run, write), "") << fprec;
        }
    }
    const compiled_model date_model("YYYY-MM-DD", /*is_reading=*/false, DV_TYPE_DATE);
    const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_date_column_to_str(x[0], &date_model.ctx, result, faults);
    };
    const auto write = [&](const dv_date_t &date, char *text, int size) {
        dv_date_to_str(&date, text, size, &date_model.ctx);
    };
    EXPECT_EQ(writing_fault_<dv_date_t>(records_<dv_date_t>(source, 10'000), run, write), "");
}

TEST(TextColumn, WritesZonedTimestampsUnderModels) {
    number_source source(7);
    const assertion_watch quiet;
    const timezone_t session = zone_of("Europe/Paris");
    const compiled_model compiled("YYYY-MM-DD HH24:MI:SS.FF TZR", /*is_reading=*/false, DV_TYPE_TS_TZ);
    const auto run = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_ts_tz_column_to_str(x[0], &compiled.ctx, 9, result, faults);
    };
    const auto write = [&](const dv_ts_tz_t &ts_tz, char *text, int size) {
        dv_ts_tz_to_str(&ts_tz, text, size, &compiled.ctx, 9);
    };
    EXPECT_EQ(writing_fault_<dv_ts_tz_t>(records_<dv_ts_tz_t>(source, 5'000), run, write), "");

    const compiled_model local_model("YYYY-MM-DD HH24:MI:SS.FF3", /*is_reading=*/false, DV_TYPE_TIMESTAMP);
    const auto run_local = [&](columns_t x, dv_column_t *result, dv_column_faults_t *faults) {
        dv_ts_ltz_column_to_str(x[0], &local_model.ctx, 9, &session, result, faults);
    };
    const auto write_local = [&](const dv_ts_ltz_t &ts_ltz, char *text, int size) {
        dv_ts_ltz_to_str(&ts_ltz, text, size, &local_model.ctx, 9, &session);
    };
    EXPECT_EQ(writing_fault_<dv_ts_ltz_t>(records_<dv_ts_ltz_t>(source, 5'000), run_local, write_local), "");
}

// ---- room

struct room_case {
    const char *name;
    bool by_offsets;
    int64_t room;  // by stride: of each row
    int64_t failures, first;
};
// Five texts of 29, 0, 29, 29 and 0 bytes.
constexpr room_case _room_cases[] = {
    {"all by offsets", true, 87, 0, -1},
    {"one byte less", true, 86, 1, 3},
    {"two texts", true, 58, 1, 3},
    {"empty texts alone", true, 0, 3, 0},
    {"below nothing", true, -1, 5, 0},
    {"all by stride", false, 29, 0, -1},
    {"a NUL behind them", false, 30, 0, -1},
    {"a byte too short", false, 28, 3, 0},
    {"no bytes", false, 0, 3, 0},
};

using text_writer = std::function<void(dv_column_t *result, dv_column_faults_t *faults)>;

void expect_room_(const room_case &c, const char *way, const text_writer &write) {
    SCOPED_TRACE(std::string(c.name) + ", " + way + ", level " + std::to_string(dv_vector_level()));
    const auto bytes = static_cast<size_t>(std::max<int64_t>(c.room, 0)) * (c.by_offsets ? 1 : 5);
    const guarded block(bytes, std::string(bytes, '#').data());
    int32_t offsets[6] = {9, 9, 9, 9, 9, 9}, codes[5];
    dv_column_t result = {5, block.text(), c.room, c.by_offsets ? offsets : NULL, c.room, NULL, 0};
    dv_column_faults_t faults = {codes, NULL, 0, 0, 0, 0};
    write(&result, &faults);
    EXPECT_EQ(faults.count, c.failures);
    EXPECT_EQ(faults.first, c.first);
    EXPECT_EQ(faults.code, c.failures == 0 ? 0 : -3005);
    EXPECT_TRUE(block.intact());
    if (c.by_offsets) {
        EXPECT_EQ(offsets[5], 29 * (3 - std::min<int64_t>(c.failures, 3)));
    }
}

TEST(TextColumn, FailsWhereATextDoesNotFit) {
    dv_timestamp_t values[5] = {};
    for (const int i : {0, 2, 3}) dv_timestamp_from_unit_values(&values[i], 2024, 2, 29, 13, 5, 7, 123456789);
    const compiled_model compiled("YYYY-MM-DD HH24:MI:SS.FF9", /*is_reading=*/false, DV_TYPE_TIMESTAMP);
    const dv_column_t operand = {5, values, sizeof values[0], NULL, 0, NULL, 0};
    for (each_level levels; levels.next();) {
        for (const room_case &c : _room_cases) {
            expect_room_(c, "model", [&](dv_column_t *result, dv_column_faults_t *faults) {
                dv_timestamp_column_to_str(&operand, &compiled.ctx, 9, result, faults);
            });
            expect_room_(c, "ISO", [&](dv_column_t *result, dv_column_faults_t *faults) {
                dv_timestamp_column_to_iso(&operand, result, faults);
            });
        }
    }
}

// Bytes that a text by stride does not reach, and offsets that are none.
TEST(TextColumn, BelievesNoOffsets) {
    const char text[] = "2024-02-292024-03-01";
    struct {
        int32_t offsets[3];
        int codes[2];
    } static constexpr cases[] = {{{0, 10, 20}, {0, 0}},
                                  {{0, 10, 21}, {0, -5120}},
                                  {{-1, 10, 20}, {-5120, 0}},
                                  {{10, 0, 10}, {-5120, 0}},
                                  {{0, INT32_MAX, 20}, {-5120, -5120}},
                                  {{INT32_MIN, INT32_MIN, 10}, {-5120, -5120}}};
    const guarded block(sizeof text - 1, text);
    for (const auto &c : cases) {
        for (each_level levels; levels.next();) {
            int32_t offsets[3], codes[2];
            std::copy(std::begin(c.offsets), std::end(c.offsets), offsets);
            dv_timestamp_t values[2];
            dv_column_t operand = {2, block.text(), 0, offsets, sizeof text - 1, NULL, 0};
            dv_column_t result = {2, values, sizeof values[0], NULL, 0, NULL, 0};
            dv_column_faults_t faults = {codes, NULL, 0, 0, 0, 0};
            dv_timestamp_column_from_iso(&operand, &result, &faults);
            EXPECT_EQ(codes[0], c.codes[0]) << c.offsets[0] << " " << c.offsets[1];
            EXPECT_EQ(codes[1], c.codes[1]) << c.offsets[1] << " " << c.offsets[2];
        }
    }
}

}  // namespace
}  // namespace dv::test
