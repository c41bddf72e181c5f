// dvimport: loads a CSV file into a table of an SQLite database, with columns of the library's types.

#include <getopt.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "loader.h"
#include "progress.h"

using namespace dv::import;

namespace {

constexpr int _all_loaded = 0, _some_refused = 1, _failed = 2;

constexpr char _usage[] =
    R"(usage: dvimport FILE TABLE --columns LIST [--database FILE] [--errors TABLE] [--rejects FILE]
                [--skip N] [--delimiter C]

Loads the CSV file FILE (- is standard input) into TABLE, which is made where it is not there.

  --columns LIST    for each field of a line a name, a type, a format model in quotes where there is one, its language
                    or its decimal point and group separator in quotes behind it, and PRIMARY KEY, NOT NULL or UNIQUE
                    for a table that is made; or - for a field that is passed over:
                    "id INTEGER PRIMARY KEY, day DATE 'DD MONTH YYYY' 'RUSSIAN', price NUMBER(10,2) 'FM999G990D00' ',.',
                    seen 'TIMESTAMP WITH TIME ZONE', -"
  --database FILE   the database; else FILE with the ending .db
  --errors TABLE    a table for what is refused: line, column, text, code, message
  --rejects FILE    a CSV file for the records that are refused, behind the lines of --skip: to be corrected and loaded
                    by the same command
  --skip N          lines at the beginning that are passed over, such as a headline
  --delimiter C     a character, or "tab" (,)

Exits with 0 when every line was loaded, 1 when some were refused, 2 when the database is as it was.
)";

struct usage_error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string beside_(const std::string &file) {
    const size_t name = file.rfind('/') + 1, dot = file.rfind('.');  // npos + 1 is 0
    const bool has_ending = dot != file.npos && dot > name;
    return (has_ending ? file.substr(0, dot) : file) + ".db";
}

char delimiter_(const std::string &text) {
    if (text == "tab" || text == "\\t") return '\t';
    if (text.size() != 1 || text == "\"" || text == "\n" || text == "\r")
        throw usage_error("--delimiter is one character, or tab");
    return text.front();
}

long count_(const std::string &text) {
    char *end = nullptr;
    const long count = std::strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || count < 0) throw usage_error("--skip is a number of lines");
    return count;
}

options options_(int argc, char **argv) {
    constexpr option names[] = {
        {"columns", required_argument, nullptr, 'c'}, {"database", required_argument, nullptr, 'd'},
        {"errors", required_argument, nullptr, 'e'},  {"rejects", required_argument, nullptr, 'r'},
        {"skip", required_argument, nullptr, 's'},    {"delimiter", required_argument, nullptr, 'x'},
        {"help", no_argument, nullptr, 'h'},          {}};
    options what;
    std::string columns;
    for (int name = 0; (name = getopt_long(argc, argv, "", names, nullptr)) != -1;) {
        switch (name) {
            case 'c':
                columns = optarg;
                break;
            case 'd':
                what.database = optarg;
                break;
            case 'e':
                what.errors = optarg;
                break;
            case 'r':
                what.rejects = optarg;
                break;
            case 's':
                what.skip = count_(optarg);
                break;
            case 'x':
                what.delimiter = delimiter_(optarg);
                break;
            case 'h':
                (void)std::fputs(_usage, stdout);
                std::exit(_all_loaded);
            default:
                throw usage_error("");  // getopt has said it
        }
    }
    if (argc - optind != 2) throw usage_error("a file and a table are expected");
    if (columns.empty()) throw usage_error("--columns is missing");
    what.file = argv[optind];
    what.table = argv[optind + 1];
    what.columns = parse_columns(columns);
    std::error_code is_none;
    if (std::filesystem::equivalent(what.file, what.rejects, is_none))
        throw usage_error("--rejects is the file that is read");
    if (what.database.empty()) {
        if (what.file == "-") throw usage_error("--database is missing");
        what.database = beside_(what.file);
    }
    return what;
}

struct close_file {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using file_t = std::unique_ptr<std::FILE, close_file>;

file_t open_(const std::string &name) {
    file_t file(name == "-" ? stdin : std::fopen(name.c_str(), "rb"));
    if (file == nullptr) throw std::system_error(errno, std::generic_category(), name);
    return file;
}

long long size_of_(std::FILE *file) {
    struct stat status {};
    return fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode) ? status.st_size : 0;
}

void read_all_(const options &what, std::FILE *file, loader &to) {
    progress shown(size_of_(file));
    csv_reader records(what.delimiter, [&](const csv_record &record) {
        if (record.line > what.skip) {
            to.take(record);
        } else {
            to.skip(record);
        }
    });
    std::vector<char> block(1 << 18);
    long long bytes = 0;
    for (bool is_first = true;; is_first = false) {
        std::string_view piece(block.data(), std::fread(block.data(), 1, block.size(), file));
        if (std::ferror(file) != 0) throw std::system_error(errno, std::generic_category(), what.file);
        if (piece.empty()) break;
        bytes += static_cast<long long>(piece.size());
        if (is_first && piece.starts_with("\xEF\xBB\xBF")) piece.remove_prefix(3);  // a byte order mark
        records.feed(piece);
        shown.show(bytes, to.loaded());
    }
    records.finish();
}

int import_(const options &what) {
    const auto begin = std::chrono::steady_clock::now();
    const file_t file = open_(what.file);
    loader to(what);
    read_all_(what, file.get(), to);
    to.commit();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    std::printf("%s: %ld rows loaded, %ld refused%s%s, %.2f s\n", what.table.c_str(), to.loaded(),
                to.refused(), to.refused() > 0 && !what.errors.empty() ? ", see " : "",
                to.refused() > 0 ? what.errors.c_str() : "", seconds.count());
    return to.refused() == 0 ? _all_loaded : _some_refused;
}

}  // namespace

int main(int argc, char **argv) {
    try {
        return import_(options_(argc, argv));
    } catch (const usage_error &error) {
        (void)std::fprintf(stderr, "%s%s%s", *error.what() == '\0' ? "" : "dvimport: ", error.what(),
                           *error.what() == '\0' ? "" : "\n");
        (void)std::fputs("See dvimport --help.\n", stderr);
    } catch (const std::exception &error) {
        (void)std::fprintf(stderr, "dvimport: %s; nothing was loaded\n", error.what());
    }
    return _failed;
}
