/* Sum and mean of a vector.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr64f samples[5] = {1, 2, 3, 4, 5.5};
  Kvr64f sum, mean;
  if (kvrsSum_64f(samples, 5, &sum) != kvrStatusOk) return 1;
  if (kvrsMean_64f(samples, 5, &mean) != kvrStatusOk) return 1;
  printf("%g %g\n", sum, mean);
  return 0;
}
