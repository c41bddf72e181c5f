// Tables of the character sets that libc's iconv knows, read out of it row by row as they are needed.
//
// A converter of iconv keeps state, belongs to one thread, stops at each character that it does not know, and
// for some sets holds characters back to compose them. Tables have none of this. A row of 256 entries is read
// when one of them is first needed, by asking a converter for each, from its initial state; from then on
// conversion is a look-up that any number of threads do at once. The tables are zero-filled memory of the
// library: pages that nobody uses take no memory.
//
// A sequence counts as one character when it becomes exactly one unit. That covers CP1258 as well, where a
// base letter (ASCII letters too) and the tone mark behind it are the two bytes of one composed letter.
// Converters are opened once for each set and direction.

#include "charset_table.h"

#include <iconv.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <cerrno>

#include "../common/datatype/error.h"

using namespace dv::impl;

namespace {

struct set_t {
    const char *names[2];  // iconv's, in order of preference
    int first_lead;        // lowest first byte of a pair; 0x100: the set has single bytes only
    int triple_lead;       // first byte of three, -1: none
};

constexpr auto _sets = [] {
    std::array<set_t, DVSTR_CHARSET_MAX> sets{};
    sets[DVSTR_CHARSET_EUCKR] = {{"EUC-KR", "EUCKR"}, 0x80, -1};
    sets[DVSTR_CHARSET_MSWIN949] = {{"CP949", "UHC"}, 0x80, -1};
    sets[DVSTR_CHARSET_SJIS] = {{"CP932", "MS932"}, 0x80, -1};
    sets[DVSTR_CHARSET_EUCJP] = {{"EUC-JP", "EUCJP"}, 0x80, 0x8F};
    sets[DVSTR_CHARSET_BIG5] = {{"CP950", "BIG5"}, 0x80, -1};
    sets[DVSTR_CHARSET_GBK] = {{"CP936", "GBK"}, 0x80, -1};
    sets[DVSTR_CHARSET_ISO8859_1] = {{"ISO-8859-1", "LATIN1"}, 0x100, -1};
    sets[DVSTR_CHARSET_MSWIN1252] = {{"CP1252", "WINDOWS-1252"}, 0x100, -1};
    sets[DVSTR_CHARSET_MSWIN1251] = {{"CP1251", "WINDOWS-1251"}, 0x100, -1};
    sets[DVSTR_CHARSET_KOI8R] = {{"KOI8-R", "KOI8R"}, 0x100, -1};
    sets[DVSTR_CHARSET_MSWIN1258] = {{"CP1258", "WINDOWS-1258"}, 'A', -1};
    return sets;
}();

constexpr int _first_trail = 0x30;  // no set has a lower second byte

// In memory that is zero at first, not in the file.
charset_table_t _tables[DVSTR_CHARSET_MAX];
std::array<uint16_t, 0x10000> _triples;  // by second byte << 8 | third byte, of the one set that has them
charset_row_flags_t _has_triples;        // by second byte
pthread_mutex_t _fill_lock = PTHREAD_MUTEX_INITIALIZER;

static_assert(std::count_if(_sets.begin(), _sets.end(), [](const set_t &set) {
                  return set.names[0] != nullptr && set.triple_lead >= 0;
              }) == 1);

// iconv_open's answer when it fails: POSIX casts it like this.
const iconv_t _no_converter = reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)

// One direction of iconv, asked about one short sequence at a time. All zero: not open.
class converter_t {
  public:
    // False when it is not open and cannot be opened.
    bool open(const char *const (&to)[2], const char *const (&from)[2]) {
        if (is_open_) return true;
        converter_ = iconv_open(to[0], from[0]);
        if (converter_ == _no_converter) converter_ = iconv_open(to[1], from[1]);
        is_open_ = converter_ != _no_converter;
        return is_open_;
    }
    void close() {
        if (is_open_) iconv_close(converter_);
        is_open_ = false;
    }

    // The bytes that a whole sequence becomes, as a big-endian number with their count in size; 0 bytes when
    // it is not convertible exactly.
    uint32_t convert(std::array<uint8_t, 3> src, size_t src_size, size_t &size) {
        std::array<char, 8> dst;  // a sequence of one character becomes at most four bytes
        char *in = reinterpret_cast<char *>(src.data());
        char *out = dst.data();
        size_t in_left = src_size;
        size_t out_left = dst.size();
        iconv(converter_, nullptr, nullptr, nullptr, nullptr);  // to the initial state
        const bool is_exact = iconv(converter_, &in, &in_left, &out, &out_left) == 0 && in_left == 0 &&
                              iconv(converter_, nullptr, nullptr, &out, &out_left) == 0;
        size = is_exact ? dst.size() - out_left : 0;

        uint32_t bytes = 0;
        for (size_t i = 0; i < size; ++i) bytes = bytes << 8 | static_cast<uint8_t>(dst[i]);
        return bytes;
    }

    // The unit that a whole sequence becomes when it is one character, else 0.
    uint16_t unit(std::array<uint8_t, 3> src, size_t src_size) {
        size_t size = 0;
        const uint32_t bytes = convert(src, src_size, size);
        return size == 2 ? static_cast<uint16_t>(bytes) : uint16_t{0};
    }

  private:
    iconv_t converter_;
    bool is_open_;
};

constexpr const char *_ucs2[2] = {"UCS-2BE", "UTF-16BE"};

