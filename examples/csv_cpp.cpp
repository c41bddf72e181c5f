// Sums by group over a large CSV file: all processors, a column at a time, exact to the last digit.
//
//   csv_cpp --make 10000000 >orders.csv     # rows such as "2026-03-14,Busan,-1234.50"
//   csv_cpp orders.csv                      # counts and sums by the second field, rows a second
//   csv_cpp orders.csv 1                    # in one thread
//
// Each thread takes a part of the file. It gathers the third fields of some thousand rows behind each other,
// as a column of texts by offsets, reads them at once, and adds each to the total of its row's group. Totals
// of the threads merge in the end; since none is rounded, the result does not depend on how the file was
// parted.

#include <dvtypes/column.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <dvtypes/dvtypes.hpp>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_map>
#include <vector>

namespace {

constexpr size_t block_rows = 4096;

// The rows of one thread, a block of them at a time.
class summary {
  public:
    void add(std::string_view group, std::string_view amount) {
        groups_.push_back(number_of(group));
        bytes_ += amount;
        offsets_.push_back(static_cast<int32_t>(bytes_.size()));
        if (groups_.size() == block_rows) end_block();
    }
    void end_block() {
        dv_column_t texts{}, values{};
        texts.count = values.count = static_cast<int64_t>(groups_.size());
        texts.values = bytes_.data();
        texts.offsets = offsets_.data();
        texts.size = static_cast<int64_t>(bytes_.size());
        values.values = numbers_.data();
        values.stride = sizeof numbers_[0];
        dv_column_faults_t faults{};
        number_column_from_text(&texts, &values, &faults);  // a row that is no number becomes NULL
        refused_ += faults.count;
        const number_totals_t totals = {static_cast<int64_t>(totals_.size()), totals_.data(),
                                        sizeof totals_[0]};
        number_column_sum_by_group(&values, groups_.data(), &totals, &faults);
        rows_ += texts.count;
        bytes_.clear();
        groups_.clear();
        offsets_.assign(1, 0);
    }
    // By name, behind end_block.
    void merge_into(std::map<std::string, number_total_t> &all) const {
        for (const auto &[name, group] : groups_by_name_) {
            dv::guarded([&, &total = all[std::string(name)], &part = totals_[static_cast<size_t>(group)]] {
                number_total_merge(&total, &part);
            });
        }
    }
    int64_t rows() const { return rows_; }
    int64_t refused() const { return refused_; }

  private:
    int32_t number_of(std::string_view group) {
        const auto [place, is_new] = groups_by_name_.try_emplace(group, static_cast<int32_t>(totals_.size()));
        if (is_new) totals_.emplace_back();
        return place->second;
    }

    std::unordered_map<std::string_view, int32_t> groups_by_name_;  // names lie in the file
    std::vector<number_total_t> totals_;                            // by group: 48 bytes each
    std::vector<int32_t> groups_;                                   // of the rows of the block
    std::string bytes_;
    std::vector<int32_t> offsets_{0};
    std::vector<number_t> numbers_ = std::vector<number_t>(block_rows);
    int64_t rows_ = 0, refused_ = 0;
};

// Lines "day,group,amount".
summary summarise(std::string_view lines) {
    summary sums;
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(lines.size(), line.size() + 1));
        const size_t first = line.find(','), second = line.find(',', first + 1);
        if (second != line.npos)
            sums.add(line.substr(first + 1, second - first - 1), line.substr(second + 1));
    }
    sums.end_block();
    return sums;
}

// The file in as many parts, which begin with a line.
std::vector<std::string_view> parts_of(std::string_view file, size_t count) {
    std::vector<std::string_view> parts;
    for (; count > 0; --count) {
        const size_t end = file.find('\n', file.size() / count);
        parts.push_back(file.substr(0, end));
        file.remove_prefix(end == file.npos ? file.size() : end + 1);
    }
    return parts;
}

std::string_view mapped(const char *path) {
    const int descriptor = open(path, O_RDONLY);
    struct stat found {};
    if (descriptor < 0 || fstat(descriptor, &found) != 0 || found.st_size == 0) return {};
    void *const bytes =
        mmap(nullptr, static_cast<size_t>(found.st_size), PROT_READ, MAP_PRIVATE, descriptor, 0);
    close(descriptor);
    if (bytes == MAP_FAILED) return {};
    return {static_cast<const char *>(bytes), static_cast<size_t>(found.st_size)};
}

int report(const char *path, size_t threads) {
    const std::string_view file = mapped(path);
    if (file.empty()) {
        std::cerr << path << ": cannot be read, or is empty\n";
        return 1;
    }
    const auto begin = std::chrono::steady_clock::now();
    std::vector<summary> sums(threads);
    std::vector<std::thread> workers;
    const auto parts = parts_of(file, threads);
    for (size_t i = 0; i < threads; ++i) workers.emplace_back([&, i] { sums[i] = summarise(parts[i]); });
    for (std::thread &worker : workers) worker.join();

    std::map<std::string, number_total_t> all;
    int64_t rows = 0, refused = 0;
    for (const summary &part : sums) {
        part.merge_into(all);
        rows += part.rows();
        refused += part.refused();
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    for (const auto &[group, total] : all) {
        number_t sum;
        dv::guarded([&, &total = total] { number_total_sum(&total, &sum); });
        std::cout << group << ' ' << total.count << ' ' << dv::number::of_valid(sum) << '\n';
    }
    std::cout << rows << " rows, " << refused << " refused\n";
    std::fprintf(stderr, "%.0f rows a second in %zu threads\n", static_cast<double>(rows) / taken.count(),
                 threads);
    return 0;
}

int make(long rows) {
    constexpr const char *groups[] = {"Seoul",   "Busan",   "Incheon", "Daegu",
                                      "Daejeon", "Gwangju", "Ulsan",   "Jeju"};
    unsigned long long random = 1;
    for (long i = 0; i < rows; ++i) {
        random = random * 6364136223846793005 + 1442695040888963407;
        const auto bits = static_cast<unsigned>(random >> 33);
        std::printf("2026-%02u-%02u,%s,%s%u.%02u\n", bits % 12 + 1, bits / 16 % 28 + 1,
                    groups[bits / 512 % 8], bits % 5 == 0 ? "-" : "", bits / 4096 % 100'000, bits % 100);
    }
    return 0;
}

}  // namespace

int main(int argc, char **argv) {
    if (argc == 3 && std::string_view(argv[1]) == "--make") return make(std::atol(argv[2]));
    if (argc != 2 && argc != 3) {
        std::cerr << "csv_cpp FILE [THREADS] | csv_cpp --make ROWS\n";
        return 2;
    }
    const size_t threads = argc == 3 ? static_cast<size_t>(std::max(1L, std::atol(argv[2])))
                                     : std::max(1U, std::thread::hardware_concurrency());
    return report(argv[1], threads);
}
