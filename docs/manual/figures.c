/* Writes what the figures of the manual show, computed by the library: figures DIRECTORY. One file for each figure, one
 * column for each curve; figures.gp draws them.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

static const char* directory;

static void check(const char* what, KvrStatus status) {
  if (status >= kvrStatusOk) return;
  fprintf(stderr, "%s: %s\n", what, kvrsStatusText(status));
  exit(1);
}

static FILE* create(const char* name) {
  char path[1000];
  FILE* file;
  snprintf(path, sizeof path, "%s/%s.dat", directory, name);
  file = fopen(path, "w");
  if (file == NULL) {
    perror(path);
    exit(1);
  }
  return file;
}

static double decibels(double magnitude) {
  return 20 * log10(fmax(magnitude, 1e-10));
}

/* ---- Responses: the magnitude of a spectrum, from 0 to half the sampling rate. */

enum { kOrder = 13, kPoints = 1 << kOrder, kBins = kPoints / 2 + 1 };

static void magnitudes(const Kvr64f* signal, Kvr64f* magnitude) {
  static Kvr64f spectrum[2 * kBins];
  static KvrsFFTSpec_R_64f* spec;
  if (spec == NULL) check("fft", kvrsFFTInitAlloc_R_64f(&spec, kOrder, kvrFftNoDivByAny, kvrHintNone));
  check("fft", kvrsFFTFwd_RToCCS_64f(signal, spectrum, spec, NULL));
  check("magnitude", kvrsMagnitude_64fc((const Kvr64fc*)spectrum, magnitude, kBins));
}

static void windows(void) {
  enum { kLen = 65, kKinds = 6 };
  static Kvr64f window[kKinds][kPoints], magnitude[kKinds][kBins];
  FILE* file;
  int i, k;
  for (k = 0; k < kKinds; k++) check("set", kvrsSet_64f(1, window[k], kLen));
  check("window", kvrsWinBartlett_64f_I(window[0], kLen));
  check("window", kvrsWinHann_64f_I(window[1], kLen));
  check("window", kvrsWinHamming_64f_I(window[2], kLen));
  check("window", kvrsWinBlackmanStd_64f_I(window[3], kLen));
  check("window", kvrsWinBlackmanOpt_64f_I(window[4], kLen));
  check("window", kvrsWinKaiser_64f_I(window[5], kLen, (Kvr64f)(9.0 / 32)));
  file = create("windows");
  for (i = 0; i < kLen; i++) {
    fprintf(file, "%d", i);
    for (k = 0; k < kKinds; k++) fprintf(file, " %.6f", window[k][i]);
    fprintf(file, "\n");
  }
  fclose(file);
  for (k = 0; k < kKinds; k++) magnitudes(window[k], magnitude[k]);
  file = create("spectra");
  for (i = 0; i * kLen <= 16 * kPoints; i += 8) { /* up to 16 bins of a transform of kLen points */
    fprintf(file, "%.4f", (double)i * kLen / kPoints);
    for (k = 0; k < kKinds; k++) fprintf(file, " %.3f", decibels(magnitude[k][i] / magnitude[k][0]));
    fprintf(file, "\n");
  }
  fclose(file);
}

static void firResponses(void) {
  enum { kTaps = 65, kKinds = 5 };
  const int kinds[kKinds] = {-1, kvrWinBartlett, kvrWinHann, kvrWinHamming, kvrWinBlackmanOpt};
  static Kvr64f taps[kPoints], magnitude[kKinds][kBins];
  FILE* file = create("fir");
  int i, k;
  for (k = 0; k < kKinds; k++) {
    check("design", kvrsFIRGenLowpass_64f(0.1, taps, kTaps, kinds[k], 1));
    magnitudes(taps, magnitude[k]);
  }
  for (i = 0; i < kBins; i += 4) {
    fprintf(file, "%.5f", (double)i / kPoints);
    for (k = 0; k < kKinds; k++) fprintf(file, " %.3f", decibels(magnitude[k][i]));
    fprintf(file, "\n");
  }
  fclose(file);
}

static void iirResponses(void) {
  enum { kKinds = 5, kMostOrder = 8 };
  const int orders[kKinds] = {2, 4, 8, 4, 8};
  static Kvr64f impulse[kPoints], response[kPoints], magnitude[kKinds][kBins];
  Kvr64f taps[2 * (kMostOrder + 1)];
  FILE* file = create("iir");
  int i, k;
  impulse[0] = 1;
  for (k = 0; k < kKinds; k++) {
    KvrsIIRState_64f* filter = NULL;
    const int type = k < 3 ? kvrButterworth : kvrChebyshev1;
    check("design", kvrsIIRGenLowpass_64f(0.1, 1, orders[k], taps, type));
    check("filter", kvrsIIRInitAlloc_64f(&filter, taps, orders[k], NULL));
    check("filter", kvrsIIR_64f(impulse, response, kPoints, filter));
    kvrsIIRFree_64f(filter);
    magnitudes(response, magnitude[k]);
  }
  for (i = 0; i < kBins; i += 4) {
    fprintf(file, "%.5f", (double)i / kPoints);
    for (k = 0; k < kKinds; k++) fprintf(file, " %.3f", decibels(magnitude[k][i]));
    fprintf(file, "\n");
  }
  fclose(file);
}

