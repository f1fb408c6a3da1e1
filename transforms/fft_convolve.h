// The cyclic convolution of real numbers, by way of their FFT.
// SPDX-License-Identifier: MIT
#ifndef KVRS_TRANSFORMS_FFT_CONVOLVE_H
#define KVRS_TRANSFORMS_FFT_CONVOLVE_H

#include "kvrs/fft.h"

namespace kvrs::fft {

// dst = inverse(forward(src) * spectrum), in Perm format, for 32 points and more; src may be dst. The same as
// kvrsFFTFwd_RToPerm, kvrsMulPerm and kvrsFFTInv_PermToR, with two passes over the numbers less, and with the status that the
// first of them would have. `buffer` is theirs.
KvrStatus convolve(const Kvr32f* src, const Kvr32f* spectrum, Kvr32f* dst, const KvrsFFTSpec_R_32f* spec,
                   Kvr8u* buffer);
KvrStatus convolve(const Kvr64f* src, const Kvr64f* spectrum, Kvr64f* dst, const KvrsFFTSpec_R_64f* spec,
                   Kvr8u* buffer);

}  // namespace kvrs::fft

#endif