// Opened when first needed, used under the lock, closed when the library is unloaded.
enum direction_t { FROM_UCS2, TO_UCS2, DIRECTION_MAX };
converter_t _converters[DVSTR_CHARSET_MAX][DIRECTION_MAX];

// The converter, under the lock. NULL when it cannot be opened, with the reason in error.
converter_t *open_(dvstr_charset_e set, direction_t direction, int &error) {
    const auto &names = _sets[set].names;
    converter_t &converter = _converters[set][direction];
    error = 0;
    if (direction == FROM_UCS2 ? converter.open(names, _ucs2) : converter.open(_ucs2, names))
        return &converter;
    error = errno == EINVAL ? DV_ERR_CHARSET_UNUSABLE : DV_ERR_NO_MEMORY;
    return nullptr;
}

// Runs fill_row(converter) once, under the lock. Returns 0, or the code of why it could not.
template <typename F>
int fill_once_(std::atomic<bool> &is_done, dvstr_charset_e set, direction_t direction, F fill_row) {
    int error = 0;
    pthread_mutex_lock(&_fill_lock);
    if (!is_done.load(std::memory_order_relaxed)) {
        converter_t *const converter = open_(set, direction, error);
        if (converter != nullptr) fill_row(*converter);
        is_done.store(converter != nullptr, std::memory_order_release);
    }
    pthread_mutex_unlock(&_fill_lock);
    return error;
}

// At the caller's place, with the set's name if it is the set that is at fault.
void check_filled_(int error, dvstr_charset_e set, const char *function = __builtin_FUNCTION()) {
    const error_at at(error, __builtin_FILE(), __builtin_LINE(), function);
    if (error == DV_ERR_CHARSET_UNUSABLE) raise(at, _charset_info[set].name);
    if (error != 0) raise(at);
}

[[gnu::destructor]] void close_converters_() {
    pthread_mutex_lock(&_fill_lock);
    for (auto &directions : _converters) {
        for (converter_t &converter : directions) converter.close();
    }
    pthread_mutex_unlock(&_fill_lock);
}

}  // namespace

dvstr_charset_e charset_table_t::set_() const { return static_cast<dvstr_charset_e>(this - _tables); }

bool charset_table_t::is_usable() {
    int error = 0;
    pthread_mutex_lock(&_fill_lock);
    const bool is_open =
        open_(set_(), FROM_UCS2, error) != nullptr && open_(set_(), TO_UCS2, error) != nullptr;
    pthread_mutex_unlock(&_fill_lock);
    if (error == DV_ERR_NO_MEMORY) raise(error);
    return is_open;
}

void charset_table_t::fill_units(size_t row) {
    const int error = fill_once_(has_units_[row], set_(), FROM_UCS2, [&](converter_t &from_ucs2) {
        if (row >= 0xD8 && row <= 0xDF) return;  // surrogates
        for (size_t low = row == 0 ? 0x80 : 0; low <= 0xFF; ++low) {
            size_t size = 0;
            const std::array<uint8_t, 3> src = {static_cast<uint8_t>(row), static_cast<uint8_t>(low)};
            const uint32_t bytes = from_ucs2.convert(src, 2, size);
            if (size >= 1 && size <= 3) bytes_[row << 8 | low] = static_cast<uint32_t>(size) << 24 | bytes;
        }
    });
    check_filled_(error, set_());
}

// ASCII characters have their bytes in a set that is not usable, too.
void charset_table_t::fill_lead(uint8_t lead) {
    const set_t &set = _sets[set_()];
    const int error = fill_once_(has_lead_[lead], set_(), TO_UCS2, [&](converter_t &to_ucs2) {
        if (lead >= 0x80) single_[lead] = to_ucs2.unit({lead}, 1);
        bool is_lead = lead >= 0x80 && single_[lead] == 0;  // of pairs, if only of ones not assigned yet
        for (int second = _first_trail; second <= 0xFF && lead >= set.first_lead; ++second) {
            const uint16_t unit = to_ucs2.unit({lead, static_cast<uint8_t>(second)}, 2);
            pair_[static_cast<size_t>(lead << 8 | second)] = unit;
            is_lead = is_lead || unit != 0;
        }
        const int longest = is_lead && lead >= set.first_lead ? 2 : 1;
        longest_[lead] = static_cast<uint8_t>(lead == set.triple_lead ? 3 : longest);
    });
    if (lead >= 0x80) check_filled_(error, set_());
}

int charset_table_t::triple(uint8_t lead, uint8_t second, uint8_t third) {
    std::atomic<bool> &is_ready = _has_triples[second];
    const auto fill_row = [&](converter_t &to_ucs2) {
        for (size_t i = 0x80; i <= 0xFF; ++i) {
            _triples[static_cast<size_t>(second) << 8 | i] =
                to_ucs2.unit({lead, second, static_cast<uint8_t>(i)}, 3);
        }
    };
    if (!is_ready.load(std::memory_order_acquire))
        check_filled_(fill_once_(is_ready, set_(), TO_UCS2, fill_row), set_());
    return _triples[static_cast<size_t>(second << 8 | third)];
}

charset_table_t *dv::impl::charset_table(dvstr_charset_e set) { return &_tables[set]; }

extern "C" int dv_charset_is_usable(dvstr_charset_t set) {
    if (set < 0 || set >= DVSTR_CHARSET_MAX) return 0;
    if (set == DVSTR_CHARSET_ASCII || set == DVSTR_CHARSET_UTF8) return 1;
    return _tables[set].is_usable() ? 1 : 0;
}
