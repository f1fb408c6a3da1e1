/* A filter whose source holds the samples before the first output, so that nothing is kept.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f taps[3] = {1, 1, 1};
  const Kvr32f signal[6] = {1, 2, 3, 4, 5, 6};
  Kvr32f sums[4];
  KvrsFIRState_32f* filter = NULL;
  int i;
  if (kvrsFIRStreamInitAlloc_32f(&filter, taps, 3) != kvrStatusOk) return 1;
  if (kvrsFIR_32f(signal + 2, sums + 2, 2, filter) != kvrStatusOk) return 1; /* pieces in any order */
  if (kvrsFIR_32f(signal, sums, 2, filter) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%g ", sums[i]);
  printf("\n");
  return kvrsFIRFree_32f(filter);
}
