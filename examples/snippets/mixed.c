/* Products added to a sum, element by element.
 * SPDX-License-Identifier: MIT */
#include <kvrs.h>
#include <stdio.h>

int main(void) {
  const Kvr32f gains[3] = {2, 3, 4}, samples[3] = {1, -1, 0.5f};
  Kvr32f sums[3] = {100, 100, 100};
  int i;
  if (kvrsAddProduct_32f(gains, samples, sums, 3) != kvrStatusOk) return 1;
  for (i = 0; i < 3; i++) printf("%g ", sums[i]);
  printf("\n");
  return 0;
}
