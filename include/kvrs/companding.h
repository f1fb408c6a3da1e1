/* Companding: the A-law and mu-law codes of telephony.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_COMPANDING_H
#define KVRS_COMPANDING_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup companding Companding
 *
 * Linear samples to and from the logarithmic codes of ITU-T Recommendation G.711, 8 bits each, and one code to the other.
 *
 * | Function                    | stores, for i in 0 .. len-1                                               |
 * |-----------------------------|---------------------------------------------------------------------------|
 * | ALawToLin, MuLawToLin 8u16s | the sample of a code: +-8 to +-32,256 (A-law), 0 to +-32,124 (mu-law)     |
 * | ALawToLin, MuLawToLin 8u32f | that sample times 2^-15                                                   |
 * | LinToALaw, LinToMuLaw 16s8u | the code of a sample                                                      |
 * | LinToALaw, LinToMuLaw 32f8u | the code of `src[i]` * 32768 as a sample of 16 bits                       |
 * | ALawToMuLaw, MuLawToALaw 8u | the other law's code, by the Recommendation's tables                      |
 *
 * A sample's code is that of the quantisation interval it lies in: A-law looks at its upper 13 bits, mu-law at its upper
 * 14, whose magnitude is at most 8,158 there.
 *
 * Float samples are saturated to [-32768, 32767] and rounded to integers by adding 0.5 with the sample's sign, in single
 * precision and the caller's rounding mode, and truncating: halves go away from zero. NaN is taken for -32768.
 *
 * The tables from code to code are not decoding followed by encoding: 32 codes of ALawToMuLaw and 44 of MuLawToALaw come
 * out as other codes than that way.
 *
 * The codes of ALawToMuLaw and MuLawToALaw may be converted in place. Otherwise arrays do not overlap. Results are the same in
 * every module.
 *
 * Errors, in the order tested: ::kvrStatusNullPointer for a null pointer, ::kvrStatusBadLength for `len` below 1 or too long for the address space.
 * @{
 */

KVRS_API KvrStatus kvrsALawToLin_8u16s(const Kvr8u* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsALawToLin_8u32f(const Kvr8u* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMuLawToLin_8u16s(const Kvr8u* src, Kvr16s* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMuLawToLin_8u32f(const Kvr8u* src, Kvr32f* dst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsLinToALaw_16s8u(const Kvr16s* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLinToALaw_32f8u(const Kvr32f* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLinToMuLaw_16s8u(const Kvr16s* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsLinToMuLaw_32f8u(const Kvr32f* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;

KVRS_API KvrStatus kvrsALawToMuLaw_8u(const Kvr8u* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;
KVRS_API KvrStatus kvrsMuLawToALaw_8u(const Kvr8u* src, Kvr8u* dst, int len) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
