/* Seven taps of a low-pass filter at a tenth of the sampling rate.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  Kvr64f taps[7];
  int i;
  if (kvrsFIRGenLowpass_64f(0.1, taps, 7, kvrWinHamming, 1) != kvrStatusOk) return 1;
  for (i = 0; i < 7; i++) printf("%.4f ", taps[i]);
  printf("\n");
  return 0;
}
