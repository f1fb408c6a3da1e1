// OpenBLAS, single-threaded. Its headers are packed for one ABI only, so what is measured is declared here.
// SPDX-License-Identifier: MIT
#ifndef KVRS_BENCH_STATS_OPENBLAS_H
#define KVRS_BENCH_STATS_OPENBLAS_H

#include <cstddef>

extern "C" {
float cblas_ssum(int n, const float* x, int step);
double cblas_dsum(int n, const double* x, int step);
float cblas_sasum(int n, const float* x, int step);
double cblas_dasum(int n, const double* x, int step);
float cblas_snrm2(int n, const float* x, int step);
double cblas_dnrm2(int n, const double* x, int step);
float cblas_sdot(int n, const float* x, int stepX, const float* y, int stepY);
double cblas_ddot(int n, const double* x, int stepX, const double* y, int stepY);
size_t cblas_ismax(int n, const float* x, int step);
size_t cblas_idmax(int n, const double* x, int step);
size_t cblas_ismin(int n, const float* x, int step);
size_t cblas_idmin(int n, const double* x, int step);
size_t cblas_isamax(int n, const float* x, int step);
size_t cblas_idamax(int n, const double* x, int step);
}

namespace kvrs::bench {

// By the element's type.
struct OpenBlas {
  static float sum(int n, const float* x) { return cblas_ssum(n, x, 1); }
  static double sum(int n, const double* x) { return cblas_dsum(n, x, 1); }
  static float l1(int n, const float* x) { return cblas_sasum(n, x, 1); }
  static double l1(int n, const double* x) { return cblas_dasum(n, x, 1); }
  static float l2(int n, const float* x) { return cblas_snrm2(n, x, 1); }
  static double l2(int n, const double* x) { return cblas_dnrm2(n, x, 1); }
  static float dot(int n, const float* x, const float* y) { return cblas_sdot(n, x, 1, y, 1); }
  static double dot(int n, const double* x, const double* y) { return cblas_ddot(n, x, 1, y, 1); }
  static size_t maxIndex(int n, const float* x) { return cblas_ismax(n, x, 1); }
  static size_t maxIndex(int n, const double* x) { return cblas_idmax(n, x, 1); }
  static size_t minIndex(int n, const float* x) { return cblas_ismin(n, x, 1); }
  static size_t minIndex(int n, const double* x) { return cblas_idmin(n, x, 1); }
  static size_t maxAbsIndex(int n, const float* x) { return cblas_isamax(n, x, 1); }
  static size_t maxAbsIndex(int n, const double* x) { return cblas_idamax(n, x, 1); }
};

}  // namespace kvrs::bench

#endif
