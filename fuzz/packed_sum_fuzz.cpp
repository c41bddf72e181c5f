// Packed sums, of NUMBER and of decimals: any bytes, and what is done with a sum that was read. The first
// byte tells which, the second how many bytes are the packed sum; two records or decimals come behind.
//
// Properties: the bytes are refused and the sum stays, or the sum packs to the same bytes; a total with
// memory beside it and one without hold the same; what is added and taken out again leaves the bytes that
// were; merging is adding; results are a value or a documented code.

#include "dvtypes/column.h"
#include "fuzz_input.h"
#include "raise.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

using bytes_t = std::vector<uint8_t>;

constexpr int _result_codes[] = {0, -5068, -5069};

bytes_t packed_(const number_total_t &total) {
    bytes_t bytes(DV_TOTAL_PACKED_MAX);
    const int64_t size = number_total_pack(&total, DV_TOTAL_PACKED_MAX, bytes.data());
    require(size <= DV_TOTAL_PACKED_MAX, "the size of a packed total", size);
    bytes.resize(static_cast<size_t>(size));
    return bytes;
}

bytes_t packed_(const dv_decimal_sum_t &sum, int scale) {
    bytes_t bytes(DV_DECIMAL_SUM_PACKED_MAX);
    const int64_t size = dv_decimal_sum_pack(&sum, scale, DV_DECIMAL_SUM_PACKED_MAX, bytes.data());
    require(size <= DV_DECIMAL_SUM_PACKED_MAX, "the size of a packed sum", size);
    bytes.resize(static_cast<size_t>(size));
    return bytes;
}

// A total that gets the memory it asks for, whatever is done with it.
struct grown_total_t {
    number_total_t total{};
    std::vector<uint64_t> memory{};

    explicit grown_total_t(bool has_memory) {
        if (has_memory) attach(DV_TOTAL_MEMORY_MAX);
    }
    grown_total_t(const grown_total_t &) = delete;
    grown_total_t &operator=(const grown_total_t &) = delete;

    void attach(int64_t size) {
        std::vector<uint64_t> larger(static_cast<size_t>(size) / sizeof(uint64_t));
        number_total_attach(&total, size, larger.data());
        memory = std::move(larger);
    }
    // The code of a call that returns the bytes of memory that the total needs; nothing changes where it
    // asks or raises.
    template <typename F>
    int operator()(F &&call) {
        int64_t wanted = 0;
        const bytes_t before = packed_(total);
        int code = raise_of([&] { wanted = call(total); });
        if (code != 0 || wanted != 0) require(packed_(total) == before, "a total as it was", code);
        if (wanted == 0) return code;
        require(wanted <= DV_TOTAL_MEMORY_MAX, "the memory asked for", wanted);
        attach(wanted);
        code = raise_of([&] { wanted = call(total); });
        require(code == 0 && wanted == 0, "memory asked for is enough", wanted);
        return code;
    }
};

void check_total_(const bytes_t &bytes, const number_t &x, const number_t &y) {
    const auto size = static_cast<int64_t>(bytes.size());
    grown_total_t plain(/*has_memory=*/false), large(/*has_memory=*/true);
    const auto unpack = [&](number_total_t &total) {
        return number_total_unpack(&total, size, bytes.data());
    };
    const int code = plain(unpack), large_code = large(unpack);
    require(code == large_code && (code == 0 || code == -5121), "unpack", code);
    if (code != 0) return;
    require(packed_(plain.total) == bytes && packed_(large.total) == bytes, "packed again", size);

    number_t sum{}, average{};
    require_one_of(_result_codes, "sum", raise_of([&] { number_total_sum(&plain.total, &sum); }));
    require_one_of(_result_codes, "average", raise_of([&] { number_total_average(&plain.total, &average); }));

    const int added = plain([&](number_total_t &total) { return number_total_add(&total, &x); });
    require(added == large([&](number_total_t &total) { return number_total_add(&total, &x); }), "add",
            added);
    const bytes_t with_x = packed_(plain.total);
    require(with_x == packed_(large.total), "the room of a total", added);
    grown_total_t again(/*has_memory=*/false);
    const int read = again([&](number_total_t &total) {
        return number_total_unpack(&total, static_cast<int64_t>(with_x.size()), with_x.data());
    });
    require(read == 0, "a total that was made reads back", read);
    grown_total_t one(/*has_memory=*/false);
    const int alone = one([&](number_total_t &total) { return number_total_sub(&total, &x); });
    if (added == 0 && alone == 0) {
        const int back = plain([&](number_total_t &total) { return number_total_merge(&total, &one.total); });
        require(back == 0 && packed_(plain.total) == bytes, "added and taken out", back);
    }
    plain([&](number_total_t &total) { return number_total_sub(&total, &y); });
    plain([&](number_total_t &total) { return number_total_merge(&total, &total); });
    require_one_of(_result_codes, "sum", raise_of([&] { number_total_sum(&plain.total, &sum); }));
}

void check_decimal_sum_(const bytes_t &bytes, input_t &input) {
    dv_decimal_sum_t sum = {{1, 2, 3}, 4};
    int scale = 5;
    const int code = raise_of(
        [&] { dv_decimal_sum_unpack(&sum, &scale, static_cast<int64_t>(bytes.size()), bytes.data()); });
    if (code != 0) {
        require(code == -5121 && sum.words[0] == 1 && sum.words[1] == 2 && sum.words[2] == 3 &&
                    sum.count == 4 && scale == 5,
                "a sum as it was", code);
        return;
    }
    require(packed_(sum, scale) == bytes, "packed again", scale);

    number_t x{};
    require_one_of(_result_codes, "sum", raise_of([&] { dv_decimal_sum_quotient(&sum, scale, 1, &x); }));
    if (sum.count > 0) {
        require_one_of(_result_codes, "average",
                       raise_of([&] { dv_decimal_sum_quotient(&sum, scale, sum.count, &x); }));
    }
    // Values go in one by one, and as a sum of their own.
    __int128 values[2] = {input.take<__int128>(), input.take<__int128>()};
    dv_decimal_column_t column{};
    column.column.count = 2;
    column.column.stride = column.bytes = sizeof values[0];
    column.column.values = values;
    column.precision = DV_DECIMAL128_PRECISION_MAX;
    column.scale = scale;
    if (sum.count > INT64_MAX - 2) return;
    dv_decimal_sum_t own{}, merged = sum;
    dv_decimal_column_sum(&column, &own);
    dv_decimal_column_sum(&column, &sum);
    dv_decimal_sum_merge(&merged, &own);
    const bytes_t both = packed_(sum, scale);
    require(packed_(merged, scale) == both, "merging is adding", scale);
    const int again = raise_of(
        [&] { dv_decimal_sum_unpack(&merged, &scale, static_cast<int64_t>(both.size()), both.data()); });
    require(again == 0, "a sum that was made reads back", again);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const assertion_watch quiet;  // of records that are none
    input_t input(data, size);
    const bool is_of_decimals = (input.byte() & 1) != 0;
    const std::string_view taken = input.take(input.take<uint16_t>() % (DV_TOTAL_PACKED_MAX + 10));
    bytes_t bytes(taken.begin(), taken.end());
    bytes.reserve(1);  // an address for none
    if (is_of_decimals) {
        check_decimal_sum_(bytes, input);
    } else {
        auto x = input.take<number_t>(), y = input.take<number_t>();
        x.size = static_cast<uint8_t>(x.size % sizeof x);
        y.size = static_cast<uint8_t>(y.size % sizeof y);
        check_total_(bytes, x, y);
    }
    return 0;
}
