// See vector_call.h.

#include "vector_call.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <sys/mman.h>

#include "bytes.h"

using namespace dv::test;
using dv::impl::load_be16, dv::impl::load_be64;
using dv::impl::store_be16, dv::impl::store_be32, dv::impl::store_be64;

namespace {

// The conditions that failed during the call that runs: texts of the library, which last.
constexpr int _assertions_max = 16;
thread_local const char *_assertions[_assertions_max];
thread_local int _assertion_count;

// The extended format: sign and exponent, then a significand of 64 bits, a fraction in [1/2, 1).
constexpr size_t _extended_size = 10;
constexpr int _extended_bias = 16382;

int hex_digit_(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

std::string hex_(const uint8_t *bytes, size_t size) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (size_t i = 0; i < size; ++i) (text += digits[bytes[i] / 16]) += digits[bytes[i] % 16];
    return text;
}

std::string quoted_(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<uint8_t>(c);
        if (c == '"' || c == '\\') {
            (result += '\\') += c;
        } else if (byte >= 0x20 && byte < 0x7F) {
            result += c;
        } else {
            result += "\\x" + hex_(&byte, 1);
        }
    }
    return result + '"';
}

// Of a quoted text, the number of characters with both quotes.
size_t quoted_size_(std::string_view text) {
    size_t at = 1;
    while (at < text.size() && text[at] != '"') at += text[at] == '\\' ? 2 : 1;
    return at < text.size() ? at + 1 : text.size();
}

void set_year_(uint8_t *record, int year) {
    record[0] = static_cast<uint8_t>(year / 100 + 100);
    record[1] = static_cast<uint8_t>(year % 100 + 100);
}

// Memory in front of a page that must not be touched: a byte read or written too much ends the program.
constexpr size_t _fence_size = 1 << 16;  // a multiple of any page
constexpr size_t _fence_count = 4;       // texts of a case
struct fence_t {
    char content[_fence_size], forbidden[_fence_size];
};

fence_t *fences_() {
    static auto *const fences = [] {
        void *const pages = mmap(nullptr, _fence_count * sizeof(fence_t), PROT_READ | PROT_WRITE,
                                 MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pages == MAP_FAILED) std::abort();
        auto *const made = static_cast<fence_t *>(pages);
        for (size_t i = 0; i < _fence_count; ++i) mprotect(made[i].forbidden, _fence_size, PROT_NONE);
        return made;
    }();
    return fences;
}

// What stands between the quotes of a text.
std::string unquoted_(std::string_view quoted) {
    std::string text;
    for (size_t i = 1; i + 1 < quoted.size(); ++i) {
        const bool is_escape = quoted[i] == '\\';
        if (is_escape) ++i;
        if (!is_escape || quoted[i] != 'x') {
            text += quoted[i];
        } else {
            text += static_cast<char>(hex_digit_(quoted[i + 1]) * 16 + hex_digit_(quoted[i + 2]));
            i += 2;
        }
    }
    return text;
}

}  // namespace

void vector_call::begin_watching_() {
    dv_assert_set_reporter([](const char *condition, const char *, int) {
        if (_assertion_count < _assertions_max) _assertions[_assertion_count++] = condition;
    });
}

// ---- inputs

bool vector_call::has_more() {
    while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
    return !rest_.empty();
}

std::string_view vector_call::next_() {
    if (!has_more()) {
        fail("an input is missing");
        return {};
    }
    size_t size = rest_.front() == '"' ? quoted_size_(rest_) : 0;
    while (size < rest_.size() && rest_[size] != ' ') ++size;
    const std::string_view field = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return field;
}

void *vector_call::memory(size_t size) {
    const size_t begin = used_;
    used_ += (size + 15) / 16 * 16;
    if (used_ > sizeof memory_) {
        std::fputs("a vector's inputs are too long\n", stderr);
        std::abort();
    }
    return std::memset(memory_ + begin, 0, size);
}

int64_t vector_call::integer() {
    const std::string field(next_());
    char *end;
    const int64_t value = field.starts_with('-')
                              ? std::strtoll(field.c_str(), &end, 10)
                              : static_cast<int64_t>(std::strtoull(field.c_str(), &end, 10));
    if (field.empty() || *end != '\0') fail("no integer: " + field);
    return value;
}

std::string_view vector_call::word() { return next_(); }

