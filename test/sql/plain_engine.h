// The smallest engine that runs the catalogue: values in memory, nothing kept from call to call. What another
// adapter does in its own way is here in plain C++.

#ifndef DV_TEST_PLAIN_ENGINE_H
#define DV_TEST_PLAIN_ENGINE_H

#include <cstdlib>
#include <string>
#include <vector>

#include "raise.h"
#include "sql_overload.h"

namespace dv::test {

// What a call came to.
struct answer_t {
    dv::impl::sql_kind kind = dv::impl::SQL_KIND_NONE;  // of the result; NONE: it failed or raised
    std::string text;  // the result's bytes, the failure, or the raised message
    bool operator==(const answer_t &) const = default;
};

class plain_engine {
  public:
    // How many blocks of memory are in use.
    static long blocks() { return _blocks; }

    // Calls the overload that takes the arguments.
    template <typename Row>
    answer_t call(std::span<const Row *const> overloads, const std::vector<dv::impl::sql_value> &args) {
        dv::impl::sql_begin(call_, &_memory);
        for (const dv::impl::sql_value &arg : args) call_.args[call_.argc++] = arg;
        const dv::impl::sql_function *row = dv::impl::sql_resolve(overloads, call_);
        const answer_t answer = row == nullptr ? answer_() : run_(*row);
        const bool is_failure = answer.kind == dv::impl::SQL_KIND_NONE;
        return is_failure && overloads[0]->is_try ? answer_t{dv::impl::SQL_KIND_NULL, ""} : answer;
    }

    // The result of an aggregate's state.
    answer_t value(const dv::impl::sql_aggregate &row, const void *state) {
        dv::impl::sql_begin(call_, &_memory);
        dv_error_t error;
        const int code = raise_of([&] { row.value(call_, state); }, &error);
        return code != 0 ? answer_t{{}, error.message} : answer_();
    }

  private:
    answer_t run_(const dv::impl::sql_function &row) {
        std::vector<uint64_t> object(row.keeper == nullptr ? 0 : row.keeper->size / 8 + 1);
        dv_error_t error;
        const int code = raise_of(
            [&] {
                if (row.keeper != nullptr) row.keeper->make(call_, object.data());
                if (call_.outcome != dv::impl::SQL_GIVEN) return;
                call_.kept = object.data();
                dv::impl::sql_convert(call_, row.signature);
                row.body(call_);
            },
            &error);
        answer_t answer = code != 0 ? answer_t{{}, error.message} : answer_();
        if (row.keeper != nullptr) row.keeper->release(&_memory, object.data());
        if (call_.block != nullptr) free_(&_memory, call_.block, "", 0);
        return answer;
    }

    answer_t answer_() const {
        if (call_.outcome == dv::impl::SQL_FAILED) return {{}, call_.failure};
        if (call_.outcome == dv::impl::SQL_TOO_LONG) return {{}, "too long"};
        return {call_.result.kind, bytes_of_(call_.result)};
    }

    static std::string bytes_of_(const dv::impl::sql_value &value) {
        if (value.kind == dv::impl::SQL_KIND_NULL) return "";
        if (value.kind == dv::impl::SQL_KIND_INTEGER) return std::to_string(value.integer);
        if (value.kind == dv::impl::SQL_KIND_REAL) return std::to_string(value.real);
        if (value.kind == dv::impl::SQL_KIND_TEXT)
            return {value.text.bytes, static_cast<size_t>(value.text.length)};
        uint8_t bytes[dv::impl::SQL_VALUE_SIZE_MAX];
        const int length = dv::impl::sql_type_of(value.kind)->encode(value, bytes);
        return {bytes, bytes + length};
    }

    static void *malloc_(allocator_t *, size_t size, const char *, int) {
        return ++_blocks, std::malloc(size);
    }
    static void *calloc_(allocator_t *, size_t count, size_t size, const char *, int) {
        return ++_blocks, std::calloc(count, size);
    }
    static void *realloc_(allocator_t *, void *block, size_t size, const char *, int) {
        _blocks += block == nullptr ? 1 : 0;
        return std::realloc(block, size);
    }
    static void free_(allocator_t *, void *block, const char *, int) {
        _blocks -= block == nullptr ? 0 : 1;
        std::free(block);
    }
    static void throw_(allocator_t *, const char *, int) { std::abort(); }

    static inline long _blocks = 0;
    static inline allocator_t _memory = {malloc_, calloc_, realloc_, free_, throw_};
    dv::impl::sql_call call_;
};

}  // namespace dv::test

#endif  // DV_TEST_PLAIN_ENGINE_H
