// SPDX-License-Identifier: MIT
#include "support/spectrum.h"

#include <kvrs.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <memory>
#include <numbers>

#include "support/failure.h"

namespace examples {
namespace {

struct FreeSpec {
  void operator()(KvrsFFTSpec_R_32f* spec) const { kvrsFFTFree_R_32f(spec); }
};

// The real FFT of 2^order points, giving powers.
class PowerFft {
 public:
  explicit PowerFft(int order) : size_(size_t{1} << order), spectrum_(size_ + 2) {
    KvrsFFTSpec_R_32f* spec = nullptr;
    check("kvrsFFTInitAlloc_R_32f", kvrsFFTInitAlloc_R_32f(&spec, order, kvrFftNoDivByAny, kvrHintNone));
    spec_.reset(spec);
    int bytes = 0;
    check("kvrsFFTGetBufSize_R_32f", kvrsFFTGetBufSize_R_32f(spec, &bytes));
    buffer_.resize(static_cast<size_t>(bytes));
  }

  size_t size() const { return size_; }
  size_t bins() const { return size_ / 2 + 1; }

  // |X[k]|^2 for k in [0, bins()).
  template <class Use>
  void run(const Samples& block, Use use) {
    Kvr8u* work = buffer_.empty() ? nullptr : buffer_.data();
    check("kvrsFFTFwd_RToCCS_32f", kvrsFFTFwd_RToCCS_32f(block.data(), spectrum_.data(), spec_.get(), work));
    for (size_t k = 0; k < bins(); k++) {
      const double re = spectrum_[2 * k], im = spectrum_[2 * k + 1];
      use(k, re * re + im * im);
    }
  }

 private:
  size_t size_;
  Samples spectrum_;  // pairs of real and imaginary parts
  std::unique_ptr<KvrsFFTSpec_R_32f, FreeSpec> spec_;
  std::vector<Kvr8u> buffer_;
};

// The order of the FFT whose block lasts about so long.
int orderFor(double seconds, int sampleRate) {
  return std::clamp(static_cast<int>(std::lround(std::log2(seconds * sampleRate))), 6, 16);
}

Samples hannWindow(size_t size) {
  Samples window(size);
  for (size_t i = 0; i < size; i++) {
    const double turn = 2.0 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size);
    window[i] = static_cast<float>(0.5 - 0.5 * std::cos(turn));
  }
  return window;
}

// What a sine of full scale has at its peak under that window: (size / 4)^2.
double fullScale(size_t size) {
  return static_cast<double>(size) * static_cast<double>(size) / 16.0;
}

// Fills `block` with the samples from `begin` on under the window, and zeros behind the end.
void cutBlock(const Samples& channel, size_t begin, const Samples& window, Samples& block) {
  for (size_t i = 0; i < block.size(); i++) {
    block[i] = begin + i < channel.size() ? channel[begin + i] * window[i] : 0.0f;
  }
}

}  // namespace

double Spectrum::band(double fromHz, double toHz) const {
  double sum = 0;
  for (size_t k = 0; k < power.size(); k++) {
    const double frequency = stepHz * static_cast<double>(k);
    if (frequency >= fromHz && frequency < toHz) sum += power[k];
  }
  return sum;
}

Spectrum meanSpectrum(const Recording& recording) {
  PowerFft fft(orderFor(0.1, recording.sampleRate));
  const Samples window = hannWindow(fft.size());
  Samples block(fft.size());
  Spectrum spectrum{static_cast<double>(recording.sampleRate) / static_cast<double>(fft.size()),
                    std::vector<double>(fft.bins())};
  size_t blocks = 0;
  for (const Samples& channel : recording.channels) {
    size_t begin = 0;
    do {
      cutBlock(channel, begin, window, block);
      fft.run(block, [&](size_t k, double power) { spectrum.power[k] += power; });
      blocks++;
      begin += fft.size() / 2;
    } while (begin + fft.size() <= channel.size());
  }
  for (double& power : spectrum.power) power /= static_cast<double>(blocks) * fullScale(fft.size());
  return spectrum;
}

Spectrum response(const Samples& taps, int sampleRate) {
  // Four times the taps' length, so that the curve between two taps' worth of frequency shows.
  const int order = static_cast<int>(std::ceil(std::log2(static_cast<double>(taps.size())))) + 2;
  PowerFft fft(order);
  Samples block = taps;
  block.resize(fft.size());
  Spectrum spectrum{static_cast<double>(sampleRate) / static_cast<double>(fft.size()),
                    std::vector<double>(fft.bins())};
  fft.run(block, [&](size_t k, double power) { spectrum.power[k] = power; });
  return spectrum;
}

Spectrogram spectrogram(const Recording& recording, double highestHz, size_t mostColumns) {
  PowerFft fft(orderFor(0.03, recording.sampleRate));
  const Samples window = hannWindow(fft.size());
  const Samples& channel = recording.channels.front();
  const size_t step = std::max(fft.size() / 8, channel.size() / mostColumns + 1);

  Spectrogram result;
  result.stepSeconds = static_cast<double>(step) / recording.sampleRate;
  result.stepHz = static_cast<double>(recording.sampleRate) / static_cast<double>(fft.size());
  result.columns = channel.size() / step + 1;
  result.rows = std::min(fft.bins(), static_cast<size_t>(highestHz / result.stepHz) + 1);
  result.power.resize(result.columns * result.rows);
  Samples block(fft.size());
  for (size_t column = 0; column < result.columns; column++) {
    cutBlock(channel, column * step, window, block);
    fft.run(block, [&](size_t k, double power) {
      if (k < result.rows) {
        result.power[k * result.columns + column] = static_cast<float>(power / fullScale(fft.size()));
      }
    });
  }
  return result;
}

double powerAt(const Recording& recording, double frequencyHz) {
  const double step = 2.0 * std::numbers::pi * frequencyHz / recording.sampleRate;
  const double turn = 2.0 * std::numbers::pi / static_cast<double>(recording.length());
  double power = 0;
  for (const Samples& channel : recording.channels) {
    std::complex<double> sum = 0;
    for (size_t i = 0; i < channel.size(); i++) {
      const double at = static_cast<double>(i);
      const double window = 0.5 - 0.5 * std::cos(turn * at);
      sum += static_cast<double>(channel[i]) * window * std::polar(1.0, -step * at);
    }
    // The window's sum is half the length, and a sine's amplitude twice that of its positive frequency.
    power += std::norm(sum * 4.0 / static_cast<double>(channel.size()));
  }
  return power / static_cast<double>(recording.channels.size());
}

}  // namespace examples
