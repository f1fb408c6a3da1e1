// Takes the echo of a made room out of what a microphone hears, as a hands-free telephone does: an adaptive filter is told what
// the loudspeaker plays, learns what the room does to it, and what it expects is taken from the microphone's signal.
// SPDX-License-Identifier: MIT
#include <kvrs.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <new>

#include "canceller.h"
#include "picture.h"
#include "room.h"
#include "support/failure.h"
#include "support/options.h"
#include "support/recording.h"
#include "support/spectrum.h"

namespace echo {
namespace {

constexpr const char* kUsage = R"(usage: echo [OPTION]... RECORDING [VOICE]

A loudspeaker plays RECORDING several times in a row. Its echo reaches a microphone. If there is a VOICE, somebody says
that in the room while the recording is played for the last time.

The room:
  --reverberation S    seconds until a sound has lost 60 dB (default: 0.08)
  --distance M         metres from the loudspeaker to the microphone (default: 0.5)
  --level DB           of the echo, against the loudspeaker (default: -12)
  --noise DB           of the noise in the room, against full scale (default: -75)
  --times N            how often the recording is played (default: 4)

The filter:
  --taps N             length (default: to where the echo has lost 40 dB)
  --step N             how fast it learns, from 0, not at all, to 1 (default: 0.5)
  --block N            samples in one call (default: 64)

  --out DIRECTORY      for sounds, picture and report (default: cancelled)
  --help               this text
)";

struct Options {
  Room room;
  double noiseDb = -75;
  int times = 4;
  Canceller canceller;
  std::string out = "cancelled", recording, voice;
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
    if (argument == "--reverberation") {
      options.room.reverberation = number(argument, value(), 0.001, 10);
    } else if (argument == "--distance") {
      options.room.distance = number(argument, value(), 0, 100);
    } else if (argument == "--level") {
      options.room.levelDb = number(argument, value(), -80, 20);
    } else if (argument == "--noise") {
      options.noiseDb = number(argument, value(), -200, 0);
    } else if (argument == "--times") {
      options.times = wholeNumber(argument, value(), 1, 1000);
    } else if (argument == "--taps") {
      options.canceller.tapsLen = wholeNumber(argument, value(), 1, 1 << 20);
    } else if (argument == "--step") {
      options.canceller.step = number(argument, value(), 0, 1);
    } else if (argument == "--block") {
      options.canceller.blockLength = wholeNumber(argument, value(), 1, 1 << 20);
    } else if (argument == "--out") {
      options.out = value();
    } else if (argument == "--help") {
      options.help = true;
      return options;
    } else if (argument.size() > 1 && argument[0] == '-') {
      throw Failure("unknown option " + argument + "; see --help");
    } else if (options.recording.empty()) {
      options.recording = argument;
    } else if (options.voice.empty()) {
      options.voice = argument;
    } else {
      throw Failure("a recording and a voice, please, and not " + argument + " too");
    }
  }
  if (options.recording.empty()) throw Failure("no recording given; see --help");
  return options;
}

double decibels(double power) {
  return 10 * std::log10(std::max(power, 1e-20));
}

double power(const float* samples, size_t count) {
  double sum = 0;
  for (size_t i = 0; i < count; i++) sum += static_cast<double>(samples[i]) * samples[i];
  return sum / static_cast<double>(count);
}

// The mean power of a signal's end.
double powerOfLast(const Samples& signal, size_t count) {
  return power(signal.data() + (signal.size() - count), count);
}

Samples lessThan(const Samples& signal, const Samples& taken) {
  Samples result(signal.size());
  check("kvrsSub_32f",
        kvrsSub_32f(taken.data(), signal.data(), result.data(), static_cast<int>(signal.size())));
  return result;
}

void addTo(Samples& signal, const Samples& more) {
  check("kvrsAdd_32f_I", kvrsAdd_32f_I(more.data(), signal.data(), static_cast<int>(signal.size())));
}

