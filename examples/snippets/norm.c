/* The length of a vector, and how far two vectors are apart at most.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr64f v[3] = {2, -3, 6}, w[3] = {2, -1, 5};
  Kvr64f length, distance;
  if (kvrsNorm_L2_64f(v, 3, &length) != kvrStatusOk) return 1;
  if (kvrsNormDiff_Inf_64f(v, w, 3, &distance) != kvrStatusOk) return 1;
  printf("%g %g\n", length, distance);
  return 0;
}
