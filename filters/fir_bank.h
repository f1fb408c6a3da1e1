// Filters at two rates: outputs that each meet the taps of one phase.
// SPDX-License-Identifier: MIT
#ifndef KVRS_FILTERS_FIR_BANK_H
#define KVRS_FILTERS_FIR_BANK_H

#include "filters/fir_state.h"

namespace kvrs::fir {

// Where the outputs of a filter at two rates stand. Time runs in steps of the high rate: with t the time of an output less
// that of input 0, the newest input that it meets is q = floor(t / upFactor), and its taps are those of phase
// u = t - q * upFactor, every upFactor-th from u on.
class BankWalk {
 public:
  BankWalk(const Rates& rates, int tapsLen, int64_t time)
      : up_(rates.upFactor),
        inputsOn_(rates.downFactor / rates.upFactor),
        phaseOn_(rates.downFactor % rates.upFactor),
        fewTaps_(tapsLen / rates.upFactor),
        morePhases_(tapsLen % rates.upFactor),
        input_(static_cast<ptrdiff_t>(time >= 0 ? time / up_ : -1)),
        phase_(static_cast<ptrdiff_t>(time >= 0 ? time % up_ : time + up_)) {}

  // The taps of a phase that has no more than others.
  size_t fewTaps() const { return static_cast<size_t>(fewTaps_); }
  // Whether some phases have a tap more.
  bool isUneven() const { return morePhases_ != 0; }
  // The taps of this output: so many from there on in the bank, the oldest first.
  size_t taps() const { return static_cast<size_t>(fewTaps_ + (phase_ < morePhases_)); }
  size_t firstTap() const {
    return static_cast<size_t>(phase_ * fewTaps_ + (phase_ < morePhases_ ? phase_ : morePhases_));
  }
  size_t phase() const { return static_cast<size_t>(phase_); }
  // The newest input and the oldest one that they meet.
  ptrdiff_t newestInput() const { return input_; }
  ptrdiff_t oldestInput() const { return input_ + 1 - static_cast<ptrdiff_t>(taps()); }

  void next() {
    input_ += inputsOn_;
    phase_ += phaseOn_;
    if (phase_ >= up_) {
      phase_ -= up_;
      ++input_;
    }
  }

 private:
  ptrdiff_t up_, inputsOn_, phaseOn_, fewTaps_, morePhases_;
  ptrdiff_t input_, phase_;
};

// The next `count` outputs; `in` is input 0.
template <class T>
void firBank(const T* in, const T* bank, FirSum<T>* out, size_t count, BankWalk& walk);

extern template void firBank<Kvr32f>(const Kvr32f*, const Kvr32f*, Kvr32f*, size_t, BankWalk&);
extern template void firBank<Kvr64f>(const Kvr64f*, const Kvr64f*, Kvr64f*, size_t, BankWalk&);
extern template void firBank<Kvr32fc>(const Kvr32fc*, const Kvr32fc*, Kvr32fc*, size_t, BankWalk&);
extern template void firBank<Kvr64fc>(const Kvr64fc*, const Kvr64fc*, Kvr64fc*, size_t, BankWalk&);
extern template void firBank<Kvr16s>(const Kvr16s*, const Kvr16s*, Kvr32s*, size_t, BankWalk&);
extern template void firBank<Kvr16sc>(const Kvr16sc*, const Kvr16sc*, Kvr32sc*, size_t, BankWalk&);

}  // namespace kvrs::fir

#endif
