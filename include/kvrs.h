/* kvrs: signal-processing primitives on arrays of samples. This header brings in all of them.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_H
#define KVRS_H

/** @mainpage kvrs
 *
 * One library of plain C functions on arrays of samples. What holds for all of them:
 *
 * - Arrays may have any alignment, and alignment changes no result, but for the last bit where a function's
 *   contract says so. Source and destination are either one array (in place) or do not overlap, unless a
 *   contract allows more.
 * - Arguments are tested in this order: the context, if there is one, for null (::kvrStatusNullPointer) and for
 *   its kind (::kvrStatusContextMismatch); the other pointers in the order of the arguments
 *   (::kvrStatusNullPointer); `len` below 1 (::kvrStatusBadLength); then modes and values in the order of the
 *   arguments. Contracts name the exceptions. Nothing is written until all tests have passed.
 * - An `_I` form works in place on `srcDst`. An `_Sfs` form stores its exact result times 2^(-scaleFactor),
 *   rounded to nearest with ties to even and saturated to the destination's range; any scaleFactor will do.
 * - In operations that do not commute the first source is the right-hand operand: kvrsSub stores src2 - src1.
 * - No function prints, locks, or keeps anything between calls outside the caller's arrays and contexts. Two calls
 *   may run at once unless they share an output or a filter state.
 */

#include "kvrs/types.h"

#include "kvrs/status_text.h"

#include "kvrs/frame.h"

#include "kvrs/arctan.h"
#include "kvrs/arith_float.h"
#include "kvrs/arith_scaled.h"
#include "kvrs/cauchy.h"
#include "kvrs/channels.h"
#include "kvrs/companding.h"
#include "kvrs/complex_parts.h"
#include "kvrs/convert.h"
#include "kvrs/dft.h"
#include "kvrs/dft_integer.h"
#include "kvrs/divide.h"
#include "kvrs/exponential.h"
#include "kvrs/fill.h"
#include "kvrs/logarithm.h"
#include "kvrs/logic.h"
#include "kvrs/mixed.h"
#include "kvrs/nearest.h"
#include "kvrs/polar.h"
#include "kvrs/reorder.h"
#include "kvrs/roots.h"
#include "kvrs/shift.h"
#include "kvrs/threshold.h"
#include "kvrs/unary.h"

#include "kvrs/count.h"
#include "kvrs/deviation.h"
#include "kvrs/dot_product.h"
#include "kvrs/extremes.h"
#include "kvrs/norm.h"
#include "kvrs/sort.h"
#include "kvrs/sum.h"

#include "kvrs/random.h"
#include "kvrs/test_vectors.h"
#include "kvrs/tone.h"
#include "kvrs/triangle.h"
#include "kvrs/window.h"

#include "kvrs/dct.h"
#include "kvrs/fft.h"
#include "kvrs/fft_integer.h"
#include "kvrs/goertzel.h"
#include "kvrs/hilbert.h"
#include "kvrs/spectrum.h"
#include "kvrs/wavelet.h"

#include "kvrs/convolution.h"
#include "kvrs/correlation.h"
#include "kvrs/fir.h"
#include "kvrs/fir_direct.h"
#include "kvrs/fir_gen.h"
#include "kvrs/fir_lms.h"
#include "kvrs/fir_lms_multirate.h"
#include "kvrs/fir_multirate.h"
#include "kvrs/fir_stream.h"
#include "kvrs/iir.h"
#include "kvrs/iir_gen.h"
#include "kvrs/median.h"
#include "kvrs/sampling.h"
#include "kvrs/sparse.h"

#include "kvrs/demodulate.h"
#include "kvrs/preemphasize.h"
#include "kvrs/running.h"
#include "kvrs/viterbi.h"

#endif
