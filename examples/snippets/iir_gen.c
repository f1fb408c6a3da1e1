/* A Butterworth low-pass of order 2 at an eighth of the sampling rate.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr64f taps[6]; /* b0 b1 b2 a0 a1 a2 */
  int i;
  if (kvrsIIRGenLowpass_64f(0.125, 0, 2, taps, kvrButterworth) != kvrStatusOk) return 1;
  for (i = 0; i < 6; i++) printf("%.4f ", taps[i]);
  printf("\n");
  return 0;
}
