/* Element types, statuses and modes that every kvrs function shares.
 * SPDX-License-Identifier: MIT */
#ifndef KVRS_TYPES_H
#define KVRS_TYPES_H

#include <stdint.h>

#if defined(__GNUC__)
#define KVRS_API __attribute__((visibility("default")))
#else
#define KVRS_API
#endif

#ifdef __cplusplus
#define KVRS_NOEXCEPT noexcept
#define KVRS_BEGIN_DECLS extern "C" {
#define KVRS_END_DECLS }
#else
#define KVRS_NOEXCEPT
#define KVRS_BEGIN_DECLS
#define KVRS_END_DECLS
#endif

/** @defgroup types Types, statuses and modes
 *
 * The last words of a function's name are codes of its element types: one code, and all vectors have that
 * type; two, and they are those of source and destination; three, of first source, second source and
 * destination. Integers are two's complement and little-endian. The packed codes `24u` and `24s` are three
 * bytes an element, low byte first, in arrays of Kvr8u; `1u` is a string of bits, the top bit of a byte
 * first.
 * @{
 */

typedef uint8_t Kvr8u;   /**< code 8u */
typedef int8_t Kvr8s;    /**< code 8s */
typedef uint16_t Kvr16u; /**< code 16u */
typedef int16_t Kvr16s;  /**< code 16s */
typedef uint16_t Kvr16f; /**< code 16f: the bits of an IEEE 754 half-precision number */
typedef uint32_t Kvr32u; /**< code 32u */
typedef int32_t Kvr32s;  /**< code 32s */
typedef float Kvr32f;    /**< code 32f: IEEE 754 single precision */
typedef uint64_t Kvr64u; /**< code 64u */
typedef int64_t Kvr64s;  /**< code 64s */
typedef double Kvr64f;   /**< code 64f: IEEE 754 double precision */

/* Complex elements: two adjacent parts, real first. A complex element counts as one in every `len`. */

/** code 8sc */
typedef struct {
  Kvr8s re, im;
} Kvr8sc;
/** code 16sc */
typedef struct {
  Kvr16s re, im;
} Kvr16sc;
/** code 32sc */
typedef struct {
  Kvr32s re, im;
} Kvr32sc;
/** code 64sc */
typedef struct {
  Kvr64s re, im;
} Kvr64sc;
/** code 32fc: an array of C's float complex or C++'s std::complex may stand for one of these, its pointer being cast */
typedef struct {
  Kvr32f re, im;
} Kvr32fc;
/** code 64fc: likewise for C's double complex and C++'s std::complex of doubles */
typedef struct {
  Kvr64f re, im;
} Kvr64fc;

/** How a call ended: 0 is success; a negative status is an error, and nothing was written but what the contract
 * says; a positive one is a warning, and the whole result was written, with the contract's replacements. */
typedef int32_t KvrStatus;

enum {
  kvrStatusOk = 0,

  /* Warnings. */
  kvrStatusSqrtNegArg = 3,     /**< a square root of a negative number was met */
  kvrStatusInvZeroWarn = 4,    /**< an inverse threshold met a zero */
  kvrStatusEvenMedianMask = 5, /**< an even median mask was reduced by one */
  kvrStatusDivByZeroWarn = 6,  /**< a division by zero was met and its result replaced */
  kvrStatusLnZeroArg = 7,      /**< a logarithm of zero was met */
  kvrStatusLnNegArg = 8,       /**< a logarithm of a negative number was met */
  kvrStatusMaxOrderFlat = 9,   /**< the data holds values with no order of magnitude */

