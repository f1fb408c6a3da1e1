/* A filter without a state: taps and delay line come with the call.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f taps[2] = {0.5f, -0.5f};
  const Kvr16s signal[5] = {10, 30, 30, 20, 100};
  Kvr16s change[5], dlyLine[4] = {0}; /* twice as many as taps */
  int i, index = 0;
  if (kvrsFIR32f_Direct_16s_Sfs(signal, change, 5, taps, 2, dlyLine, &index, 0) != kvrStatusOk) return 1;
  for (i = 0; i < 5; i++) printf("%d ", change[i]);
  printf("\n");
  return 0;
}
