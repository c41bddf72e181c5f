// A record is one INSERT whose values are the columns' expressions, or what conversions made of its texts,
// which is the same. Where it fails, each expression is asked alone, so that every field that is wrong is
// named.

#include "loader.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "utf8.h"

extern "C" int sqlite3_dvsqlite_init(sqlite3 *db, char **message, const struct sqlite3_api_routines *api);

namespace dv::import {

namespace {

constexpr long _shown_max = 10;  // faults on the terminal
constexpr size_t _records_at_once = 256;

// The library's code at the end of a message: "... (dv-5113)".
int code_of_(const std::string &message) {
    const size_t at = message.rfind("(dv-");
    return at == message.npos ? 0 : std::atoi(message.c_str() + at + 3);
}

// Is it the record's fault, and not the database's?
bool is_of_record_(int code) {
    return code == SQLITE_ERROR || code == SQLITE_CONSTRAINT || code == SQLITE_MISMATCH ||
           code == SQLITE_TOOBIG;
}

// SQLite takes some words, and words behind a list of numbers, only as a name in quotes:
// "TIMESTAMP(3) WITH TIME ZONE", "INTERVAL DAY TO SECOND".
std::string declared_(const std::string &type) {
    const bool is_one_word = type.find(' ') == type.npos;
    return is_one_word ? type : quoted_name(type);
}

// What reading an empty text under a sound model gives: it is too short, no date, no number.
bool is_of_empty_text_(int code) { return code == -5007 || code == -5045 || code == -5074; }

bool is_field_utf8_(const csv_field &field) { return is_utf8(field.text); }

void append_(std::string &list, const std::string &item) { list += (list.empty() ? "" : ", ") + item; }

}  // namespace

loader::loader(const options &what) : what_(what), waiting_(_records_at_once) {
    open_();
    run_("PRAGMA foreign_keys = ON");
    run_("BEGIN IMMEDIATE");
    make_tables_();
    prepare_statements_();
    if (!what.rejects.empty()) rejects_ = std::make_unique<csv_writer>(what.rejects, what.delimiter);
}

void loader::skip(const csv_record &record) {
    if (rejects_ == nullptr) return;
    rejects_->pad_to(record.line);
    rejects_->put(record);
}

void loader::take(const csv_record &record) {
    if (refuse_form_(record)) return;
    auto &[kept, texts] = waiting_[waiting_count_++];
    kept = record;
    texts.clear();
    for (const csv_field &field : record.fields) texts += field.text;
    size_t at = 0;
    for (csv_field &field : kept.fields) {
        field.text = std::string_view(texts).substr(at, field.text.size());
        at += field.text.size();
    }
    if (waiting_count_ == waiting_.size()) load_waiting_();
}

void loader::commit() {
    load_waiting_();
    if (rejects_ != nullptr) rejects_->flush();
    run_("COMMIT");
}

void loader::open_() {
    // SQLite hands the table of its functions to what is registered so.
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(sqlite3_dvsqlite_init));
    sqlite3 *db = nullptr;
    const int code =
        sqlite3_open_v2(what_.database.c_str(), &db,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    db_.reset(db);
    if (code != SQLITE_OK) fail_();
    sqlite3_busy_timeout(db, 10'000);
}

void loader::make_tables_() {
    std::string declared;
    for (const column &of : what_.columns) {
        if (!of.name.empty())
            append_(declared, quoted_name(of.name) + " " + declared_(of.type) + of.constraint);
    }
    run_("CREATE TABLE IF NOT EXISTS " + quoted_name(what_.table) + "(" + declared + ")");
    if (what_.errors.empty()) return;
    run_("CREATE TABLE IF NOT EXISTS " + quoted_name(what_.errors) +
         "(line INTEGER, \"column\" TEXT, text TEXT, code INTEGER, message TEXT)");
    insert_error_ = prepare_("INSERT INTO " + quoted_name(what_.errors) +
                             "(line, \"column\", text, code, message) VALUES (?, ?, ?, ?, ?)");
}

void loader::prepare_statements_() {
    for (const column &of : what_.columns) {
        values_.push_back(of.name.empty() ? nullptr : prepare_("SELECT " + of.value_of("?")));
        if (of.has_model) check_model_(of, values_.back().get());
        conversions_.push_back(what_.is_bulk ? conversion::of(of) : nullptr);
    }
    of_texts_ = prepare_insertion_(/*is_of_values=*/false);
    if (std::ranges::any_of(conversions_, [](const auto &each) { return each != nullptr; }))
        of_values_ = prepare_insertion_(/*is_of_values=*/true);
}

// "INSERT OR ABORT INTO t(day, ...) SELECT to_date(column1, 'DD.MM.YYYY'), ... FROM (VALUES (?, ...), ...)",
// for one record and for many. OR ABORT: a constraint that says no undoes its statement alone, whatever it is
// declared to do.
loader::insertion loader::prepare_insertion_(bool is_of_values) {
    std::string names, values, row;
    size_t parameters = 0;
    for (size_t i = 0; i < what_.columns.size(); ++i) {
        const column &of = what_.columns[i];
        if (of.name.empty()) continue;
        const std::string parameter = "column" + std::to_string(++parameters);
        append_(names, quoted_name(of.name));
        append_(values, is_of_values && conversions_[i] != nullptr ? parameter : of.value_of(parameter));
        append_(row, "?");
    }
    std::string rows = "(" + row + ")";
    const std::string insert = "INSERT OR ABORT INTO " + quoted_name(what_.table) + "(" + names +
                               ") SELECT " + values + " FROM (VALUES ";
    insertion made = {is_of_values, prepare_(insert + rows + ")"), nullptr};
    for (size_t i = 1; i < waiting_.size(); ++i) rows += ", (" + row + ")";
    const auto parameters_max =
        static_cast<size_t>(sqlite3_limit(db_.get(), SQLITE_LIMIT_VARIABLE_NUMBER, -1));
    if (parameters * waiting_.size() <= parameters_max && !refers_to_itself_())
        made.many = prepare_(insert + rows + ")");
    return made;
}

// Has the table a foreign key to its own rows? Then one row goes in at a time: a statement of many would take
// a row in front of the one that it refers to.
bool loader::refers_to_itself_() {
    const statement_t keys =
        prepare_("SELECT 1 FROM pragma_foreign_key_list(?1) WHERE \"table\" = ?1 COLLATE NOCASE");
    sqlite3_bind_text(keys.get(), 1, what_.table.c_str(), -1, SQLITE_STATIC);
    return sqlite3_step(keys.get()) == SQLITE_ROW;
}

// A model that is none would have every record refused.
void loader::check_model_(const column &of, sqlite3_stmt *value) {
    sqlite3_bind_text(value, 1, "", 0, SQLITE_STATIC);
    if (sqlite3_step(value) != SQLITE_ROW) {
        std::string message = sqlite3_errmsg(db_.get());
        const bool is_sound = is_of_empty_text_(code_of_(message));
        constexpr std::string_view text_of_ours = "text is empty, the ";
        if (const size_t place = message.find(text_of_ours); place != message.npos)
            message.erase(place, text_of_ours.size());
        if (!is_sound) throw std::runtime_error("--columns: " + of.name + ": " + message);
    }
    sqlite3_reset(value);
}

loader::statement_t loader::prepare_(const std::string &sql) {
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v3(db_.get(), sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) !=
        SQLITE_OK)
        fail_();
    return statement_t(statement);
}

void loader::run_(const std::string &sql) {
    if (sqlite3_exec(db_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail_();
}

void loader::fail_() const { throw std::runtime_error(what_.database + ": " + sqlite3_errmsg(db_.get())); }

// The texts live until the statement has run.
void loader::bind_(sqlite3_stmt *statement, int place, const column &of, const csv_field &field) {
    const bool is_null = field.is_null || (of.is_typed && field.text.empty());
    const int code = is_null
                         ? sqlite3_bind_null(statement, place)
                         : sqlite3_bind_text64(statement, place, field.text.empty() ? "" : field.text.data(),
                                               field.text.size(), SQLITE_STATIC, SQLITE_UTF8);
    if (code != SQLITE_OK && code != SQLITE_TOOBIG) fail_();
}

int loader::bind_waiting_(const insertion &into, sqlite3_stmt *statement, int place, size_t i) {
    const csv_record &record = waiting_[i].record;
    for (size_t c = 0; c < record.fields.size(); ++c) {
        const column &of = what_.columns[c];
        if (of.name.empty()) continue;
        const conversion *const by = into.is_of_values ? conversions_[c].get() : nullptr;
        if (by == nullptr) {
            bind_(statement, place++, of, record.fields[c]);
        } else {
            const auto stored = by->stored(i);  // without bytes it is bound as SQL NULL
            sqlite3_bind_blob(statement, place++, stored.empty() ? nullptr : stored.data(),
                              static_cast<int>(stored.size()), SQLITE_STATIC);
        }
    }
    return place;
}

void loader::convert_(size_t count) {
    for (size_t c = 0; c < conversions_.size(); ++c) {
        if (conversions_[c] == nullptr) continue;
        conversions_[c]->clear();
        for (size_t i = 0; i < count; ++i) conversions_[c]->add(waiting_[i].record.fields[c].text);
        conversions_[c]->convert();
    }
}

// Has every field that can be converted its value?
bool loader::is_ready_(size_t i) const {
    return of_values_.one != nullptr && std::ranges::all_of(conversions_, [i](const auto &each) {
               return each == nullptr || each->is_known(i);
           });
}

// Values that are ready go together, in less time than alone. So do texts, whose models are compiled once for
// a statement that runs, unless few are not ready: those will be refused, and would undo the others.
void loader::load_waiting_() {
    const size_t count = std::exchange(waiting_count_, 0);
    convert_(count);
    size_t ready = 0;
    for (size_t i = 0; i < count; ++i) ready += is_ready_(i) ? 1 : 0;
    const bool is_together = count == waiting_.size() && (ready == count || ready < count / 2);
    if (is_together && load_together_(ready == count ? of_values_ : of_texts_)) return;
    for (size_t i = 0; i < count; ++i) load_(i);
}

// False: one of the records fails, and none is in; the savepoint undoes what a trigger's RAISE(FAIL) leaves.
bool loader::load_together_(const insertion &into) {
    if (into.many == nullptr) return false;
    run_("SAVEPOINT dvimport");
    int place = 1;
    for (size_t i = 0; i < waiting_.size(); ++i) place = bind_waiting_(into, into.many.get(), place, i);
    const bool is_whole = sqlite3_step(into.many.get()) == SQLITE_DONE;
    sqlite3_reset(into.many.get());
    check_transaction_();
    run_(is_whole ? "RELEASE dvimport" : "ROLLBACK TO dvimport; RELEASE dvimport");
    if (is_whole) loaded_ += static_cast<long>(waiting_.size());
    return is_whole;
}

// A trigger's RAISE(ROLLBACK) has undone everything, and each further record would be in at once.
void loader::check_transaction_() const {
    if (sqlite3_get_autocommit(db_.get()) != 0)
        throw std::runtime_error(what_.database + ": the table rolled the transaction back");
}

void loader::load_(size_t i) {
    const insertion &into = is_ready_(i) ? of_values_ : of_texts_;
    sqlite3_stmt *const statement = into.one.get();
    bind_waiting_(into, statement, 1, i);
    if (sqlite3_step(statement) != SQLITE_DONE) return refuse_(statement, waiting_[i].record);
    sqlite3_reset(statement);
    ++loaded_;
}

// Into the file, behind the lines that are passed over.
void loader::reject_(const csv_record &record) {
    ++refused_;
    if (rejects_ == nullptr) return;
    rejects_->pad_to(what_.skip + 1);
    rejects_->put(record);
}

// False: it has as many fields as there are columns, of UTF-8.
bool loader::refuse_form_(const csv_record &record) {
    const size_t count = record.fields.size();
    const bool has_all = count == what_.columns.size();
    if (has_all && std::ranges::all_of(record.fields, is_field_utf8_)) return false;
    load_waiting_();  // so that what is refused is told in the order of the lines
    reject_(record);
    if (!has_all)
        put_({record.line, nullptr, nullptr, 0,
              std::to_string(count) + " fields where " + std::to_string(what_.columns.size()) +
                  " are expected"});
    for (size_t i = 0; has_all && i < count; ++i) {
        if (!is_field_utf8_(record.fields[i]))
            put_({record.line, &what_.columns[i], &record.fields[i], 0,
                  "the text is not UTF-8; iconv(1) converts files"});
    }
    return true;
}

void loader::refuse_(sqlite3_stmt *statement, const csv_record &record) {
    const int code = sqlite3_errcode(db_.get()) & 0xFF, extended = sqlite3_extended_errcode(db_.get());
    const std::string message = sqlite3_errmsg(db_.get());
    if (!is_of_record_(code)) fail_();
    sqlite3_reset(statement);
    check_transaction_();
    reject_(record);
    bool is_told = false;
    for (size_t i = 0; i < record.fields.size(); ++i) is_told = refuse_field_(record, i) || is_told;
    if (!is_told) put_({record.line, nullptr, nullptr, extended, message});
}

// False: the field has a value.
bool loader::refuse_field_(const csv_record &record, size_t i) {
    const column &of = what_.columns[i];
    if (!of.is_typed) return false;
    sqlite3_stmt *const value = values_[i].get();
    bind_(value, 1, of, record.fields[i]);
    const int code = sqlite3_step(value);
    const std::string message = sqlite3_errmsg(db_.get());
    if (code != SQLITE_ROW && !is_of_record_(code & 0xFF)) fail_();
    sqlite3_reset(value);
    if (code == SQLITE_ROW) return false;
    put_({record.line, &of, &record.fields[i], code_of_(message), message});
    return true;
}

void loader::put_(const fault &what) {
    if (insert_error_ == nullptr) {
        if (refused_ <= _shown_max)
            (void)std::fprintf(stderr, "%s:%ld: %s%s%s\n", what_.file.c_str(), what.line,
                               what.of == nullptr ? "" : what.of->name.c_str(),
                               what.of == nullptr ? "" : ": ", what.message.c_str());
        return;
    }
    sqlite3_stmt *const to = insert_error_.get();
    const auto bind_text = [&](int place, std::string_view text) {
        sqlite3_bind_text64(to, place, text.empty() ? "" : text.data(), text.size(), SQLITE_STATIC,
                            SQLITE_UTF8);
    };
    sqlite3_clear_bindings(to);
    sqlite3_bind_int64(to, 1, what.line);
    if (what.of != nullptr) bind_text(2, what.of->name);
    if (what.field != nullptr) bind_text(3, what.field->text);
    if (what.code != 0) sqlite3_bind_int(to, 4, what.code);
    bind_text(5, what.message);
    if (sqlite3_step(to) != SQLITE_DONE) fail_();
    sqlite3_reset(to);
}

}  // namespace dv::import