  /* Errors. */
  kvrStatusBadArg = -5,                /**< a comparison or a delay index that the function does not know */
  kvrStatusBadLength = -6,             /**< a length below 1, or of an array that no address space holds */
  kvrStatusBadFlag = -7,               /**< a flag that the function does not know */
  kvrStatusNullPointer = -8,           /**< a pointer argument is null */
  kvrStatusOutOfMemory = -9,           /**< an allocation failed */
  kvrStatusDivByZeroError = -10,       /**< a scalar divisor is zero */
  kvrStatusNonPositiveParam = -11,     /**< a parameter is zero or below */
  kvrStatusBadTapScale = -13,          /**< a scale tap is negative */
  kvrStatusBadFftOrder = -15,          /**< an FFT order out of range */
  kvrStatusBadFftFlag = -16,           /**< a normalisation flag that is not accepted */
  kvrStatusContextMismatch = -17,      /**< a context of another kind, or none */
  kvrStatusThresholdOrder = -18,       /**< the lower level lies above the upper one */
  kvrStatusNegativeThreshold = -19,    /**< a level below 0 */
  kvrStatusBadDelayIndex = -24,        /**< a delay-line index out of range */
  kvrStatusBadIirOrder = -25,          /**< an IIR order below 1 */
  kvrStatusBadTapsLength = -26,        /**< fewer than one tap */
  kvrStatusBadRelFreq = -27,           /**< a relative frequency out of range */
  kvrStatusBadPhase = -28,             /**< a multi-rate phase out of range */
  kvrStatusBadRateFactor = -29,        /**< a multi-rate factor below 1 */
  kvrStatusBadSamplePhase = -30,       /**< a sampling phase out of range */
  kvrStatusBadSampleFactor = -31,      /**< a sampling factor below 1 */
  kvrStatusBadShift = -32,             /**< a negative shift count */
  kvrStatusBadWindowLength = -33,      /**< a mask length below 1 */
  kvrStatusBadWaveletOffset = -35,     /**< an offset of a wavelet filter out of range */
  kvrStatusBadJaehneMagnitude = -38,   /**< a magnitude of Jaehne's signal below 0 */
  kvrStatusKaiserOverflow = -39,       /**< the parameter of a Kaiser window overflows */
  kvrStatusBadTriangleAsym = -40,      /**< an asymmetry of a triangle out of range */
  kvrStatusBadTrianglePhase = -41,     /**< a phase of a triangle out of range */
  kvrStatusBadTriangleFreq = -42,      /**< a frequency of a triangle out of range */
  kvrStatusBadTriangleMagnitude = -43, /**< a magnitude of a triangle not above 0 */
  kvrStatusBadTonePhase = -44,         /**< a phase of a tone out of range */
  kvrStatusBadToneFreq = -45,          /**< a frequency of a tone out of range */
  kvrStatusBadToneMagnitude = -46,     /**< a magnitude of a tone not above 0 */
  kvrStatusBadChannelCount = -53,      /**< fewer than one channel */
  kvrStatusBadMatrixStep = -182,       /**< a step of a matrix that is no positive multiple of 8 bytes */
  kvrStatusBadSparseIndex = -194,      /**< sparse positions negative, or not strictly ascending */
  kvrStatusSingularMatrix = -195,      /**< a pivot too close to zero */
  kvrStatusBadIirGenOrder = -206,      /**< a design order out of range */
  kvrStatusBadIirGenFreq = -208,       /**< a design frequency out of range */
  kvrStatusBadIirGenDeviation = -209,  /**< a passband deviation out of range */
  kvrStatusBadRoundMode = -213         /**< a rounding mode that the function does not accept */
};

/** How a conversion rounds. Which of the three a function accepts stands in its contract. */
typedef int32_t KvrRoundMode;
enum {
  kvrRoundZero = 0,     /**< toward zero */
  kvrRoundNear = 1,     /**< to nearest, ties to even */
  kvrRoundFinancial = 2 /**< to nearest, ties away from zero */
};

/** Speed against accuracy, where a function has two algorithms: ::kvrHintFast picks the fast one, and every
 * other value the accurate one. A hint is never checked. */
typedef int32_t KvrHintAlgorithm;
enum { kvrHintNone = 0, kvrHintFast = 1, kvrHintAccurate = 2 };

/** The comparison of a threshold. */
typedef int32_t KvrCmpOp;
enum { kvrCmpLess = 0, kvrCmpGreater = 4 };

/** Which direction of a transform of N points divides, and by what. */
enum {
  kvrFftDivFwdByN = 1,  /**< forward by N */
  kvrFftDivInvByN = 2,  /**< inverse by N */
  kvrFftDivBySqrtN = 4, /**< both by the square root of N */
  kvrFftNoDivByAny = 8  /**< neither */
};

/** The version of a module, see kvrsGetLibVersion(). */
typedef struct {
  int32_t major;         /**< 6 */
  int32_t minor;         /**< 1 */
  int32_t majorBuild;    /**< 137 */
  int32_t build;         /**< 844 */
  char targetCpu[4];     /**< the module's processor target, filled with zeros: "s8", "v2", "v3" or "v4" */
  const char* name;      /**< "kvrss8-6.1.dll", with the module's own target */
  const char* version;   /**< "6.1 build 137.53" */
  const char* buildDate; /**< "Jan 26 2010" */
} KvrLibraryVersion;

/** @} */

#endif