bool vector_call::takes(std::string_view word) {
    if (!has_more() || rest_.substr(0, rest_.find(' ')) != word) return false;
    rest_.remove_prefix(word.size());
    return true;
}

// A text of each case has a fence of its own.
vector_text vector_call::text_(bool is_ended) {
    std::string_view field = next_();
    if (field == "null") return {nullptr, 0};
    if (field.starts_with("null:")) return {nullptr, std::atoi(std::string(field.substr(5)).c_str())};
    const size_t end = field.empty() || field.front() != '"' ? 0 : quoted_size_(field);
    if (end < 2 || end > _fence_size) {
        fail("no text: " + std::string(field));
        return {"", 0};
    }
    const std::string text = unquoted_(field.substr(0, end));
    const int size = end < field.size() ? std::atoi(std::string(field.substr(end + 1)).c_str())
                                        : static_cast<int>(text.size());
    const size_t needed = is_ended || size <= 0 ? text.size() + 1 : text.size();
    char *const data = fences_()[fenced_++ % _fence_count].forbidden - needed;
    std::memcpy(data, text.c_str(), needed);
    return {data, size};
}

uint8_t *vector_call::bytes(size_t size) {
    const std::string_view field = next_();
    if (field == "null") return nullptr;
    const size_t count = field.empty() || field.front() != 'x' ? 0 : (field.size() - 1) / 2;
    if (count == 0 && field != "x") fail("no bytes: " + std::string(field));
    auto *const result = static_cast<uint8_t *>(memory(count > size ? count : size));
    for (size_t i = 0; i < count; ++i) {
        const int high = hex_digit_(field[2 * i + 1]), low = hex_digit_(field[2 * i + 2]);
        if (high < 0 || low < 0) fail("no bytes: " + std::string(field));
        result[i] = static_cast<uint8_t>(high * 16 + low);
    }
    return result;
}

vector_text vector_call::fenced_bytes() {
    if (!has_more()) return {"", 0};
    const size_t size = (std::min(rest_.find(' '), rest_.size()) - 1) / 2;
    const uint8_t *const given = bytes(size);
    char *const data = fences_()[fenced_++ % _fence_count].forbidden - size;
    std::memcpy(data, given, size);
    return {data, static_cast<int>(size)};
}

long double vector_call::extended_float() {
    const uint8_t *const from = bytes(_extended_size);
    const int head = load_be16(from);
    const auto significand = static_cast<long double>(load_be64(from + 2));
    const long double magnitude = std::ldexp(significand, (head & 0x7FFF) - _extended_bias - 64);
    return (head & 0x8000) != 0 ? -magnitude : magnitude;
}

bool vector_call::is_raw_() { return has_more() && (rest_.front() == 'x' || rest_.substr(0, 4) == "null"); }

bool vector_call::read_(std::string_view field, number_t *x) {
    return raise_of([&] { number_from_str(x, static_cast<int>(field.size()), field.data(), nullptr); }) == 0;
}

// [-]YYYY-MM-DDTHH:MI:SS
bool vector_call::read_(std::string_view field, dv_date_t *date) {
    const bool is_bc = field.starts_with('-');
    unsigned year, month, day, hour, minute, second;
    const std::string text(field.substr(is_bc));
    if (std::sscanf(text.c_str(), "%4u-%2u-%2uT%2u:%2u:%2u", &year, &month, &day, &hour, &minute, &second) !=
        6)
        return false;
    set_year_(&date->century, is_bc ? -static_cast<int>(year) : static_cast<int>(year));
    const unsigned fields[] = {month, day, hour, minute, second};
    for (size_t i = 0; i < 5; ++i) (&date->month)[i] = static_cast<uint8_t>(fields[i]);
    return true;
}

// The fraction, behind a point, of up to nine digits.
static void read_fraction_(std::string_view field, uint8_t *csec) {
    const size_t point = field.find('.');
    std::string digits(point == field.npos ? "" : field.substr(point + 1));
    digits.resize(9, '0');
    const auto value = static_cast<uint32_t>(std::atoi(digits.c_str()));
    for (int i = 0; i < 4; ++i) csec[i] = static_cast<uint8_t>(value >> (24 - 8 * i));
}

bool vector_call::read_(std::string_view field, dv_time_t *time) {
    unsigned hour, minute, second;
    if (std::sscanf(std::string(field).c_str(), "%2u:%2u:%2u", &hour, &minute, &second) != 3) return false;
    time->hour = static_cast<uint8_t>(hour);
    time->minute = static_cast<uint8_t>(minute);
    time->second = static_cast<uint8_t>(second);
    read_fraction_(field, time->csec);
    return true;
}

