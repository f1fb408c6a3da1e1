// Takes a recording from its sampling rate to another one, and shows what that did.
// SPDX-License-Identifier: MIT
#include <kvrs.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>

#include "resample/converter.h"
#include "resample/picture.h"
#include "resample/sweep.h"
#include "support/failure.h"
#include "support/options.h"
#include "support/progress.h"
#include "support/recording.h"
#include "support/report.h"
#include "support/spectrum.h"

namespace resample {
namespace {

constexpr const char* kUsage = R"(usage: resample [OPTION]... RECORDING

  --rate HZ            the new sampling rate, a whole number (default: 48000)
  --attenuation DB     of aliases and images (default: 120)
  --pass PERCENT       of half the lower rate that passes whole (default: 91.3)
  --block N            samples in one call of the filter, about (default: 16384)
  --out DIRECTORY      for sound, picture and report (default: resampled)
  --help               this text
)";

struct Options {
  int rate = 48000;
  Quality quality;
  int blockLength = 16384;
  std::string out = "resampled", recording;
  bool help = false;
};

Options parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; i++) {
    const std::string argument = argv[i];
    const auto value = [&] {
      if (i + 1 >= argc) throw Failure(argument + " wants a value");
      return argv[++i];
    };
    if (argument == "--rate") {
      options.rate = wholeNumber(argument, value(), 100, 1000000);
    } else if (argument == "--attenuation") {
      options.quality.attenuation = number(argument, value(), 30, 160);
    } else if (argument == "--pass") {
      options.quality.passBand = number(argument, value(), 10, 99.5) / 100;
    } else if (argument == "--block") {
      options.blockLength = wholeNumber(argument, value(), 1, 1 << 24);
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

double peakDb(const Recording& recording) {
  float largest = 0;
  for (const Samples& channel : recording.channels) {
    for (float sample : channel) largest = std::max(largest, std::fabs(sample));
  }
  return 20 * std::log10(std::max(largest, 1e-10f));
}

void run(const Options& options) {
  using Clock = std::chrono::steady_clock;
  const Recording before = readRecording(options.recording);
  const Converter converter(before.sampleRate, options.rate, options.quality);

  std::error_code error;
  std::filesystem::create_directories(options.out, error);
  if (error) throw Failure("cannot make the directory " + options.out + ": " + error.message());
  const std::string out = options.out + "/";
  Report report(out + "report.txt");

  const auto start = Clock::now();
  const Recording after =
      convert(before, converter, options.rate, options.blockLength, ProgressBar("resampling"));
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();

  const std::string name = std::filesystem::path(options.recording).filename();
  const size_t channels = before.channels.size();
  report.line("recording", "%s: %.2f s, %d Hz, %zu channel%s", name.c_str(), before.seconds(),
              before.sampleRate, channels, channels == 1 ? "" : "s");
  report.line("resampled", "to %d Hz: %d results for %d samples, %zu of them where there were %zu",
              options.rate, converter.up(), converter.down(), after.length(), before.length());
  const size_t up = static_cast<size_t>(converter.up());
  report.line("filter", "%zu taps, %zu of which meet in a result, module %s", converter.tapsLen(),
              (converter.tapsLen() + up - 1) / up, kvrsGetLibVersion()->targetCpu);
  report.line("speed", "%.0f times as fast as the recording is played",
              before.seconds() / std::max(seconds, 1e-9));

  const Sweep swept =
      sweep(converter, before.sampleRate, options.rate, options.blockLength, ProgressBar("sweeping  "));
  double ripple = 0, unwanted = swept.unwantedDb[0], unwantedHz = swept.hz[0];
  for (size_t k = 0; k < swept.hz.size(); k++) {
    if (swept.hz[k] <= converter.passHz()) ripple = std::max(ripple, std::fabs(swept.gainDb[k]));
    if (swept.unwantedDb[k] > unwanted) {
      unwanted = swept.unwantedDb[k];
      unwantedHz = swept.hz[k];
    }
  }
  report.line("passes", "0 to %.6g Hz, within %.2g dB", converter.passHz(), ripple);
  report.line("aliases", "%.1f dB below the sine that causes them, or less (at %.0f Hz)", -unwanted,
              unwantedHz);
  report.line("loudest", "%.1f dB of full scale before, %.1f dB after%s", peakDb(before), peakDb(after),
              peakDb(after) > 0 ? ": clipped" : "");

  writeRecording(after, out + "resampled.wav");
  const Spectrum spectrumBefore = meanSpectrum(before), spectrumAfter = meanSpectrum(after);
  char title[256], subtitle[128];
  snprintf(title, sizeof title, "%s from %d Hz to %d Hz", name.c_str(), before.sampleRate, options.rate);
  snprintf(subtitle, sizeof subtitle, "%zu taps; aliases %.0f dB below what causes them, or less",
           converter.tapsLen(), -unwanted);
  draw({title, subtitle, spectrumBefore, spectrumAfter, swept, converter.passHz()}, out + "picture.svg");
  report.line("written", "%s", options.out.c_str());
}

}  // namespace
}  // namespace resample

int main(int argc, char** argv) {
  try {
    const auto options = resample::parse(argc, argv);
    if (options.help) {
      fputs(resample::kUsage, stdout);
    } else {
      resample::run(options);
    }
    return 0;
  } catch (const std::bad_alloc&) {
    fputs("resample: not enough memory\n", stderr);
  } catch (const std::exception& failure) {
    fprintf(stderr, "resample: %s\n", failure.what());
  }
  return 1;
}
