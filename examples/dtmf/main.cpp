// Finds the digits that were dialled in a recording, and shows the tones' levels over time. It also makes such
// recordings, with noise and a voice under the tones, and tells how many digits are lost at which level of noise.
// SPDX-License-Identifier: MIT
#include <kvrs.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>

#include "detector.h"
#include "dialer.h"
#include "picture.h"
#include "support/failure.h"
#include "support/options.h"
#include "support/recording.h"
#include "support/report.h"

namespace dtmf {
namespace {

constexpr const char* kUsage = R"(usage: dtmf [OPTION]... RECORDING
       dtmf [OPTION]... --dial KEYS
       dtmf [OPTION]... --errors

Finds digits in a recording, or dials them first on a telephone line (8 kHz, mu-law):
  --dial KEYS          of 0 to 9, A to D, * and #
  --noise DB           power of the tones over that of noise on the line (default: no noise)
  --voice RECORDING    somebody talks at the same time
  --voice-level DB     power of the tones over the voice's (default: 10)
  --tone MS            length of a tone (default: 70)
  --pause MS           length of a pause (default: 70)
  --errors             the share of wrong digits over levels of noise, of many calls

  --out DIRECTORY      for sound, pictures and report (default: dialled)
  --help               this text
)";

struct Options {
  Call call;
  bool dials = false, errors = false, help = false;
  std::string voice, out = "dialled", recording;
};

Options parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; i++) {
    const std::string argument = argv[i];
    const auto value = [&] {
      if (i + 1 >= argc) throw Failure(argument + " wants a value");
      return argv[++i];
    };
    if (argument == "--dial") {
      options.call.keys = value();
      options.dials = true;
      const size_t wrong = options.call.keys.find_first_not_of(kKeys);
      if (options.call.keys.empty()) throw Failure("--dial wants a key at least");
      if (wrong != std::string::npos) {
        throw Failure(std::string("there is no key \"") + options.call.keys[wrong] + "\" on a telephone");
      }
    } else if (argument == "--noise") {
      options.call.noiseDb = number(argument, value(), -20, 100);
    } else if (argument == "--voice") {
      options.voice = value();
    } else if (argument == "--voice-level") {
      options.call.voiceDb = number(argument, value(), -20, 100);
    } else if (argument == "--tone") {
      options.call.toneSeconds = number(argument, value(), 10, 10000) / 1000;
    } else if (argument == "--pause") {
      options.call.pauseSeconds = number(argument, value(), 10, 10000) / 1000;
    } else if (argument == "--errors") {
      options.errors = true;
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
  const int tasks = (options.recording.empty() ? 0 : 1) + (options.dials ? 1 : 0) + (options.errors ? 1 : 0);
  if (tasks != 1) throw Failure("give one of a recording, --dial and --errors; see --help");
  return options;
}

// The fewest digits to be changed, left out or put in that make one text of the other (Levenshtein).
size_t distance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); j++) row[j] = j;
  for (size_t i = 1; i <= a.size(); i++) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); j++) {
      const size_t changed = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row[b.size()];
}

// The share of wrong digits of `calls` calls with 16 random keys each.
double errorRate(Call call, int calls) {
  size_t wrong = 0, all = 0;
  Kvr32u seed = 7;
  for (int k = 0; k < calls; k++) {
    Kvr16s random[16];
    check("kvrsRandUniform_Direct_16s", kvrsRandUniform_Direct_16s(random, 16, 0, 32767, &seed));
    call.keys.clear();
    for (Kvr16s r : random) call.keys += kKeys[r * 16 / 32768];
    call.seed = seed;
    wrong += distance(call.keys, detect(dial(call), kLineRate).keys());
    all += call.keys.size();
  }
  return static_cast<double>(wrong) / static_cast<double>(all);
}

std::vector<ErrorCurve> errorCurves(const Call& call) {
  constexpr int kCalls = 25;
  std::vector<ErrorCurve> curves{{"noise", {}, {}}};
  if (!call.voice.empty()) {
    char name[64];
    snprintf(name, sizeof name, "noise and a voice %.3g dB below the tones", call.voiceDb);
    curves.push_back({name, {}, {}});
  }
  for (size_t c = 0; c < curves.size(); c++) {
    Call under = call;
    if (c == 0) under.voice.clear();
    for (double db = -15; db <= 15; db += 1) {
      under.noiseDb = db;
      curves[c].db.push_back(db);
      curves[c].rate.push_back(errorRate(under, kCalls));
    }
  }
  return curves;
}

void reportErrors(Report& report, const Call& call, const std::string& out) {
  const auto curves = errorCurves(call);
  for (const ErrorCurve& curve : curves) {
    report.line("errors", "with %s:", curve.name.c_str());
    for (size_t k = 0; k < curve.db.size(); k++) {
      report.line("", "%+3.0f dB: %5.1f %% of the digits", curve.db[k], 100 * curve.rate[k]);
    }
  }
  drawErrors(curves, "Wrong digits on a telephone line", out + "errors.svg");
}

void reportDigits(Report& report, const Options& options, const std::string& out) {
  Recording recording;
  std::string title;
  if (options.dials) {
    recording = {kLineRate, {dial(options.call)}};
    report.line("dialled", "%s", options.call.keys.c_str());
    title = "Dialled: " + options.call.keys;
  } else {
    recording = readRecording(options.recording);
    title = std::filesystem::path(options.recording).filename();
    report.line("recording", "%s: %.2f s, %d Hz, %zu channel%s", title.c_str(), recording.seconds(),
                recording.sampleRate, recording.channels.size(), recording.channels.size() == 1 ? "" : "s");
  }
  const size_t channels = recording.channels.size();
  for (size_t c = 0; c < channels; c++) {
    const Detection detection = detect(recording.channels[c], recording.sampleRate);
    const std::string keys = detection.keys();
    const std::string of = channels == 1 ? std::string() : std::string(" ").append(std::to_string(c + 1));
    report.line(("digits" + of).c_str(), "%s", keys.empty() ? "none" : keys.c_str());
    for (const Digit& digit : detection.digits) {
      report.line("", "%c from %.3f to %.3f s", digit.key, digit.begin, digit.end);
    }
    drawLevels(detection, channels == 1 ? title : title + ", channel" + of,
               out + (channels == 1 ? "levels" : "levels" + std::to_string(c + 1)) + ".svg");
  }
  if (options.dials) writeRecording(recording, out + "dialled.wav");
}

void run(Options options) {
  if (!options.voice.empty()) {
    options.call.voice = onTheLine(readRecording(options.voice));
    if (options.call.voice.empty()) throw Failure(options.voice + " is too short to be a voice");
  }
  std::error_code error;
  std::filesystem::create_directories(options.out, error);
  if (error) throw Failure("cannot make the directory " + options.out + ": " + error.message());
  const std::string out = options.out + "/";
  Report report(out + "report.txt");
  if (options.errors) {
    reportErrors(report, options.call, out);
  } else {
    reportDigits(report, options, out);
  }
  report.line("written", "%s", options.out.c_str());
}

}  // namespace
}  // namespace dtmf

int main(int argc, char** argv) {
  try {
    const auto options = dtmf::parse(argc, argv);
    if (options.help) {
      fputs(dtmf::kUsage, stdout);
    } else {
      dtmf::run(options);
    }
    return 0;
  } catch (const std::bad_alloc&) {
    fputs("dtmf: not enough memory\n", stderr);
  } catch (const std::exception& failure) {
    fprintf(stderr, "dtmf: %s\n", failure.what());
  }
  return 1;
}
