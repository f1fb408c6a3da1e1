/* Version and memory. Elements of 32fc and 64fc may be C's and C++'s complex numbers (types.h).
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FRAME_H
#define KVRS_FRAME_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup frame Version and memory
 *
 * | Function      | returns                                                                                        |
 * |---------------|------------------------------------------------------------------------------------------------|
 * | GetLibVersion | a constant record that tells which module of the library is loaded: the same at every call, never null, and in need of no release |
 * | Malloc        | a vector of `len` elements, or null when `len` is below 1 or memory is out                       |
 * | Free          | nothing; releases such a vector, and does nothing for null                                      |
 *
 * Malloc is one call of kvrMalloc(), so the vector is aligned to 32 bytes at least, and Free one of kvrFree(). The number
 * of bytes is `len` times the element's width modulo 2^32: a `len` whose bytes pass 4 GiB wraps.
 * @{
 */

KVRS_API const KvrLibraryVersion* kvrsGetLibVersion(void) KVRS_NOEXCEPT;

KVRS_API Kvr8u* kvrsMalloc_8u(int len) KVRS_NOEXCEPT;
KVRS_API Kvr8s* kvrsMalloc_8s(int len) KVRS_NOEXCEPT;
KVRS_API Kvr16u* kvrsMalloc_16u(int len) KVRS_NOEXCEPT;
KVRS_API Kvr16s* kvrsMalloc_16s(int len) KVRS_NOEXCEPT;
KVRS_API Kvr32u* kvrsMalloc_32u(int len) KVRS_NOEXCEPT;
KVRS_API Kvr32s* kvrsMalloc_32s(int len) KVRS_NOEXCEPT;
KVRS_API Kvr32f* kvrsMalloc_32f(int len) KVRS_NOEXCEPT;
KVRS_API Kvr64s* kvrsMalloc_64s(int len) KVRS_NOEXCEPT;
KVRS_API Kvr64f* kvrsMalloc_64f(int len) KVRS_NOEXCEPT;
KVRS_API Kvr8sc* kvrsMalloc_8sc(int len) KVRS_NOEXCEPT;
KVRS_API Kvr16sc* kvrsMalloc_16sc(int len) KVRS_NOEXCEPT;
KVRS_API Kvr32sc* kvrsMalloc_32sc(int len) KVRS_NOEXCEPT;
KVRS_API Kvr32fc* kvrsMalloc_32fc(int len) KVRS_NOEXCEPT;
KVRS_API Kvr64sc* kvrsMalloc_64sc(int len) KVRS_NOEXCEPT;
KVRS_API Kvr64fc* kvrsMalloc_64fc(int len) KVRS_NOEXCEPT;

KVRS_API void kvrsFree(void* ptr) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
