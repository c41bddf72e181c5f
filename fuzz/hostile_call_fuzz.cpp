// Every exported function with hostile arguments. The functions are those that the public headers declare:
// the build makes their table (exported_functions.inc), and what an argument is follows from its type alone.
// The input is a function, then the arguments.
//
// A pointer is NULL, or the address of a block of exactly the size of what it points to, with any bytes in
// it: a record, a number, a text of up to 300 bytes. Numbers are any, 0 and the extremes of int among them.
// The length or size of a text is one where its name says so: none is larger than the text, which ends with a
// NUL where it is below 1. A larger one would be the caller's lie, which no function can find out; but where
// the headers promise to look at so many bytes at most, a text of as many may come with any length. Format
// models are compiled ones, regions those of the library; columns are those of hostile_column.h.
//
// Properties: the call comes back, by itself or with a code that its header names; constant operands stay.

#include <deque>
#include <tuple>
#include <type_traits>
#include <utility>

#include "../test/datetime_fmt/model_text.h"
#include "exported_headers.inc"
#include "fuzz_input.h"
#include "hostile_column.h"
#include "null_argument.h"
#include "public_headers.h"

using namespace dv::fuzz;
using namespace dv::test;

namespace {

constexpr int _text_size_more = 300;

// What looks at the first DV_DATETIME_TEXT_MAX bytes of its text, whatever its length.
constexpr std::string_view _looking_at_the_first[] = {"dv_date_from_str",      "dv_time_from_str",
                                                      "dv_timestamp_from_str", "dv_ts_tz_from_str",
                                                      "dv_ts_ltz_from_str",    "dv_timestamp_check_literal"};

template <typename T>
constexpr bool is_text = std::is_pointer_v<T> &&
                         sizeof(std::conditional_t<std::is_pointer_v<T>, std::remove_pointer_t<T>, int>) ==
                             1 &&
                         std::is_integral_v<std::remove_pointer_t<T>>;

template <typename T>
using target_t = std::remove_const_t<std::remove_pointer_t<T>>;

const dt_fmt_ctx_t &model_(uint8_t which) {
    static std::deque<compiled_model> models;
    if (models.empty()) {
        for (const int type : {DV_TYPE_DATE, DV_TYPE_TIME, DV_TYPE_TIMESTAMP, DV_TYPE_TS_TZ}) {
            for (const bool is_reading : {false, true}) {
                for (const char *text :
                     {"YYYY-MM-DD", "HH24:MI:SS", "DAY, DD MONTH SYYYY BC", "HH.MI.SSXFF AM", "fmDdspth RM",
                      "FXYYYYDDDSSSSS", "YYYY-MM-DD HH24:MI:SS.FF TZR TZD", "RR/IW TZH:TZM"}) {
                    models.emplace_back(text, is_reading, type);
                    if (models.back().error.code != 0) models.pop_back();
                }
            }
        }
    }
    return models[which % models.size()].ctx;
}

// The memory of one call.
struct call_t {
    input_t &input;
    std::string_view function;
    const std::vector<std::string> &parameters;
    bool has_texts, texts_end;
    int text_size;
    std::deque<std::vector<char>> blocks{};
    struct constant_t {
        const std::vector<char> *block;
        std::vector<char> before;
    };
    std::vector<constant_t> constants{};
    hostile_columns columns{input};
    int element_count = 0;  // of the model in the call's context
    size_t place = 0;       // of the argument