/* ---- Errors of transforms, against one in extended precision. */

enum { kMostPoints = 1 << 16 };

static double noise(void) {
  static unsigned long long seed = 1;
  seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
  return (double)(long long)seed / 9.3e18;
}

/* Decimation in time, as the textbooks have it. */
static void reference(const long double* src, long double* dst, size_t len, size_t step) {
  size_t k;
  if (len == 1) {
    dst[0] = src[0];
    dst[1] = src[1];
    return;
  }
  reference(src, dst, len / 2, 2 * step);
  reference(src + 2 * step, dst + len, len / 2, 2 * step);
  for (k = 0; k < len / 2; k++) {
    const long double angle = -2 * 3.14159265358979323846264338327950288L * (long double)k / (long double)len;
    const long double c = cosl(angle), s = sinl(angle);
    long double *low = dst + 2 * k, *high = dst + len + 2 * k;
    const long double re = high[0] * c - high[1] * s, im = high[0] * s + high[1] * c;
    high[0] = low[0] - re;
    high[1] = low[1] - im;
    low[0] += re;
    low[1] += im;
  }
}

static void transformErrors(void) {
  static Kvr32fc singles[kMostPoints];
  static Kvr64fc doubles[kMostPoints];
  static long double exact[2 * kMostPoints], spectrum[2 * kMostPoints];
  FILE* file = create("fft");
  int order, i;
  for (order = 2; 1 << order <= kMostPoints; order++) {
    const int len = 1 << order;
    KvrsFFTSpec_C_32fc* ofSingles = NULL;
    KvrsFFTSpec_C_64fc* ofDoubles = NULL;
    long double energy = 0, errors[2] = {0, 0};
    check("fft", kvrsFFTInitAlloc_C_32fc(&ofSingles, order, kvrFftNoDivByAny, kvrHintNone));
    check("fft", kvrsFFTInitAlloc_C_64fc(&ofDoubles, order, kvrFftNoDivByAny, kvrHintNone));
    for (i = 0; i < len; i++) {
      singles[i].re = (Kvr32f)noise();
      singles[i].im = (Kvr32f)noise();
      doubles[i].re = singles[i].re;
      doubles[i].im = singles[i].im;
      exact[2 * i] = singles[i].re;
      exact[2 * i + 1] = singles[i].im;
    }
    reference(exact, spectrum, (size_t)len, 1);
    check("fft", kvrsFFTFwd_CToC_32fc_I(singles, ofSingles, NULL));
    check("fft", kvrsFFTFwd_CToC_64fc_I(doubles, ofDoubles, NULL));
    for (i = 0; i < len; i++) {
      const long double re = spectrum[2 * i], im = spectrum[2 * i + 1];
      energy += re * re + im * im;
      errors[0] += (singles[i].re - re) * (singles[i].re - re) + (singles[i].im - im) * (singles[i].im - im);
      errors[1] += (doubles[i].re - re) * (doubles[i].re - re) + (doubles[i].im - im) * (doubles[i].im - im);
    }
    /* In units of the distance from 1 to the next number of the type. */
    fprintf(file, "%d %.4f %.4f\n", order, (double)sqrtl(errors[0] / energy) * 0x1p23,
            (double)sqrtl(errors[1] / energy) * 0x1p52);
    kvrsFFTFree_C_32fc(ofSingles);
    kvrsFFTFree_C_64fc(ofDoubles);
  }
  fclose(file);
}

/* ---- Elementary functions: the largest error among the arguments of a bin, in units in the last place. */

enum { kArguments = 4096 };

static double ulps(float result, long double exact) {
  int exponent;
  frexp((double)exact, &exponent);
  if (exponent < -125) exponent = -125;
  return (double)fabsl((result - exact) * ldexpl(1, 24 - exponent));
}

typedef KvrStatus (*Function)(const Kvr32f* src, Kvr32f* dst, int len);
typedef long double (*Exact)(long double x);

static void elementary(const char* name, Function function, Exact exact, double from, double to, int powers) {
  static Kvr32f src[kArguments], dst[kArguments];
  FILE* file = create(name);
  int bin, i;
  for (bin = 0; bin < 120; bin++) {
    double worst = 0;
    for (i = 0; i < kArguments; i++) {
      const double x = from + (to - from) * (bin + (i + 0.5 + 0.4 * noise()) / kArguments) / 120;
      src[i] = (Kvr32f)(powers ? exp2(x) : x);
    }
    check(name, function(src, dst, kArguments));
    for (i = 0; i < kArguments; i++) worst = fmax(worst, ulps(dst[i], exact(src[i])));
    fprintf(file, "%.4f %.4f\n", from + (to - from) * (bin + 0.5) / 120, worst);
  }
  fclose(file);
}

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: figures DIRECTORY\n");
    return 1;
  }
  directory = argv[1];
  windows();
  firResponses();
  iirResponses();
  transformErrors();
  elementary("exponential", kvrsExp_32f, expl, -80, 80, 0);
  elementary("logarithm", kvrsLn_32f, logl, -10, 10, 1);
  elementary("arctan", kvrsArctan_32f, atanl, -10, 10, 0);
  elementary("sqrt", kvrsSqrt_32f, sqrtl, -10, 10, 1);
  elementary("cubrt", kvrsCubrt_32f, cbrtl, -10, 10, 1);
  return 0;
}
