/* An inner product of 16-bit vectors in 32 bits.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr16s weights[4] = {1, 2, 3, 4}, samples[4] = {1000, -1000, 20000, 30000};
  Kvr32s sum;
  if (kvrsDotProd_16s32s_Sfs(weights, samples, 4, &sum, 0) != kvrStatusOk) return 1;
  printf("%d\n", (int)sum);
  return 0;
}
