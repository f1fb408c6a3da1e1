/* Clicks taken out of a signal by the median of three samples.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f signal[8] = {1, 2, 99, 3, 4, -99, 5, 6};
  Kvr32f clean[8];
  int i;
  if (kvrsFilterMedian_32f(signal, clean, 8, 3) != kvrStatusOk) return 1;
  for (i = 0; i < 8; i++) printf("%g ", clean[i]);
  printf("\n");
  return 0;
}
