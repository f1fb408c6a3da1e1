/* The sum of three samples from each one on.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s samples[6] = {1, 2, 3, 4, 5, 6}; /* two more than sums */
  Kvr32f sums[4];
  int i;
  if (kvrsSumWindow_16s32f(samples, sums, 4, 3) != kvrStatusOk) return 1;
  for (i = 0; i < 4; i++) printf("%g ", sums[i]);
  printf("\n");
  return 0;
}
