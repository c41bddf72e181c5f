// Columns from text. What a type reads texts by is said by the catalogue of SQL functions.

#include "column.h"

#include <algorithm>
#include <stdexcept>

#include "sql_declared_type.h"
#include "sql_value.h"

namespace dv::import {

namespace {

bool is_blank_(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::string upper_(std::string text) {
    for (char &c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return text;
}

class cursor {
  public:
    explicit cursor(std::string_view text) : text_(text) { skip_blanks(); }

    bool is_at_end() const { return text_.empty(); }
    bool is_at(char c) const { return text_.starts_with(c); }

    bool take(char c) {
        if (!is_at(c)) return false;
        text_.remove_prefix(1);
        skip_blanks();
        return true;
    }

    // In any case, and nothing but a blank or a comma behind them.
    bool take_words(std::string_view words) {
        if (upper_(std::string(text_.substr(0, words.size()))) != words) return false;
        const std::string_view behind = text_.substr(words.size());
        if (!behind.empty() && behind.front() != ',' && !is_blank_(behind.front())) return false;
        text_ = behind;
        skip_blanks();
        return true;
    }

    // What stands between two quotes; a quote written twice is one.
    std::string quoted(char quote) {
        std::string found;
        text_.remove_prefix(1);
        while (true) {
            const size_t end = text_.find(quote);
            if (end == text_.npos) fail("the quote does not end before");
            found += text_.substr(0, end);
            text_.remove_prefix(end + 1);
            if (!is_at(quote)) break;
            found += quote;
            text_.remove_prefix(1);
        }
        skip_blanks();
        return found;
    }

    std::string name() {
        if (is_at('"')) return quoted('"');
        size_t length = 0;
        while (length < text_.size() && !is_blank_(text_[length]) && text_[length] != ',' &&
               text_[length] != '\'')
            ++length;
        std::string found(text_.substr(0, length));
        text_.remove_prefix(length);
        skip_blanks();
        return found;
    }

    // Words up to a quote or a comma; those in parentheses do not count.
    std::string type() {
        if (is_at('\'')) return quoted('\'');
        size_t length = 0;
        int depth = 0;
        for (; length < text_.size(); ++length) {
            const char c = text_[length];
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
            if (depth <= 0 && (c == ',' || c == '\'')) break;
        }
        std::string found(text_.substr(0, length));
        text_.remove_prefix(length);
        while (!found.empty() && is_blank_(found.back())) found.pop_back();
        return found;
    }

    [[noreturn]] void fail(const char *what) const {
        throw std::runtime_error("--columns: " + std::string(what) +
                                 (is_at_end() ? " the end" : " \"" + std::string(text_) + "\""));
    }

  private:
    void skip_blanks() {
        while (!text_.empty() && is_blank_(text_.front())) text_.remove_prefix(1);
    }

    std::string_view text_;
};

std::string quoted_text_(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text) quoted.append(c == '\'' ? 2 : 1, c);
    return quoted + "'";
}

// What may stand in a declared type.
bool is_type_(std::string_view text) {
    return text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_ (),+-") ==
           text.npos;
}

// Whether SQLite has a type of this name: one that tells it how to keep values, or none.
bool is_of_sqlite_(const std::string &type) {
    const std::string name = upper_(type);
    for (const char *part : {"INT", "CHAR", "CLOB", "TEXT", "BLOB", "REAL", "FLOA", "DOUB"}) {
        if (name.find(part) != name.npos) return true;
    }
    for (const char *whole : {"", "ANY", "BOOLEAN", "DECIMAL", "NUMERIC"}) {
        if (name.substr(0, name.find_first_of(" (")) == whole) return true;
    }
    return false;
}

void check_type_(const std::string &type, const impl::declared_type &declared) {
    const auto fail = [&](const char *why) { throw std::runtime_error("--columns: " + type + why); };
    if (std::count(type.begin(), type.end(), '(') != std::count(type.begin(), type.end(), ')'))
        fail(" has a parenthesis without its other one");
    if (!declared.is_sound) fail(" has a precision out of range");
    if (declared.type == nullptr && !is_of_sqlite_(type))
        fail(
            " is no type: NUMBER, DATE, TIME, TIMESTAMP and INTERVAL are, and SQLite's such as INTEGER and "
            "TEXT");
}

constexpr const char *_constraints[] = {"PRIMARY KEY", "NOT NULL", "UNIQUE"};

// Takes constraints off the end of a type.
std::string take_constraints_(std::string &words) {
    std::string taken;
    const auto take = [&](const std::string &constraint) {
        if (!upper_(" " + words).ends_with(" " + constraint)) return false;
        words.resize(words.size() - constraint.size());
        while (!words.empty() && is_blank_(words.back())) words.pop_back();
        taken = " " + constraint + taken;
        return true;
    };
    while (std::ranges::any_of(_constraints, take)) continue;
    return taken;
}

// to_number(v, 'FM999,990.00'), and of that dv_cast_number(v, 10, 2); what goes with a model stands behind
// it.
std::vector<call> calls_(const impl::declared_type &type, const std::string &model,
                         const std::string &option) {
    std::vector<call> calls{{type.type->reader, {}}};
    for (const std::string &text : {model, option}) {
        if (!text.empty()) calls.back().constants.emplace_back(text);
    }
    if (type.precision > 0) calls.push_back({"dv_cast_number", {type.precision, type.scale}});
    if (type.fraction >= 0) calls.push_back({"dv_cast_fraction", {type.fraction}});
    if (type.leading >= 0) calls.push_back({"dv_cast_leading", {type.leading}});
    return calls;
}

std::string literal_(const std::variant<std::string, int> &constant) {
    const auto *text = std::get_if<std::string>(&constant);
    return text != nullptr ? quoted_text_(*text) : std::to_string(std::get<int>(constant));
}

void take_constraints_behind_(cursor &text, column &of) {
    const auto take = [&](const char *constraint) {
        if (!text.take_words(constraint)) return false;
        of.constraint.append(" ").append(constraint);
        return true;
    };
    while (std::ranges::any_of(_constraints, take)) continue;
    if (!text.is_at_end() && !text.is_at(','))
        text.fail("PRIMARY KEY, NOT NULL, UNIQUE or a comma is expected at");
}

column take_column_(cursor &text) {
    column of{text.name(), "", false, false, "", {}};
    if (of.name.empty()) text.fail("a name is expected at");
    if (of.name == "-") return {};
    of.type = text.type();
    of.constraint = take_constraints_(of.type);
    if (!is_type_(of.type)) throw std::runtime_error("--columns: \"" + of.type + "\" is no type");
    const std::string model = text.is_at('\'') ? text.quoted('\'') : "";
    const std::string option = text.is_at('\'') ? text.quoted('\'') : "";
    take_constraints_behind_(text, of);
    of.has_model = !model.empty();
    const impl::declared_type type = impl::sql_parse_declared_type(of.type.c_str());
    check_type_(of.type, type);
    of.is_typed = type.type != nullptr;
    if (of.is_typed) of.calls = calls_(type, model, option);
    if (!of.is_typed && !model.empty())
        throw std::runtime_error("--columns: a model goes with a type that has one, not with \"" + of.type +
                                 "\"");
    return of;
}

}  // namespace

std::string column::value_of(const std::string &text) const {
    std::string value = text;
    for (const call &of : calls) {
        value.insert(0, of.function + "(");
        for (const auto &constant : of.constants) value += ", " + literal_(constant);
        value += ")";
    }
    return value;
}

std::string quoted_name(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + "\"";
}

std::vector<column> parse_columns(std::string_view text) {
    cursor at(text);
    std::vector<column> columns;
    do {
        columns.push_back(take_column_(at));
    } while (at.take(','));
    if (!at.is_at_end()) at.fail("a comma is expected at");
    return columns;
}

}  // namespace dv::import
