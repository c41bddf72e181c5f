// How far a file has been read, on a terminal.

#ifndef DV_IMPORT_PROGRESS_H
#define DV_IMPORT_PROGRESS_H

#include <unistd.h>

#include <chrono>
#include <cstdio>

namespace dv::import {

// A line of standard error, renewed some times a second, where that is a terminal; gone when it is destroyed.
class progress {
  public:
    // size: 0 where nobody knows it.
    explicit progress(long long size) : size_(size), is_shown_(isatty(STDERR_FILENO) != 0) {}
    ~progress() {
        if (is_drawn_) (void)std::fputs("\r\x1B[K", stderr);
    }
    progress(const progress &) = delete;
    progress &operator=(const progress &) = delete;

    void show(long long bytes, long rows) {
        const auto now = std::chrono::steady_clock::now();
        if (!is_shown_ || now - drawn_ < std::chrono::milliseconds(100)) return;
        drawn_ = now;
        is_drawn_ = true;
        if (size_ <= 0) {
            (void)std::fprintf(stderr, "\r\x1B[K%ld rows", rows);
        } else {
            constexpr int width = 40;
            const double part = static_cast<double>(bytes) / static_cast<double>(size_);
            const int filled = static_cast<int>(part * width);
            (void)std::fprintf(stderr, "\r\x1B[K[%.*s%*s] %3.0f %%  %ld rows", filled,
                               "########################################", width - filled, "", part * 100,
                               rows);
        }
        (void)std::fflush(stderr);
    }

  private:
    long long size_;
    bool is_shown_, is_drawn_ = false;
    std::chrono::steady_clock::time_point drawn_;
};

}  // namespace dv::import

#endif  // DV_IMPORT_PROGRESS_H
