// How far a long piece of work is.
// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

namespace examples {

// Called now and then with the part that is done, from 0 to 1.
using Progress = std::function<void(double)>;

// A bar on stderr, if that is a terminal and the work lasts.
class ProgressBar {
 public:
  explicit ProgressBar(std::string what) : what_(std::move(what)) {}

  void operator()(double done) {
    if (!terminal_) return;
    const auto now = Clock::now();
    const bool due = now - last_ > std::chrono::milliseconds(100);
    if (!due && !(drawn_ && done >= 1)) return;
    last_ = now;
    drawn_ = true;
    constexpr int kWidth = 50;
    const int filled = static_cast<int>(done * kWidth);
    fprintf(stderr, "\r%s [%.*s%*s] %3.0f %%%s", what_.c_str(), filled,
            "##################################################", kWidth - filled, "", 100 * done,
            done >= 1 ? "\n" : "");
  }

 private:
  using Clock = std::chrono::steady_clock;
  std::string what_;
  bool terminal_ = isatty(STDERR_FILENO) != 0;
  bool drawn_ = false;
  Clock::time_point last_ = Clock::now();
};

}  // namespace examples