    char *new_block(std::vector<char> bytes, bool is_constant) {
        std::vector<char> &kept = blocks.emplace_back(std::move(bytes));
        kept.shrink_to_fit();
        if (is_constant) constants.push_back({&kept, kept});
        return kept.data();
    }
    std::vector<char> any_bytes(size_t size) {
        std::vector<char> bytes(size);
        const std::string_view given = input.take(size);
        std::copy(given.begin(), given.end(), bytes.begin());
        return bytes;
    }
    long long any_number() {
        constexpr long long extremes[] = {0, -1, INT32_MIN, INT32_MAX, 1, 9, 10, -9999, INT64_MIN, INT64_MAX};
        const uint8_t choice = input.byte();
        const long long number = choice < std::size(extremes) ? extremes[choice]
                                 : choice < 128               ? choice - 64
                                                              : input.take<int32_t>();
        return is_length_() && !may_be_length_(static_cast<int>(number)) ? cut_(number) : number;
    }
    char *any_text(bool is_constant) {
        std::vector<char> text = any_bytes(static_cast<size_t>(text_size));
        if (texts_end) text.back() = '\0';
        return new_block(std::move(text), is_constant);
    }
    // Beside a context it is the index of an element.
    int *any_index() {
        auto *const index = reinterpret_cast<int *>(new_block(any_bytes(sizeof(int)), /*is_constant=*/false));
        if (element_count > 0)
            *index = static_cast<int>(static_cast<unsigned>(*index) % static_cast<unsigned>(element_count));
        return index;
    }
    bool is_length_() const {
        return has_texts && (parameters[place].ends_with("len") || parameters[place].ends_with("size"));
    }
    bool may_be_length_(int number) const {
        if (number <= 0) return texts_end;
        const bool is_cut = parameters[place] == "str_len" && text_size >= DV_DATETIME_TEXT_MAX;
        return is_cut && std::any_of(std::begin(_looking_at_the_first), std::end(_looking_at_the_first),
                                     [&](std::string_view name) { return function.starts_with(name); });
    }
    long long cut_(long long number) const {
        return 1 + static_cast<long long>(static_cast<unsigned long long>(number) %
                                          static_cast<unsigned>(text_size));
    }
    dt_fmt_parse_ctx_t *any_context() {
        const dt_fmt_ctx_t &model = model_(input.byte());
        auto *const context = reinterpret_cast<dt_fmt_parse_ctx_t *>(
            new_block(std::vector<char>(sizeof(dt_fmt_parse_ctx_t)), /*is_constant=*/false));
        dt_parse_ctx_init(context, &model, any_text(/*is_constant=*/false), text_size, "", 0,
                          input.byte() & 1);
        element_count = model.token_cnt;
        context->cur_token_info = &model.token_infos[input.byte() % model.token_cnt];
        return context;
    }
};

template <typename T>
T any_argument_(call_t &call) {
    if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(call.input.take<double>());
    } else if constexpr (std::is_class_v<T>) {
        return call.input.take<T>();
    } else if constexpr (std::is_enum_v<T>) {
        return static_cast<T>(call.any_number() & 7);  // others the compiler may take for impossible
    } else if constexpr (!std::is_pointer_v<T>) {
        return static_cast<T>(call.any_number());
    } else {
        constexpr bool is_constant = std::is_const_v<std::remove_pointer_t<T>>;
        if (call.input.byte() == 0xFF) return nullptr;
        if constexpr (std::is_same_v<T, const dt_fmt_ctx_t *>) {
            return &model_(call.input.byte());
        } else if constexpr (std::is_same_v<T, dt_fmt_parse_ctx_t *>) {
            return call.any_context();
        } else if constexpr (std::is_same_v<T, const tz_region_t *>) {
            return &region_tab_[call.input.take<uint16_t>() % TZ_ID_MAX];
        } else if constexpr (std::is_same_v<T, const dv_column_t *>) {
            return call.columns.operand();
        } else if constexpr (std::is_same_v<T, dv_column_t *>) {
            return call.columns.result();
        } else if constexpr (std::is_same_v<T, dv_column_faults_t *>) {
            return call.columns.faults();
        } else if constexpr (std::is_same_v<target_t<T>, dv_decimal_column_t>) {
            return call.columns.decimals(/*is_result=*/!is_constant);
        } else if constexpr (std::is_same_v<target_t<T>, number_total_t>) {
            return call.columns.total();
        } else if constexpr (std::is_same_v<T, const number_totals_t *>) {
            return call.columns.totals();
        } else if constexpr (std::is_same_v<T, const int32_t *>) {
            return call.columns.groups();
        } else if constexpr (std::is_same_v<T, const dv_key_part_t *>) {
            return call.columns.key_part();
        } else if constexpr (std::is_same_v<T, allocator_t *>) {
            return _system_allocator;
        } else if constexpr (std::is_same_v<T, int *>) {
            return call.any_index();
        } else if constexpr (is_text<T>) {
            return reinterpret_cast<T>(call.any_text(is_constant));
        } else {
            return reinterpret_cast<T>(call.new_block(call.any_bytes(sizeof(target_t<T>)), is_constant));
        }
    }
}

template <typename T>
T argument_(call_t &call) {
    const T argument = any_argument_<T>(call);
    ++call.place;
    return argument;
}

// least_size: bytes that a text must have, whatever the call says of it.
template <typename R, typename... Args>
int call_(R (*function)(Args...), std::string_view name, input_t &input, int least_size) {
    constexpr bool has_size = (std::is_same_v<Args, int> || ... || false);
    const bool texts_end = (input.byte() & 1) != 0 || !has_size;
    const int size = least_size + input.take<uint16_t>() % _text_size_more;
    const std::vector<std::string> &parameters = documented_functions().at(std::string(name)).parameters;
    call_t call{input, name, parameters, (is_text<Args> || ... || false), texts_end, size};
    const std::tuple<Args...> arguments{argument_<Args>(call)...};
    const int code = raise_of([&] { std::apply(function, arguments); });
    for (const call_t::constant_t &constant : call.constants)
        require(*constant.block == constant.before, "a constant operand", code);
    return code;
}

template <auto function>
int call_by_address_(input_t &input) {
    const std::string_view name = name_of<function>();
    if (name.find("_column_") != name.npos) return call_(function, name, input, hostile_columns::bitmap_size);
    const bool has_own_size = name == "timezone_get_zone_name" || name.ends_with("_oracle_format");
    return call_(function, name, input, has_own_size ? TZ_NAME_TEXT_SIZE : 1);
}

struct function_t {
    const char *name;
    int (*call)(input_t &input);
};
constexpr function_t _functions[] = {
#include "exported_functions.inc"
};

// Operations on columns fail with the codes of the function for one value, and with what every column can
// have.
bool is_documented_(const std::string &function, int code) {
    if (code == 0 || documented_codes(function).contains(code)) return true;
    const size_t place = function.find("_column_");
    if (place == function.npos) return false;
    if (function.starts_with("dv_decimal_") && (code == -5111 || code == -5068)) return true;
    const std::string single = function.substr(0, place) + function.substr(place + strlen("_column"));
    return code == -5120 || code == -3005 || documented_codes(single).contains(code);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const assertion_watch quiet;
    input_t input(data, size);
    const function_t &function = _functions[input.take<uint16_t>() % std::size(_functions)];
    const int code = function.call(input);
    require(is_documented_(function.name, code), function.name, code);
    return 0;
}