// A channel: what is heard in the room, of which the echo is known for once, since the room is a made one.
struct Channel {
  Samples echo, voice, microphone, cancelled, left;
};

Channel runChannel(const Samples& recording, const Samples* voice, const Options& options,
                   const Canceller& canceller, int sampleRate, unsigned index) {
  Samples played;
  for (int i = 0; i < options.times; i++) played.insert(played.end(), recording.begin(), recording.end());
  Channel channel;
  channel.echo = echoOf(played, roomResponse(options.room, sampleRate, 2 * index + 1));
  channel.microphone = channel.echo;
  addTo(channel.microphone, noise(played.size(), options.noiseDb, 2 * index + 2));
  if (voice != nullptr) {
    channel.voice.resize(played.size());
    const size_t begin = played.size() - recording.size();
    std::copy_n(voice->begin(), std::min(voice->size(), recording.size()),
                channel.voice.begin() + static_cast<ptrdiff_t>(begin));
    addTo(channel.microphone, channel.voice);
  }
  const Samples estimate = estimateEcho(played, channel.microphone, canceller, sampleRate);
  channel.cancelled = lessThan(channel.microphone, estimate);
  channel.left = lessThan(channel.echo, estimate);
  return channel;
}

std::vector<double> levels(const Samples& signal, size_t piece) {
  std::vector<double> result;
  for (size_t begin = 0; begin + piece <= signal.size(); begin += piece)
    result.push_back(decibels(power(signal.data() + begin, piece)));
  if (result.empty()) result.push_back(decibels(power(signal.data(), signal.size())));
  return result;
}

