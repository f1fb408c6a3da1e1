/* kvrscore: memory and the thread count for kvrs. A library of its own, so that an application can put
 * another in its place: one that defines these functions with the same contracts, linked or loaded ahead of
 * this one.
 * SPDX-License-Identifier: MIT */
#ifndef KVRSCORE_H
#define KVRSCORE_H

#include <stddef.h>

#if defined(__GNUC__)
#define KVRSCORE_API __attribute__((visibility("default")))
#else
#define KVRSCORE_API
#endif

#ifdef __cplusplus
#define KVRSCORE_NOEXCEPT noexcept
extern "C" {
#else
#define KVRSCORE_NOEXCEPT
#endif

/** @defgroup core The companion core library
 * @{
 */

/** Allocates.
 * @param bytes size of the block; 0 gives a block that may not be touched, or null.
 * @return a block aligned to 64 bytes (a replacement may give 32), or null when memory is out. */
KVRSCORE_API void* kvrMalloc(size_t bytes) KVRSCORE_NOEXCEPT;

/** Releases a block of kvrMalloc(). Null is allowed and does nothing. */
KVRSCORE_API void kvrFree(void* ptr) KVRSCORE_NOEXCEPT;

/** The number of threads that a kvrs function may use in one call, at least 1.
 *
 * Without a call of ownSetNumThreads() it is the number of processors that the process may run on, read once.
 * kvrs reads it at every use, also while filter states are sized: a state is good for the count at its
 * creation and for any smaller one. */
KVRSCORE_API int ownGetNumThreads(void) KVRSCORE_NOEXCEPT;

/** Sets what ownGetNumThreads() returns, for the whole process. May be called at any time and from any
 * thread.
 * @param count the number of threads; below 1 restores the default. */
KVRSCORE_API void ownSetNumThreads(int count) KVRSCORE_NOEXCEPT;

/** @} */

#ifdef __cplusplus
}
#endif

#endif
