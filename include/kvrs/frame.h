/* Version and memory.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_FRAME_H
#define KVRS_FRAME_H

#include "kvrs/types.h"

KVRS_BEGIN_DECLS

/** @defgroup frame Version and memory
 * @{
 */

/** Tells which module of the library is loaded.
 * @return a constant record, the same at every call; it needs no release. Never null. */
KVRS_API const KvrLibraryVersion* kvrsGetLibVersion(void) KVRS_NOEXCEPT;

/** @name Allocate a vector
 *
 * One call of kvrMalloc() for `len` elements, so the block is aligned to 32 bytes at least. The number of
 * bytes is `len` times the element's width modulo 2^32: a `len` whose bytes pass 4 GiB wraps.
 * @return the block, to be released with kvrsFree(); null when `len` is below 1 or memory is out.
 * @{ */
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
/** @} */

/** Releases a block of kvrsMalloc_8u() and its like: one call of kvrFree(), null included. */
KVRS_API void kvrsFree(void* ptr) KVRS_NOEXCEPT;

/** @} */

KVRS_END_DECLS

#endif
