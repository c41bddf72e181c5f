// Headers are read line by line. A comment belongs to the declarations below it, up to the next comment; one
// with an empty line below it, or between the rules of a heading, to its whole section. Examples are left
// out.

#include "public_headers.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <string_view>

#include "dvtypes/base.h"
#include "project_file.h"

namespace dv::test {

namespace {

using functions_t = std::map<std::string, documented_function>;

// What comments say instead of names, and the names.
constexpr std::string_view _elements = "elements of the model raise";
constexpr std::string_view _readers =
    "dt_fmt_parse_date dt_fmt_parse_time dt_fmt_parse_tz dt_fmt_parse_punc_token dt_fmt_check_ddd";

class header_reader {
  public:
    explicit header_reader(functions_t &functions) : functions_(functions) {}

    void read(const std::string &line) {
        const bool is_comment = line.starts_with("//");
        if (is_comment && !was_comment_) {
            if (line.starts_with("// ---")) section_.clear();
            comment_.clear();
        }
        if (line.starts_with("// ```")) is_example_ = !is_example_;
        if (is_comment && !is_example_) comment_ += line.substr(2) + "\n";
        if (line.empty() && was_comment_) section_ += comment_;
        if (line.starts_with("DV_EXPORT ") || line.starts_with("DV_NORETURN DV_EXPORT "))
            declaration_ = line;
        else if (!declaration_.empty())
            declaration_ += line;
        if (declaration_.ends_with(";")) take_declaration_();
        was_comment_ = is_comment;
    }

  private:
    void take_declaration_() {
        const std::regex name(R"((\w+)(?:\[\])?[,()])");
        documented_function function{section_ + comment_, {}};
        std::string first;
        for (std::sregex_iterator it(declaration_.begin(), declaration_.end(), name), end; it != end; ++it) {
            if (first.empty())
                first = (*it)[1];
            else
                function.parameters.push_back((*it)[1]);
        }
        functions_[first] = function;
        declaration_.clear();
    }

    functions_t &functions_;
    std::string section_{}, comment_{}, declaration_{};
    bool was_comment_ = false, is_example_ = false;
};

void collect_(const std::string &function, std::set<std::string> &seen, std::set<int> &codes) {
    const auto found = documented_functions().find(function);
    if (found == documented_functions().end() || !seen.insert(function).second) return;
    std::string text = found->second.comments;
    if (text.find(_elements) != text.npos) text += _readers;
    const std::regex word(R"(-\d{4,5}|\w+)");
    for (std::sregex_iterator it(text.begin(), text.end(), word), end; it != end; ++it) {
        const std::string said = it->str();
        if (said[0] != '-') {
            collect_(said, seen, codes);
        } else if (dv_error_text(std::stoi(said)) != nullptr) {  // and no year
            codes.insert(std::stoi(said));
        }
    }
}

}  // namespace

const std::map<std::string, documented_function> &documented_functions() {
    static const functions_t functions = [] {
        functions_t all;
        for (const auto &file : std::filesystem::directory_iterator(project_file("src/include/dvtypes"))) {
            header_reader reader(all);
            std::ifstream lines(file.path());
            for (std::string line; std::getline(lines, line);) reader.read(line);
        }
        return all;
    }();
    return functions;
}

const std::set<int> &documented_codes(const std::string &function) {
    static std::map<std::string, std::set<int>> known;
    const auto [place, is_new] = known.try_emplace(function);
    std::set<std::string> seen;
    if (is_new) collect_(function, seen, place->second);
    return place->second;
}

}  // namespace dv::test
