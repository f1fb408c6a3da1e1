// Takes a whistle and hiss out of a recording with one long FIR filter, and shows what that did. With
// --whistle and
// --hiss it first spoils the recording itself, so that the result can be compared with the clean original.
// SPDX-License-Identifier: MIT
#include <kvrs.h>
#include <kvrscore.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <new>

#include "disturbance.h"
#include "filter.h"
#include "picture.h"
#include "support/failure.h"
#include "support/options.h"
#include "support/progress.h"
#include "support/recording.h"
#include "support/report.h"
#include "support/spectrum.h"

namespace denoise {
namespace {

constexpr const char* kUsage = R"(usage: denoise [OPTION]... RECORDING

Spoil the recording first:
  --whistle HZ         add a whistle of this frequency
  --whistle-level DB   of this amplitude (default: -20 dB of full scale)
  --hiss DB            add hiss of this root mean square

Clean it:
  --notch HZ           cut this frequency out (default: that of the whistle)
  --low-pass HZ        cut off everything above (default: 4000)
  --taps N             length of the filter, odd (default: what a transition of 50 Hz takes)
  --block N            samples in one call of the filter (default: 4801)

Show it:
  --out DIRECTORY      for sounds, picture and report (default: denoised)
  --no-picture         leave the picture out
  --speed              measure the filter's speed
  --help               this text
)";

struct Options {
  Disturbance disturbance;
  FilterDesign design;
  int blockLength = 4801;
  std::string out = "denoised";
  std::string recording;
  bool picture = true;
  bool speed = false;
  bool help = false;
};

Options parse(int argc, char** argv) {
  constexpr double kHighestHz = 1e6;
  Options options;
  options.design.lowPassHz = 4000;
  for (int i = 1; i < argc; i++) {
    const std::string argument = argv[i];
    const auto value = [&] {
      if (i + 1 >= argc) throw Failure(argument + " wants a value");
      return argv[++i];
    };
    if (argument == "--whistle") {
      options.disturbance.whistleHz = number(argument, value(), 1, kHighestHz);
    } else if (argument == "--whistle-level") {
      options.disturbance.whistleLevel = number(argument, value(), -120, 0);
    } else if (argument == "--hiss") {
      options.disturbance.hissLevel = number(argument, value(), -120, 0);
    } else if (argument == "--notch") {
      options.design.notchHz = number(argument, value(), 1, kHighestHz);
    } else if (argument == "--low-pass") {
      options.design.lowPassHz = number(argument, value(), 1, kHighestHz);
    } else if (argument == "--taps") {
      options.design.tapsLen = wholeNumber(argument, value(), 5, 1 << 20);
      if (*options.design.tapsLen % 2 == 0) throw Failure("--taps wants an odd number");
    } else if (argument == "--block") {
      options.blockLength = wholeNumber(argument, value(), 1, 1 << 24);
    } else if (argument == "--out") {
      options.out = value();
    } else if (argument == "--no-picture") {
      options.picture = false;
    } else if (argument == "--speed") {
      options.speed = true;
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
  if (!options.design.notchHz) options.design.notchHz = options.disturbance.whistleHz;
  return options;
}

// Takes out of the design what the recording's sample rate has no room for.
void fitDesign(const Options& options, const Recording& recording, FilterDesign& design) {
  const double highest = recording.sampleRate / 2.0;
  for (const auto& hz : {options.disturbance.whistleHz, design.notchHz}) {
    if (hz && *hz >= highest) {
      char text[128];
      snprintf(text, sizeof text, "%g Hz does not fit into a recording of %d samples a second", *hz,
               recording.sampleRate);
      throw Failure(text);
    }
  }
  if (design.lowPassHz && *design.lowPassHz + design.transitionHz >= highest) design.lowPassHz.reset();
  if (!design.lowPassHz && !design.notchHz) {
    throw Failure("there is nothing to filter out: give --notch or a --low-pass below half the sample rate");
  }
}

double decibels(double power) {
  return 10.0 * std::log10(power);
}

// How much weaker a power is than before; silence has nothing that could be.
std::string attenuation(double before, double after) {
  if (before <= 0) return "there is none in the recording";
  if (after <= 0) return "removed altogether";
  char text[64];
  snprintf(text, sizeof text, "attenuated by %.1f dB", decibels(before) - decibels(after));
  return text;
}

double energy(const Recording& recording) {
  double sum = 0;
  for (const Samples& channel : recording.channels) {
    for (double sample : channel) sum += sample * sample;
  }
  return sum;
}

double signalToNoise(const Recording& clean, const Recording& noisy) {
  double noise = 0;
  for (size_t c = 0; c < clean.channels.size(); c++) {
    for (size_t i = 0; i < clean.length(); i++) {
      const double difference = static_cast<double>(noisy.channels[c][i]) - clean.channels[c][i];
      noise += difference * difference;
    }
  }
  return decibels(energy(clean)) - decibels(noise);
}

void run(const Options& options) {
  const Recording clean = readRecording(options.recording);
  FilterDesign design = options.design;
  fitDesign(options, clean, design);
  const bool disturbed = options.disturbance.whistleHz || options.disturbance.hissLevel;

  std::error_code error;
  std::filesystem::create_directories(options.out, error);
  if (error) throw Failure("cannot make the directory " + options.out + ": " + error.message());
  const std::string out = options.out + "/";
  Report report(out + "report.txt");

  const Recording before = disturb(clean, options.disturbance);
  const Samples taps = designFilter(design, clean.sampleRate);
  const Recording after = applyFilter(before, taps, options.blockLength, ProgressBar("filtering"));

  const std::string name = std::filesystem::path(options.recording).filename();
  const size_t channels = clean.channels.size();
  report.line("recording", "%s: %.2f s, %d Hz, %zu channel%s", name.c_str(), clean.seconds(),
              clean.sampleRate, channels, channels == 1 ? "" : "s");
  if (options.disturbance.whistleHz) {
    report.line("spoilt by", "a whistle of %.4g Hz, %.4g dB of full scale", *options.disturbance.whistleHz,
                options.disturbance.whistleLevel);
  }
  if (options.disturbance.hissLevel) {
    report.line("spoilt by", "hiss, %.4g dB of full scale", *options.disturbance.hissLevel);
  }
  report.line("filter", "%zu taps, module %s", taps.size(), kvrsGetLibVersion()->targetCpu);

  std::string subtitle;
  char text[256];
  if (design.notchHz) {
    const double powerBefore = powerAt(before, *design.notchHz), powerAfter = powerAt(after, *design.notchHz);
    const std::string change = attenuation(powerBefore, powerAfter);
    if (powerBefore > 0 && powerAfter > 0) {
      const double levelBefore = decibels(powerBefore), levelAfter = decibels(powerAfter);
      report.line("whistle", "%.4g Hz: %.1f dB of full scale before, %.1f dB after: %s", *design.notchHz,
                  levelBefore, levelAfter, change.c_str());
      snprintf(text, sizeof text, "whistle at %.4g Hz: -%.0f dB    ", *design.notchHz,
               levelBefore - levelAfter);
      subtitle += text;
    } else {
      report.line("whistle", "%.4g Hz: %s", *design.notchHz, change.c_str());
    }
  }
  if (design.lowPassHz) {
    const double from = *design.lowPassHz + design.transitionHz;
    const double top = std::numeric_limits<double>::infinity();
    const double powerBefore = meanSpectrum(before).band(from, top),
                 powerAfter = meanSpectrum(after).band(from, top);
    report.line("hiss", "above %.5g Hz: %s", from, attenuation(powerBefore, powerAfter).c_str());
    if (powerBefore > 0 && powerAfter > 0) {
      snprintf(text, sizeof text, "hiss above %.5g Hz: -%.0f dB    ", from,
               decibels(powerBefore) - decibels(powerAfter));
      subtitle += text;
    }
  } else {
    report.line("hiss", "the filter reaches up to half the sample rate: no band is cut off");
  }
  if (disturbed && energy(clean) > 0) {
    const double snrBefore = signalToNoise(clean, before), snrAfter = signalToNoise(clean, after);
    report.line("signal to noise", "%.1f dB before, %.1f dB after, against the clean original", snrBefore,
                snrAfter);
    snprintf(text, sizeof text, "signal to noise: %.1f dB before, %.1f dB after", snrBefore, snrAfter);
    subtitle += text;
  }
  if (options.speed) {
    const int all = ownGetNumThreads();
    ownSetNumThreads(1);
    const double one = timesRealTime(before, taps);
    ownSetNumThreads(0);
    report.line("speed", "1 thread filters %.0f times faster than real time", one);
    if (all > 1) report.line("", "%d threads %.0f times", all, timesRealTime(before, taps));
  }

  writeRecording(clean, out + "clean.wav");
  if (disturbed) writeRecording(before, out + "disturbed.wav");
  writeRecording(after, out + "filtered.wav");
  if (options.picture && !canDraw()) {
    fputs("denoise: gnuplot is not there, so there will be no picture\n", stderr);
  } else if (options.picture) {
    snprintf(text, sizeof text, "%s through one FIR filter of %zu taps", name.c_str(), taps.size());
    draw({text, subtitle, before, after, disturbed ? &clean : nullptr, taps,
          std::min(2 * design.lowPassHz.value_or(1e9), clean.sampleRate / 2.0)},
         out + "picture.png");
  }
  report.line("written", "%s", options.out.c_str());
}

}  // namespace
}  // namespace denoise

int main(int argc, char** argv) {
  using namespace denoise;
  try {
    const Options options = parse(argc, argv);
    if (options.help) {
      fputs(kUsage, stdout);
    } else {
      run(options);
    }
    return 0;
  } catch (const Failure& failure) {
    fprintf(stderr, "denoise: %s\n", failure.what());
  } catch (const std::bad_alloc&) {
    fputs("denoise: the recording does not fit into memory\n", stderr);
  }
  return 1;
}
