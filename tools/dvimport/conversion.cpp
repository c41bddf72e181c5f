// A step runs under a recovery point over all texts; what it leaves is not asked of the next one either.

#include "conversion.h"

#include <cstring>
#include <variant>

#include "dvtypes/base.h"
#include "sql_overload.h"

namespace dv::import {

namespace {

constexpr size_t _text_size_max = 4096;  // a longer text is no date and hardly a number

impl::sql_value value_of_(const std::variant<std::string, int> &constant) {
    const auto *text = std::get_if<std::string>(&constant);
    return text != nullptr ? impl::sql_text_value(text->data(), static_cast<int>(text->size()))
                           : impl::sql_integer(std::get<int>(constant));
}

// An argument of which the kind alone counts.
impl::sql_value any_of_(impl::sql_kind kind) {
    impl::sql_value value = impl::sql_text_value("", 0);
    value.kind = kind;
    return value;
}

// The row that takes a call; NULL: there is none, or the call has failed.
const impl::sql_function *row_of_(const std::string &name, impl::sql_call &call) {
    std::vector<const impl::sql_function *> overloads;
    impl::sql_for_each(impl::catalogue.functions, [&](const impl::sql_function &row) {
        if (name == row.signature.name && impl::sql_param_count(row.signature) == call.argc)
            overloads.push_back(&row);
    });
    if (overloads.empty()) return nullptr;
    return impl::sql_resolve<impl::sql_function>(overloads, call);
}

// Runs a function under a recovery point. False: it raised.
template <typename Run>
bool is_done_(const Run &run) {
    dv_error_t error;
    const auto body = [](void *arg) { (*static_cast<const Run *>(arg))(); };
    return dv_protect(body, const_cast<Run *>(&run), &error) == 0;
}

void set_bit_(std::vector<uint8_t> &bits, size_t i) {
    bits[i / 8] = static_cast<uint8_t>(bits[i / 8] | 1 << i % 8);
}

}  // namespace

conversion::step::~step() {
    if (!kept.empty()) row->keeper->release(call.memory, kept.data());
}

std::unique_ptr<conversion> conversion::of(const column &what) {
    auto made = std::make_unique<conversion>();
    impl::sql_kind kind = impl::SQL_KIND_TEXT;
    for (const call &each : what.calls) {
        made->steps_.push_back(std::make_unique<step>());
        step &next = *made->steps_.back();
        if (!made->prepare_(next, each, kind)) return nullptr;
        kind = next.row->signature.result;
    }
    return made->steps_.empty() ? nullptr : std::move(made);
}

// The constants live as long as the column.
bool conversion::prepare_(step &of, const call &what, impl::sql_kind kind) {
    impl::sql_begin(of.call, _system_allocator);
    of.call.args[of.call.argc++] = any_of_(kind);
    for (const auto &constant : what.constants) of.call.args[of.call.argc++] = value_of_(constant);
    of.row = row_of_(what.function, of.call);
    if (of.row == nullptr || of.row->column_body == nullptr) return false;
    const impl::sql_keeper *const keeper = of.row->keeper;
    if (keeper == nullptr) return true;
    of.kept.resize(keeper->size / sizeof(uint64_t) + 1);
    of.call.kept = of.kept.data();
    return is_done_([&] { keeper->make(of.call, of.call.kept); }) && of.call.outcome == impl::SQL_GIVEN;
}

void conversion::clear() {
    texts_.clear();
    offsets_.resize(1);
    stored_.clear();
    is_text_.clear();
}

void conversion::add(std::string_view text) {
    const size_t i = stored_.size();
    const bool is_for_column = !text.empty() && text.size() <= _text_size_max && text.find('\0') == text.npos;
    stored_.push_back({0, {}, text.empty()});
    if (i % 8 == 0) is_text_.push_back(0);
    if (is_for_column) {
        set_bit_(is_text_, i);
        texts_ += text;
    }
    offsets_.push_back(static_cast<int32_t>(texts_.size()));
}

void conversion::convert() {
    const size_t count = stored_.size();
    values_.resize(count);
    is_value_.assign(is_text_.size(), 0);
    dv_column_t texts{};
    texts.count = static_cast<int64_t>(count);
    texts.values = texts_.data();
    texts.offsets = offsets_.data();
    texts.size = static_cast<int64_t>(texts_.size());
    texts.validity = is_text_.data();
    if (count == 0 || !is_done_([&] { run_(texts); })) return;
    const impl::sql_kind kind = steps_.back()->row->signature.result;
    for (size_t i = 0; i < count; ++i) {
        if ((is_value_[i / 8] >> i % 8 & 1) == 0) continue;
        values_[i].kind = kind;
        stored_[i].size = static_cast<uint8_t>(impl::sqlite_store(values_[i], stored_[i].bytes));
    }
}

void conversion::run_(const dv_column_t &texts) {
    dv_column_t values{};
    values.count = texts.count;
    values.values = &values_.front().number;  // where every member of the union lies
    values.stride = sizeof(impl::sql_value);
    values.validity = is_value_.data();
    const dv_column_t *from = &texts;
    for (const auto &each : steps_) {
        each->row->column_body(each->call, *from, values);
        from = &values;
    }
}

}  // namespace dv::import
