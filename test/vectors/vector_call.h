// One case of a vector file: its inputs, the call, and what the call gave as text. vectors/README.md has the
// format.
//
// What a call can unwind over is plain memory: inputs live in a buffer of the case, texts are made
// afterwards.

#ifndef DV_TEST_VECTOR_CALL_H
#define DV_TEST_VECTOR_CALL_H

#include <cstdint>
#include <string>
#include <string_view>

#include "dvtypes/base.h"
#include "dvtypes/datetime.h"
#include "dvtypes/interval.h"
#include "dvtypes/number.h"
#include "dvtypes/timestamp_tz.h"
#include "raise.h"

namespace dv::test {

struct vector_text {
    const char *data;  // NULL for the input null; behind its end is memory that must not be touched
    int size;          // the text's, or the one given behind it: "abc":0
};

class vector_call {
  public:
    // inputs: what stands on the line between the operation and "=".
    explicit vector_call(std::string_view inputs) : rest_(inputs) {}
    vector_call(const vector_call &) = delete;
    vector_call &operator=(const vector_call &) = delete;

    // The next input. Records are NULL for null, and what is no such input fails the case.
    bool has_more();
    int64_t integer();
    int64_t integer_or(int64_t otherwise) { return has_more() ? integer() : otherwise; }
    std::string_view word();
    bool takes(std::string_view word);                             // the next input, if it is this word
    vector_text text() { return text_(/*is_ended=*/false); }       // NUL only where its size is 0 or less
    vector_text ended_text() { return text_(/*is_ended=*/true); }  // by NUL
    uint8_t *bytes(size_t size);  // x and hexadecimal digits; at least size bytes are there
    vector_text fenced_bytes();   // x and hexadecimal digits, of any length
    long double extended_float();
    template <typename Record>
    Record *record() {  // by its bytes, or readable
        if (is_raw_()) return reinterpret_cast<Record *>(bytes(sizeof(Record)));
        auto *const record = static_cast<Record *>(memory(sizeof(Record)));
        const std::string_view field = next_();
        if (!read_(field, record)) fail("no such record: " + std::string(field));
        return record;
    }
    void *memory(size_t size);  // zeros, to the end of the case

    // Runs fn() under a recovery point. True when it returned; else what it raised becomes the result's end.
    template <typename F>
    bool run(F &&fn) {
        begin_watching_();
        const int code = raise_of(fn, &error_);
        dv_assert_set_reporter(nullptr);
        return code == 0;
    }

    bool has_raised() const { return error_.code != 0; }

    void put(int64_t value);
    void put_bytes(const void *bytes, size_t size);
    void put_bits(uint32_t bits);  // the most significant byte first
    void put_bits(uint64_t bits);
    void put_extended_float(long double value);  // of at most 64 significant bits
    void put_text(std::string_view text);
    void put_word(std::string_view word);
    void fail(std::string_view why);

    // Everything that was put, then the assertions, then the error.
    std::string result() const;

  private:
    std::string_view next_();
    vector_text text_(bool is_ended);
    bool is_raw_();
    static bool read_(std::string_view, number_t *);
    static bool read_(std::string_view, dv_date_t *);
    static bool read_(std::string_view, dv_time_t *);
    static bool read_(std::string_view, dv_timestamp_t *);
    static bool read_(std::string_view, dv_ts_ltz_t *);
    static bool read_(std::string_view, dv_ts_tz_t *);
    static bool read_(std::string_view, timezone_t *);
    static bool read_(std::string_view, dv_itv_ytm_t *);
    static bool read_(std::string_view, dv_itv_dts_t *);
    static void begin_watching_();

    std::string_view rest_;
    std::string output_, failure_;
    dv_error_t error_{};
    size_t used_ = 0, fenced_ = 0;
    alignas(16) uint8_t memory_[1 << 15];
};

}  // namespace dv::test

#endif  // DV_TEST_VECTOR_CALL_H
