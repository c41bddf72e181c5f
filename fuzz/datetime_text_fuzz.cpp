// Reading, writing and truncating under datetime models. The input is six bytes (what is done, language,
// character set, precision, length of the model, size of the buffer), the model or unit, and a value: a text,
// or the bytes of a record.
// Properties: a text raises a documented code or gives a valid value; a record is written within its buffer,
// whose content is the beginning of what a larger one gets; truncation goes back.

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "../test/datetime_fmt/model_text.h"
#include "../test/datetime_fmt/text_type.h"
#include "dvtypes/timezone_id.h"
#include "fuzz_input.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

constexpr int _read_codes[] = {0,     -5007, -5010, -5011, -5012, -5013, -5024, -5025, -5041, -5042, -5045,
                               -5088, -5089, -5096, -5098, -5099, -5103, -5109, -5110, -5113, -5114};
constexpr int _write_codes[] = {0, -5007, -5011, -5012, -5041, -5054, -5114};
constexpr int _unit_codes[] = {0, -5014, -5114};

constexpr timezone_t _new_york = {95, 0, 0, {0, TZ_ID_AMERICA_NEW_YORK}};

// Raises for a record that is none.
void check_(dv_date_t *value) { dv_date_is_valid(value); }
void check_(dv_time_t *value) { dv_time_is_valid(value); }
void check_(dv_ts_tz_t *value) { dv_date_is_valid(reinterpret_cast<dv_date_t *>(value)); }

struct case_t {
    uint8_t action, language, charset, precision, buffer_size;
    std::string_view model, value;
    bool is_reading() const { return (action & 2) == 0; }
    bool is_of_any_type() const { return (action & 8) != 0; }
    bool is_zoned() const { return (action & 16) != 0; }
};

template <typename Record>
Record record_(std::string_view bytes) {
    Record record{};
    std::memcpy(&record, bytes.data(), std::min(bytes.size(), sizeof record));
    return record;
}

template <typename Type>
void read_(const case_t &input, const dt_fmt_ctx_t &model) {
    const unsigned long failed = dv_assert_count();
    const std::vector<char> text = block(input.value);
    typename Type::record value{};
    const auto size = static_cast<int>(input.value.size());
    const int code = raise_of([&] {
        Type::read(&value, text.data(), size, &model, {input.precision, _new_york});
    });
    require_one_of(_read_codes, "a code of reading", code);
    require(dv_assert_count() == failed, "no assertion that fails, code", code);
    if (code == 0) require(raise_of([&] { check_(&value); }) == 0, "a valid value", code);
}

// A record written into a heap block of some size.
template <typename Type>
struct written_t {
    guarded block;
    int code;
    long status = CONV_STATUS_WHOLE;
    written_t(int size, const case_t &input, const dt_fmt_ctx_t &model) : block(static_cast<size_t>(size)) {
        const auto value = record_<typename Type::record>(input.value);
        std::memset(block.text(), '~', static_cast<size_t>(size));
        code = raise_of([&] {
            status = Type::write(&value, block.text(), size, &model, {input.precision, _new_york});
        });
        require_one_of(_write_codes, "a code of writing", code);
        require(status == CONV_STATUS_WHOLE || status == CONV_STATUS_CUT, "a status", status);
        require(block.intact(), "nothing beside the buffer", size);
    }
    bool is_whole() const { return code == 0 && status == CONV_STATUS_WHOLE; }
};

template <typename Type>
void write_(const case_t &input, const dt_fmt_ctx_t &model) {
    constexpr int more = 512;
    const int size = input.buffer_size;
    const written_t<Type> some(size, input, model);
    if (size == 0) return require(some.code == -5007, "a buffer of no bytes", some.code);
    const written_t<Type> longer(size + more, input, model);
    require(std::equal(some.block.text(), some.block.text() + size, longer.block.text()),
            "the beginning of the longer text", size);
    if (some.code != 0) require(some.code == longer.code, "the same code in a longer buffer", longer.code);
    if (some.is_whole()) require(longer.is_whole(), "whole in a longer buffer", longer.code);
}

template <typename Type>
void use_model_(const case_t &input) {
    const std::vector<char> text = block(input.model);
    const std::string_view own(text.data(), input.model.size());  // ends where its block ends
    compiled_model model(own, input.is_reading(), input.is_of_any_type() ? DV_TYPE_TS_TZ : Type::type);
    if (model.error.code != 0) return;
    model.ctx.nls_date_ctx.lang = input.language;
    model.ctx.charset = input.charset;
    if (input.is_reading()) return read_<Type>(input, model.ctx);
    write_<Type>(input, model.ctx);
}

// Units whose first day may lie behind the date: ISO years (IYYY, IYY, IY, I; not IW), and CC in the last
// year of a century.
bool may_go_up_(std::string_view unit, int year) {
    const auto at = [&](size_t i) { return i < unit.size() ? unit[i] | 0x20 : 'y'; };
    const bool is_century = at(unit.size() - 1) == 'c';
    return is_century ? year % 100 == 0 : at(0) == 'i' && at(1) == 'y';
}

// Raises for a record that is no date. The two bytes of a year become those that order dates, and a day of
// October 1582 that does not exist the next that does.
void make_canonical_(dv_date_t &date) {
    dv_date_t made{};
    dv_date_from_unit_values(&made, dv_date_get_field(&date, DT_FMT_UNIT_YEAR), date.month, date.day,
                             date.hour, date.minute, date.second);
    date = made;
}

void truncate_(const case_t &input, bool is_trunc) {
    auto date = record_<dv_date_t>(input.value);
    const bool is_valid = raise_of([&] { make_canonical_(date); }) == 0;
    const dv_date_t before = date;
    const std::vector<char> unit = block(input.model);
    const auto size = static_cast<int>(input.model.size());
    const int code = raise_of([&] { dt_fmt_trunc_or_round(&date, unit.data(), size, is_trunc ? 1 : 0); });
    require_one_of(_unit_codes, "a code of truncation", code);
    const int year = dv_date_get_field(&before, DT_FMT_UNIT_YEAR);
    if (code != 0 || !is_valid || year < 1) return;
    require(raise_of([&] { dv_date_is_valid(&date); }) == 0, "a valid date", code);
    if (is_trunc && !may_go_up_(input.model, year)) {
        require(dv_date_compare(&date, &before) <= 0, "a date not after the one truncated", 0);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr size_t head = 6;
    if (size < head) return 0;
    const assertion_watch quiet;  // records of any bytes make assertions fail
    const std::string_view rest(reinterpret_cast<const char *>(data) + head, size - head);
    const size_t model_size = std::min<size_t>(data[4], rest.size());
    const case_t input = {data[0],
                          static_cast<uint8_t>(data[1] % DV_NLS_DATE_LANG_MAX),
                          static_cast<uint8_t>(data[2] % DVSTR_CHARSET_MAX),
                          static_cast<uint8_t>(data[3] % 11),
                          data[5],
                          rest.substr(0, model_size),
                          rest.substr(model_size)};
    if ((input.action & 4) != 0) {
        truncate_(input, input.is_reading());
    } else if (input.is_zoned()) {
        use_model_<zoned_text>(input);
    } else if ((input.action & 1) == 0) {
        use_model_<date_text>(input);
    } else {
        use_model_<time_text>(input);
    }
    return 0;
}