// Twelve values an octave, each the mean over its twelfth.
void addSpectrum(const Samples& signal, size_t count, int sampleRate, std::vector<double>& hz,
                 std::vector<double>& db) {
  const Spectrum spectrum =
      meanSpectrum({sampleRate, {Samples(signal.end() - static_cast<ptrdiff_t>(count), signal.end())}});
  hz.clear();
  const double twelfth = std::pow(2.0, 1.0 / 12);
  for (double f = 50; f * twelfth <= sampleRate / 2.0; f *= twelfth) {
    const auto first = static_cast<size_t>(f / spectrum.stepHz),
               last = static_cast<size_t>(f * twelfth / spectrum.stepHz);
    double sum = 0;
    for (size_t k = first; k <= last && k < spectrum.power.size(); k++) sum += spectrum.power[k];
    hz.push_back(f * std::sqrt(twelfth));
    db.push_back(decibels(sum / static_cast<double>(last - first + 1)));
  }
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
  const Recording recording = readRecording(options.recording);
  const int rate = recording.sampleRate;
  const size_t length = recording.length(), channels = recording.channels.size();
  if (length > static_cast<size_t>(INT_MAX / options.times))
    throw Failure(options.recording + " is too long");
  if (rate < 200) throw Failure(options.recording + " has fewer than 200 samples a second");
  Recording voice;
  if (!options.voice.empty()) {
    voice = readRecording(options.voice);
    if (voice.sampleRate != rate) {
      char text[64];
      snprintf(text, sizeof text, " has %d samples a second, not %d", voice.sampleRate, rate);
      throw Failure(options.voice + text);
    }
  }
  Canceller canceller = options.canceller;
  if (canceller.tapsLen == 0) {
    const double seconds = options.room.distance / 343 + options.room.reverberation * 40 / 60;
    canceller.tapsLen = std::max(1, static_cast<int>(std::lround(seconds * rate)));
  }

  std::error_code error;
  std::filesystem::create_directories(options.out, error);
  if (error) throw Failure("cannot make the directory " + options.out + ": " + error.message());
  const std::string out = options.out + "/", reportPath = out + "report.txt";
  const std::unique_ptr<FILE, int (*)(FILE*)> report(fopen(reportPath.c_str(), "w"), fclose);
  if (report == nullptr) throw Failure("cannot write " + reportPath);

  Recording microphone{rate, {}}, cancelled{rate, {}};
  std::vector<Channel> all;
  double echo = 0, left = 0, spoken = 0;
  for (size_t c = 0; c < channels; c++) {
    const Samples* said = options.voice.empty() ? nullptr : &voice.channels[c % voice.channels.size()];
    all.push_back(
        runChannel(recording.channels[c], said, options, canceller, rate, static_cast<unsigned>(c)));
    microphone.channels.push_back(all.back().microphone);
    cancelled.channels.push_back(all.back().cancelled);
    echo += powerOfLast(all.back().echo, length);
    left += powerOfLast(all.back().left, length);
    if (said != nullptr) spoken += powerOfLast(all.back().voice, length);
  }
  const double attenuation = decibels(echo) - decibels(left);

  const std::string name = std::filesystem::path(options.recording).filename();
  line(report.get(), "recording", "%s: %.2f s, %d Hz, %zu channel%s, played %d time%s", name.c_str(),
       recording.seconds(), rate, channels, channels == 1 ? "" : "s", options.times,
       options.times == 1 ? "" : "s");
  line(report.get(), "room", "%g s of reverberation, %g m, echo of %g dB, noise of %g dB of full scale",
       options.room.reverberation, options.room.distance, options.room.levelDb, options.noiseDb);
  line(report.get(), "filter", "%d taps, step %g, %d samples in a call, module %s", canceller.tapsLen,
       canceller.step, canceller.blockLength, kvrsGetLibVersion()->targetCpu);
  const auto count = static_cast<double>(channels);
  char subtitle[160] = "";
  if (echo > 0) {
    line(report.get(), "echo",
         "%.1f dB of full scale in the last time, %.1f dB of it left: attenuated by %.1f dB",
         decibels(echo / count), decibels(left / count), attenuation);
    snprintf(subtitle, sizeof subtitle, "%d taps; the last time, %.1f dB of the echo are gone",
             canceller.tapsLen, attenuation);
  } else {
    line(report.get(), "echo", "there is none in the last time");
  }
  if (!options.voice.empty() && spoken > 0 && echo > 0) {
    line(report.get(), "voice", "%.1f dB above the echo before, %.1f dB after",
         decibels(spoken) - decibels(echo), decibels(spoken) - decibels(left));
  }

  writeRecording(microphone, out + "microphone.wav");
  writeRecording(cancelled, out + "cancelled.wav");

  // The first channel.
  const Channel& first = all.front();
  const size_t piece = std::max<size_t>(1, static_cast<size_t>(rate / 50));
  Picture picture;
  picture.title = "The echo of " + name + " in a room";
  picture.subtitle = subtitle;
  picture.echoDb = levels(first.echo, piece);
  picture.leftDb = levels(first.left, piece);
  if (!first.voice.empty()) picture.voiceDb = levels(first.voice, piece);
  for (size_t i = 0; i < picture.echoDb.size(); i++)
    picture.seconds.push_back((static_cast<double>(i) + 0.5) * static_cast<double>(piece) / rate);
  addSpectrum(first.echo, length, rate, picture.hz, picture.echoAtDb);
  addSpectrum(first.left, length, rate, picture.hz, picture.leftAtDb);
  draw(picture, out + "picture.svg");
  line(report.get(), "written", "%s", options.out.c_str());
}

}  // namespace
}  // namespace echo

int main(int argc, char** argv) {
  try {
    const auto options = echo::parse(argc, argv);
    if (options.help) {
      fputs(echo::kUsage, stdout);
    } else {
      echo::run(options);
    }
    return 0;
  } catch (const std::bad_alloc&) {
    fputs("echo: not enough memory\n", stderr);
  } catch (const std::exception& failure) {
    fprintf(stderr, "echo: %s\n", failure.what());
  }
  return 1;
}
