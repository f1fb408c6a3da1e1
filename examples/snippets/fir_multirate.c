/* Twice the sampling rate, values between the samples by their mean.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f taps[3] = {0.5f, 1, 0.5f};
  const Kvr32f signal[4] = {2, 4, 8, 8};
  Kvr32f doubled[8];
  KvrsFIRState_32f* filter = NULL;
  int i;
  if (kvrsFIRMRInitAlloc_32f(&filter, taps, 3, 2, 0, 1, 0, NULL) != kvrStatusOk) return 1;
  if (kvrsFIR_32f(signal, doubled, 4, filter) != kvrStatusOk) return 1; /* 4 iterations: 8 results */
  for (i = 0; i < 8; i++) printf("%g ", doubled[i]);
  printf("\n");
  return kvrsFIRFree_32f(filter);
}