bool vector_call::read_(std::string_view field, dv_timestamp_t *ts) {
    read_fraction_(field, ts->csec);
    return read_(field, reinterpret_cast<dv_date_t *>(ts));
}

bool vector_call::read_(std::string_view field, dv_ts_ltz_t *ts) { return read_(field, &ts->utc); }

// UTC@ZONE; a region's offset is the one of the instant.
bool vector_call::read_(std::string_view field, dv_ts_tz_t *ts) {
    const size_t at = field.find('@');
    if (at == field.npos || !read_(field.substr(0, at), &ts->utc) || !read_(field.substr(at + 1), &ts->tz)) {
        return false;
    }
    timezone_adjust(&ts->tz, reinterpret_cast<dv_date_t *>(ts));
    return true;
}

bool vector_call::read_(std::string_view field, timezone_t *tz) {
    if (field == "none") {
        timezone_init(tz);
        return true;
    }
    return raise_of([&] { timezone_parse(tz, field.data(), static_cast<int>(field.size())); }) == 0;
}

bool vector_call::read_(std::string_view field, dv_itv_ytm_t *itv) {
    int years, months;
    if (std::sscanf(std::string(field).c_str(), "%d,%d", &years, &months) != 2) return false;
    dv_itv_ytm_set_field(itv, DT_FMT_UNIT_YEAR, years);
    dv_itv_ytm_set_field(itv, DT_FMT_UNIT_MONTH, months);
    return true;
}

bool vector_call::read_(std::string_view field, dv_itv_dts_t *itv) {
    int days, seconds, nanoseconds;
    if (std::sscanf(std::string(field).c_str(), "%d,%d,%d", &days, &seconds, &nanoseconds) != 3) return false;
    dv_itv_dts_set_field(itv, DT_FMT_UNIT_DAY, days);
    dv_itv_dts_set_field(itv, DT_FMT_UNIT_SECOND, seconds);
    dv_itv_dts_set_field(itv, DT_FMT_UNIT_FSEC, nanoseconds);
    return true;
}

// ---- outputs

void vector_call::put_word(std::string_view word) { (output_ += output_.empty() ? "" : " ") += word; }
void vector_call::put(int64_t value) { put_word(std::to_string(value)); }
void vector_call::put_text(std::string_view text) { put_word(quoted_(text)); }

void vector_call::put_bytes(const void *bytes, size_t size) {
    put_word('x' + hex_(static_cast<const uint8_t *>(bytes), size));
}

void vector_call::put_bits(uint32_t bits) {
    uint8_t bytes[4];
    store_be32(bytes, bits);
    put_bytes(bytes, sizeof bytes);
}

void vector_call::put_bits(uint64_t bits) {
    uint8_t bytes[8];
    store_be64(bytes, bits);
    put_bytes(bytes, sizeof bytes);
}

void vector_call::put_extended_float(long double value) {
    int exponent = 0;
    const long double fraction =
        std::ldexp(std::frexp(std::fabs(value), &exponent), 64);  // [2^63, 2^64), or 0
    const auto significand = static_cast<uint64_t>(fraction);
    if (static_cast<long double>(significand) != fraction) fail("more than 64 significant bits");
    uint8_t bytes[_extended_size];
    const int sign = std::signbit(value) ? 0x8000 : 0, biased = value == 0 ? 0 : exponent + _extended_bias;
    store_be16(bytes, static_cast<uint16_t>(sign | biased));
    store_be64(bytes + 2, significand);
    put_bytes(bytes, sizeof bytes);
}

void vector_call::fail(std::string_view why) {
    if (failure_.empty()) failure_ = why;
}

std::string vector_call::result() const {
    if (!failure_.empty()) return "(" + failure_ + ")";
    std::string text = output_;
    for (int i = 0; i < _assertion_count; ++i) (text += text.empty() ? "?" : " ?") += quoted_(_assertions[i]);
    _assertion_count = 0;
    if (error_.code == 0) return text;
    (text += text.empty() ? "!" : " !") += std::to_string(error_.code) + ' ' + error_.function;
    for (int i = 0; i < error_.arg_count; ++i) text += ' ' + quoted_(error_.args[i]);
    return text;
}
