// SPDX-License-Identifier: MIT
#include "picture.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <algorithm>
#include <cmath>

#include "support/failure.h"
#include "support/spectrum.h"

namespace denoise {
namespace {

double decibels(double power) {
  return 10.0 * std::log10(std::max(power, 1e-14));
}

// A string of gnuplot's, in which nothing is special.
std::string quoted(const std::string& text) {
  std::string result = "'";
  for (char c : text) {
    if (c == '\'') result += '\'';
    if (static_cast<unsigned char>(c) >= ' ') result += c;
  }
  return result + "'";
}

// A table that plots refer to by its name.
void sendCurve(FILE* out, const char* name, const Spectrum& spectrum) {
  fprintf(out, "%s << EOD\n", name);
  // On a logarithmic axis high frequencies lie dense: the loudest of a bunch, so that no peak is lost.
  constexpr double kBunch = 1.004;
  for (size_t k = 1; k < spectrum.power.size();) {
    const double frequency = spectrum.stepHz * static_cast<double>(k);
    double power = 0;
    size_t next = k;
    while (next < spectrum.power.size() &&
           (next == k || spectrum.stepHz * static_cast<double>(next) < frequency * kBunch)) {
      power = std::max(power, spectrum.power[next++]);
    }
    fprintf(out, "%.7g %.4g\n", frequency, decibels(power));
    k = next;
  }
  fprintf(out, "EOD\n");
}

void sendSpectrogram(FILE* out, const char* title, const Recording& recording, double highestHz) {
  const Spectrogram image = spectrogram(recording, highestHz, 700);
  fprintf(out, "set title %s font 'Sans Bold,12' offset 0,-0.5\n", quoted(title).c_str());
  fprintf(out, "set xrange [0:%g]\nset yrange [0:%g]\n", recording.seconds(), highestHz / 1000);
  fprintf(out,
          "plot '-' binary array=(%zu,%zu) format='%%float32' dx=%.9g dy=%.9g origin=(%.9g,%.9g) with image "
          "notitle\n",
          image.columns, image.rows, image.stepSeconds, image.stepHz / 1000, image.stepSeconds / 2, 0.0);
  Samples levels(image.power.size());
  std::transform(image.power.begin(), image.power.end(), levels.begin(),
                 [](float power) { return static_cast<float>(decibels(power)); });
  fwrite(levels.data(), sizeof(float), levels.size(), out);
}

constexpr const char* kSetup = R"(
set multiplot
set palette defined (0 '#0d0887', 0.25 '#7e03a8', 0.5 '#cc4778', 0.75 '#f89540', 1 '#f0f921')
set cbrange [-100:-30]
set tics nomirror out
set border 3 lc '#808080'
set tics textcolor '#303030'
set tmargin at screen 0.875
set bmargin at screen 0.535
set xlabel 'time in s' offset 0,0.4
)";

}  // namespace

bool canDraw() {
  return system("command -v gnuplot >/dev/null 2>&1") == 0;
}

void draw(const Picture& picture, const std::string& path) {
  signal(SIGPIPE, SIG_IGN);  // a gnuplot that ends early is found out below
  remove(path.c_str());
  FILE* out = popen("gnuplot", "w");
  if (out == nullptr) throw Failure("cannot start gnuplot");

  fprintf(out, "set terminal pngcairo size 1280,900 font 'Sans,11' noenhanced background '#ffffff'\n");
  fprintf(out, "set output %s\n", quoted(path).c_str());
  fputs(kSetup, out);
  fprintf(out, "set label 1 %s at screen 0.06,0.965 font 'Sans Bold,15'\n", quoted(picture.title).c_str());
  fprintf(out, "set label 2 %s at screen 0.06,0.93 textcolor '#404040'\n", quoted(picture.subtitle).c_str());

  fputs(
      "set lmargin at screen 0.06\nset rmargin at screen 0.47\nset ylabel 'frequency in kHz'\nunset "
      "colorbox\n",
      out);
  sendSpectrogram(out, "Before", picture.before, picture.highestHz);
  fputs(
      "unset label\nset lmargin at screen 0.51\nset rmargin at screen 0.92\nunset ylabel\n"
      "set colorbox user origin 0.935,0.535 size 0.013,0.34 noborder\nset cblabel 'dB of full scale'\n",
      out);
  sendSpectrogram(out, "After", picture.after, picture.highestHz);

  if (picture.clean != nullptr) sendCurve(out, "$clean", meanSpectrum(*picture.clean));
  sendCurve(out, "$before", meanSpectrum(picture.before));
  sendCurve(out, "$after", meanSpectrum(picture.after));
  sendCurve(out, "$filter", response(picture.taps, picture.before.sampleRate));
  fprintf(out, "set xrange [50:%g]\n", picture.before.sampleRate / 2.0);
  fputs(R"(
set lmargin at screen 0.06
set rmargin at screen 0.92
set tmargin at screen 0.43
set bmargin at screen 0.07
set label 3 'Mean spectra, and what the filter lets through' at screen 0.06,0.455 font 'Sans Bold,12'
unset title
set logscale x
set xtics ('50' 50, '100' 100, '200' 200, '500' 500, '1k' 1000, '2k' 2000, '5k' 5000, '10k' 10000, '20k' 20000)
set yrange [-130:5]
set ytics 20
set grid lc '#e0e0e0' lt 1
set xlabel 'frequency in Hz'
set ylabel 'dB of full scale' offset 1.5,0
set key at screen 0.92,0.467 right top horizontal samplen 2
)",
        out);
  fputs("plot ", out);
  if (picture.clean != nullptr) {
    fputs("$clean with filledcurves y1=-130 lc '#d8dde3' title 'clean', ", out);
  }
  fputs(
      "$before with lines lc '#d62728' lw 1.5 title 'before', "
      "$after with lines lc '#1f5fbf' lw 1.5 title 'after', "
      "$filter with lines lc '#000000' lw 1 dt 2 title 'filter'\n"
      "unset multiplot\n",
      out);
  const bool sent = ferror(out) == 0;
  FILE* written = nullptr;
  if (pclose(out) == 0 && sent) written = fopen(path.c_str(), "rb");
  if (written == nullptr) throw Failure("gnuplot could not draw " + path);
  fclose(written);
}

}  // namespace denoise
