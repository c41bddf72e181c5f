// Composing the texts of errors: message, texts given, what was possible.
//
// What was possible follows from the code (_hints). A model that does not compile is shown with the place of
// the fault: what follows its longest beginning that compiles.

#include "sql_explain.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include "dvtypes/nls.h"
#include "sql_datetime.h"
#include "sql_gap.h"
#include "sql_region.h"
#include "sql_run.h"
#include "sql_text_list.h"
#include "sql_words.h"

using namespace dv::impl;

namespace {

struct explanation {
    sql_call &call;
    const sql_function &row;
    const dv_error_t &error;
    int hint;  // where what was possible begins
    sql_text_list text;
};

// ---------------------------------------------------------------------------------------------------------
// What was given
// ---------------------------------------------------------------------------------------------------------

bool is_shown_(const dv_error_t &error, const sql_text &text) {
    const sql_quoted quoted = sql_quote(text);
    return text.length > 0 && strstr(error.message, quoted.text) != nullptr;
}

// The last argument of an error about a field is the whole text.
bool is_whole_text_(const dv_error_t &error, const sql_text &text) {
    constexpr int field_text = -5113;
    if (error.code != field_text || error.arg_count != 3) return false;
    const std::string_view whole(text.bytes, static_cast<size_t>(text.length)), shown = error.args[2];
    constexpr size_t longest_character = 4;
    const bool is_cut = shown.size() >= DV_ERROR_TEXT_MAX - longest_character;
    return whole == shown || (is_cut && whole.starts_with(shown));
}

bool has_model_(const sql_function &row) { return row.keeper != nullptr && row.keeper->is_of_model; }

bool compiles_(const sql_function &row, sql_call &trial, int length) {
    dv_error_t error;
    trial.args[row.keeper->argument].text.length = length;
    trial.outcome = SQL_GIVEN;
    trial.block = nullptr;
    return sql_make(row, trial, error) == 0 && trial.outcome == SQL_GIVEN;
}

// Where a model does not compile: behind its longest beginning that does. 0 for the whole of it, for one that
// compiles, and for long ones.
int fault_(const sql_function &row, const sql_call &call) {
    constexpr int longest = 256;
    sql_call trial = call;
    int length = call.args[row.keeper->argument].text.length;
    if (length == 0 || length > longest || compiles_(row, trial, length)) return 0;
    while (--length > 0 && !compiles_(row, trial, length)) continue;
    return length;
}

void append_fault_(explanation &e, const sql_text &model) {
    const int place = fault_(e.row, e.call);
    if (place == 0) return;
    e.text.append(", wrong at ");
    e.text.append(sql_quote({model.bytes + place, model.length - place}).text);
}

// "the model "YYYY-QQ", wrong at "QQ""
void append_given_(explanation &e, int position) {
    const sql_text &text = e.call.args[position].text;
    const std::string_view name = sql_param_name(e.row.signature, position);
    e.text.append("the ");
    e.text.append(name == "v" ? "text" : name);
    e.text.append(text.length == 0 ? " is empty" : " is ");
    if (text.length > 0) e.text.append(sql_quote(text).text);
    if (has_model_(e.row) && e.row.keeper->argument == position && e.error.code != SQL_ERR_NLS_SETTING)
        append_fault_(e, text);
}

// " The text is "1", the model is "DD"."
void append_all_given_(explanation &e) {
    const char *separator = " ";
    for (int i = 0; i < e.call.argc; ++i) {
        if (e.row.signature.params[i] != SQL_KIND_TEXT || e.call.args[i].kind != SQL_KIND_TEXT) continue;
        const sql_text &text = e.call.args[i].text;
        if (is_shown_(e.error, text) || is_whole_text_(e.error, text)) continue;
        e.text.append(separator);
        const size_t begin = e.text.length();
        append_given_(e, i);
        if (*separator == ' ') e.text.capitalise(begin);
        separator = ", ";
    }
    if (*separator == ',') e.text.append(".");
}

// ---------------------------------------------------------------------------------------------------------
// What was possible
// ---------------------------------------------------------------------------------------------------------

void append_words_(explanation &e, std::span<const char *const> words) {
    e.text.append(" Expected is ");
    for (size_t i = 0; i < words.size(); ++i) e.text.append_item(i, words.size(), words[i], "");
    e.text.append(".");
}

void append_languages_(explanation &e) { append_words_(e, nls_date_lang_name_tab_); }

// Of a model, or units of truncation.
void append_elements_(explanation &e) {
    if (!has_model_(e.row)) return append_words_(e, SQL_UNITS);
    append_words_(e, SQL_MODEL_ELEMENTS);
    e.text.append(" Other text stands in double quotes.");
}

void append_number_elements_(explanation &e) { append_words_(e, SQL_NUMBER_MODEL_ELEMENTS); }

void append_interval_form_(explanation &e) {
    const bool is_ytm = e.row.signature.result == SQL_KIND_ITV_YTM;
    e.text.append(is_ytm ? " It has the form years-months, such as 1-06."
                         : " It has the form days hours:minutes:seconds, such as 1 02:03:04.5.");
}

// What a text of the type looks like without a model; NULL: it has one.
const char *form_(const sql_signature &signature) {
    if (sql_param_count(signature) > 1) return nullptr;
    switch (signature.result) {
        case SQL_KIND_NUMBER:
            return "-1234.5 or 1.5E+30, unless a model is given";
        case SQL_KIND_DATE:
            return "2024-02-29 13:05:00, unless a model is given";
        case SQL_KIND_TIME:
            return "13:05:00.5";
        case SQL_KIND_TIMESTAMP:
            return "2024-02-29 13:05:00.5, unless a model is given";
        case SQL_KIND_TS_TZ:
            return "2024-02-29 13:05:00.5 +09:00, unless a model is given";
        default:
            return nullptr;
    }
}

void append_form_(explanation &e) {
    const char *form = form_(e.row.signature);
    if (form == nullptr) return;
    for (const char *piece : {" It has the form ", form, "."}) e.text.append(piece);
}

// The first argument that holds a region's name, or something near to one.
void append_regions_(explanation &e) {
    for (int i = 0; i < e.call.argc; ++i) {
        if (e.call.args[i].kind != SQL_KIND_TEXT) continue;
        const sql_text &text = e.call.args[i].text;
        if (sql_append_near_regions(e.text, {text.bytes, static_cast<size_t>(text.length)})) return;
    }
    e.text.append(" The table dv_zones has the regions.");
}

void append_regions_of_text_(explanation &e) {
    if (strcmp(e.error.args[0], "timezone region") == 0) append_regions_(e);
}

bool is_of_word_(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}

// What is refused begins within a word: of "Mars" the name of a month was read, and "s" is no year.
void append_word_(explanation &e) {
    if (e.error.arg_count != 3) return;
    const std::string_view rest = e.error.args[1], whole = e.error.args[2];
    if (rest.empty() || rest.size() >= whole.size() || !whole.ends_with(rest)) return;
    const size_t place = whole.size() - rest.size();
    size_t begin = place, end = place;
    while (begin > 0 && is_of_word_(whole[begin - 1])) --begin;
    while (end < whole.size() && is_of_word_(whole[end])) ++end;
    if (begin == place || end == place) return;
    const auto append_quoted = [&](size_t to) {
        e.text.append(sql_quote({whole.data() + begin, static_cast<int>(to - begin)}).text);
    };
    e.text.append(" Of the word ");
    append_quoted(end);
    e.text.append(" only ");
    append_quoted(place);
    e.text.append(" was read.");
}

// Of a text that ISO's reader takes apart.
void append_zone_form_(explanation &e) {
    if (strcmp(e.error.args[0], "time zone") != 0 || form_(e.row.signature) == nullptr) return;
    e.text.append(" A zone is Z, +09, +09:00, +0900 or, behind a blank, the name of a region.");
}

bool is_east_without_hours_(const sql_text &text) {
    const std::string_view given(text.bytes, static_cast<size_t>(text.length));
    return given.find("+00") != given.npos || given.find("+0:") != given.npos || given.starts_with('0');
}

void append_minutes_alone_(explanation &e) {
    const auto is_given = [](const sql_value &value) {
        return value.kind == SQL_KIND_TEXT && is_east_without_hours_(value.text);
    };
    if (std::any_of(e.call.args, e.call.args + e.call.argc, is_given))
        e.text.append(" Minutes alone have a minus: -00:01 to -00:59.");
}

void append_gap_(explanation &e) { sql_append_gap(e.text, e.call, e.row); }

struct hint {
    int code;
    void (*append)(explanation &);
};
constexpr hint _hints[] = {
    {-5014, append_elements_},         // an element or unit that there is not
    {-5075, append_number_elements_},  // the same in a number model
    {-5009, append_interval_form_},    // an interval's text that ends too soon,
    {-5010, append_interval_form_},    // goes on,
    {-5056, append_interval_form_},    // lacks something,
    {-5060, append_interval_form_},    // has too many months,
    {-5061, append_interval_form_},    // hours,
    {-5062, append_interval_form_},    // minutes
    {-5063, append_interval_form_},    // or seconds
    {-5104, append_regions_},          // no zone
    {-5113, append_regions_of_text_},  // no such field, which may be a region,
    {-5113, append_zone_form_},        // or a zone,
    {-5113, append_word_},             // or begin within a word,
    {-5113, append_form_},             // or a text without a model
    {-5074, append_form_},             // the same of a number
    {-5099, append_minutes_alone_},    // an offset that no value holds
    {-5110, append_gap_},              // a local time that clocks never showed
    {SQL_ERR_NLS_SETTING, append_languages_},
};

bool is_interval_(sql_kind kind) { return kind == SQL_KIND_ITV_YTM || kind == SQL_KIND_ITV_DTS; }

void append_hint_(explanation &e) {
    for (const hint &each : _hints) {
        if (each.code != e.error.code) continue;
        if (each.append == append_interval_form_ && !is_interval_(e.row.signature.result)) continue;
        each.append(e);
    }
}

// Of an offset that contradicts its region the library says that the local time does not exist.
void append_message_(explanation &e) {
    constexpr int no_such_local_time = -5110;
    const bool is_said =
        e.error.code == no_such_local_time && sql_append_contradiction(e.text, e.call, e.row);
    if (!is_said) e.text.append(e.error.message);
}

void explain_(void *arg) {
    auto &e = *static_cast<explanation *>(arg);
    append_message_(e);
    append_all_given_(e);
    e.hint = static_cast<int>(e.text.length());
    append_hint_(e);
}

}  // namespace

bool dv::impl::sql_explain(sql_call &call, const sql_function &row, const dv_error_t &error) {
    explanation e{call, row, error, 0, {}};
    dv_error_t second;
    if (dv_protect(explain_, &e, &second) == DV_ERR_NO_MEMORY) return false;
    if (e.text.length() == 0) e.text.append(error.message);
    sql_fail(call, "%s", e.text.text());
    call.hint = e.hint < static_cast<int>(strlen(call.failure)) ? e.hint : 0;
    return true;
}
