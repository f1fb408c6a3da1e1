/* The mean of the last four samples, over a signal that comes in pieces.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f taps[4] = {0.25f, 0.25f, 0.25f, 0.25f};
  const Kvr32f signal[8] = {4, 8, 4, 8, 0, 0, 8, 8};
  Kvr32f smooth[8];
  KvrsFIRState_32f* filter = NULL;
  int i;
  if (kvrsFIRInitAlloc_32f(&filter, taps, 4, NULL) != kvrStatusOk) return 1;
  if (kvrsFIR_32f(signal, smooth, 3, filter) != kvrStatusOk) return 1;
  if (kvrsFIR_32f(signal + 3, smooth + 3, 5, filter) != kvrStatusOk) return 1;
  for (i = 0; i < 8; i++) printf("%g ", smooth[i]);
  printf("\n");
  return kvrsFIRFree_32f(filter);
}
