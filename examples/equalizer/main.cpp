// Sends a recording through a cascade of second-order sections, and shows what was wanted of it and what it does.
// SPDX-License-Identifier: MIT
#include <kvrs.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <new>

#include "bands.h"
#include "filter.h"
#include "picture.h"
#include "support/failure.h"
#include "support/recording.h"

namespace equalizer {
namespace {

constexpr const char* kUsage = R"(usage: equalizer [OPTION]... RECORDING

Bands, any number of each, in the order in which they are to run:
  --high-pass HZ       12 dB an octave below this frequency (Butterworth)
  --low-pass HZ        12 dB an octave above it
  --peak HZ:DB:Q       so many dB more (or less) at this frequency, with this quality
Without any: --high-pass 80 --peak 300:-4:1.2 --peak 2500:5:1 --low-pass 12000, as far as the recording has room

  --block N            samples in one call of the filter (default: 4096)
  --out DIRECTORY      for sound, picture and report (default: equalized)
  --help               this text
)";

struct Options {
  std::vector<Band> bands;
  int blockLength = 4096;
  std::string out = "equalized", recording;
  bool help = false;
};

// `count` numbers with colons between them.
std::vector<double> numbers(const std::string& option, const char* text, size_t count) {
  std::vector<double> all;
  const char* at = text;
  for (char* end = nullptr;; at = end + 1) {
    const double number = std::strtod(at, &end);
    if (end == at || !std::isfinite(number)) break;
    all.push_back(number);
    if (*end == '\0' && all.size() == count) return all;
    if (*end != ':') break;
  }
  throw Failure(option + " does not understand \"" + text + "\"; see --help");
}

double within(const std::string& option, double number, double lowest, double highest) {
  if (number >= lowest && number <= highest) return number;
  char text[128];
  snprintf(text, sizeof text, " wants a number from %g to %g, not %g", lowest, highest, number);
  throw Failure(option + text);
}

Options parse(int argc, char** argv) {
  constexpr double kHighestHz = 1e6;
  Options options;
  for (int i = 1; i < argc; i++) {
    const std::string argument = argv[i];
    const auto value = [&] {
      if (i + 1 >= argc) throw Failure(argument + " wants a value");
      return argv[++i];
    };
    if (argument == "--high-pass" || argument == "--low-pass") {
      const Kind kind = argument == "--high-pass" ? Kind::highPass : Kind::lowPass;
      options.bands.push_back({kind, within(argument, numbers(argument, value(), 1)[0], 1, kHighestHz)});
    } else if (argument == "--peak") {
      const auto given = numbers(argument, value(), 3);
      options.bands.push_back({Kind::peak, within(argument, given[0], 1, kHighestHz),
                               within(argument, given[1], -40, 40), within(argument, given[2], 0.05, 50)});
    } else if (argument == "--block") {
      const double block = within(argument, numbers(argument, value(), 1)[0], 1, 1 << 24);
      if (block != std::floor(block)) throw Failure("--block wants a whole number");
      options.blockLength = static_cast<int>(block);
    } else if (argument == "--out") {
      options.out = value();
    } else if (argument == "--help") {
      options.help = true;
      return options;
    } else if (argument.size() > 1 && argument[0] == '-') {
      throw Failure("unknown option " + argument + "; see --help");
    } else if (!options.recording.empty()) {
      throw Failure("one recording at a time, please: " + options.recording + " or " + argument);
    } else {
      options.recording = argument;
    }
  }
  if (options.recording.empty()) throw Failure("no recording given; see --help");
  return options;
}

std::vector<Band> usualBands(double sampleRate) {
  std::vector<Band> bands{
      {Kind::highPass, 80}, {Kind::peak, 300, -4, 1.2}, {Kind::peak, 2500, 5, 1}, {Kind::lowPass, 12000}};
  std::erase_if(bands, [=](const Band& band) { return band.hz >= 0.45 * sampleRate; });
  return bands;
}

// 1/24 of an octave each.
std::vector<double> frequencies(double sampleRate) {
  std::vector<double> hz;
  for (double f = 20; f < 0.49 * sampleRate; f *= std::pow(2.0, 1.0 / 24)) hz.push_back(f);
  return hz;
}

double decibels(double gain) {
  return 20 * std::log10(std::max(gain, 1e-10));
}

double peakDb(const Recording& recording) {
  float largest = 0;
  for (const Samples& channel : recording.channels) {
    for (float sample : channel) largest = std::max(largest, std::fabs(sample));
  }
  return decibels(largest);
}

// Prints to stdout and into the report.
template <class... Values>
void line(FILE* report, const char* topic, const char* format, Values... values) {
  for (FILE* out : {stdout, report}) {
    fprintf(out, "%-12s", topic);
    fprintf(out, format, values...);
    fputc('\n', out);
  }
}

void run(const Options& options) {
  const Recording before = readRecording(options.recording);
  const double rate = before.sampleRate;
  const auto bands = options.bands.empty() ? usualBands(rate) : options.bands;
  std::vector<Section> sections;
  for (const Band& band : bands) sections.push_back(designSection(band, rate));

  std::error_code error;
  std::filesystem::create_directories(options.out, error);
  if (error) throw Failure("cannot make the directory " + options.out + ": " + error.message());
  const std::string out = options.out + "/", reportPath = out + "report.txt";
  const std::unique_ptr<FILE, int (*)(FILE*)> report(fopen(reportPath.c_str(), "w"), fclose);
  if (report == nullptr) throw Failure("cannot write " + reportPath);

  const Recording after = equalize(before, sections, options.blockLength);
  const auto hz = frequencies(rate);
  Picture picture{"", "", hz, {}, {}};
  double worst = 0;
  for (double f : hz) {
    double gain = 1;
    for (const Band& band : bands) gain *= wantedGain(band, f, rate);
    picture.wantedDb.push_back(decibels(gain));
  }
  for (double gain : measuredGains(sections, hz, rate, options.blockLength)) {
    picture.measuredDb.push_back(decibels(gain));
    const double wanted = picture.wantedDb[picture.measuredDb.size() - 1];
    if (wanted > -60) worst = std::max(worst, std::fabs(picture.measuredDb.back() - wanted));
  }

  const std::string name = std::filesystem::path(options.recording).filename();
  line(report.get(), "recording", "%s: %.2f s, %d Hz, %zu channel%s", name.c_str(), before.seconds(),
       before.sampleRate, before.channels.size(), before.channels.size() == 1 ? "" : "s");
  line(report.get(), "filter", "%zu section%s, module %s", sections.size(), sections.size() == 1 ? "" : "s",
       kvrsGetLibVersion()->targetCpu);
  for (size_t i = 0; i < bands.size(); i++) {
    const Band& band = bands[i];
    char what[128];
    if (band.kind == Kind::peak) {
      snprintf(what, sizeof what, "peak of %+.4g dB at %.5g Hz, quality %.4g", band.gainDb, band.hz,
               band.quality);
    } else {
      snprintf(what, sizeof what, "%s-pass at %.5g Hz", band.kind == Kind::highPass ? "high" : "low",
               band.hz);
    }
    line(report.get(), i == 0 ? "bands" : "", "%s", what);
  }
  line(report.get(), "deviation", "%.2g dB at most from what is wanted", worst);
  line(report.get(), "loudest", "%.1f dB of full scale before, %.1f dB after%s", peakDb(before),
       peakDb(after), peakDb(after) > 0 ? ": clipped" : "");

  writeRecording(after, out + "equalized.wav");
  char text[128];
  picture.title = name + " through an equalizer";
  snprintf(text, sizeof text,
           "%zu second-order sections in single precision, %.2g dB at most from what is wanted",
           sections.size(), worst);
  picture.subtitle = text;
  draw(picture, out + "picture.svg");
  line(report.get(), "written", "%s", options.out.c_str());
}

}  // namespace
}  // namespace equalizer

int main(int argc, char** argv) {
  try {
    const auto options = equalizer::parse(argc, argv);
    if (options.help) {
      fputs(equalizer::kUsage, stdout);
    } else {
      equalizer::run(options);
    }
    return 0;
  } catch (const std::bad_alloc&) {
    fputs("equalizer: not enough memory\n", stderr);
  } catch (const std::exception& failure) {
    fprintf(stderr, "equalizer: %s\n", failure.what());
  }
  return 1;
}
