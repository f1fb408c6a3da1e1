// What a program tells about its work.
// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "support/failure.h"

namespace examples {

// Prints to stdout and into a file.
class Report {
 public:
  explicit Report(const std::string& path) : file_(fopen(path.c_str(), "w")) {
    if (file_ == nullptr) throw Failure("cannot write " + path + ": " + strerror(errno));
  }
  ~Report() { fclose(file_); }
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;

  template <class... Values>
  void line(const char* topic, const char* format, Values... values) {
    for (FILE* out : {stdout, file_}) {
      fprintf(out, "%-16s", topic);
      fprintf(out, format, values...);
      fputc('\n', out);
    }
  }

 private:
  FILE* file_;
};

}  // namespace examples
