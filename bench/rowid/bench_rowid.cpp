// Rowids to text and back. The text form is ours alone, so the peers write and read the same record in the
// forms that they have: Boost.Beast's base 64 of its 12 bytes (16 characters, whole bytes and no fields), and
// <charconv>'s decimal numbers with points between (up to 33 characters). All readers check what they read.

#include <benchmark/benchmark.h>

#include <boost/beast/core/detail/base64.hpp>
#include <charconv>
#include <cstring>
#include <random>
#include <vector>

#include "dvtypes/erowid.h"
#include "dvtypes/nerowid.h"
#include "gauged.h"
#include "operand_count.h"

namespace {

constexpr size_t _count = dv::bench::operand_count;
constexpr size_t _text_size = 40;

struct text_t {
    char bytes[_text_size];
    size_t length;
};

struct erowid {
    using value_t = rowid_t;
    static void write(const rowid_t &from, text_t &to) {
        erowid_new(reinterpret_cast<erowid_t *>(to.bytes), from.sgmt, from.file, from.block, from.row);
    }
    static bool read(const text_t &from, rowid_t &to) {
        erowid_get_rowid(reinterpret_cast<const erowid_t *>(from.bytes), &to);
        return true;  // it raises otherwise
    }
};

struct nerowid {
    using value_t = nrowid_t;
    static void write(nrowid_t from, text_t &to) {
        nerowid_new(reinterpret_cast<nerowid_t *>(to.bytes), from);
    }
    static bool read(const text_t &from, nrowid_t &to) {
        to = 0;
        nerowid_get_rowid(reinterpret_cast<const nerowid_t *>(from.bytes), &to);
        return true;
    }
};

template <typename Value>
struct beast {
    using value_t = Value;
    static void write(const Value &from, text_t &to) {
        to.length = boost::beast::detail::base64::encode(to.bytes, &from, sizeof from);
    }
    static bool read(const text_t &from, Value &to) {
        const auto done = boost::beast::detail::base64::decode(&to, from.bytes, from.length);
        return done.first == sizeof to;
    }
};

char *put_number_(char *to, char *end, auto number, char behind) {
    to = std::to_chars(to, end, number).ptr;
    *to = behind;
    return to + 1;
}

// Returns where the text goes on, NULL when there is no number that fits and is followed by `behind`.
const char *get_number_(const char *from, const char *end, auto &number, char behind) {
    if (from == nullptr) return nullptr;
    const auto [next, code] = std::from_chars(from, end, number);
    return code == std::errc() && next != end && *next == behind ? next + 1 : nullptr;
}

struct charconv_rowid {
    using value_t = rowid_t;
    static void write(const rowid_t &from, text_t &to) {
        char *const end = to.bytes + _text_size;
        char *at = put_number_(to.bytes, end, from.sgmt, '.');
        at = put_number_(at, end, from.file, '.');
        at = put_number_(at, end, from.block, '.');
        to.length = static_cast<size_t>(put_number_(at, end, from.row, ';') - to.bytes);
    }
    static bool read(const text_t &from, rowid_t &to) {
        const char *const end = from.bytes + from.length;
        const char *at = get_number_(from.bytes, end, to.sgmt, '.');
        at = get_number_(at, end, to.file, '.');
        at = get_number_(at, end, to.block, '.');
        return get_number_(at, end, to.row, ';') == end;
    }
};

struct charconv_nrowid {
    using value_t = nrowid_t;
    static void write(nrowid_t from, text_t &to) {
        char *const end = put_number_(to.bytes, to.bytes + _text_size, from, ';');
        to.length = static_cast<size_t>(end - to.bytes);
    }
    static bool read(const text_t &from, nrowid_t &to) {
        const char *const end = from.bytes + from.length;
        return get_number_(from.bytes, end, to, ';') == end;
    }
};

// Random values of every length, so that texts of decimal numbers have every length, too.
template <typename Value>
std::vector<Value> values_() {
    std::mt19937_64 source(71);
    std::vector<Value> values(_count);
    for (Value &value : values) {
        if constexpr (std::is_same_v<Value, rowid_t>) {
            value.sgmt = static_cast<uint32_t>(source()) >> source() % 32;
            value.block = static_cast<uint32_t>(source()) >> source() % 32;
            value.file = static_cast<uint16_t>(source() % 65536 >> source() % 16);
            value.row = static_cast<uint16_t>(source() % 65536 >> source() % 16);
        } else {
            value = source() >> source() % 64;
        }
    }
    return values;
}

template <typename Library>
std::vector<text_t> texts_(const std::vector<typename Library::value_t> &values) {
    std::vector<text_t> texts(values.size());
    for (size_t i = 0; i < values.size(); ++i) Library::write(values[i], texts[i]);
    return texts;
}

template <typename Library>
void write_(benchmark::State &state) {
    const auto values = values_<typename Library::value_t>();
    size_t i = 0;
    text_t text;
    for (auto _ : dv::bench::gauged(state)) {
        Library::write(values[i], text);
        benchmark::DoNotOptimize(text);
        i = (i + 1) % _count;
    }
}

template <typename Library>
void read_(benchmark::State &state) {
    using value_t = typename Library::value_t;
    const auto values = values_<value_t>();
    const auto texts = texts_<Library>(values);
    value_t value;
    for (size_t i = 0; i < _count; ++i) {
        if (!Library::read(texts[i], value) || std::memcmp(&value, &values[i], sizeof value) != 0)
            return state.SkipWithError("it does not read what it wrote");
    }
    size_t i = 0;
    for (auto _ : dv::bench::gauged(state)) {
        benchmark::DoNotOptimize(Library::read(texts[i], value));
        benchmark::DoNotOptimize(value);
        i = (i + 1) % _count;
    }
}

BENCHMARK(write_<erowid>)->Name("write/rowid/dvtypes");
BENCHMARK(write_<beast<rowid_t>>)->Name("write/rowid/beast_base64");
BENCHMARK(write_<charconv_rowid>)->Name("write/rowid/charconv");
BENCHMARK(read_<erowid>)->Name("read/rowid/dvtypes");
BENCHMARK(read_<beast<rowid_t>>)->Name("read/rowid/beast_base64");
BENCHMARK(read_<charconv_rowid>)->Name("read/rowid/charconv");
BENCHMARK(write_<nerowid>)->Name("write/row_number/dvtypes");
BENCHMARK(write_<beast<nrowid_t>>)->Name("write/row_number/beast_base64");
BENCHMARK(write_<charconv_nrowid>)->Name("write/row_number/charconv");
BENCHMARK(read_<nerowid>)->Name("read/row_number/dvtypes");
BENCHMARK(read_<beast<nrowid_t>>)->Name("read/row_number/beast_base64");
BENCHMARK(read_<charconv_nrowid>)->Name("read/row_number/charconv");

}  // namespace

BENCHMARK_MAIN();
